// The quick dictionary pass against the plain one, over random tables and texts.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <algorithm>
#include <random>

#include "AlgoritmoLlano.h"
#include "text/cFiltro.h"

namespace ondalis {
namespace {

struct Mundo {
    const char *nombre;
    QString alfabeto;
    unsigned entradas, clave, conversion, texto;  // the most of each
    int vueltas;
};

class FiltroCortado : public testing::Test {
protected:
    void TearDown() override { LiberaMemDicc(); }
    QTemporaryDir m_carpeta;
    cLog m_log{m_carpeta.path() + QStringLiteral("/Ondalis.log")};
    cFiltro m_filtro{m_log};
};

class FiltroAlAzar : public FiltroCortado, public testing::WithParamInterface<Mundo> {};

TEST_P(FiltroAlAzar, GivesWhatReplacingEntryByEntryGives) {
    const Mundo &mundo = GetParam();
    std::mt19937 azar(4711);
    const auto palabra = [&](unsigned minimo, unsigned maximo) {
        QString texto;
        for (auto n = minimo + azar() % (maximo - minimo + 1); n > 0; --n)
            texto += mundo.alfabeto[static_cast<qsizetype>(azar()) % mundo.alfabeto.size()];
        return texto;
    };
    int cambiados = 0, cascadas = 0;
    for (int vuelta = 0; vuelta < mundo.vueltas; ++vuelta) {
        LiberaMemDicc();
        for (auto n = 1 + azar() % mundo.entradas; n > 0; --n)
            AddConversionDicc(palabra(1, mundo.clave).toUtf8().constData(),
                              palabra(0, mundo.conversion).toUtf8().constData());
        const QString texto = palabra(0, mundo.texto);
        QString esperado = texto, dado = texto;
        ConversionesUnaAUna(esperado);
        m_filtro.TrataConversionesDiccionario(dado);
        ASSERT_EQ(esperado, dado) << "round " << vuelta << ", text \"" << texto.toStdString() << '"';
        cambiados += dado != texto;
        QString otraVez = dado;
        m_filtro.TrataConversionesDiccionario(otraVez);
        cascadas += otraVez != dado;
    }
    // The rounds have to be about something.
    EXPECT_GT(cambiados, mundo.vueltas / 4);
    EXPECT_GT(cascadas, mundo.vueltas / 8);
}

INSTANTIATE_TEST_SUITE_P(Mundos, FiltroAlAzar,
                         testing::Values(Mundo{"OneLetterAndBlank", QStringLiteral("a "), 5, 4, 4, 20, 4000},
                                         Mundo{"TwoLetters", QStringLiteral("ab"), 6, 4, 4, 30, 6000},
                                         Mundo{"TwoLettersAndBlank", QStringLiteral("ab "), 8, 5, 4, 40, 8000},
                                         Mundo{"ManyEntries", QStringLiteral("abcd "), 60, 4, 3, 60, 3000},
                                         Mundo{"LongKeys", QStringLiteral("ab "), 10, 14, 12, 300, 2000},
                                         Mundo{"LongTexts", QStringLiteral("abcdefghijkl mnñ"), 12, 4, 4, 2000, 600},
                                         Mundo{"KeysShorterThanConversions", QStringLiteral("abc "), 5, 2, 9, 20, 4000},
                                         Mundo{"Spanish", QStringLiteral("aeñá¿ \n"), 20, 3, 4, 60, 3000}),
                         [](const auto &caso) { return std::string(caso.param.nombre); });

// Keys are parts of conversions and of their borders, so that nearly every entry lives on what an earlier one made.
TEST_F(FiltroCortado, GivesTheSameWhenKeysAreCutFromConversions) {
    std::mt19937 azar(99);
    for (int vuelta = 0; vuelta < 5000; ++vuelta) {
        LiberaMemDicc();
        QString texto;
        for (int i = 0; i < 12; ++i) texto += QStringLiteral("abc ")[static_cast<qsizetype>(azar() % 4)];
        QString vivo = texto;
        for (int entrada = 0; entrada < 8; ++entrada) {
            const qsizetype desde = static_cast<qsizetype>(azar()) % vivo.size();
            const QString clave = vivo.mid(desde, 1 + static_cast<qsizetype>(azar() % 4));
            QString conversion;
            for (auto n = azar() % 4; n > 0; --n)
                conversion += QStringLiteral("abcd")[static_cast<qsizetype>(azar() % 4)];
            AddConversionDicc(clave.toUtf8().constData(), conversion.toUtf8().constData());
            vivo.replace(clave, QLatin1Char(' ') + conversion);
        }
        QString esperado = texto, dado = texto;
        ConversionesUnaAUna(esperado);
        m_filtro.TrataConversionesDiccionario(dado);
        ASSERT_EQ(esperado, dado) << "round " << vuelta << ", text \"" << texto.toStdString() << '"';
    }
}

}  // namespace
}  // namespace ondalis
