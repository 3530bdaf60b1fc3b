#include "settings/cRegistro.h"

#include <gtest/gtest.h>

#include <QDateTime>

#include "fakes/DiscoLleno.h"
#include "fakes/RegistroPropio.h"

namespace ondalis {
namespace {

using prueba::RegistroPropio;
const QString kUsuario = QStringLiteral("CU");
const QString kSistema = QStringLiteral("LM");

class cRegistroTest : public testing::Test {
protected:
    static QByteArray Lee(const QString &ruta) {
        QFile fichero(ruta);
        return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
    }
    // What another process would read: the same file under a path that nothing has cached.
    static QString LeeDeNuevo(const RegistroPropio &p, const QString &seccion, const QString &nombre,
                              const QVariant &defecto = {}) {
        const QByteArray bytes = Lee(p.FicheroUsuario());
        RegistroPropio otro;
        RegistroPropio::Escribe(otro.FicheroUsuario(), bytes);
        return otro.Lee(seccion, nombre, defecto);
    }

    RegistroPropio p;
};

TEST_F(cRegistroTest, AKeyOfASectionThatDoesNotExistGivesTheDefaultAndCreatesNothing) {
    EXPECT_EQ(p.Lee("Voz", "Velocidad", 170), "170");
    EXPECT_FALSE(QDir(p.Ruta("usuario")).exists());
}

TEST_F(cRegistroTest, TheEmptyTextStoredIsToldFromAnAbsentValue) {
    for (const QString &vacio : {QString(), QStringLiteral("")}) {
        ASSERT_TRUE(p.Salva("Grabar", "NombreFichero", vacio));
        EXPECT_EQ(p.Lee("Grabar", "NombreFichero", "defecto"), "");
        EXPECT_EQ(LeeDeNuevo(p, "Grabar", "NombreFichero", "defecto"), "");
    }
    EXPECT_EQ(p.Lee("Grabar", "Otro", "defecto"), "defecto");
}

TEST_F(cRegistroTest, WithoutADefaultAMissingValueIsTheEmptyText) { EXPECT_EQ(p.Lee("Voz", "VozActiva"), ""); }

TEST_F(cRegistroTest, EmbeddedNulsAreLostOnReading) {
    ASSERT_TRUE(p.Salva("Voz", "VozActiva", QString::fromUtf8("Car\0los\0", 8)));
    EXPECT_EQ(p.Lee("Voz", "VozActiva"), "Carlos");
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "VozActiva"), "Carlos");
}

TEST_F(cRegistroTest, DefaultsOfAnySimpleTypeTurnIntoText) {
    EXPECT_EQ(p.Lee("a", "b", true), "True");
    EXPECT_EQ(p.Lee("a", "b", false), "False");
    EXPECT_EQ(p.Lee("a", "b", -3), "-3");
    EXPECT_EQ(p.Lee("a", "b", 65000u), "65000");
    EXPECT_EQ(p.Lee("a", "b", 1.5f), "1.5");
    EXPECT_EQ(p.Lee("a", "b", QStringLiteral("x")), "x");
}

TEST_F(cRegistroTest, EveryTextComesBackAsItWasStored) {
    const QStringList textos{
        "a, b,c",    "@Invalid()", "@@", "\"comillas\"", "a;b#c",      "ñ á ¿ €", "x=y", "línea\notra\ttab",
        " blancos ", "C:\\x\\ny",  "%1", "[seccion]",    "@String(x)", "😀",       "\\",  "1,5"};
    for (const QString &texto : textos) {
        ASSERT_TRUE(p.Salva("InsertaEtiqueta", "Voz", texto));
        EXPECT_EQ(p.Lee("InsertaEtiqueta", "Voz"), texto);
        EXPECT_EQ(LeeDeNuevo(p, "InsertaEtiqueta", "Voz"), texto);
    }
}

