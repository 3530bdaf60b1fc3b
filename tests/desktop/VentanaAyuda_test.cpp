#include "desktop/VentanaAyuda.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QDialog>
#include <QDirIterator>
#include <QFile>
#include <QKeyEvent>
#include <QPushButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextFragment>

#include "desktop/TextoAyuda.h"
#include "fakes/Aspectos.h"

namespace ondalis {
namespace {

// Every topic that some window or menu entry asks for.
constexpr const char *kTemas[] = {
    "",
    "OpcTeclasRapidas.htm",
    "OpcGeneral.htm",
    "OpcTipoLectura.htm",
    "OpcVoces.htm",
    "OpcGrabar.htm",
    "OpcDiccionario.htm",
    "OpcTipoLectura.htm#Editores",
    "OpcTipoLectura.htm#TeclasInicio",
    "OpcGeneral.htm#Sonidos",
    "Editor.htm",
    "EtiqLoquendo.htm",
    "LecturaPortapapeles.htm",
    "Configuracion.htm",
};

class VentanaAyudaPrueba : public testing::Test {
protected:
    cVisorAyuda visor;
    const QString fichero = QStringLiteral(FICHERO_AYUDA);

    QTextBrowser &Texto() { return *visor.Ventana()->findChild<QTextBrowser *>(); }
    // Places that the page shown now names.
    QStringList Anclas() {
        QStringList anclas;
        for (QTextBlock bloque = Texto().document()->begin(); bloque.isValid(); bloque = bloque.next())
            for (auto i = bloque.begin(); !i.atEnd(); ++i) anclas << i.fragment().charFormat().anchorNames();
        return anclas;
    }
    QStringList Enlaces() {
        QStringList enlaces;
        for (QTextBlock bloque = Texto().document()->begin(); bloque.isValid(); bloque = bloque.next())
            for (auto i = bloque.begin(); !i.atEnd(); ++i)
                if (const QString a = i.fragment().charFormat().anchorHref(); !a.isEmpty()) enlaces << a;
        return enlaces;
    }
    void CompruebaAncla(const QString &tema) {
        const QString ancla = tema.section(QLatin1Char('#'), 1);
        EXPECT_TRUE(ancla.isEmpty() || Anclas().contains(ancla)) << tema.toStdString();
    }
};

TEST_F(VentanaAyudaPrueba, EveryTopicThatTheSystemNamesResolves) {
    for (const char *tema : kTemas) {
        EXPECT_FALSE(visor.Muestra(fichero, 0, QLatin1String(tema))) << tema;
        ASSERT_TRUE(visor.Ventana()) << tema;
        EXPECT_EQ(visor.Ventana()->Tema(), *tema ? QLatin1String(tema) : QLatin1String(VentanaAyuda::Inicio));
        EXPECT_GT(Texto().toPlainText().size(), 100) << tema;
        CompruebaAncla(QLatin1String(tema));
    }
}

TEST_F(VentanaAyudaPrueba, EveryTopicWrittenInTheSourcesResolves) {
    static const QRegularExpression tema(QStringLiteral(R"re("(\w+\.htm(?:#\w+)?)")re"));
    QStringList temas;
    QDirIterator ficheros(QStringLiteral(FUENTES), {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                          QDirIterator::Subdirectories);
    while (ficheros.hasNext()) {
        QFile fuente(ficheros.next());
        ASSERT_TRUE(fuente.open(QIODevice::ReadOnly));
        for (auto i = tema.globalMatch(QString::fromUtf8(fuente.readAll())); i.hasNext();)
            temas << i.next().captured(1);
    }
    EXPECT_TRUE(temas.contains(QLatin1String(VentanaAyuda::Inicio)));  // the search finds at least this one
    for (const QString &uno : temas) {
        ASSERT_FALSE(visor.Muestra(fichero, 0, uno)) << uno.toStdString();
        CompruebaAncla(uno);
    }
}

TEST_F(VentanaAyudaPrueba, TheBookTellsOfWhatHasNoPageOfItsOwn) {
    const std::pair<const char *, const char *> lugares[] = {{"OrdenesRemotas.htm", "com.ferrano.Ondalis.Voice"},
                                                             {"LineaComandos.htm", "-help"},
                                                             {"LineaComandos.htm", "-clear"},
                                                             {"Teclas.htm", "multimedia"},
                                                             {"Lupa.htm", "cruz"},
                                                             {"Problemas.htm", "zona de notificación"},
                                                             {"Problemas.htm", "ventana con las entradas del menú"}};
    for (const auto &[pagina, palabra] : lugares) {
        ASSERT_FALSE(visor.Muestra(fichero, 0, QLatin1String(pagina)));
        QString texto = Texto().toPlainText();
        EXPECT_TRUE(texto.replace(QLatin1Char('\n'), QLatin1Char(' ')).contains(QString::fromUtf8(palabra)))
            << pagina << ": " << palabra;
    }
}

TEST_F(VentanaAyudaPrueba, EveryLinkOfEveryPageLeadsSomewhereAndEveryPageIsReached) {
    QStringList porVer{QLatin1String(VentanaAyuda::Inicio)}, vistas;
    while (!porVer.isEmpty()) {
        const QString pagina = porVer.takeFirst();
        if (vistas.contains(pagina)) continue;
        vistas << pagina;
        ASSERT_FALSE(visor.Muestra(fichero, 0, pagina)) << pagina.toStdString();
        EXPECT_TRUE(Texto().documentTitle().size() > 2) << pagina.toStdString();
        for (const QString &enlace : Enlaces()) {
            ASSERT_FALSE(visor.Muestra(fichero, 0, enlace)) << enlace.toStdString();
            CompruebaAncla(enlace);
            porVer << enlace.section(QLatin1Char('#'), 0, 0);
            ASSERT_FALSE(visor.Muestra(fichero, 0, pagina));
        }
    }
    EXPECT_EQ(vistas.size(), PAGINAS_AYUDA);
}

TEST_F(VentanaAyudaPrueba, ATopicThatIsNotInTheFileIsAFailureAndOpensNoWindow) {
    EXPECT_EQ(visor.Muestra(fichero, 0, QStringLiteral("NoEsta.htm")).numero, Fallo::FicheroNoEncontrado);
    EXPECT_FALSE(visor.Ventana());
}

TEST_F(VentanaAyudaPrueba, ADamagedFileIsAFailure) {
    QTemporaryDir carpeta;
    QFile rota(carpeta.filePath(QStringLiteral("Ondalis1.0.rcc")));
    ASSERT_TRUE(rota.open(QIODevice::WriteOnly));
    rota.write("esto no es un libro");
    rota.close();
    EXPECT_EQ(visor.Muestra(rota.fileName(), 0, QString()).numero, Fallo::ErrorDeAcceso);
    EXPECT_FALSE(visor.Ventana());
}

TEST_F(VentanaAyudaPrueba, AnotherTopicUsesTheSameWindow) {
    ASSERT_FALSE(visor.Muestra(fichero, 0, QString()));
    const VentanaAyuda *una = visor.Ventana();
    ASSERT_FALSE(visor.Muestra(fichero, 0, QStringLiteral("Editor.htm")));
    EXPECT_EQ(visor.Ventana(), una);
    EXPECT_TRUE(una->windowTitle().contains(QStringLiteral("Ayuda de Ondalis")));
}

TEST_F(VentanaAyudaPrueba, AboveAModalDialogItBelongsToThatDialogAndGoesWithIt) {
    ASSERT_FALSE(visor.Muestra(fichero, 0, QString()));
    {
        QDialog dialogo;
        dialogo.setModal(true);
        dialogo.show();
        ASSERT_EQ(QApplication::activeModalWidget(), &dialogo);
        ASSERT_FALSE(visor.Muestra(fichero, 0, QStringLiteral("OpcGeneral.htm#Sonidos")));
        EXPECT_EQ(visor.Ventana()->parentWidget(), &dialogo);
        EXPECT_TRUE(visor.Ventana()->isWindow());
    }
    EXPECT_FALSE(visor.Ventana());
    ASSERT_FALSE(visor.Muestra(fichero, 0, QString()));
    EXPECT_FALSE(visor.Ventana()->parentWidget());
}

TEST_F(VentanaAyudaPrueba, ForAWindowThatStaysOnTopItStaysOnTopToo) {
    ASSERT_FALSE(visor.Muestra(fichero, 0, {}));
    EXPECT_FALSE(visor.Ventana()->windowFlags() & Qt::WindowStaysOnTopHint);
    QWidget duena(nullptr, Qt::Window | Qt::WindowStaysOnTopHint);
    duena.show();
    ASSERT_FALSE(visor.Muestra(fichero, duena.winId(), {}));
    EXPECT_TRUE(visor.Ventana()->windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(VentanaAyudaPrueba, EscClosesItAndEveryControlHasANameAndTakesTheFocus) {
    ASSERT_FALSE(visor.Muestra(fichero, 0, QString()));
    for (const QPushButton *boton : visor.Ventana()->findChildren<QPushButton *>()) {
        EXPECT_FALSE(boton->accessibleName().isEmpty());
        EXPECT_TRUE(boton->focusPolicy() & Qt::TabFocus);
    }
    EXPECT_FALSE(Texto().accessibleName().isEmpty());
    EXPECT_TRUE(Texto().textInteractionFlags() & Qt::LinksAccessibleByKeyboard);
    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
    QApplication::sendEvent(&Texto(), &escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(visor.Ventana());
}

TEST_F(VentanaAyudaPrueba, EachButtonHasALetterThatLeadsToIt) {
    ASSERT_FALSE(visor.Muestra(fichero, 0, QString()));
    prueba::CompruebaMnemonicos(*visor.Ventana());
    prueba::CompruebaLetrasPulsadas(*visor.Ventana());
}

TEST_F(VentanaAyudaPrueba, BackAndForwardGoThroughTheTopicsSeen) {
    ASSERT_FALSE(visor.Muestra(fichero, 0, QString()));
    ASSERT_FALSE(visor.Muestra(fichero, 0, QStringLiteral("Lupa.htm")));
    auto *atras = visor.Ventana()->findChild<QPushButton *>(QStringLiteral("Atras"));
    ASSERT_TRUE(atras->isEnabled());
    atras->click();
    EXPECT_EQ(visor.Ventana()->Tema(), QLatin1String(VentanaAyuda::Inicio));
    visor.Ventana()->findChild<QPushButton *>(QStringLiteral("Adelante"))->click();
    EXPECT_EQ(visor.Ventana()->Tema(), QStringLiteral("Lupa.htm"));
}

TEST_F(VentanaAyudaPrueba, EachLinkThatTabComesToIsTheFocusedOneForAScreenReader) {
    ASSERT_FALSE(visor.Muestra(fichero, 0, {}).numero);
    QApplication::setActiveWindow(visor.Ventana());
    auto &texto = *visor.Ventana()->findChild<TextoAyuda *>();
    texto.setFocus();
    ASSERT_EQ(static_cast<qsizetype>(texto.Enlaces().size()), Enlaces().size());
    for (EnlaceAyuda *enlace : texto.Enlaces()) {
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier);
        QApplication::sendEvent(&texto, &tab);
        const QAccessibleInterface *accesible = QAccessible::queryAccessibleInterface(enlace);
        ASSERT_NE(accesible, nullptr);
        EXPECT_EQ(accesible->role(), QAccessible::Link);
        EXPECT_TRUE(accesible->state().focused) << enlace->accessibleName().toStdString();
        EXPECT_EQ(accesible->text(QAccessible::Name), texto.textCursor().selectedText());
        int enfocados = 0;
        for (const EnlaceAyuda *otro : texto.Enlaces()) enfocados += otro->Enfocado();
        EXPECT_EQ(enfocados, 1);
    }
    EXPECT_GT(texto.Enlaces().size(), 5U);
}

}  // namespace
}  // namespace ondalis
