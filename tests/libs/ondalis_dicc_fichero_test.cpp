#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "libs/ondalis_dicc.h"

namespace {

namespace fs = std::filesystem;
using Pares = std::vector<std::pair<std::string, std::string>>;

const std::string kCabecera = "ondalis-diccionario 1\n";

Pares Todas() {
    Pares pares;
    char clave[ONDALIS_DICC_TAM] = {}, conversion[ONDALIS_DICC_TAM] = {};
    for (PrimeraPosicionDicc(); GetPosicionDicc(clave, conversion) == 1; SigPosicionDicc())
        pares.emplace_back(clave, conversion);
    return pares;
}

class FicheroDicc : public testing::Test {
protected:
    void SetUp() override {
        std::string plantilla = (fs::temp_directory_path() / "dicc.XXXXXX").string();
        ASSERT_NE(nullptr, mkdtemp(plantilla.data()));
        m_carpeta = plantilla;
        m_ruta = (m_carpeta / "diccionario.dat").string();
        LiberaMemDicc();
    }
    void TearDown() override {
        LiberaMemDicc();
        fs::remove_all(m_carpeta);
    }

    void Escribe(const std::string &contenido) { std::ofstream(m_ruta, std::ios::binary) << contenido; }
    std::string Lee(const std::string &ruta) {
        std::ifstream entrada(ruta, std::ios::binary);
        std::ostringstream todo;
        todo << entrada.rdbuf();
        return todo.str();
    }
    std::set<std::string> Nombres() {
        std::set<std::string> nombres;
        for (const auto &entrada : fs::directory_iterator(m_carpeta)) nombres.insert(entrada.path().filename());
        return nombres;
    }

