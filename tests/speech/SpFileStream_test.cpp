#include "speech/SpFileStream.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cerrno>

#include "fakes/CarpetaPropia.h"
#include "fakes/DiscoLleno.h"
#include "fakes/LectorWav.h"

namespace ondalis::prueba {
namespace {

class SpFileStreamTest : public testing::Test {
protected:
    // Half a second of the engine's samples.
    void Suena(int hercios = 22050) {
        salida.Abre(hercios);
        const std::vector<std::int16_t> m(static_cast<std::size_t>(hercios) / 2, 1000);
        salida.Escribe(m.data(), m.size());
        salida.Completa();
    }
    QString Ruta(const char *nombre) { return QString::fromStdString(carpeta.Ruta(nombre)); }

    CarpetaPropia carpeta;
    cSalidaFichero salida;
    SpFileStream flujo{salida};
};

TEST_F(SpFileStreamTest, TheNinePublishedTypesAreRatesAndAnyOtherIsTheEnginesOwn) {
    EXPECT_EQ(flujo.FormatType(), 0);
    for (const auto &[tipo, hercios] : {std::pair{6, 8000},
                                        {10, 11025},
                                        {14, 12000},
                                        {18, 16000},
                                        {22, 22050},
                                        {26, 24000},
                                        {30, 32000},
                                        {34, 44100},
                                        {38, 48000},
                                        {0, 22050},
                                        {-1, 22050},
                                        {7, 22050},
                                        {1000, 22050}}) {
        flujo.SetFormatType(tipo);
        ASSERT_FALSE(flujo.Open(Ruta("a.wav"), SpFileStream::SSFMCreateForWrite)) << tipo;
        Suena();
        ASSERT_FALSE(flujo.Close()) << tipo;
        const auto wav = LeeWav(carpeta.Lee("a.wav"));
        ASSERT_TRUE(wav) << tipo;
        EXPECT_EQ(wav->hercios, hercios) << tipo;
        EXPECT_NEAR(static_cast<double>(wav->muestras.size()), hercios / 2.0, 1) << tipo;
    }
}

TEST_F(SpFileStreamTest, AnExistingFileIsEmptied) {
    carpeta.Escribe("a.wav", std::string(5000, 'x'));
    ASSERT_FALSE(flujo.Open(Ruta("a.wav"), 3));
    ASSERT_FALSE(flujo.Close());
    EXPECT_EQ(carpeta.Lee("a.wav").size(), 44u);
    EXPECT_FALSE(flujo.Close());  // harmless
}

TEST_F(SpFileStreamTest, AnyOtherModeIsFailure5AndTouchesNothing) {
    carpeta.Escribe("a.wav", "ajeno");
    for (const int modo : {-1, 0, 1, 2, 4}) EXPECT_EQ(flujo.Open(Ruta("a.wav"), modo).numero, 5);
    EXPECT_EQ(carpeta.Lee("a.wav"), "ajeno");
}

TEST_F(SpFileStreamTest, WhatTheDiskSaysIsAFailureOfTheTable) {
    EXPECT_EQ(FalloDeFichero(0).numero, 0);
    for (const int error : {ENOSPC, EDQUOT}) EXPECT_EQ(FalloDeFichero(error).numero, 61);
    for (const int error : {EACCES, EPERM, EROFS}) EXPECT_EQ(FalloDeFichero(error).numero, 70);
    for (const int error : {ENOENT, ENOTDIR}) EXPECT_EQ(FalloDeFichero(error).numero, 76);
    for (const int error : {EISDIR, ELOOP, EFBIG, EINVAL, EIO, ENAMETOOLONG})
        EXPECT_EQ(FalloDeFichero(error).numero, 75);
    carpeta.Escribe("fichero", "");
    EXPECT_EQ(flujo.Open(Ruta("fichero/a.wav"), 3).numero, 76);
    EXPECT_EQ(flujo.Open(Ruta("no/a.wav"), 3).numero, 76);
    EXPECT_EQ(flujo.Open(Ruta(""), 3).numero, 75);
    EXPECT_EQ(flujo.Open(QString(), 3).numero, 76);
    ASSERT_EQ(mkfifo(carpeta.Ruta("tubo").c_str(), 0600), 0);
    EXPECT_EQ(flujo.Open(Ruta("tubo"), 3).numero, 75);
}

TEST_F(SpFileStreamTest, AFailureWhileSpeakingIsToldByClose) {
    ASSERT_FALSE(flujo.Open(Ruta("a.wav"), 3));
    {
        const DiscoLleno lleno(1000);
        Suena();
    }
    EXPECT_EQ(flujo.Close().numero, 75);
    EXPECT_TRUE(LeeWav(carpeta.Lee("a.wav")));
}

TEST_F(SpFileStreamTest, ANameBeyondAsciiIsWrittenAsItStands) {
    const QString ruta = QString::fromStdString(carpeta.Ruta()) + QStringLiteral("año €.wav");
    ASSERT_FALSE(flujo.Open(ruta, 3));
    ASSERT_FALSE(flujo.Close());
    EXPECT_TRUE(std::filesystem::exists(carpeta.Ruta("año €.wav")));
}

}  // namespace
}  // namespace ondalis::prueba
