#include "libs/ondalis_palabras.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace {

//                     1234567890123
const char kTexto[] = "uno dos  tres";

TEST(SigPosPalabra, GivesTheWordThatBeginsAtThePositionItself) {
    EXPECT_EQ(1, SigPosPalabra(1, kTexto));
    EXPECT_EQ(5, SigPosPalabra(5, kTexto));
    EXPECT_EQ(10, SigPosPalabra(10, kTexto));
}

TEST(SigPosPalabra, GivesTheNextWordFromInsideAWordAndFromABlank) {
    EXPECT_EQ(5, SigPosPalabra(2, kTexto));
    EXPECT_EQ(5, SigPosPalabra(4, kTexto));
    EXPECT_EQ(10, SigPosPalabra(6, kTexto));
    EXPECT_EQ(10, SigPosPalabra(9, kTexto));
}

TEST(SigPosPalabra, GivesZeroBehindTheLastWord) {
    EXPECT_EQ(0, SigPosPalabra(11, kTexto));
    EXPECT_EQ(0, SigPosPalabra(13, kTexto));
    EXPECT_EQ(0, SigPosPalabra(5, "uno   "));
}

TEST(SigPosPalabra, GivesZeroBeyondTheEnd) {
    EXPECT_EQ(0, SigPosPalabra(14, kTexto));
    EXPECT_EQ(0, SigPosPalabra(15, kTexto));
    EXPECT_EQ(0, SigPosPalabra(2147483647, kTexto));
}

TEST(SigPosPalabra, TakesAPositionBelowOneAsOne) {
    EXPECT_EQ(1, SigPosPalabra(0, kTexto));
    EXPECT_EQ(1, SigPosPalabra(-2147483647 - 1, kTexto));
    EXPECT_EQ(3, SigPosPalabra(-5, "  x"));
}

TEST(AntPosPalabra, GivesTheWordThatBeginsAtOrBeforeThePosition) {
    EXPECT_EQ(10, AntPosPalabra(13, kTexto));
    EXPECT_EQ(10, AntPosPalabra(10, kTexto));
    EXPECT_EQ(5, AntPosPalabra(9, kTexto));
    EXPECT_EQ(5, AntPosPalabra(6, kTexto));
    EXPECT_EQ(1, AntPosPalabra(4, kTexto));
}

TEST(AntPosPalabra, FromThePlaceJustBeforeAWordGivesTheWordBeforeIt) {
    EXPECT_EQ(5, AntPosPalabra(10 - 1, kTexto));
    EXPECT_EQ(1, AntPosPalabra(5 - 1, kTexto));
}

TEST(AntPosPalabra, GivesOneOrLessAtTheStart) {
    EXPECT_EQ(1, AntPosPalabra(1, kTexto));
    EXPECT_EQ(1, AntPosPalabra(0, kTexto));
    EXPECT_EQ(1, AntPosPalabra(-9, kTexto));
    EXPECT_EQ(0, AntPosPalabra(2, "  x"));
    EXPECT_EQ(0, AntPosPalabra(-9, "  x"));
}

TEST(AntPosPalabra, GivesZeroBeyondTheEnd) {
    EXPECT_EQ(0, AntPosPalabra(14, kTexto));
    EXPECT_EQ(0, AntPosPalabra(2147483647, kTexto));
}

TEST(PosPalabra, AnEmptyTextHasNoWord) {
    EXPECT_EQ(0, SigPosPalabra(1, ""));
    EXPECT_EQ(0, SigPosPalabra(0, ""));
    EXPECT_EQ(0, AntPosPalabra(1, ""));
    EXPECT_EQ(0, AntPosPalabra(-1, ""));
}

TEST(PosPalabra, ATextOfBlanksAloneHasNoWord) {
    for (int posicion = -1; posicion < 8; ++posicion) {
        EXPECT_EQ(0, SigPosPalabra(posicion, " \t\r\n ")) << posicion;
        EXPECT_EQ(0, AntPosPalabra(posicion, " \t\r\n ")) << posicion;
    }
}

TEST(PosPalabra, TabsAndLineEndsPartWordsAsBlanksDo) {
    const char texto[] = "a\tb\nc\r\nd";
    EXPECT_EQ(3, SigPosPalabra(2, texto));
    EXPECT_EQ(5, SigPosPalabra(4, texto));
    EXPECT_EQ(8, SigPosPalabra(6, texto));
    EXPECT_EQ(5, AntPosPalabra(7, texto));
    EXPECT_EQ(3, AntPosPalabra(4, texto));
}

