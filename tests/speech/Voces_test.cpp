#include "speech/Voces.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QRegularExpression>
#include <QSet>
#include <map>

#include "ControlDePrueba.h"
#include "fakes/TokensFalsos.h"
#include "settings/cGeneral.h"

namespace ondalis::prueba {
namespace {

using testing::ElementsAre;

class cVocesTest : public testing::Test {
protected:
    void ConSAPI5() {
        voces.ChequeaSAPI5Compatible([] { return true; });
    }
    std::vector<std::string> Nombres() const {
        std::vector<std::string> nombres;
        for (const RegistroVoz &fila : voces.Filas())
            if (fila.Fabricante != QLatin1String("IBM")) nombres.push_back(fila.NombreVoz.toStdString());
        return nombres;
    }

    Banco banco;
    cVoces voces{banco.registro.Log()};
    TokensFalsos tokens{TokensFalsos::Tres()};
};

// The thirty voices

TEST(HablantesIBM, AreThirtyInTheirOrder) {
    std::vector<std::string> nombres;
    for (const HablanteIBM &hablante : HablantesIBM()) nombres.emplace_back(hablante.nombre);
    EXPECT_THAT(nombres, ElementsAre("Reed", "Shelley", "Sandy", "Grandma", "Grandpa", "Justin", "Jane", "Nicky",
                                     "Nanny", "Gramps", "Carlos", "Pilar", "Pepe", "Abuela", "Abuelo", "Jacques",
                                     "Jacqueline", "Marius", "Mamie", "Grandpère", "Max", "Gisela", "Matti", "Oma",
                                     "Opa", "Enrico", "Lucia", "Chicco", "Nonna", "Nonno"));
}

TEST(HablantesIBM, HaveFivePresetsInEachOfSixLanguages) {
    const std::map<std::int32_t, std::string> idiomas{{1033, "gmw/en-US"}, {2057, "gmw/en"}, {1034, "roa/es"},
                                                      {1036, "roa/fr"},    {1031, "gmw/de"}, {1040, "roa/it"}};
    const std::vector<std::int32_t> orden{1033, 2057, 1034, 1036, 1031, 1040};
    for (std::size_t i = 0; i < HablantesIBM().size(); ++i) {
        const HablanteIBM &hablante = HablantesIBM()[i];
        EXPECT_EQ(hablante.lengua, orden[i / 5]) << hablante.nombre;
        EXPECT_EQ(hablante.idioma, idiomas.at(hablante.lengua)) << hablante.nombre;
    }
}

TEST(HablantesIBM, IdentifiersAreDifferentUpperCaseGuidsWithoutBraces) {
    const QRegularExpression guid(QStringLiteral("^[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}$"));
    QSet<QString> vistos;
    for (const HablanteIBM &hablante : HablantesIBM()) {
        EXPECT_TRUE(guid.match(QLatin1String(hablante.idModo)).hasMatch()) << hablante.nombre;
        vistos.insert(QLatin1String(hablante.idModo));
    }
    EXPECT_EQ(vistos.size(), 30);
}

TEST(HablantesIBM, DefaultsFitTheEngineAndTellThePresetsApart) {
    const auto &todos = HablantesIBM();
    for (const HablanteIBM &hablante : todos) {
        EXPECT_TRUE(hablante.tono >= 40 && hablante.tono <= 422) << hablante.nombre;
        for (const int valor : {+hablante.fluctuacion, +hablante.aspereza, +hablante.diafonia, +hablante.tamCabeza})
            EXPECT_TRUE(valor >= 0 && valor <= 100) << hablante.nombre;
    }
    for (std::size_t i = 0; i < todos.size(); i += 5) {
        const HablanteIBM &hombre = todos[i], &mujer = todos[i + 1], &crio = todos[i + 2];
        const HablanteIBM &abuela = todos[i + 3], &abuelo = todos[i + 4];
        EXPECT_LT(hombre.tono, mujer.tono - 50) << hombre.nombre;
        EXPECT_LT(mujer.tono, crio.tono - 50) << mujer.nombre;
        EXPECT_GT(mujer.tamCabeza, crio.tamCabeza) << crio.nombre;
        EXPECT_GT(abuela.aspereza, mujer.aspereza) << abuela.nombre;
        EXPECT_GT(abuelo.aspereza, hombre.aspereza) << abuelo.nombre;
        EXPECT_GT(abuela.diafonia, mujer.diafonia) << abuela.nombre;
        EXPECT_LT(abuelo.fluctuacion, hombre.fluctuacion) << abuelo.nombre;
    }
}

TEST(HablantesIBM, NoTwoOfThemSoundAlike) {
    QSet<QString> vistos;
    for (const HablanteIBM &hablante : HablantesIBM())
        vistos.insert(QStringLiteral("%1 %2 %3 %4 %5 %6")
                          .arg(QLatin1String(hablante.idioma))
                          .arg(hablante.tono)
                          .arg(hablante.fluctuacion)
                          .arg(hablante.aspereza)
                          .arg(hablante.diafonia)
                          .arg(hablante.tamCabeza));
    EXPECT_EQ(vistos.size(), 30);
}

TEST(HablantesIBM, AModeIsFoundWithOrWithoutBracesAndBlindToCase) {
    for (const HablanteIBM &hablante : HablantesIBM()) {
        const QString id = QLatin1String(hablante.idModo);
        EXPECT_STREQ(HablanteDeModo(id).nombre, hablante.nombre);
        EXPECT_STREQ(HablanteDeModo(QLatin1Char('{') + id.toLower() + QLatin1Char('}')).nombre, hablante.nombre);
    }
    EXPECT_STREQ(HablanteDeModo(QString()).nombre, "Carlos");
    EXPECT_STREQ(HablanteDeModo(QStringLiteral("{nada}")).nombre, "Carlos");
}

// The catalogue

TEST_F(cVocesTest, BeforeItIsFilledOneEmptyRowStands) {
    ASSERT_EQ(voces.Filas().size(), 1u);
    EXPECT_EQ(voces.Filas().front().Fabricante, QString());
    EXPECT_FALSE(voces.SAPI5Compatible());
}

TEST_F(cVocesTest, IbmVoicesComeFirstThenTheTokensInTheirOrder) {
    ConSAPI5();
    int bombeos = 0;
    voces.RecogeVocesEquipo(&tokens, false, [&bombeos] { ++bombeos; });
    ASSERT_EQ(voces.Filas().size(), 33u);
    EXPECT_EQ(bombeos, 33);
    const RegistroVoz &carlos = voces.Filas()[10];
    EXPECT_EQ(carlos.Fabricante, QStringLiteral("IBM"));
    EXPECT_EQ(carlos.NombreVoz, QStringLiteral("Carlos"));
    EXPECT_EQ(carlos.NumeroSAPI5, -1);
    EXPECT_EQ(carlos.Lengua, 1034);
    EXPECT_EQ(carlos.IdModo, QLatin1String(HablantesIBM()[10].idModo));
    EXPECT_EQ(voces.Filas()[19].NombreVoz, QStringLiteral("Grandpère"));
    const RegistroVoz &kal = voces.Filas()[32];
    EXPECT_EQ(kal.Fabricante, QStringLiteral("Flite"));
    EXPECT_EQ(kal.NombreVoz, QStringLiteral("kal"));
    EXPECT_EQ(kal.IdModo, QString());
    EXPECT_EQ(kal.NumeroSAPI5, 2);
    EXPECT_EQ(kal.TonoDefecto, 0);
}

TEST_F(cVocesTest, ABrokenSAPI5IsLoggedAndKeepsItsVoicesOut) {
    voces.ChequeaSAPI5Compatible([] { return false; });
    EXPECT_FALSE(voces.SAPI5Compatible());
    ASSERT_EQ(banco.registro.LineasLog().size(), 1);
    EXPECT_TRUE(banco.registro.LineasLog().front().contains(
        QStringLiteral("ChequeaSAPI5Compatible:  [SAPI5.1 no está correctamente instalado.]")));
    voces.RecogeVocesEquipo(&tokens, false, {});
    EXPECT_TRUE(Nombres().empty());
    EXPECT_EQ(voces.Filas().size(), 30u);
}

TEST_F(cVocesTest, WithoutATestOrAListThereAreNoTokens) {
    voces.ChequeaSAPI5Compatible({});
    EXPECT_FALSE(voces.SAPI5Compatible());
    ConSAPI5();
    voces.RecogeVocesEquipo(nullptr, false, {});
    EXPECT_EQ(voces.Filas().size(), 30u);
}

TEST_F(cVocesTest, NoSapi5InAnyLetterCaseKeepsTheTokensOutAlthoughSAPI5Works) {
    ConSAPI5();
    for (const char *linea : {"-nosapi5", "-NOSAPI5", "-NoSapi5 -debug"}) {
        voces.RecogeVocesEquipo(&tokens, cGeneral::GetParam(QLatin1String(linea), QStringLiteral("nosapi5")), {});
        EXPECT_TRUE(Nombres().empty()) << linea;
    }
    voces.RecogeVocesEquipo(&tokens, cGeneral::GetParam(QStringLiteral("-debug"), QStringLiteral("nosapi5")), {});
    EXPECT_THAT(Nombres(), ElementsAre("Spanish", "English", "kal"));
}

TEST_F(cVocesTest, ALanguageWithSeveralValuesYieldsTheFirst) {
    ConSAPI5();
    const std::vector<std::pair<const char *, std::int32_t>> casos{
        {"409;9", 1033}, {"40A;C0A", 1034}, {"c0a", 3082}, {"0409", 1033}, {" 411", 1041},
        {"", 0},         {"xyz", 0},        {";409", 0},   {"40G", 64},    {"12345678901234567890", 0x12345678}};
    std::vector<TokenVoz> lista;
    for (const auto &[atributo, lengua] : casos) lista.push_back(TokensFalsos::Token("F", atributo, atributo));
    const TokensFalsos varios(lista);
    voces.RecogeVocesEquipo(&varios, false, {});
    for (std::size_t i = 0; i < casos.size(); ++i)
        EXPECT_EQ(voces.Filas()[30 + i].Lengua, casos[i].second) << casos[i].first;
}

TEST_F(cVocesTest, AMissingMakerOrNameIsUnknown) {
    ConSAPI5();
    const TokensFalsos uno({TokensFalsos::Token("", "", "")});
    voces.RecogeVocesEquipo(&uno, false, {});
    EXPECT_EQ(voces.Filas().back().Fabricante, QStringLiteral("DESCONOCIDO"));
    EXPECT_EQ(voces.Filas().back().NombreVoz, QStringLiteral("DESCONOCIDO"));
    EXPECT_EQ(voces.Filas().back().Lengua, 0);
}

TEST_F(cVocesTest, TwoVoicesOfOneVendorStandUnderOneMakerInTheirOrder) {
    ConSAPI5();
    voces.RecogeVocesEquipo(&tokens, false, {});
    EXPECT_EQ(voces.Filas()[30].Fabricante, voces.Filas()[31].Fabricante);
    EXPECT_EQ(voces.Filas()[30].NumeroSAPI5, 0);
    EXPECT_EQ(voces.Filas()[31].NumeroSAPI5, 1);
}

TEST_F(cVocesTest, ATokenOfTheVendorIBMJoinsThatMakerAndIsDrivenWithoutAMode) {
    ConSAPI5();
    const TokensFalsos uno({TokensFalsos::Token("IBM", "Intrusa", "409")});
    voces.RecogeVocesEquipo(&uno, false, {});
    const RegistroVoz *fila = voces.Busca(QStringLiteral("IBM"), QStringLiteral("Intrusa"));
    ASSERT_NE(fila, nullptr);
    EXPECT_EQ(fila->IdModo, QString());
    EXPECT_EQ(fila->NumeroSAPI5, 0);
    ActorSvr voz(banco.canal, banco.cola, banco.estado, banco.registro.Log());
    voces.LeeValoresVoces(voz);
    EXPECT_EQ(fila->TonoDefecto, HablanteDeModo(QString()).tono);
}

TEST_F(cVocesTest, TheFiveDefaultsAreReadFromTheControlForIbmRowsOnly) {
    ConSAPI5();
    voces.RecogeVocesEquipo(&tokens, false, {});
    ActorSvr voz(banco.canal, banco.cola, banco.estado, banco.registro.Log());
    voces.LeeValoresVoces(voz);
    for (std::size_t i = 0; i < 30; ++i) {
        const HablanteIBM &hablante = HablantesIBM()[i];
        const RegistroVoz &fila = voces.Filas()[i];
        EXPECT_EQ(fila.TonoDefecto, hablante.tono);
        EXPECT_EQ(fila.FluctuacionDefecto, hablante.fluctuacion);
        EXPECT_EQ(fila.AsperezaDefecto, hablante.aspereza);
        EXPECT_EQ(fila.DiafoniaDefecto, hablante.diafonia);
        EXPECT_EQ(fila.TamCabezaDefecto, hablante.tamCabeza);
    }
    EXPECT_EQ(voces.Filas()[30].TonoDefecto, 0);
    EXPECT_EQ(voz.Tono(), HablantesIBM().back().tono);  // it stands on its last mode
}

TEST_F(cVocesTest, WithNothingFoundOneEmptyRowStandsAndNoMakerIsFound) {
    const std::vector<HablanteIBM> ninguno;
    cVoces vacio(banco.registro.Log(), ninguno);
    vacio.RecogeVocesEquipo(nullptr, false, {});
    ASSERT_EQ(vacio.Filas().size(), 1u);
    EXPECT_EQ(vacio.Busca(QStringLiteral("IBM"), QStringLiteral("Carlos")), nullptr);
    EXPECT_EQ(vacio.BuscaNombre(QStringLiteral("Carlos")), nullptr);
}

}  // namespace
}  // namespace ondalis::prueba
