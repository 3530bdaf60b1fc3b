#include "worker/orden/Descripcion.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace ondalis {
namespace {

const std::string kBuena =
    "# una\r\n[motor]\nfabricante = Prueba\nprograma = habla\nargumentos = -v {voz} \"dos palabras\"\n\n"
    "[voz ana]\nnombre = Ana ñandú\nlengua = 40A;C0A\ngenero = mujer\nedad = adulto\n";

std::string Fallo(const std::string &texto) {
    const auto lectura = LeeDescripcion(texto);
    EXPECT_NE(lectura.descripcion.has_value(), !lectura.fallo.empty());
    return lectura.fallo;
}
std::string Con(const std::string &linea) { return Fallo("[motor]\n" + linea + kBuena.substr(kBuena.find("fabri"))); }

TEST(Descripcion, AWholeOneIsReadAsItStands) {
    const auto d = LeeDescripcion(kBuena).descripcion;
    ASSERT_TRUE(d);
    EXPECT_EQ(d->fabricante, "Prueba");
    EXPECT_EQ(d->argumentos, (std::vector<std::string>{"-v", "{voz}", "dos palabras"}));
    ASSERT_EQ(d->voces.size(), 1u);
    EXPECT_EQ(d->voces[0], (VozOrden{"ana", "Ana ñandú", "40A;C0A", "mujer", "adulto", "", {}, 0}));
    EXPECT_EQ(LeeDescripcion("\xEF\xBB\xBF" + kBuena).descripcion, d);
}

TEST(Descripcion, TheDescriptionsThatShipAreSound) {
    for (const char *motor : {"flite", "piper"}) {
        std::ifstream f(std::string(ONDALIS_MOTORES_ENVIADOS) + "/" + motor + ".motor");
        const std::string texto((std::istreambuf_iterator<char>(f)), {});
        EXPECT_EQ(Fallo(texto), "") << motor;
    }
}

TEST(Descripcion, UnknownDoubledAndMissingKeysAreRefusedWithTheirLine) {
    EXPECT_EQ(Con("color = azul\n"), "línea 2: clave desconocida: «color»");
    EXPECT_EQ(Con("fabricante = Otra\n"), "línea 3: clave «fabricante» repetida");
    EXPECT_EQ(Fallo("programa = x\n"), "línea 1: clave «programa» fuera de toda sección");
    EXPECT_EQ(Fallo(kBuena + "[voz ana]\n"), "línea 12: sección repetida");
    EXPECT_EQ(Fallo(kBuena + "[otra]\n"), "línea 12: sección desconocida");
    EXPECT_EQ(Fallo(kBuena + "[voz -x]\n"), "línea 12: voz sin un identificador válido");
    EXPECT_EQ(Fallo(kBuena + "[voz"), "línea 12: sección sin cerrar");
    EXPECT_EQ(Fallo(kBuena + "sin igual\n"), "línea 12: no es «clave = valor»");
    EXPECT_EQ(Fallo("[motor]\nprograma = x\n[voz a]\nnombre = A\nlengua = 409\n"), "falta «fabricante»");
    EXPECT_EQ(Fallo("[motor]\nfabricante = x\n[voz a]\nnombre = A\nlengua = 409\n"), "falta «programa»");
    EXPECT_EQ(Fallo("[motor]\nfabricante = x\nprograma = x\n"), "no hay ninguna voz");
    EXPECT_EQ(Fallo(kBuena + "[voz b]\nnombre = B\n"), "a la voz «b» le falta «nombre» o «lengua»");
    EXPECT_EQ(Fallo(""), "falta «fabricante»");
}

TEST(Descripcion, ValuesOutOfRangeAndHalfNumbersAreRefused) {
    for (const char *linea :
         {"hercios = 7999", "hercios = 48001", "hercios = 22050x", "hercios = ", "canales = 3", "ritmo-minimo = nan",
          "ritmo-maximo = 0.5", "plazo-ms = 99999", "plazo-ms = -1", "max-caracteres = 3", "entrada = tubo",
          "ritmo = doble", "ficheros = relativo", "ficheros = /a;;/b", "primera-corta = 1"})
        EXPECT_NE(Con(std::string(linea) + "\n").find("valor no válido"), std::string::npos) << linea;
    EXPECT_NE(Fallo(kBuena + "[voz b]\nlengua = español\n").find("valor no válido"), std::string::npos);
    EXPECT_NE(Fallo(kBuena + "[voz b]\nmodelo = ../b\n").find("valor no válido"), std::string::npos);
    EXPECT_NE(Fallo("[motor]\nprograma = ./x\n").find("valor no válido"), std::string::npos);
    EXPECT_NE(Fallo("[motor]\nargumentos = \"a\n").find("valor no válido"), std::string::npos);
}

TEST(Descripcion, PlaceholdersGoWithTheirKeys) {
    const auto con = [](const std::string &argumentos, const std::string &mas) {
        return Fallo("[motor]\nfabricante = x\nprograma = x\nargumentos = " + argumentos + "\n" + mas +
                     "[voz a]\nnombre = A\nlengua = 409\n");
    };
    EXPECT_EQ(con("{voz}", ""), "");
    EXPECT_EQ(con("{nada}", ""), "«argumentos» contiene un hueco desconocido");
    EXPECT_EQ(con("{ritmo}", "ritmo = factor\n"), "");
    EXPECT_NE(con("{ritmo}", ""), "");
    EXPECT_NE(con("x", "ritmo = factor\n"), "");
    EXPECT_NE(con("{texto}", ""), "");
    EXPECT_EQ(con("{texto}", "entrada = argumento\n"), "");
    EXPECT_NE(con("{salida}", ""), "");
    EXPECT_EQ(con("{salida}", "salida = fichero\n"), "");
    EXPECT_NE(con("{modelo}", ""), "");
    EXPECT_NE(con("x", "formato = crudo\n"), "");
    EXPECT_EQ(con("x", "formato = crudo\nhercios = 22050\n"), "");
    EXPECT_NE(con("{tono}", "tono-centro = 50\ntono-maximo = 20\n"), "");
}

TEST(Descripcion, TimesComeBesideTheSoundAndSegmentsWithTheWordsOwn) {
    const auto con = [](const std::string &mas) {
        return Fallo("[motor]\nfabricante = x\nprograma = x\n" + mas + "[voz a]\nnombre = A\nlengua = 409\n");
    };
    const std::string salida = "salida = fichero\nargumentos = {salida}\n", aparte = "argumentos = {tiempos}\n";
    EXPECT_EQ(con(salida + "tiempos = palabras\n"), "");
    EXPECT_EQ(con(aparte + "tiempos = palabras\n"), "");
    EXPECT_EQ(con(salida + "tiempos = segmentos\nargumentos-palabras = -p\n"), "");
    EXPECT_EQ(con("tiempos = palabras\n"), "«tiempos» necesita «salida = fichero» o el hueco «{tiempos}»");
    EXPECT_EQ(con(aparte), "«{tiempos}» va con «tiempos», y sólo con él");
    EXPECT_NE(con(salida + "tiempos = segmentos\n"), "");
    EXPECT_NE(con(salida + "tiempos = palabras\nargumentos-palabras = -p\n"), "");
    EXPECT_EQ(con(salida + "tiempos = segmentos\nargumentos-palabras = {ritmo}\n"),
              "«argumentos-palabras» contiene un hueco desconocido");
    EXPECT_EQ(con(salida + "tiempos = segmentos\nargumentos-palabras = {texto}\n"),
              "«argumentos-palabras» recibe el texto como «argumentos»");
    EXPECT_NE(con(salida + "tiempos = letras\n").find("valor no válido"), std::string::npos);
}

TEST(Descripcion, NulBadUtf8LongLinesAndHugeFilesAreRefused) {
    EXPECT_EQ(Fallo(std::string("[motor]\nprograma = a\0b\n", 21)), "línea 2: contiene un carácter nulo");
    for (const char *mala : {"\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\x80", "\xE2\x82"})
        EXPECT_EQ(Fallo(std::string("# ") + mala + "\n"), "línea 1: no es UTF-8");
    EXPECT_EQ(Fallo("# \x01\n"), "línea 1: contiene un carácter de control");
    EXPECT_EQ(Fallo("[motor]\nfabricante = " + std::string(2000, 'x')), "línea 2: demasiado larga");
    EXPECT_EQ(Fallo(std::string(kMaxDescripcion + 1, '\n')), "el fichero es demasiado grande");
    std::string muchas = kBuena;
    for (int i = 0; i < 300; i++) muchas += "[voz v" + std::to_string(i) + "]\nnombre = V\nlengua = 9\n";
    EXPECT_NE(Fallo(muchas).find("demasiadas voces"), std::string::npos);
}

TEST(Descripcion, AVoiceOfTheOtherFamilysMakerIsRefused) {
    EXPECT_NE(Fallo("[motor]\nfabricante = IBM\nprograma = x\n[voz a]\nnombre = A\nlengua = 409\n"), "");
}

}  // namespace
}  // namespace ondalis
