#include "reader/cOpcEditoresTexto.h"

#include <gtest/gtest.h>

#include "fakes/RegistroPropio.h"

namespace ondalis {
namespace {

class cOpcEditoresTextoTest : public testing::Test {
protected:
    prueba::RegistroPropio p;
};

TEST_F(cOpcEditoresTextoTest, FirstUseFollowsEachWordAndMarksIt) {
    const cOpcEditoresTexto pagina(p.Registro(), p.Log());
    EXPECT_TRUE(pagina.LocPalabrasEnWord());
    EXPECT_FALSE(pagina.LocParadaEnWord());
    EXPECT_TRUE(pagina.MarcaEnWord());
    EXPECT_EQ(pagina.SaltoWord(), 0);
    EXPECT_EQ(pagina.Tag("SliderSalto"), "6");
}

TEST_F(cOpcEditoresTextoTest, TheTagHoldsTheSlidersPositionAndTheStoreTheWords) {
    cOpcEditoresTexto pagina(p.Registro(), p.Log());
    pagina.SetSaltoWord(-3);
    pagina.SetLocPalabrasEnWord(false);
    pagina.SetLocParadaEnWord(true);
    pagina.SetMarcaEnWord(false);
    EXPECT_EQ(pagina.Tag("SliderSalto"), "3");
    pagina.GuardaValores();
    EXPECT_EQ(p.Lee("Editores", "SaltoWord"), "-3");
    const cOpcEditoresTexto otra(p.Registro(), p.Log());
    EXPECT_EQ(otra.SaltoWord(), -3);
    EXPECT_FALSE(otra.LocPalabrasEnWord());
    EXPECT_TRUE(otra.LocParadaEnWord());
    EXPECT_FALSE(otra.MarcaEnWord());
}

TEST_F(cOpcEditoresTextoTest, AStoredJumpBeyondTheSliderIsTheDefault) {
    for (const char *salto : {"6", "-6", "muchas"}) {
        p.Salva("Editores", "SaltoWord", salto);
        EXPECT_EQ(cOpcEditoresTexto(p.Registro(), p.Log()).SaltoWord(), 0) << salto;
    }
    p.Salva("Editores", "SaltoWord", "-5");
    EXPECT_EQ(cOpcEditoresTexto(p.Registro(), p.Log()).SaltoWord(), -5);
}

}  // namespace
}  // namespace ondalis
