#include "keys/TeclasLeeTeclado.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>

#include "fakes/Aspectos.h"
#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"

namespace ondalis::prueba {
namespace {

class VentanaTeclasTest : public testing::Test {
protected:
    // Shows the window; `hace` acts in it and must close it.
    void Abre(const std::function<void()> &hace) {
        QTimer::singleShot(0, &ventana, hace);
        ventana.Init();
    }
    void Pulsa(const char *boton) { ventana.findChild<QPushButton *>(QLatin1String(boton))->click(); }
    QListWidgetItem *Fila(const char *rotulo) {
        const auto filas = Lista()->findItems(QString::fromUtf8(rotulo), Qt::MatchExactly);
        return filas.value(0);
    }
    QListWidget *Lista() { return ventana.findChild<QListWidget *>(QStringLiteral("ListaTeclas")); }

    RegistroPropio almacen;
    MensajesGuion mensajes;
    PrioridadFalsa prioridad;
    cGeneral general{almacen.Log(), mensajes, prioridad};
    cTeclasLeeTeclado teclas{almacen.Registro(), general, {QStringLiteral(DATOS_DEL_PROGRAMA)}};
    std::vector<QString> temas;
    TeclasLeeTeclado ventana{teclas,
                             {.duena = nullptr,
                              .registro = almacen.Registro(),
                              .log = almacen.Log(),
                              .ayuda = [this](std::uintptr_t, const QString &tema) { temas.push_back(tema); },
                              .alFrente = {}}};
};

TEST_F(VentanaTeclasTest, ItIsModalStaysOnTopAndShowsTheAcceptedChoice) {
    Abre([this] {
        EXPECT_EQ(ventana.windowTitle(), QStringLiteral("Teclas que inician la lectura"));
        EXPECT_TRUE(ventana.isModal());
        EXPECT_TRUE(ventana.windowFlags() & Qt::WindowStaysOnTopHint);
        EXPECT_EQ(Fila("Intro")->checkState(), Qt::Checked);
        EXPECT_EQ(Fila("Tabulador")->checkState(), Qt::Unchecked);
        EXPECT_EQ(ventana.focusWidget(), Lista());
        Pulsa("Cancelar");
    });
}

TEST_F(VentanaTeclasTest, AcceptingTakesEffectAndIsStored) {
    Abre([this] {
        Fila("Intro")->setCheckState(Qt::Unchecked);
        Fila("Tabulador")->setCheckState(Qt::Checked);
        Pulsa("Aceptar");
    });
    EXPECT_FALSE(teclas.EsTeclaParaLeer(13));
    EXPECT_TRUE(teclas.EsTeclaParaLeer(9));
    EXPECT_EQ(almacen.Lee(QStringLiteral("TipoLectura"), QStringLiteral("TeclasLeeTeclado")), teclas.Tag());
}

TEST_F(VentanaTeclasTest, CancellingPutsTheRowsBack) {
    const QString antes = teclas.Tag();
    Abre([this] {
        Fila("Intro")->setCheckState(Qt::Unchecked);
        Pulsa("Cancelar");
    });
    EXPECT_EQ(teclas.Tag(), antes);
    EXPECT_EQ(almacen.Lee(QStringLiteral("TipoLectura"), QStringLiteral("TeclasLeeTeclado")), QString());
    Abre([this] {
        EXPECT_EQ(Fila("Intro")->checkState(), Qt::Checked);
        Pulsa("Cancelar");
    });
}

TEST_F(VentanaTeclasTest, ClosingByTheFrameCancelsAndKeepsThePlace) {
    const QString antes = teclas.Tag();
    Abre([this] {
        Fila("Intro")->setCheckState(Qt::Unchecked);
        ventana.move(40, 30);
        ventana.close();
    });
    EXPECT_EQ(teclas.Tag(), antes);
    EXPECT_EQ(almacen.Lee(QStringLiteral("Ventana"), QStringLiteral("LeftTeclasLeeTeclado")), QStringLiteral("600"));
    EXPECT_EQ(almacen.Lee(QStringLiteral("Ventana"), QStringLiteral("TopTeclasLeeTeclado")), QStringLiteral("450"));
}

TEST_F(VentanaTeclasTest, ItOpensWhereItWasKept) {
    almacen.Salva(QStringLiteral("Ventana"), QStringLiteral("LeftTeclasLeeTeclado"), QStringLiteral("900"));
    almacen.Salva(QStringLiteral("Ventana"), QStringLiteral("TopTeclasLeeTeclado"), QStringLiteral("1200"));
    Abre([this] {
        EXPECT_EQ(ventana.pos(), QPoint(60, 80));
        Pulsa("Cancelar");
    });
}

TEST_F(VentanaTeclasTest, HelpShowsItsTopic) {
    Abre([this] {
        Pulsa("Ayuda");
        Pulsa("Cancelar");
    });
    EXPECT_EQ(temas, std::vector<QString>{QStringLiteral("OpcTipoLectura.htm#TeclasInicio")});
}

TEST_F(VentanaTeclasTest, EveryControlHasAnAccessibleName) {
    for (QWidget *uno : ventana.findChildren<QPushButton *>()) EXPECT_FALSE(uno->accessibleName().isEmpty());
    EXPECT_FALSE(Lista()->accessibleName().isEmpty());
}

TEST_F(VentanaTeclasTest, ItIsWholeInEveryLook) {
    CompruebaAspectos([this] {
        auto otra = std::make_unique<TeclasLeeTeclado>(
            teclas,
            DialogoOpciones::Colaboradores{
                .duena = nullptr, .registro = almacen.Registro(), .log = almacen.Log(), .ayuda = {}, .alFrente = {}});
        static_cast<DialogoOpciones &>(*otra).Init();  // without waiting for its end
        return otra;
    });
}

}  // namespace
}  // namespace ondalis::prueba
