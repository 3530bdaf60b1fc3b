#include "text/cIndiceClaves.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace ondalis {
namespace {

std::vector<char> Marcas(const std::vector<QString> &claves, const QString &texto) {
    std::vector<char> marcas(claves.size(), 0);
    cIndiceClaves(claves).Marca(texto, marcas);
    return marcas;
}

TEST(cIndiceClaves, WithoutKeysMarksNothing) {
    EXPECT_TRUE(Marcas({}, QStringLiteral("abc")).empty());
    EXPECT_EQ(0, cIndiceClaves({}).LongitudMaxima());
}

TEST(cIndiceClaves, AnEmptyKeyNeverOccurs) {
    EXPECT_EQ((std::vector<char>{0, 1}), Marcas({QString(), QStringLiteral("a")}, QStringLiteral("a")));
}

TEST(cIndiceClaves, AKeyInsideAnotherIsMarkedWithIt) {
    const std::vector<QString> claves{QStringLiteral("abcd"), QStringLiteral("bc"), QStringLiteral("c"),
                                      QStringLiteral("bcd"), QStringLiteral("e")};
    EXPECT_EQ((std::vector<char>{1, 1, 1, 1, 0}), Marcas(claves, QStringLiteral("abcd")));
    EXPECT_EQ((std::vector<char>{0, 1, 1, 0, 0}), Marcas(claves, QStringLiteral("abc")));
}

TEST(cIndiceClaves, KeepsTheMarksOfEarlierTexts) {
    const std::vector<QString> claves{QStringLiteral("a"), QStringLiteral("b")};
    const cIndiceClaves indice(claves);
    std::vector<char> marcas(2, 0);
    indice.Marca(QStringLiteral("a"), marcas);
    indice.Marca(QStringLiteral("b"), marcas);
    EXPECT_EQ((std::vector<char>{1, 1}), marcas);
}

// Absent keys have no mark, and a key without a mark costs the filter no pass.
TEST(cIndiceClaves, MarksExactlyTheKeysThatOccur) {
    std::mt19937 azar(5);
    for (int vuelta = 0; vuelta < 3000; ++vuelta) {
        const auto palabra = [&](unsigned maximo) {
            QString texto;
            for (auto n = 1 + azar() % maximo; n > 0; --n)
                texto += QStringLiteral("abñ ")[static_cast<qsizetype>(azar() % 4)];
            return texto;
        };
        std::vector<QString> claves;
        for (auto n = azar() % 40; n > 0; --n) {
            const QString clave = palabra(6);
            if (std::find(claves.begin(), claves.end(), clave) == claves.end()) claves.push_back(clave);
        }
        const QString texto = palabra(60);
        const auto marcas = Marcas(claves, texto);
        for (std::size_t i = 0; i < claves.size(); ++i)
            ASSERT_EQ(texto.contains(claves[i]), marcas[i] != 0)
                << claves[i].toStdString() << " in " << texto.toStdString();
    }
}

}  // namespace
}  // namespace ondalis