TEST_F(cRegistroTest, SectionsAndKeysAreBlindToCase) {
    ASSERT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    EXPECT_EQ(p.Lee("VOZ", "velocidad"), "200");
    ASSERT_TRUE(p.Salva("voz", "VELOCIDAD", "210"));
    EXPECT_EQ(p.Lee("Voz", "Velocidad"), "210");
    EXPECT_EQ(Lee(p.FicheroUsuario()).toLower().count("velocidad"), 1);
}

TEST_F(cRegistroTest, AFileWrittenByHandMaySpellSectionsAndKeysInItsOwnWay) {
    RegistroPropio::Escribe(p.FicheroUsuario(),
                            "[VOZ]\nvelocidad=200\n\n[voz]\nVOLUMEN = 30000\n[%general]\nAVISO=False\n");
    EXPECT_EQ(p.Lee("Voz", "Velocidad"), "200");
    EXPECT_EQ(p.Lee("Voz", "Volumen"), "30000");
    EXPECT_EQ(p.Lee("General", "Aviso", true), "False");
}

TEST_F(cRegistroTest, AValueWrittenByHandWithACommaIsText) {
    RegistroPropio::Escribe(p.FicheroUsuario(), "[Editor]\nFuenteName=Sans, Bold\n");
    EXPECT_EQ(p.Lee("Editor", "FuenteName", "x"), "Sans, Bold");
}

TEST_F(cRegistroTest, AnInvalidValueInTheFileIsTheDefault) {
    RegistroPropio::Escribe(p.FicheroUsuario(), "[Voz]\nVelocidad=@Invalid()\nVolumen=@Rect(1 2 3 4)\n");
    EXPECT_EQ(p.Lee("Voz", "Velocidad", 170), "170");
    EXPECT_EQ(p.Lee("Voz", "Volumen", 65000), "65000");
}

TEST_F(cRegistroTest, TheSectionGeneralAndTheEmptySectionAreTwo) {
    ASSERT_TRUE(p.Salva("General", "Aviso", "uno"));
    ASSERT_TRUE(p.Salva("", "Aviso", "dos"));
    EXPECT_EQ(LeeDeNuevo(p, "General", "Aviso"), "uno");
    EXPECT_EQ(LeeDeNuevo(p, "", "Aviso"), "dos");
    EXPECT_TRUE(p.Registro().Borra(kUsuario, Producto::Ruta(), QStringLiteral("General")));
    EXPECT_EQ(LeeDeNuevo(p, "General", "Aviso", "no"), "no");
    EXPECT_EQ(LeeDeNuevo(p, "", "Aviso"), "dos");
}

TEST_F(cRegistroTest, TheUsersStoreAndTheSystemsAreApart) {
    ASSERT_TRUE(p.Registro().Salva(kSistema, Producto::Ruta(), "Voz", "Velocidad", "99"));
    EXPECT_EQ(p.Lee("Voz", "Velocidad", 170), "170");
    EXPECT_EQ(p.Registro().Lee(kSistema, Producto::Ruta(), "Voz", "Velocidad"), "99");
    EXPECT_EQ(p.Registro().Lee("HKEY", Producto::Ruta(), "Voz", "Velocidad"), "99");  // anything but CU
    EXPECT_TRUE(QFile::exists(p.FicheroSistema()));
}

TEST_F(cRegistroTest, TheCompanysOwnFileIsNoFallback) {
    RegistroPropio::Escribe(p.Ruta("usuario/Ferrano.ini"), "[Voz]\nVelocidad=99\n");
    EXPECT_EQ(p.Lee("Voz", "Velocidad", 170), "170");
}

TEST_F(cRegistroTest, AnotherRouteIsAnotherStore) {
    ASSERT_TRUE(p.Registro().Salva(kSistema, "LOQUENDO\\LTTS7", "LoqSAPI5", "DataPath", "/x"));
    EXPECT_EQ(p.Registro().Lee(kSistema, "LOQUENDO\\LTTS7", "LoqSapi5", "DataPath"), "/x");
    EXPECT_EQ(p.Registro().Lee(kSistema, "LOQUENDO\\LTTS", "LoqSapi5", "DataPath"), "");
}

