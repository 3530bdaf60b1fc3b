#include "engine/cFicheroWav.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include "fakes/CarpetaPropia.h"
#include "fakes/DiscoLleno.h"
#include "fakes/LectorWav.h"

namespace ondalis {
namespace {

using prueba::LeeWav;
using Modo = cFicheroWav::Modo;
using Muestras = std::vector<std::int16_t>;

std::string Bytes(std::uint64_t valor, int cuantos) {
    std::string salida;
    for (int i = 0; i < cuantos; ++i) salida += static_cast<char>(valor >> (8 * i));
    return salida;
}
std::string Trozo(const std::string &nombre, const std::string &datos) {
    return nombre + Bytes(datos.size(), 4) + datos + std::string(datos.size() % 2, '\0');
}
std::string Formato(int etiqueta, int canales, int hercios, int bits) {
    const int ancho = canales * bits / 8;
    return Bytes(static_cast<unsigned>(etiqueta), 2) + Bytes(static_cast<unsigned>(canales), 2) +
           Bytes(static_cast<unsigned>(hercios), 4) + Bytes(static_cast<unsigned>(hercios * ancho), 4) +
           Bytes(static_cast<unsigned>(ancho), 2) + Bytes(static_cast<unsigned>(bits), 2);
}
std::string Extensible(const std::string &subformato) {
    return Formato(0xFFFE, 1, 11025, 16) + Bytes(22, 2) + Bytes(16, 2) + Bytes(4, 4) + subformato;
}
const std::string kGuidPcm = std::string("\x01\0\0\0\0\0\x10\0\x80\0\0\xAA\0\x38\x9B\x71", 16);
std::string Riff(const std::string &trozos) { return "RIFF" + Bytes(4 + trozos.size(), 4) + "WAVE" + trozos; }
const std::string kDosMuestras = std::string("\x01\0\x02\0", 4);

class FicheroWav : public testing::Test {
protected:
    std::optional<prueba::Wav> Leido() { return LeeWav(carpeta.Lee("a.wav")); }
    int Anade(const std::string &contenido, const Muestras &muestras = {7}) {
        carpeta.Escribe("a.wav", contenido);
        cFicheroWav fichero;
        if (const int error = fichero.Abre(ruta, 11025, Modo::Anade)) return error;
        if (const int error = fichero.Escribe(muestras)) return error;
        return fichero.Cierra();
    }
    prueba::CarpetaPropia carpeta;
    const std::string ruta = carpeta.Ruta("a.wav");
};

TEST_F(FicheroWav, AFileWithoutSamplesIsAWholeHeader) {
    cFicheroWav fichero;
    ASSERT_EQ(0, fichero.Abre(ruta, 48000, Modo::Crea));
    ASSERT_EQ(0, fichero.Cierra());
    EXPECT_EQ(44u, carpeta.Lee("a.wav").size());
    ASSERT_TRUE(Leido());
    EXPECT_EQ(48000, Leido()->hercios);
    EXPECT_TRUE(Leido()->muestras.empty());
}

TEST_F(FicheroWav, WhatIsWrittenIsReadBack) {
    const Muestras muestras{0, 1, -1, 32767, -32768, 258};
    cFicheroWav fichero;
    ASSERT_EQ(0, fichero.Abre(ruta, 8000, Modo::Crea));
    ASSERT_EQ(0, fichero.Escribe(muestras));
    ASSERT_EQ(0, fichero.Cierra());
    EXPECT_EQ(0, fichero.Cierra());  // harmless
    ASSERT_TRUE(Leido());
    EXPECT_EQ(muestras, Leido()->muestras);
}

TEST_F(FicheroWav, TheHeaderOnTheDiskIsTrueAfterEachWrite) {
    cFicheroWav fichero;
    ASSERT_EQ(0, fichero.Abre(ruta, 8000, Modo::Crea));
    Muestras todas;
    for (const std::size_t n : {1u, 2u, 8192u, 100'000u}) {
        todas.insert(todas.end(), n, static_cast<std::int16_t>(n));
        ASSERT_EQ(0, fichero.Escribe(Muestras(n, static_cast<std::int16_t>(n))));
        ASSERT_TRUE(Leido());
        EXPECT_EQ(todas, Leido()->muestras);
        EXPECT_EQ(todas.size(), fichero.Muestras());
    }
}

// Samples of 5, a hundred at a time, until a kill behind the fiftieth time.
void EscribeHastaLaMuerte(const std::string &ruta, int hercios, Modo modo) {
    int avisa[2];
    ASSERT_EQ(0, pipe(avisa));
    const pid_t hijo = fork();
    if (hijo == 0) {
        cFicheroWav fichero;
        if (fichero.Abre(ruta, hercios, modo) != 0) _exit(1);
        for (int i = 0; i < 1'000'000; ++i) {
            if (fichero.Escribe(Muestras(100, 5)) != 0) _exit(1);
            if (i == 50 && write(avisa[1], "x", 1) != 1) _exit(1);
        }
        _exit(0);
    }
    char x = 0;
    ASSERT_EQ(1, read(avisa[0], &x, 1));
    kill(hijo, SIGKILL);
    int estado = 0;
    ASSERT_EQ(hijo, waitpid(hijo, &estado, 0));
    ASSERT_TRUE(WIFSIGNALED(estado));
    close(avisa[0]);
    close(avisa[1]);
}

TEST_F(FicheroWav, AKilledWriterLeavesAPlayableFile) {
    const std::string ajeno = Riff(Trozo("LIST", std::string(3000, 'i')) + Trozo("fmt ", Formato(1, 1, 11025, 16)) +
                                   Trozo("data", Bytes(5, 2)));
    for (int vez = 0; vez < 40; vez++) {
        const bool anade = vez % 2 != 0;
        if (anade) carpeta.Escribe("a.wav", ajeno);
        ASSERT_NO_FATAL_FAILURE(EscribeHastaLaMuerte(ruta, 11025, anade ? Modo::Anade : Modo::Crea));
        const auto wav = LeeWav(carpeta.Lee("a.wav"), true);
        ASSERT_TRUE(wav) << vez;
        EXPECT_GE(wav->muestras.size(), 5100u);
        EXPECT_EQ(wav->muestras, Muestras(wav->muestras.size(), 5));
    }
}

TEST_F(FicheroWav, CreatingEmptiesAnExistingFile) {
    carpeta.Escribe("a.wav", std::string(1000, 'x'));
    cFicheroWav fichero;
    ASSERT_EQ(0, fichero.Abre(ruta, 8000, Modo::Crea));
    EXPECT_EQ(44u, carpeta.Lee("a.wav").size());
}

TEST_F(FicheroWav, AddingToNothingOrToAnEmptyFileCreatesIt) {
    cFicheroWav fichero;
    ASSERT_EQ(0, fichero.Abre(ruta, 11025, Modo::Anade));
    ASSERT_EQ(0, fichero.Escribe(Muestras{3}));
    ASSERT_EQ(0, fichero.Cierra());
    EXPECT_EQ(Muestras{3}, Leido()->muestras);
    EXPECT_EQ(0, Anade(""));
    EXPECT_EQ(Muestras{7}, Leido()->muestras);
}

TEST_F(FicheroWav, SamplesAreAddedBehindThoseThatAreThere) {
    EXPECT_EQ(0, Anade(Riff(Trozo("fmt ", Formato(1, 1, 11025, 16)) + Trozo("data", kDosMuestras)), {7, 8}));
    ASSERT_TRUE(Leido());
    EXPECT_EQ((Muestras{1, 2, 7, 8}), Leido()->muestras);
}

TEST_F(FicheroWav, ChunksBeforeTheSamplesStay) {
    const std::string antes =
        Trozo("LIST", "INFOodd") + Trozo("fmt ", Formato(1, 1, 11025, 16) + Bytes(0, 2)) + Trozo("fact", Bytes(2, 4));
    EXPECT_EQ(0, Anade(Riff(antes + Trozo("data", kDosMuestras))));
    ASSERT_TRUE(Leido());
    EXPECT_EQ((Muestras{1, 2, 7}), Leido()->muestras);
    EXPECT_EQ(antes, carpeta.Lee("a.wav").substr(12, antes.size()));
}

TEST_F(FicheroWav, AnExtensibleHeaderOfThisFormIsAddedTo) {
    EXPECT_EQ(0, Anade(Riff(Trozo("fmt ", Extensible(kGuidPcm)) + Trozo("data", kDosMuestras))));
    ASSERT_TRUE(Leido());
    EXPECT_EQ((Muestras{1, 2, 7}), Leido()->muestras);
}

TEST_F(FicheroWav, HalfASampleAndLengthsThatPromiseMoreAreMended) {
    const std::string formato = Trozo("fmt ", Formato(1, 1, 11025, 16));
    EXPECT_EQ(0, Anade(Riff(formato + "data" + Bytes(5, 4) + kDosMuestras + "x")));  // half a sample
    ASSERT_TRUE(Leido());
    EXPECT_EQ((Muestras{1, 2, 7}), Leido()->muestras);
    EXPECT_EQ(0,
              Anade("RIFF" + Bytes(0xFFFFFFFF, 4) + "WAVE" + formato + "data" + Bytes(0xFFFFFFFF, 4) + kDosMuestras));
    ASSERT_TRUE(Leido());
    EXPECT_EQ((Muestras{1, 2, 7}), Leido()->muestras);
    EXPECT_EQ(0, Anade("RIFF" + Bytes(0, 4) + "WAVE" + formato + "data" + Bytes(0, 4) + kDosMuestras));
    ASSERT_TRUE(Leido());
    EXPECT_EQ((Muestras{1, 2, 7}), Leido()->muestras);
    // A copy that was cut.
    EXPECT_EQ(0, Anade("RIFF" + Bytes(40'000, 4) + "WAVE" + formato + "data" + Bytes(39'964, 4) + kDosMuestras));
    ASSERT_TRUE(Leido());
    EXPECT_EQ((Muestras{1, 2, 7}), Leido()->muestras);
    // Samples whose writer didn't live to tell of them.
    EXPECT_EQ(0, Anade(Riff(formato + Trozo("data", kDosMuestras)) + std::string(100, 'z')));
    ASSERT_TRUE(Leido());
    EXPECT_EQ((Muestras{1, 2, 7}), Leido()->muestras);
}

TEST_F(FicheroWav, AWrongFormIsRefusedAndLeftAsItIs) {
    const std::string datos = Trozo("data", kDosMuestras);
    std::string otroGuid = kGuidPcm;
    otroGuid[0] = 3;
    for (const std::string &contenido :
         {std::string("x"), std::string("RIFF"), std::string(200, '\0'), Riff(""), Riff(datos),
          Riff(Trozo("fmt ", Formato(1, 1, 11025, 16))), Riff(Trozo("fmt ", "short") + datos),
          Riff(Trozo("fmt ", Formato(1, 2, 11025, 16)) + datos), Riff(Trozo("fmt ", Formato(1, 1, 11025, 8)) + datos),
          Riff(Trozo("fmt ", Formato(1, 1, 22050, 16)) + datos), Riff(Trozo("fmt ", Formato(3, 1, 11025, 16)) + datos),
          Riff(Trozo("fmt ", Extensible(otroGuid)) + datos), Riff(Trozo("fmt ", Formato(0xFFFE, 1, 11025, 16)) + datos),
          "RIFX" + Riff(Trozo("fmt ", Formato(1, 1, 11025, 16)) + datos).substr(4),
          Riff("fmt " + Bytes(0xFFFFFFF0, 4) + Formato(1, 1, 11025, 16)),
          Riff(Trozo("fmt ", Formato(1, 1, 11025, 16)) + datos + Trozo("LIST", "INFO"))}) {
        EXPECT_EQ(EINVAL, Anade(contenido));
        EXPECT_EQ(contenido, carpeta.Lee("a.wav"));
    }
}

TEST_F(FicheroWav, WithoutARateAddingTakesThatOfTheFile) {
    carpeta.Escribe("a.wav", Riff(Trozo("fmt ", Formato(1, 1, 32000, 16)) + Trozo("data", kDosMuestras)));
    cFicheroWav fichero;
    ASSERT_EQ(0, fichero.Abre(ruta, 0, Modo::Anade));
    EXPECT_EQ(32000, fichero.Hercios());
    EXPECT_EQ(EINVAL, fichero.ReponHercios(8000));
}

TEST_F(FicheroWav, TheRateOfAFileWithoutSamplesCanBeReplaced) {
    cFicheroWav fichero;
    ASSERT_EQ(0, fichero.Abre(ruta, 0, Modo::Crea));
    ASSERT_EQ(0, fichero.ReponHercios(16000));
    ASSERT_EQ(0, fichero.Escribe(Muestras{1}));
    EXPECT_EQ(EINVAL, fichero.ReponHercios(8000));
    ASSERT_EQ(0, fichero.Cierra());
    EXPECT_EQ(16000, Leido()->hercios);
}

TEST_F(FicheroWav, AnAddedFileThatIsFullIsEFBIGAndOneThatFillsUpKeepsATrueHeader) {
    const std::uint64_t lleno = 0xFFFFFFFE - 36;
    carpeta.Escribe("a.wav", "RIFF" + Bytes(lleno + 36, 4) + "WAVE" + Trozo("fmt ", Formato(1, 1, 11025, 16)) + "data" +
                                 Bytes(lleno, 4));
    if (truncate(ruta.c_str(), static_cast<off_t>(lleno + 44)) != 0) GTEST_SKIP() << "no sparse file of 4 GiB here";
    cFicheroWav fichero;
    EXPECT_EQ(EFBIG, fichero.Abre(ruta, 11025, Modo::Anade));
    ASSERT_EQ(0, truncate(ruta.c_str(), static_cast<off_t>(lleno + 44 - 6)));
    ASSERT_EQ(0, fichero.Abre(ruta, 11025, Modo::Anade));
    EXPECT_EQ(EFBIG, fichero.Escribe(Muestras(10, 1)));
    EXPECT_EQ(lleno / 2, fichero.Muestras());
    ASSERT_EQ(0, fichero.Cierra());
    std::ifstream entrada(ruta, std::ios::binary);
    std::string cabecera(44, '\0');
    entrada.read(cabecera.data(), 44);
    EXPECT_EQ(lleno + 36, prueba::Entero(cabecera, 4, 4));
    EXPECT_EQ(lleno, prueba::Entero(cabecera, 40, 4));
}

TEST_F(FicheroWav, AFullDiskIsToldAndWhatWasWrittenStays) {
    const std::string monte = carpeta.Ruta("monte");
    ASSERT_EQ(0, mkdir(monte.c_str(), 0700));
    if (mount("prueba", monte.c_str(), "tmpfs", 0, "size=64k") != 0) GTEST_SKIP() << "no file system can be mounted";
    cFicheroWav fichero;
    const std::string dentro = monte + "/a.wav";
    int error = fichero.Abre(dentro, 8000, Modo::Crea);
    for (int i = 0; i < 1000 && error == 0; ++i) error = fichero.Escribe(Muestras(1001, 9));
    EXPECT_EQ(ENOSPC, error);
    EXPECT_EQ(0, fichero.Cierra());
    const auto wav = LeeWav(carpeta.Lee("monte/a.wav"));
    // A new file that gets no room at all leaves nothing behind.
    cFicheroWav otro;
    EXPECT_EQ(ENOSPC, otro.Abre(monte + "/b.wav", 8000, Modo::Crea));
    EXPECT_NE(0, access((monte + "/b.wav").c_str(), F_OK));
    umount(monte.c_str());
    ASSERT_TRUE(wav);
    EXPECT_GT(wav->muestras.size(), 20'000u);
}

// The kernel's own limit stands in where nothing can be mounted; it cuts in mid-sample.
TEST_F(FicheroWav, AWriteThatIsCutKeepsWholeSamplesAndATrueHeader) {
    cFicheroWav fichero;
    ASSERT_EQ(0, fichero.Abre(ruta, 8000, Modo::Crea));
    {
        const prueba::DiscoLleno tope(44 + 7);
        EXPECT_EQ(EFBIG, fichero.Escribe(Muestras(10, 4)));
        EXPECT_EQ(3u, fichero.Muestras());
        ASSERT_EQ(0, fichero.Cierra());
        ASSERT_TRUE(Leido());
        EXPECT_EQ(Muestras(3, 4), Leido()->muestras);
    }
    const prueba::DiscoLleno lleno;
    EXPECT_EQ(EFBIG, fichero.Abre(carpeta.Ruta("b.wav"), 8000, Modo::Crea));
    EXPECT_NE(0, access(carpeta.Ruta("b.wav").c_str(), F_OK));
}

TEST_F(FicheroWav, NoLinkIsFollowed) {
    carpeta.Escribe("b.wav", "ajeno");
    ASSERT_EQ(0, symlink("b.wav", ruta.c_str()));
    cFicheroWav fichero;
    for (const Modo modo : {Modo::Crea, Modo::Anade}) EXPECT_EQ(ELOOP, fichero.Abre(ruta, 8000, modo));
    EXPECT_EQ("ajeno", carpeta.Lee("b.wav"));
    ASSERT_EQ(0, symlink("nada", carpeta.Ruta("c.wav").c_str()));
    EXPECT_EQ(ELOOP, fichero.Abre(carpeta.Ruta("c.wav"), 8000, Modo::Crea));
    EXPECT_NE(0, access(carpeta.Ruta("nada").c_str(), F_OK));
}

TEST_F(FicheroWav, AFolderAFifoAndAMissingFolderAreRefusedWithoutWaiting) {
    cFicheroWav fichero;
    for (const Modo modo : {Modo::Crea, Modo::Anade}) {
        EXPECT_EQ(EISDIR, fichero.Abre(carpeta.Ruta(), 8000, modo));
        EXPECT_EQ(ENOENT, fichero.Abre(carpeta.Ruta("no/a.wav"), 8000, modo));
        EXPECT_EQ(ENOENT, fichero.Abre("", 8000, modo));
        EXPECT_EQ(EINVAL, fichero.Abre("/dev/full", 8000, modo));
        EXPECT_FALSE(fichero.Abierto());
    }
    ASSERT_EQ(0, mkfifo(ruta.c_str(), 0600));
    for (const Modo modo : {Modo::Crea, Modo::Anade}) EXPECT_EQ(EINVAL, fichero.Abre(ruta, 8000, modo));
    EXPECT_EQ(EBADF, fichero.Escribe(Muestras{1}));
}

}  // namespace
}  // namespace ondalis
