#include "desktop/cMenuBandeja.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QCoreApplication>

namespace ondalis {
namespace {

class cMenuBandejaPrueba : public testing::Test {
protected:
    QAction *Accion(const char *nombre) { return menu.Menu().findChild<QAction *>(QLatin1String(nombre)); }

    MenuIcono estado;
    cCola cola;
    cMenuBandeja menu{estado, cola};
};

TEST_F(cMenuBandejaPrueba, TheEntriesStandInTheirOrderWithTheirSeparators) {
    QStringList orden;
    for (const QAction *accion : menu.Menu().actions())
        orden << (accion->isSeparator() ? QStringLiteral("-") : accion->objectName());
    EXPECT_EQ(orden.join(QLatin1Char(' ')),
              QStringLiteral("ActivarDesactivar - PausaReanudar Detener RepetirLectura AvanzarPalabras "
                             "RetrocederPalabras - Opciones AbrirEditor FicheroTextoAAudio - MenuAyuda - Salir"));
    QStringList ayuda;
    for (const QAction *accion : Accion("MenuAyuda")->menu()->actions()) ayuda << accion->objectName();
    EXPECT_EQ(ayuda.join(QLatin1Char(' ')),
              QStringLiteral("AyudaOndalis VerLeame AcercaDe DescargarActualizaciones PagWebOndalis"));
}

TEST_F(cMenuBandejaPrueba, TheDefaultEntryIsTheConfiguration) {
    EXPECT_EQ(menu.Menu().defaultAction(), Accion("Opciones"));
}

TEST_F(cMenuBandejaPrueba, CaptionAndEnabledFollowTheState) {
    EXPECT_FALSE(Accion("Detener")->isEnabled());
    estado.Detener.SetHabilitada(true);
    estado.Detener.SetRotulo(QStringLiteral("Detener lectura (Ctrl + 2)"));
    EXPECT_TRUE(Accion("Detener")->isEnabled());
    EXPECT_EQ(Accion("Detener")->text(), QStringLiteral("Detener lectura (Ctrl + 2)"));
}

TEST_F(cMenuBandejaPrueba, AnAmpersandInACaptionIsShownAndTheStateKeepsIt) {
    estado.Salir.SetRotulo(QStringLiteral("Salir & cerrar"));
    EXPECT_EQ(Accion("Salir")->text(), QStringLiteral("Salir && cerrar"));
    EXPECT_EQ(estado.Salir.Rotulo(), QStringLiteral("Salir & cerrar"));
}

TEST_F(cMenuBandejaPrueba, AClickActsFromTheQueueAndNotInsideARunningHandler) {
    QStringList orden;
    menu.AlPulsar(estado.Salir, [&] { orden << QStringLiteral("salir"); });
    cola.Pon(cCola::Clase::Tecla, [&] {
        Accion("Salir")->trigger();
        orden << QStringLiteral("tecla");
    });
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(orden, QStringList({QStringLiteral("tecla"), QStringLiteral("salir")}));
}

TEST(cMenuBandeja, TheStateOutlivesItsMirror) {
    MenuIcono estado;
    cCola cola;
    { const cMenuBandeja menu(estado, cola); }
    estado.Salir.SetRotulo(QStringLiteral("otro"));
    EXPECT_EQ(estado.Salir.Rotulo(), QStringLiteral("otro"));
}

}  // namespace
}  // namespace ondalis