TEST_F(cRegistroTest, DeletingASectionThatDoesNotExistIsFalseAndChangesNothing) {
    EXPECT_FALSE(p.Registro().Borra(kUsuario, Producto::Ruta(), QStringLiteral("Voz")));
    EXPECT_FALSE(QDir(p.Ruta("usuario")).exists());
    ASSERT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    const QByteArray antes = Lee(p.FicheroUsuario());
    EXPECT_FALSE(p.Registro().Borra(kUsuario, Producto::Ruta(), QStringLiteral("Grabar")));
    EXPECT_FALSE(p.Registro().Borra(kUsuario, Producto::Ruta(), QStringLiteral("Voz"), QStringLiteral("Tono")));
    EXPECT_EQ(Lee(p.FicheroUsuario()), antes);
}

TEST_F(cRegistroTest, DeletingTakesTheValueOrTheSectionBlindToCase) {
    RegistroPropio::Escribe(p.FicheroUsuario(),
                            "[VOZ]\nvelocidad=1\n[voz]\nVelocidad=2\nTono=3\n[Grabar]\nCalidadkHz=8000\n");
    EXPECT_TRUE(p.Registro().Borra(kUsuario, Producto::Ruta(), QStringLiteral("Voz"), QStringLiteral("Velocidad")));
    EXPECT_EQ(p.Lee("Voz", "Velocidad", "no"), "no");
    EXPECT_EQ(p.Lee("Voz", "Tono"), "3");
    EXPECT_TRUE(p.Registro().Borra(kUsuario, Producto::Ruta(), QStringLiteral("Voz")));
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Tono", "no"), "no");
    EXPECT_EQ(LeeDeNuevo(p, "Grabar", "CalidadkHz"), "8000");
}

TEST_F(cRegistroTest, ARouteThatHoldsSectionsIsNotWalked) {
    ASSERT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    ASSERT_TRUE(p.Salva("", "Raiz", "1"));
    EXPECT_FALSE(p.Registro().Borra(kUsuario, Producto::Ruta()));
    EXPECT_EQ(p.Lee("Voz", "Velocidad"), "200");
    EXPECT_TRUE(p.Registro().Borra(kUsuario, Producto::Ruta(), QStringLiteral("Voz")));
    EXPECT_TRUE(p.Registro().Borra(kUsuario, Producto::Ruta()));
    EXPECT_EQ(LeeDeNuevo(p, "", "Raiz", "no"), "no");
    EXPECT_FALSE(p.Registro().Borra(kUsuario, Producto::Ruta()));
}

TEST_F(cRegistroTest, AFolderThatCannotBeWrittenMakesStoringFalseAndIsLogged) {
    RegistroPropio::Escribe(p.Ruta("usuario"), "a file where the folder would be");
    EXPECT_FALSE(p.Salva("Voz", "Velocidad", "200"));
    ASSERT_FALSE(p.LineasLog().isEmpty());
    EXPECT_TRUE(p.LineasLog()[0].contains("cRegistro.Salva: Error de acceso a la ruta o al archivo (75)"));
}

TEST_F(cRegistroTest, StoringWhatIsStoredAlreadyLeavesTheFileAlone) {
    ASSERT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    QFile fichero(p.FicheroUsuario());
    ASSERT_TRUE(fichero.open(QIODevice::ReadWrite));
    const QDateTime entonces = QDateTime::fromSecsSinceEpoch(1000000000);
    ASSERT_TRUE(fichero.setFileTime(entonces, QFileDevice::FileModificationTime));
    fichero.close();
    EXPECT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    EXPECT_EQ(QFileInfo(p.FicheroUsuario()).lastModified(), entonces);
    EXPECT_TRUE(p.Salva("Voz", "Velocidad", "201"));
    EXPECT_NE(QFileInfo(p.FicheroUsuario()).lastModified(), entonces);
}

TEST_F(cRegistroTest, AFullDiskLosesNoStoredValue) {
    ASSERT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    const QByteArray antes = Lee(p.FicheroUsuario());
    {
        const prueba::DiscoLleno lleno;
        EXPECT_FALSE(p.Salva("Voz", "Velocidad", "210"));
    }
    EXPECT_EQ(Lee(p.FicheroUsuario()), antes);
    EXPECT_TRUE(p.Salva("Voz", "Tono", "100"));
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Tono"), "100");
}

