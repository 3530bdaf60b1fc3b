// Tables of marked texts, one a line, and the spans that come of each. The dialect is the file name's beginning.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "Volcado.h"
#include "engine/Dialectos.h"

namespace ondalis {
namespace {

std::string LeeFichero(const std::filesystem::path &ruta) {
    std::ifstream entrada(ruta, std::ios::binary);
    std::ostringstream todo;
    todo << entrada.rdbuf();
    return todo.str();
}

std::string Resultado(const std::string &dialecto, const std::string &linea) {
    const std::u16string texto = De8(linea);
    if (dialecto == "barra") return Vuelca(AnalizaBarra(texto));
    if (dialecto == "comilla") return Vuelca(AnalizaComilla(texto));
    const auto tramos = AnalizaXml(texto);
    return tramos ? Vuelca(*tramos) : "(refused)\n";
}

class Tablas : public testing::TestWithParam<std::string> {};

TEST_P(Tablas, GiveTheSpansThatAreExpected) {
    const std::filesystem::path base = std::filesystem::path(ONDALIS_CASOS) / GetParam();
    std::istringstream entrada(LeeFichero(base.string() + ".in"));
    std::string salida, linea;
    int casos = 0;
    for (; std::getline(entrada, linea); ++casos)
        salida += "> " + linea + '\n' + Resultado(GetParam().substr(0, GetParam().find('_')), linea);
    ASSERT_GT(casos, 0) << "no case in " << base << ".in";
    if (ActualizaTablas()) std::ofstream(base.string() + ".expected", std::ios::binary) << salida;
    EXPECT_EQ(LeeFichero(base.string() + ".expected"), salida);
}

std::vector<std::string> TodasLasTablas() {
    std::vector<std::string> nombres;
    for (const auto &entrada : std::filesystem::directory_iterator(ONDALIS_CASOS))
        if (entrada.path().extension() == ".in") nombres.push_back(entrada.path().stem().string());
    std::sort(nombres.begin(), nombres.end());
    return nombres;
}

INSTANTIATE_TEST_SUITE_P(Dialectos, Tablas, testing::ValuesIn(TodasLasTablas()),
                         [](const auto &caso) { return caso.param; });

}  // namespace
}  // namespace ondalis
