#include "desktop/cSinBandeja.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "fakes/TemporizadorFalso.h"

namespace ondalis {
namespace {

class cSinBandejaTest : public testing::Test {
protected:
    QTemporaryDir carpeta;
    cLog log{carpeta.filePath("Ondalis.log")};
    prueba::TemporizadorFalso espera;
    bool hay = false;
    bool visible = false;
    QStringList dichos;
    cSinBandeja sinBandeja{
        espera,
        log,
        {[this] { return hay; }, [this](bool v) { visible = v; }, [this](const QString &texto) { dichos << texto; }}};
    bool EnElLog() {
        QFile fichero(log.Fichero());
        return fichero.open(QIODevice::ReadOnly) && fichero.readAll().contains("cSinBandeja: ");
    }
};

TEST_F(cSinBandejaTest, WithAPlaceForTheIconNothingIsShownOrSaid) {
    hay = true;
    sinBandeja.Revisa();
    EXPECT_FALSE(espera.Enabled());
    EXPECT_FALSE(visible);
}

TEST_F(cSinBandejaTest, WithoutOneTheWindowComesAfterAWhileAndIsSaidAndLogged) {
    sinBandeja.Revisa();
    EXPECT_FALSE(visible);
    ASSERT_TRUE(espera.Enabled());
    EXPECT_EQ(espera.intervalo, cSinBandeja::kEsperaMs);
    espera.Vence();
    EXPECT_TRUE(visible);
    EXPECT_EQ(dichos.size(), 1);
    EXPECT_TRUE(EnElLog());
    EXPECT_FALSE(espera.Enabled());
}

TEST_F(cSinBandejaTest, APlaceThatComesInTimeSparesTheWindow) {
    sinBandeja.Revisa();
    hay = true;
    sinBandeja.Revisa();
    EXPECT_FALSE(espera.Enabled());
    EXPECT_FALSE(visible);
}

TEST_F(cSinBandejaTest, ThePlaceIsLookedForOnceMoreBeforeTheWindowComes) {
    sinBandeja.Revisa();
    hay = true;
    espera.Vence();
    EXPECT_FALSE(visible);
    EXPECT_TRUE(dichos.isEmpty());
}

TEST_F(cSinBandejaTest, TheWindowGoesWhenAPlaceComesAndComesBackWhenItGoes) {
    sinBandeja.Revisa();
    espera.Vence();
    hay = true;
    sinBandeja.Revisa();
    EXPECT_FALSE(visible);
    hay = false;
    sinBandeja.Revisa();
    EXPECT_FALSE(visible);
    espera.Vence();
    EXPECT_TRUE(visible);
}

TEST_F(cSinBandejaTest, FurtherNewsOfNoPlaceNeitherStretchTheWaitNorSayItTwice) {
    sinBandeja.Revisa();
    const auto encendidos = espera.encendidos;
    sinBandeja.Revisa();
    EXPECT_EQ(espera.encendidos, encendidos);
    espera.Vence();
    sinBandeja.Revisa();
    EXPECT_FALSE(espera.Enabled());
    EXPECT_EQ(dichos.size(), 1);
}

}  // namespace
}  // namespace ondalis
