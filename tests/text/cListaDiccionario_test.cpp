#include "text/cListaDiccionario.h"

#include <gtest/gtest.h>

#include <QStringList>

#include "settings/Fallo.h"

namespace ondalis {
namespace {

QStringList Claves(const cListaDiccionario &lista) {
    QStringList claves;
    for (int i = 0; i < lista.Cuantas(); ++i) claves << lista[i].clave;
    return claves;
}

// Loads texts, each with its own place as conversion.
void Carga(cListaDiccionario &lista, const QStringList &claves) {
    int i = 0;
    lista.Carga([&](QString &clave, QString &conversion) {
        if (i == claves.size()) return false;
        clave = claves[i];
        conversion = QString::number(i++);
        return true;
    });
}

int NumeroDeFallo(const std::function<void()> &cuerpo) {
    try {
        cuerpo();
    } catch (const ErrorFallo &error) {
        return error.fallo.numero;
    }
    return 0;
}

TEST(cListaDiccionario, IsSortedByTheLanguageBlindToCase) {
    cListaDiccionario lista;
    Carga(lista, {"zeta", "oso", "Ñu", "nube", "árbol", "Ave", "10"});
    EXPECT_EQ(Claves(lista), (QStringList{"10", "árbol", "Ave", "nube", "Ñu", "oso", "zeta"}));
}

TEST(cListaDiccionario, TextsThatDifferOnlyByCaseAreTwoRowsInTheOrderTheyCame) {
    cListaDiccionario lista;
    Carga(lista, {"gato", "GATO", "Gato", "a"});
    EXPECT_EQ(Claves(lista), (QStringList{"a", "gato", "GATO", "Gato"}));
    EXPECT_EQ(lista.Anade("gAto", "x"), 4);
    EXPECT_EQ(lista.Busca(".Gato"), 3);
    EXPECT_EQ(lista.Busca(".GATO"), 2);
}

TEST(cListaDiccionario, TextsThatDifferOnlyByAnAccentAreTwoRows) {
    cListaDiccionario lista;
    Carga(lista, {"sí", "si"});
    EXPECT_EQ(lista.Cuantas(), 2);
    EXPECT_NE(lista.Busca(".sí"), lista.Busca(".si"));
    EXPECT_EQ(lista[lista.Busca(".si")].conversion, "1");
}

TEST(cListaDiccionario, TheRowKeyIsTheTextBehindAFullStop) {
    cListaDiccionario lista;
    Carga(lista, {".", "..", "a"});
    EXPECT_EQ(lista.Busca("a"), -1);
    EXPECT_EQ(lista[lista.Busca("..")].clave, ".");
    EXPECT_EQ(lista[lista.Busca("...")].clave, "..");
    EXPECT_EQ(cListaDiccionario::ClaveFila("a"), ".a");
}

TEST(cListaDiccionario, ATextThatComesTwiceEndsTheLoadingAndTheRowsBeforeItStay) {
    cListaDiccionario lista;
    EXPECT_EQ(NumeroDeFallo([&] { Carga(lista, {"c", "a", "c", "b"}); }), Fallo::ClaveYaAsociada);
    EXPECT_EQ(Claves(lista), (QStringList{"c", "a"})) << "the sorting hasn't been switched on yet";
    EXPECT_EQ(lista.Busca(".a"), 1);
    Carga(lista, {"z"});
    EXPECT_EQ(NumeroDeFallo([&] { Carga(lista, {"c", "a", "c", "b"}); }), Fallo::ClaveYaAsociada);
    EXPECT_EQ(Claves(lista), (QStringList{"a", "c"})) << "it was on from before";
}

TEST(cListaDiccionario, AddingATextThatIsThereChangesNothing) {
    cListaDiccionario lista;
    Carga(lista, {"a", "b"});
    EXPECT_EQ(NumeroDeFallo([&] { lista.Anade("a", "otra"); }), Fallo::ClaveYaAsociada);
    EXPECT_EQ(lista.Cuantas(), 2);
    EXPECT_EQ(lista[0].conversion, "0");
}

TEST(cListaDiccionario, RowsAreFoundWhateverHasBeenAddedAndRemoved) {
    cListaDiccionario lista;
    Carga(lista, {});
    for (int i = 0; i < 300; ++i) lista.Anade(QString::number(i * 7919 % 300), QString::number(i));
    for (int i = 0; i < 300; i += 3) lista.Quita(lista.Busca("." + QString::number(i)));
    EXPECT_EQ(lista.Cuantas(), 200);
    for (int i = 0; i < 300; ++i) {
        const int fila = lista.Busca("." + QString::number(i));
        if (i % 3 == 0) {
            EXPECT_EQ(fila, -1) << i;
        } else {
            ASSERT_GE(fila, 0) << i;
            EXPECT_EQ(lista[fila].clave, QString::number(i));
        }
    }
    lista.Anade("0", "vuelve");
    EXPECT_EQ(lista[lista.Busca(".0")].conversion, "vuelve");
}

TEST(cListaDiccionario, NulsAndHalvesOfCharactersDoNotEnter) {
    EXPECT_EQ(cListaDiccionario::Normaliza(QString::fromUtf8("a\0b\0", 4)), "ab");
    const QString partido = QStringLiteral("a") + QChar(0xD83D);
    const QString normal = cListaDiccionario::Normaliza(partido);
    EXPECT_EQ(QString::fromUtf8(normal.toUtf8()), normal);
    EXPECT_EQ(cListaDiccionario::Normaliza("ñ 😀 \t"), "ñ 😀 \t");
}

}  // namespace
}  // namespace ondalis
