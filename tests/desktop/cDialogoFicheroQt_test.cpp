#include "desktop/cDialogoFicheroQt.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QListView>
#include <QTemporaryDir>
#include <QTimer>

#include "fakes/MensajesGuion.h"

namespace ondalis {
namespace {

class cDialogoFicheroQtTest : public testing::Test {
protected:
    cDialogoFicheroQtTest() { QDir::setCurrent(QStringLiteral("/")); }

    // Runs `accion` on the dialog as soon as it stands there.
    template <class Accion>
    static void EnElDialogo(Accion accion) {
        QTimer::singleShot(0, qApp, [accion] {
            auto *abierto = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
            ASSERT_NE(abierto, nullptr);
            accion(*abierto);
        });
    }
    // As the user does: the name is typed and the button pressed.
    static void Teclea(QFileDialog &abierto, const QString &nombre) {
        abierto.findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->setText(nombre);
        QMetaObject::invokeMethod(&abierto, "accept");
    }
    QString En(const QString &nombre) const { return carpeta.filePath(nombre); }
    void Crea(const QString &nombre) const {
        QFile fichero(En(nombre));
        ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
        fichero.write("x");
    }

    QTemporaryDir carpeta;
    prueba::MensajesGuion mensajes;
    cDialogoFicheroQt dialogo{mensajes};
    cDialogoFichero servicio{dialogo};
    const QString filtro = QStringLiteral("Fichero de audio (*.wav)") + QChar::Null + QStringLiteral("*.wav") +
                           QChar::Null + QStringLiteral("Todos") + QChar::Null + QStringLiteral("*.*");
};

TEST_F(cDialogoFicheroQtTest, ItIsTitledAbrirAndShowsTheFiltersAsGiven) {
    EnElDialogo([](QFileDialog &abierto) {
        EXPECT_EQ(abierto.windowTitle(), QStringLiteral("Abrir"));
        const auto *tipos = abierto.findChild<QComboBox *>(QStringLiteral("fileTypeCombo"));
        ASSERT_EQ(tipos->count(), 2);
        EXPECT_EQ(tipos->itemText(0), QStringLiteral("Fichero de audio (*.wav)"));
        EXPECT_EQ(tipos->itemText(1), QStringLiteral("Todos"));
        abierto.reject();
    });
    EXPECT_EQ(servicio.GetFicheroDialogo(QStringLiteral("wav"), filtro), QString());
}

TEST_F(cDialogoFicheroQtTest, FiltersMatchBlindToCase) {
    Crea(QStringLiteral("GRANDE.WAV"));
    Crea(QStringLiteral("otro.txt"));
    int vistos = -1;
    QString nombre;
    EnElDialogo([&](QFileDialog &abierto) {
        abierto.setDirectory(carpeta.path());
        auto *lista = abierto.findChild<QListView *>(QStringLiteral("listView"));
        // The folder is read in the background.
        QTimer::singleShot(5000, &abierto, [&abierto] { abierto.reject(); });
        auto *mira = new QTimer(&abierto);
        QObject::connect(mira, &QTimer::timeout, &abierto, [&, lista] {
            vistos = lista->model()->rowCount(lista->rootIndex());
            if (vistos != 1) return;
            nombre = lista->model()->index(0, 0, lista->rootIndex()).data().toString();
            abierto.reject();
        });
        mira->start(5);
    });
    servicio.GetFicheroDialogo(QStringLiteral("wav"), filtro);
    EXPECT_EQ(vistos, 1);
    EXPECT_EQ(nombre, QStringLiteral("GRANDE.WAV"));
}

TEST_F(cDialogoFicheroQtTest, ANameThatDoesNotExistMayBeTypedAndGetsTheSuffix) {
    EnElDialogo([this](QFileDialog &abierto) { Teclea(abierto, En(QStringLiteral("nuevo"))); });
    EXPECT_EQ(servicio.GetFicheroDialogo(QStringLiteral("wav"), filtro), En(QStringLiteral("nuevo.wav")));
    EXPECT_FALSE(QFile::exists(En(QStringLiteral("nuevo.wav"))));
}

TEST_F(cDialogoFicheroQtTest, ANameWithAnExtensionKeepsItAndAnyExtensionAddsNone) {
    EnElDialogo([this](QFileDialog &abierto) { Teclea(abierto, En(QStringLiteral("nuevo.mp3"))); });
    EXPECT_EQ(servicio.GetFicheroDialogo(QStringLiteral("wav"), filtro), En(QStringLiteral("nuevo.mp3")));
    EnElDialogo([this](QFileDialog &abierto) { Teclea(abierto, En(QStringLiteral("nuevo"))); });
    EXPECT_EQ(servicio.GetFicheroDialogo(QStringLiteral("*"), filtro), En(QStringLiteral("nuevo")));
}

TEST_F(cDialogoFicheroQtTest, AnExistingFileIsTakenWithoutAQuestionAndLeftAsItIs) {
    Crea(QStringLiteral("viejo.wav"));
    EnElDialogo([this](QFileDialog &abierto) { Teclea(abierto, En(QStringLiteral("viejo.wav"))); });
    EXPECT_EQ(servicio.GetFicheroDialogo(QStringLiteral("wav"), filtro), En(QStringLiteral("viejo.wav")));
    EXPECT_EQ(QFile(En(QStringLiteral("viejo.wav"))).size(), 1);
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cDialogoFicheroQtTest, TheCurrentFolderNeverChangesAndTheNextDialogOpensInTheLastOne) {
    EnElDialogo([this](QFileDialog &abierto) { Teclea(abierto, En(QStringLiteral("uno.wav"))); });
    servicio.GetFicheroDialogo(QStringLiteral("wav"), filtro);
    EXPECT_EQ(QDir::currentPath(), QStringLiteral("/"));
    EnElDialogo([this](QFileDialog &abierto) {
        EXPECT_EQ(abierto.directory().path(), carpeta.path());
        abierto.reject();
    });
    servicio.GetFicheroDialogo(QStringLiteral("wav"), filtro);
    EXPECT_EQ(QDir::currentPath(), QStringLiteral("/"));
}

TEST_F(cDialogoFicheroQtTest, AFolderThatDoesNotExistIsToldAndTheDialogStays) {
    EnElDialogo([this](QFileDialog &abierto) {
        Teclea(abierto, En(QStringLiteral("no/hay/uno.wav")));
        EXPECT_TRUE(abierto.isVisible());
        Teclea(abierto, En(QStringLiteral("uno.wav")));
    });
    EXPECT_EQ(servicio.GetFicheroDialogo(QStringLiteral("wav"), filtro), En(QStringLiteral("uno.wav")));
    EXPECT_EQ(mensajes.cajas.size(), 1u);
}

TEST_F(cDialogoFicheroQtTest, WithAnyExtensionTheFolderNeedNotExist) {
    EnElDialogo([this](QFileDialog &abierto) { Teclea(abierto, En(QStringLiteral("no/hay/uno"))); });
    EXPECT_EQ(servicio.GetFicheroDialogo(QStringLiteral("*"), filtro), En(QStringLiteral("no/hay/uno")));
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cDialogoFicheroQtTest, TheEndOfTheProgramClosesItAndShowsNoOther) {
    EnElDialogo([this](QFileDialog &) { dialogo.Cierra(); });
    EXPECT_EQ(servicio.GetFicheroDialogo(QStringLiteral("wav"), filtro), QString());
    EXPECT_EQ(servicio.GetFicheroDialogo(QStringLiteral("wav"), filtro), QString());
}

}  // namespace
}  // namespace ondalis