    fs::path m_carpeta;
    std::string m_ruta;
};

TEST_F(FicheroDicc, WhatIsWrittenComesBackTheSame) {
    const Pares pares{
        {"a", "1"},           {"\t", "\n"},    {"b\\t", "\\"},  {" c ", ""},
        {"\xC3\xB1", "\r\n"}, {"#x", ".roto"}, {"\\\\n", "\r"}, {std::string(1023, '\\'), std::string(1023, '\t')}};
    for (const auto &[clave, conversion] : pares) AddConversionDicc(clave.c_str(), conversion.c_str());
    ASSERT_EQ(1, GrabaDicc(m_ruta.c_str()));
    EXPECT_EQ(pares, Todas()) << "the table must stay usable";
    LiberaMemDicc();
    ASSERT_EQ(1, CargaDicc(m_ruta.c_str()));
    EXPECT_EQ(pares, Todas());
    EXPECT_EQ((std::set<std::string>{"diccionario.dat"}), Nombres());
}

TEST_F(FicheroDicc, IsTextWithOneEntryALine) {
    AddConversionDicc("D\xC3\xB1",
                      "do\xC3\xB1"
                      "a");
    AddConversionDicc("a\tb", "c\\");
    ASSERT_EQ(1, GrabaDicc(m_ruta.c_str()));
    EXPECT_EQ(kCabecera +
                  "D\xC3\xB1\tdo\xC3\xB1"
                  "a\na\\tb\tc\\\\\n",
              Lee(m_ruta));
}

TEST_F(FicheroDicc, AnEmptyTableWritesAFileWithNoEntriesThatLoads) {
    ASSERT_EQ(1, GrabaDicc(m_ruta.c_str()));
    EXPECT_EQ(kCabecera, Lee(m_ruta));
    AddConversionDicc("a", "1");
    EXPECT_EQ(1, CargaDicc(m_ruta.c_str()));
    EXPECT_TRUE(Todas().empty());
}

TEST_F(FicheroDicc, LoadingReplacesTheTable) {
    Escribe(kCabecera + "a\t1\n");
    AddConversionDicc("b", "2");
    ASSERT_EQ(1, CargaDicc(m_ruta.c_str()));
    EXPECT_EQ((Pares{{"a", "1"}}), Todas());
}

TEST_F(FicheroDicc, AMissingFileLeavesAnEmptyTable) {
    AddConversionDicc("b", "2");
    EXPECT_EQ(0, CargaDicc(m_ruta.c_str()));
    EXPECT_TRUE(Todas().empty());
    EXPECT_TRUE(Nombres().empty());
}

TEST_F(FicheroDicc, AFolderAPipeAndADanglingLinkCountAsMissing) {
    ASSERT_TRUE(fs::create_directory(m_ruta));
    EXPECT_EQ(0, CargaDicc(m_ruta.c_str()));
    fs::remove(m_ruta);
    ASSERT_EQ(0, mkfifo(m_ruta.c_str(), 0600));
    EXPECT_EQ(0, CargaDicc(m_ruta.c_str()));
    fs::remove(m_ruta);
    fs::create_symlink("nowhere", m_ruta);
    EXPECT_EQ(0, CargaDicc(m_ruta.c_str()));
    EXPECT_EQ((std::set<std::string>{"diccionario.dat"}), Nombres());
}

TEST_F(FicheroDicc, ADamagedFileIsKeptAsideAndTheTableIsEmpty) {
    const std::string largo(ONDALIS_DICC_TAM, 'x');
    const std::vector<std::string> danados = {"",
                                              "otra cosa\n",
                                              "ondalis-diccionario 2\na\t1\n",
                                              kCabecera + "a\t1",
                                              kCabecera + "sin separador\n",
                                              kCabecera + "a\t1\n\tsin clave\n",
                                              kCabecera + "a\\x\t1\n",
                                              kCabecera + "a\t1\\\n",
                                              kCabecera + "a\tb\tc\\q\n",
                                              kCabecera + "\xE1\t1\n",
                                              kCabecera + std::string("a\0b\t1\n", 6),
                                              kCabecera + largo + "\t1\n",
                                              kCabecera + "a\t" + largo + "\n"};
    for (const std::string &contenido : danados) {
        Escribe(contenido);
        AddConversionDicc("b", "2");
        EXPECT_EQ(-1, CargaDicc(m_ruta.c_str())) << contenido;
        EXPECT_TRUE(Todas().empty());
        EXPECT_EQ((std::set<std::string>{"diccionario.dat.roto"}), Nombres());
        EXPECT_EQ(contenido, Lee(m_ruta + ".roto"));
        fs::remove(m_ruta + ".roto");
    }
}

TEST_F(FicheroDicc, AFileCutAnywhereInsideALineIsDamaged) {
    const std::string entero = kCabecera + "alfa\tbeta\ngamma\tdelta\n";
    for (std::size_t n = 0; n < entero.size(); ++n) {
        if (n > 0 && entero[n - 1] == '\n') continue;
        Escribe(entero.substr(0, n));
        EXPECT_EQ(-1, CargaDicc(m_ruta.c_str())) << n;
        fs::remove(m_ruta + ".roto");
    }
}

TEST_F(FicheroDicc, ASecondDamagedFileDoesNotReplaceTheFirst) {
    for (const char *contenido : {"uno", "dos", "tres"}) {
        Escribe(contenido);
        EXPECT_EQ(-1, CargaDicc(m_ruta.c_str()));
    }
    EXPECT_EQ("uno", Lee(m_ruta + ".roto"));
    EXPECT_EQ("dos", Lee(m_ruta + ".roto.1"));
    EXPECT_EQ("tres", Lee(m_ruta + ".roto.2"));
}

TEST_F(FicheroDicc, WhatAnEditorLeavesBehindIsTolerated) {
    Escribe("\xEF\xBB\xBFondalis-diccionario 1\r\n\r\na\t1\r\n\nb\t2\na\t3\n");
    ASSERT_EQ(1, CargaDicc(m_ruta.c_str()));
    EXPECT_EQ((Pares{{"a", "3"}, {"b", "2"}}), Todas());
}

TEST_F(FicheroDicc, TheFilesPermissionsAndALinkToItAreKept) {
    const std::string real = (m_carpeta / "real.dat").string();
    std::ofstream(real) << kCabecera;
    ASSERT_EQ(0, chmod(real.c_str(), 0640));
    fs::create_symlink("real.dat", m_ruta);
    AddConversionDicc("a", "1");
    ASSERT_EQ(1, GrabaDicc(m_ruta.c_str()));
    EXPECT_TRUE(fs::is_symlink(m_ruta));
    EXPECT_EQ(kCabecera + "a\t1\n", Lee(real));
    struct stat datos {};
    ASSERT_EQ(0, stat(real.c_str(), &datos));
    EXPECT_EQ(0640u, datos.st_mode & 07777u);
}

TEST_F(FicheroDicc, AFileThatMayNotBeReadIsMovedAsideAndNotReplaced) {
    Escribe(kCabecera + "a\t1\n");
    ASSERT_EQ(0, chmod(m_ruta.c_str(), 0));
    ASSERT_EQ(0, chmod(m_carpeta.c_str(), 0777));
    const pid_t hijo = fork();
    if (hijo == 0) {  // root may read everything
        if (getuid() == 0 && setuid(65534) != 0) _exit(2);
        if (CargaDicc(m_ruta.c_str()) != 0) _exit(3);
        AddConversionDicc("b", "2");
        _exit(GrabaDicc(m_ruta.c_str()) == 1 ? 0 : 4);
    }
    int estado = 0;
    ASSERT_EQ(hijo, waitpid(hijo, &estado, 0));
    ASSERT_TRUE(WIFEXITED(estado));
    EXPECT_EQ(0, WEXITSTATUS(estado));
    EXPECT_EQ((std::set<std::string>{"diccionario.dat", "diccionario.dat.roto"}), Nombres());
    ASSERT_EQ(0, chmod((m_ruta + ".roto").c_str(), 0600));
    EXPECT_EQ(kCabecera + "a\t1\n", Lee(m_ruta + ".roto"));
    EXPECT_EQ(kCabecera + "b\t2\n", Lee(m_ruta));
}

TEST_F(FicheroDicc, AFolderThatCanNotHoldFilesFailsTheWriting) {
    std::ofstream(m_carpeta / "file") << "x";
    AddConversionDicc("a", "1");
    EXPECT_EQ(0, GrabaDicc((m_carpeta / "file" / "diccionario.dat").c_str()));
    EXPECT_EQ(0, GrabaDicc((m_carpeta / "missing" / "diccionario.dat").c_str()));
    EXPECT_EQ((Pares{{"a", "1"}}), Todas());
    EXPECT_EQ("x", Lee(m_carpeta / "file"));
}

// A folder under the file's name: the new file is complete, and only the last step fails.
TEST_F(FicheroDicc, ARenameThatFailsLeavesNothingBehind) {
    ASSERT_TRUE(fs::create_directory(m_ruta));
    AddConversionDicc("a", "1");
    EXPECT_EQ(0, GrabaDicc(m_ruta.c_str()));
    EXPECT_EQ((std::set<std::string>{"diccionario.dat"}), Nombres());
}

TEST_F(FicheroDicc, AWriteCutShortLeavesTheOldFileIntact) {
    Escribe(kCabecera + "vieja\t1\n");
    for (int i = 0; i < 100; ++i)
        AddConversionDicc(("clave" + std::to_string(i)).c_str(), std::string(500, 'x').c_str());
    rlimit antes{};
    ASSERT_EQ(0, getrlimit(RLIMIT_FSIZE, &antes));
    rlimit corto = antes;
    corto.rlim_cur = 8192;
    const auto senal = signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &corto));
    const int16_t resultado = GrabaDicc(m_ruta.c_str());
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &antes));
    signal(SIGXFSZ, senal);
    EXPECT_EQ(0, resultado);
    EXPECT_EQ(kCabecera + "vieja\t1\n", Lee(m_ruta));
    EXPECT_EQ((std::set<std::string>{"diccionario.dat"}), Nombres());
    EXPECT_EQ(100u, Todas().size());
}

