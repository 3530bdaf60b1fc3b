#include "settings/cRegistro.h"

#include <gtest/gtest.h>

#include "fakes/RegistroPropio.h"
#include "settings/Catalogo.h"

namespace ondalis {
namespace {

using prueba::RegistroPropio;
const QString kUsuario = QStringLiteral("CU");
const QString kSistema = QStringLiteral("LM");

TEST(cRegistro, AKeyOfASectionThatDoesNotExistGivesTheDefaultAndCreatesNothing) {
    RegistroPropio p;
    EXPECT_EQ(p.Lee("Voz", "Velocidad", 170), "170");
    EXPECT_FALSE(QFile::exists(p.FicheroUsuario()));
    EXPECT_FALSE(QDir(p.Ruta("usuario")).exists());
}

TEST(cRegistro, TheEmptyTextStoredIsToldFromAnAbsentValue) {
    RegistroPropio p;
    ASSERT_TRUE(p.Salva("Grabar", "NombreFichero", QString()));
    EXPECT_EQ(p.Lee("Grabar", "NombreFichero", "defecto"), "");
    EXPECT_EQ(p.Lee("Grabar", "Otro", "defecto"), "defecto");
}

TEST(cRegistro, WithoutADefaultAMissingValueIsTheEmptyText) {
    RegistroPropio p;
    EXPECT_EQ(p.Lee("Voz", "VozActiva"), "");
}

TEST(cRegistro, EmbeddedNulsAreLostOnReading) {
    RegistroPropio p;
    ASSERT_TRUE(p.Salva("Voz", "VozActiva", QString::fromUtf8("Car\0los\0", 8)));
    EXPECT_EQ(p.Lee("Voz", "VozActiva"), "Carlos");
}

}  // namespace
}  // namespace ondalis
