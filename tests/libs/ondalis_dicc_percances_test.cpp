// The dictionary's file under processes that die in mid-write or write at the same time.
#include <gtest/gtest.h>
#include <signal.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <sstream>
#include <string>

#include "libs/ondalis_dicc.h"

namespace fs = std::filesystem;

namespace {

constexpr int kEntradas = 3000;

// A table that only `sello` tells from others, and its file's text.
void Llena(const std::string &sello) {
    LiberaMemDicc();
    for (int i = 0; i < kEntradas; ++i) AddConversionDicc(("clave" + std::to_string(i)).c_str(), sello.c_str());
}
std::string TextoDe(const std::string &sello) {
    std::string texto = "ondalis-diccionario 1\n";
    for (int i = 0; i < kEntradas; ++i) texto += "clave" + std::to_string(i) + '\t' + sello + '\n';
    return texto;
}

class PercancesDicc : public testing::Test {
protected:
    void SetUp() override {
        std::string plantilla = (fs::temp_directory_path() / "dicc.XXXXXX").string();
        ASSERT_NE(nullptr, mkdtemp(plantilla.data()));
        m_carpeta = plantilla;
        m_ruta = (m_carpeta / "diccionario.dat").string();
    }
    void TearDown() override {
        LiberaMemDicc();
        fs::remove_all(m_carpeta);
    }
    std::string Lee() const {
        std::ifstream entrada(m_ruta, std::ios::binary);
        std::ostringstream todo;
        todo << entrada.rdbuf();
        return todo.str();
    }
    std::size_t Ficheros() const {
        return static_cast<std::size_t>(std::distance(fs::directory_iterator(m_carpeta), fs::directory_iterator()));
    }
    // A process that writes its table again and again, a byte into the pipe after each time.
    pid_t Escritor(const std::string &sello, int tubo, int veces = -1) {
        const pid_t hijo = fork();
        if (hijo != 0) return hijo;
        Llena(sello);
        for (; veces != 0; --veces)
            if (GrabaDicc(m_ruta.c_str()) != 1 || write(tubo, "x", 1) != 1) _exit(1);
        _exit(0);
    }

    fs::path m_carpeta;
    std::string m_ruta;
};

TEST_F(PercancesDicc, AProcessKilledInMidWriteLeavesOneOfTheTwoWholeFilesAndNoRubbish) {
    Llena("vieja");
    ASSERT_EQ(1, GrabaDicc(m_ruta.c_str()));
    std::mt19937 azar(7);
    const std::set<std::string> enteros{TextoDe("vieja"), TextoDe("nueva 0"), TextoDe("nueva 1")};
    int sobras = 0;
    for (int i = 0; i < 50; ++i) {
        int tubo[2];
        ASSERT_EQ(0, pipe(tubo));
        const pid_t hijo = Escritor("nueva " + std::to_string(i % 2), tubo[1]);
        close(tubo[1]);
        char c;
        ASSERT_EQ(1, read(tubo[0], &c, 1));  // it writes
        const auto hasta = std::chrono::steady_clock::now() + std::chrono::microseconds(azar() % 20000);
        while (std::chrono::steady_clock::now() < hasta) continue;  // anywhere in a later writing
        ASSERT_EQ(0, kill(hijo, SIGKILL));
        ASSERT_EQ(hijo, waitpid(hijo, nullptr, 0));
        close(tubo[0]);
        EXPECT_TRUE(enteros.contains(Lee())) << i;
        ASSERT_EQ(1, CargaDicc(m_ruta.c_str())) << i;
        sobras += static_cast<int>(Ficheros()) - 1;
        for (const auto &uno : fs::directory_iterator(m_carpeta))
            if (uno.path() != m_ruta) fs::remove(uno.path());
    }
    // Between naming the new file and putting it in the old one's place a kill may fall.
    EXPECT_LE(sobras, 5);
}

TEST_F(PercancesDicc, OfTwoProcessesThatWriteAtOnceTheLastOneWinsAndNothingIsMixed) {
    const std::set<std::string> enteros{TextoDe("una"), TextoDe("otra")};
    int tubo[2];
    ASSERT_EQ(0, pipe(tubo));
    constexpr int kVeces = 40;
    const pid_t hijos[] = {Escritor("una", tubo[1], kVeces), Escritor("otra", tubo[1], kVeces)};
    close(tubo[1]);
    char c;
    int escrituras = 0;
    while (read(tubo[0], &c, 1) == 1) {
        ++escrituras;
        EXPECT_TRUE(enteros.contains(Lee())) << escrituras;
    }
    close(tubo[0]);
    for (const pid_t hijo : hijos) {
        int estado = 0;
        ASSERT_EQ(hijo, waitpid(hijo, &estado, 0));
        EXPECT_TRUE(WIFEXITED(estado) && WEXITSTATUS(estado) == 0);
    }
    EXPECT_EQ(2 * kVeces, escrituras);
    EXPECT_TRUE(enteros.contains(Lee()));
    EXPECT_EQ(1u, Ficheros());
}

}  // namespace
