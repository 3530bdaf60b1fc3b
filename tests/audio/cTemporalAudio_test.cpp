#include "audio/cTemporalAudio.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>

#include "engine/cFicheroWav.h"
#include "fakes/EciEnFichero.h"
#include "fakes/RegistroPropio.h"

namespace ondalis {
namespace {

const QString kNombre = QStringLiteral("~temp.wav");

class cTemporalAudioTest : public testing::Test {
protected:
    cTemporalAudioTest() {
        QDir().mkpath(p.Ruta("actual"));
        QDir::setCurrent(p.Ruta("actual"));
    }
    ~cTemporalAudioTest() override { QDir::setCurrent(antes); }
    QStringList Privadas() const {
        return QDir(p.Ruta("estado")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }
    cTemporalAudio Nuevo() { return cTemporalAudio(p.Log(), kNombre, {p.Ruta("estado")}); }
    // Whatever stands under the name keeps standing, and the temporary goes elsewhere.
    void EsperaPrivada() {
        cTemporalAudio t = Nuevo();
        ASSERT_FALSE(t.Prepara(false));
        EXPECT_TRUE(t.Ruta().startsWith(p.Ruta("estado/"))) << t.Ruta().toStdString();
        EXPECT_TRUE(t.Ruta().endsWith("/~temp.wav"));
        EXPECT_EQ(Privadas().size(), 1);
        struct stat datos {};
        ASSERT_EQ(stat(p.Ruta("estado/" + Privadas()[0]).toUtf8().constData(), &datos), 0);
        EXPECT_EQ(datos.st_mode & 0777, 0700u);
        prueba::EscribeDetras(t.Ruta(), "sonido");
        EXPECT_FALSE(t.Nombra(p.Ruta("Lectura.wav")));
        EXPECT_EQ(prueba::LeeFichero(p.Ruta("Lectura.wav")), "sonido");
    }

    prueba::RegistroPropio p;
    QString antes = QDir::currentPath();
};

TEST_F(cTemporalAudioTest, ItIsMadeEmptyInTheCurrentFolderAndNamedByItsBareName) {
    cTemporalAudio t = Nuevo();
    EXPECT_EQ(t.Ruta(), kNombre);
    ASSERT_FALSE(t.Prepara(false));
    EXPECT_EQ(t.Ruta(), kNombre);
    EXPECT_EQ(prueba::LeeFichero(kNombre), "");
    EXPECT_TRUE(Privadas().isEmpty());
}

TEST_F(cTemporalAudioTest, ItServesForATextToo) {
    cTemporalAudio t(p.Log(), "~temp.txt", {p.Ruta("estado")});
    ASSERT_FALSE(t.Prepara(false));
    EXPECT_TRUE(QFile::exists("~temp.txt"));
    EXPECT_TRUE(t.Borra());
    EXPECT_FALSE(QFile::exists("~temp.txt"));
}

TEST_F(cTemporalAudioTest, WhatIsOursStaysAsItIsUntilItIsDeletedOrNamed) {
    cTemporalAudio t = Nuevo();
    ASSERT_FALSE(t.Prepara(false));
    prueba::EscribeDetras(kNombre, "uno");
    ASSERT_FALSE(t.Prepara(false));
    EXPECT_EQ(prueba::LeeFichero(kNombre), "uno");
    t.BorraVacio();
    EXPECT_TRUE(QFile::exists(kNombre));
    EXPECT_TRUE(t.Borra());
    EXPECT_TRUE(t.Borra());
    ASSERT_FALSE(t.Prepara(false));
    EXPECT_EQ(prueba::LeeFichero(kNombre), "");
    t.BorraVacio();
    EXPECT_FALSE(QFile::exists(kNombre));
    EXPECT_EQ(t.Nombra(p.Ruta("x.wav")).numero, 53);
}

TEST_F(cTemporalAudioTest, AHeaderWithoutSamplesIsNoSound) {
    cTemporalAudio t = Nuevo();
    ASSERT_FALSE(t.Prepara(false));
    cFicheroWav wav;
    ASSERT_EQ(wav.Abre(t.Ruta().toStdString(), 11025, cFicheroWav::Modo::Anade), 0);
    EXPECT_GT(QFileInfo(kNombre).size(), 0);
    t.BorraVacio();
    EXPECT_FALSE(QFile::exists(kNombre));

    ASSERT_FALSE(t.Prepara(false));
    ASSERT_EQ(wav.Abre(t.Ruta().toStdString(), 11025, cFicheroWav::Modo::Anade), 0);
    const std::int16_t una = 7;
    ASSERT_EQ(wav.Escribe({&una, 1}), 0);
    t.BorraVacio();
    EXPECT_TRUE(QFile::exists(kNombre));

    ASSERT_EQ(wav.Cierra(), 0);
    ASSERT_TRUE(t.Borra());
    ASSERT_FALSE(t.Prepara(false));
    prueba::EscribeDetras(kNombre, QByteArray(44, 'x'));  // as long as a header, but none
    t.BorraVacio();
    EXPECT_TRUE(QFile::exists(kNombre));
}

TEST_F(cTemporalAudioTest, AForeignFileIsNeitherUsedNorDeleted) {
    prueba::EscribeDetras(kNombre, "ajeno");
    EXPECT_TRUE(Nuevo().Borra());
    EsperaPrivada();
    EXPECT_EQ(prueba::LeeFichero(kNombre), "ajeno");
    EXPECT_TRUE(Privadas().isEmpty());  // the private folder has gone with its owner
}

TEST_F(cTemporalAudioTest, ALinkIsNotFollowed) {
    const QString victima = p.Ruta("victima");
    prueba::EscribeDetras(victima, "ajeno");
    ASSERT_EQ(symlink(victima.toUtf8().constData(), "~temp.wav"), 0);
    EsperaPrivada();
    EXPECT_EQ(prueba::LeeFichero(victima), "ajeno");
    EXPECT_TRUE(QFileInfo(kNombre).isSymLink());
}

TEST_F(cTemporalAudioTest, ALinkThatLeadsNowhereMakesNoFileThere) {
    const QString victima = p.Ruta("victima");
    ASSERT_EQ(symlink(victima.toUtf8().constData(), "~temp.wav"), 0);
    EsperaPrivada();
    EXPECT_FALSE(QFile::exists(victima));
}

TEST_F(cTemporalAudioTest, AFolderOfThatNameIsForeign) {
    ASSERT_TRUE(QDir().mkdir(kNombre));
    EsperaPrivada();
    EXPECT_TRUE(QFileInfo(kNombre).isDir());
}

TEST_F(cTemporalAudioTest, AFifoOfThatNameIsForeignAndNotWaitedFor) {
    ASSERT_EQ(mkfifo("~temp.wav", 0600), 0);
    EsperaPrivada();
    EXPECT_TRUE(QFile::exists(kNombre));
}

TEST_F(cTemporalAudioTest, AFolderThatCantBeWrittenSendsItToAPrivateOne) {
    ASSERT_TRUE(QDir::setCurrent("/proc/self"));
    EsperaPrivada();
}

TEST_F(cTemporalAudioTest, AFolderThatHasGoneSendsItToAPrivateOne) {
    ASSERT_EQ(rmdir(p.Ruta("actual").toUtf8().constData()), 0);
    EsperaPrivada();
}

TEST_F(cTemporalAudioTest, TheFirstPrivateFolderThatCanBeMadeIsTaken) {
    prueba::EscribeDetras(kNombre, "ajeno");
    prueba::EscribeDetras(p.Ruta("fichero"), "");
    cTemporalAudio t(p.Log(), kNombre, {p.Ruta("fichero/dentro"), p.Ruta("estado")});
    ASSERT_FALSE(t.Prepara(false));
    EXPECT_EQ(Privadas().size(), 1);
    cTemporalAudio nada(p.Log(), kNombre, {p.Ruta("fichero/dentro")});
    EXPECT_EQ(nada.Prepara(false).numero, 75);
}

TEST_F(cTemporalAudioTest, OfTwoInOneFolderEachHasItsOwn) {
    cTemporalAudio uno = Nuevo();
    ASSERT_FALSE(uno.Prepara(false));
    prueba::EscribeDetras(uno.Ruta(), "uno");
    for (const bool adopta : {false, true}) {
        cTemporalAudio dos = Nuevo();
        ASSERT_FALSE(dos.Prepara(adopta));
        EXPECT_NE(dos.Ruta(), uno.Ruta());
        EXPECT_TRUE(dos.Borra());
    }
    EXPECT_EQ(prueba::LeeFichero(kNombre), "uno");
}

TEST_F(cTemporalAudioTest, WhatAnotherPutInPlaceOfOursIsNotDeleted) {
    cTemporalAudio t = Nuevo();
    ASSERT_FALSE(t.Prepara(false));
    ASSERT_EQ(unlink("~temp.wav"), 0);
    prueba::EscribeDetras(kNombre, "ajeno");
    EXPECT_EQ(t.Nombra(p.Ruta("x.wav")).numero, 53);
    EXPECT_TRUE(t.Borra());
    EXPECT_EQ(prueba::LeeFichero(kNombre), "ajeno");
}

TEST_F(cTemporalAudioTest, WhatAnEarlierRunLeftIsAddedToButNeverDeleted) {
    {
        cTemporalAudio antes = Nuevo();
        ASSERT_FALSE(antes.Prepara(true));
        prueba::EscribeDetras(antes.Ruta(), "antes ");
    }
    cTemporalAudio t = Nuevo();
    ASSERT_FALSE(t.Prepara(true));
    EXPECT_EQ(t.Ruta(), kNombre);
    EXPECT_TRUE(t.Borra());
    EXPECT_EQ(prueba::LeeFichero(kNombre), "antes ");
    ASSERT_FALSE(t.Prepara(true));
    ASSERT_FALSE(t.Prepara(false));  // to be emptied: another one
    EXPECT_NE(t.Ruta(), kNombre);
    EXPECT_EQ(prueba::LeeFichero(kNombre), "antes ");
}

TEST_F(cTemporalAudioTest, AFileWithASecondNameIsForeignAlsoForAdding) {
    prueba::EscribeDetras(p.Ruta("libro"), "ajeno");
    ASSERT_EQ(link(p.Ruta("libro").toUtf8().constData(), "~temp.wav"), 0);
    cTemporalAudio t = Nuevo();
    ASSERT_FALSE(t.Prepara(true));
    EXPECT_NE(t.Ruta(), kNombre);
}

TEST_F(cTemporalAudioTest, APrivateFolderWithSoundInItStays) {
    prueba::EscribeDetras(kNombre, "ajeno");
    {
        cTemporalAudio t = Nuevo();
        ASSERT_FALSE(t.Prepara(false));
        prueba::EscribeDetras(t.Ruta(), "sonido");
    }
    ASSERT_EQ(Privadas().size(), 1);
    EXPECT_EQ(prueba::LeeFichero(p.Ruta("estado/" + Privadas()[0] + "/~temp.wav")), "sonido");
}

}  // namespace
}  // namespace ondalis