TEST_F(FicheroDicc, AFullFileSystemLeavesTheOldFileIntact) {
    const std::string disco = (m_carpeta / "disco").string();
    ASSERT_TRUE(fs::create_directory(disco));
    if (mount("tmpfs", disco.c_str(), "tmpfs", 0, "size=64k") != 0)
        GTEST_SKIP() << "no small file system can be mounted here: " << std::strerror(errno);
    m_ruta = disco + "/diccionario.dat";
    AddConversionDicc("vieja", "1");
    const int16_t primera = GrabaDicc(m_ruta.c_str());
    for (int i = 0; i < 200; ++i)
        AddConversionDicc(("clave" + std::to_string(i)).c_str(), std::string(1000, 'x').c_str());
    const int16_t segunda = GrabaDicc(m_ruta.c_str());
    const std::string contenido = Lee(m_ruta);
    std::size_t ficheros = 0;
    for ([[maybe_unused]] const auto &entrada : fs::directory_iterator(disco)) ++ficheros;
    EXPECT_EQ(0, umount(disco.c_str()));
    EXPECT_EQ(1, primera);
    EXPECT_EQ(0, segunda);
    EXPECT_EQ(kCabecera + "vieja\t1\n", contenido);
    EXPECT_EQ(1u, ficheros);
}

}  // namespace