TEST_F(cRegistroTest, AValueThatCouldNotBeStoredIsNotTakenForStored) {
    RegistroPropio::Escribe(p.Ruta("usuario"), "");
    EXPECT_FALSE(p.Salva("Voz", "Velocidad", "200"));
    EXPECT_FALSE(p.Salva("Voz", "Velocidad", "200"));
}

TEST_F(cRegistroTest, AfterAFailureTheNextStoringWorks) {
    RegistroPropio::Escribe(p.Ruta("usuario"), "");
    ASSERT_FALSE(p.Salva("Voz", "Velocidad", "200"));
    ASSERT_TRUE(QFile::remove(p.Ruta("usuario")));
    EXPECT_TRUE(p.Salva("Voz", "Velocidad", "210"));
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Velocidad"), "210");
}

TEST_F(cRegistroTest, AMalformedFileIsCopiedAsideBeforeTheFirstWriteAndItsGoodValuesSurvive) {
    const QByteArray danado = "[Voz]\nVelocidad=200\nthis line is nonsense\n[Grabar\nNombreFichero=/x\n";
    RegistroPropio::Escribe(p.FicheroUsuario(), danado);
    EXPECT_EQ(p.Lee("Voz", "Velocidad", 170), "200");
    EXPECT_EQ(Lee(p.FicheroUsuario()), danado) << "reading alone touches nothing";
    ASSERT_TRUE(p.Salva("Voz", "Tono", "100"));
    EXPECT_EQ(Lee(p.FicheroUsuario() + ".1.mal"), danado);
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Velocidad"), "200");
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Tono"), "100");
    ASSERT_EQ(p.LineasLog().size(), 1);
    EXPECT_TRUE(p.LineasLog()[0].contains("cRegistro.Salva:  [Configuración dañada, copia en "));
    ASSERT_TRUE(p.Salva("Voz", "Tono", "101"));
    EXPECT_FALSE(QFile::exists(p.FicheroUsuario() + ".2.mal")) << "once is enough";
}

TEST_F(cRegistroTest, BinaryGarbageIsCopiedAsideTooAndTheStoreWorksOn) {
    QByteArray basura;
    for (int i = 0; i < 4096; ++i) basura.append(static_cast<char>(i * 37 + i / 7));
    RegistroPropio::Escribe(p.FicheroUsuario(), basura);
    EXPECT_EQ(p.Lee("Voz", "Velocidad", 170), "170");
    ASSERT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    EXPECT_EQ(Lee(p.FicheroUsuario() + ".1.mal"), basura);
    EXPECT_EQ(LeeDeNuevo(p, "Voz", "Velocidad"), "200");
}

TEST_F(cRegistroTest, WhatAnotherProcessWritesIsSeenAndKept) {
    ASSERT_TRUE(p.Salva("Voz", "Velocidad", "200"));
    QByteArray texto = Lee(p.FicheroUsuario());
    texto += "\n[General]\n\n[%General]\nVerLupa=True\n";
    RegistroPropio::Escribe(p.FicheroUsuario(), texto);
    EXPECT_EQ(p.Lee("General", "VerLupa"), "True");
    ASSERT_TRUE(p.Salva("Voz", "Tono", "1"));
    EXPECT_EQ(LeeDeNuevo(p, "General", "VerLupa"), "True");
}

TEST_F(cRegistroTest, BooleansAreReadAsWordsAndAsFigures) {
    for (const char *si : {"True", "true", "TRUE", "1", "-1", " True "})
        EXPECT_EQ(cRegistro::ABooleano(si), std::optional<bool>(true)) << si;
    for (const char *no : {"False", "false", "0"})
        EXPECT_EQ(cRegistro::ABooleano(no), std::optional<bool>(false)) << no;
    for (const char *nada : {"", "yes", "Verdadero", "2", "10"}) EXPECT_FALSE(cRegistro::ABooleano(nada)) << nada;
    EXPECT_EQ(cRegistro::DeBooleano(true), "True");
    EXPECT_EQ(cRegistro::DeBooleano(false), "False");
}