TEST(PosPalabra, SignsAndHighBytesBelongToTheirWord) {
    const char texto[] = "\xBFqu\xE9? \xF1o";
    EXPECT_EQ(1, SigPosPalabra(1, texto));
    EXPECT_EQ(7, SigPosPalabra(2, texto));
    EXPECT_EQ(1, AntPosPalabra(6, texto));
}

// `n` - 1 blanks and a word, so that the word's position is `n`.
std::string PalabraEn(std::size_t n) { return std::string(n - 1, ' ') + "x"; }

TEST(PosPalabra, PositionsAbove32767ComeBackNegative) {
    EXPECT_EQ(32767, SigPosPalabra(1, PalabraEn(32767).c_str()));
    EXPECT_EQ(-32768, SigPosPalabra(1, PalabraEn(32768).c_str()));
    EXPECT_EQ(-32767, SigPosPalabra(32769, PalabraEn(32769).c_str()));
    EXPECT_EQ(-1, SigPosPalabra(1, PalabraEn(65535).c_str()));
    EXPECT_EQ(-32768, AntPosPalabra(32768, PalabraEn(32768).c_str()));
    EXPECT_EQ(-1, AntPosPalabra(65535, PalabraEn(65535).c_str()));
}

TEST(PosPalabra, PositionsWrapToTheirLowSixteenBits) {
    EXPECT_EQ(0, SigPosPalabra(1, PalabraEn(65536).c_str()));
    EXPECT_EQ(1, SigPosPalabra(1, PalabraEn(65537).c_str()));
    EXPECT_EQ(4464, SigPosPalabra(70000, PalabraEn(70000).c_str()));
    EXPECT_EQ(0, AntPosPalabra(65536, PalabraEn(65536).c_str()));
    EXPECT_EQ(4464, AntPosPalabra(70000, PalabraEn(70000).c_str()));
}

TEST(PosPalabra, NothingIsReadOutsideTheText) {
    const auto pagina = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    auto *memoria =
        static_cast<char *>(mmap(nullptr, 3 * pagina, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(MAP_FAILED, static_cast<void *>(memoria));
    ASSERT_EQ(0, mprotect(memoria, pagina, PROT_NONE));
    ASSERT_EQ(0, mprotect(memoria + 2 * pagina, pagina, PROT_NONE));
    // The text fills the middle page to its last byte: a read on either side ends the test program.
    char *texto = memoria + pagina;
    std::memset(texto, 'x', pagina - 1);
    texto[pagina - 1] = '\0';
    for (const int posicion : {-2147483647 - 1, -1, 0, 1, 2, 4000, 4095, 4096, 4097, 65536, 2147483647}) {
        EXPECT_LE(SigPosPalabra(posicion, texto), 1);
        EXPECT_LE(AntPosPalabra(posicion, texto), 1);
    }
    munmap(memoria, 3 * pagina);
}

// The rule said another way: the list of all word starts.
TEST(PosPalabra, AgreeWithTheListOfWordStarts) {
    std::mt19937 azar(7);
    for (int vuelta = 0; vuelta < 3000; ++vuelta) {
        std::string texto;
        for (auto n = azar() % 15; n > 0; --n) texto += "ab \t\n"[azar() % 5];
        std::vector<int> inicios;
        bool blancoAntes = true;
        for (std::size_t i = 0; i < texto.size(); ++i) {
            const bool blanco = std::strchr(" \t\n", texto[i]) != nullptr;
            if (!blanco && blancoAntes) inicios.push_back(static_cast<int>(i) + 1);
            blancoAntes = blanco;
        }
        for (int posicion = -2; posicion <= static_cast<int>(texto.size()) + 2; ++posicion) {
            const int desde = std::max(1, posicion);
            const auto siguiente = std::lower_bound(inicios.begin(), inicios.end(), desde);
            const auto tras = std::upper_bound(inicios.begin(), inicios.end(), desde);
            const bool fuera = desde > static_cast<int>(texto.size());
            ASSERT_EQ(siguiente == inicios.end() ? 0 : *siguiente, SigPosPalabra(posicion, texto.c_str()));
            ASSERT_EQ(fuera || tras == inicios.begin() ? 0 : *(tras - 1), AntPosPalabra(posicion, texto.c_str()));
        }
    }
}

}  // namespace