class Autoarranque : public cRegistroTest {
protected:
    QString Entrada() const { return p.Ruta("autostart/ondalis.desktop"); }
    void Escribe(const QByteArray &texto) { RegistroPropio::Escribe(Entrada(), texto); }
    bool Hay() { return p.Registro().GetAutoarranque("Ondalis"); }
};

TEST_F(Autoarranque, AnEntryIsThereAfterStoringAndGoneAfterDeleting) {
    EXPECT_FALSE(Hay());
    EXPECT_FALSE(p.Registro().BorraAutoarranque("Ondalis"));
    p.Registro().SalvaAutoarranque("Ondalis", "/usr/bin/ondalis");
    EXPECT_TRUE(Hay());
    EXPECT_TRUE(p.Registro().BorraAutoarranque("Ondalis"));
    EXPECT_FALSE(Hay());
}

TEST_F(Autoarranque, AnEntryOfZeroBytesIsAbsent) {
    Escribe("");
    EXPECT_FALSE(Hay());
}

TEST_F(Autoarranque, AnEntryWithoutACommandIsAbsent) {
    Escribe("[Desktop Entry]\nType=Application\nExec=\n");
    EXPECT_FALSE(Hay());
    Escribe("[Otra]\nExec=ondalis\n");
    EXPECT_FALSE(Hay());
}

TEST_F(Autoarranque, AHiddenEntryIsAbsent) {
    Escribe("[Desktop Entry]\nExec=ondalis\nHidden=true\n");
    EXPECT_FALSE(Hay());
    Escribe("[Desktop Entry]\nExec=ondalis\nX-GNOME-Autostart-enabled=false\n");
    EXPECT_FALSE(Hay());
    Escribe("[Desktop Entry]\nExec=ondalis\nHidden=false\n");
    EXPECT_TRUE(Hay());
}

TEST_F(Autoarranque, AFolderOfThatNameIsAbsent) {
    QDir().mkpath(Entrada());
    EXPECT_FALSE(Hay());
}

TEST_F(Autoarranque, StoringAgainReplacesAHiddenEntry) {
    Escribe("[Desktop Entry]\nExec=ondalis\nHidden=true\n");
    p.Registro().SalvaAutoarranque("Ondalis", "ondalis");
    EXPECT_TRUE(Hay());
}

TEST_F(Autoarranque, TheStoredCommandHoldsTheArgumentsOfThisRunQuoted) {
    p.Registro().SalvaAutoarranque("Ondalis", cRegistro::ComandoAutoarranque({"/opt/mis programas/ondalis", "-nosapi5",
                                                                              "100%", "$HOME \"x\" \\", ""}));
    EXPECT_TRUE(Lee(Entrada()).contains(
        "\nExec=\"/opt/mis programas/ondalis\" -nosapi5 100%% \"\\\\$HOME \\\\\"x\\\\\" \\\\\\\\\" \"\"\n"))
        << Lee(Entrada()).toStdString();
}

TEST_F(Autoarranque, ALineEndInAnArgumentDoesNotBreakTheEntry) {
    p.Registro().SalvaAutoarranque("Ondalis", cRegistro::ComandoAutoarranque({"ondalis", "a\nHidden=true"}));
    EXPECT_TRUE(Hay());
    EXPECT_TRUE(Lee(Entrada()).contains("Exec=ondalis \"a\\nHidden=true\"\n"));
}

TEST_F(Autoarranque, AFolderThatCannotBeMadeIsLogged) {
    RegistroPropio::Escribe(p.Ruta("autostart"), "");
    p.Registro().SalvaAutoarranque("Ondalis", "ondalis");
    EXPECT_FALSE(Hay());
    ASSERT_EQ(p.LineasLog().size(), 1);
    EXPECT_TRUE(p.LineasLog()[0].contains("cRegistro.SalvaAutoarranque: "));
}

}  // namespace
}  // namespace ondalis
