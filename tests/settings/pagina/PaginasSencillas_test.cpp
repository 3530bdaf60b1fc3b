// The two pages without logic of their own: "General" and "Tipo lectura".
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QLabel>

#include "fakes/EstadoDiseno.h"
#include "fakes/RegistroPropio.h"
#include "settings/pagina/Rotulos.h"
#include "settings/pagina/cCajaNumero.h"
#include "settings/pagina/cEnlace.h"
#include "settings/ucOpcGeneral.h"
#include "settings/ucOpcTipoLectura.h"

namespace ondalis::prueba {
namespace {

class PaginasSencillasTest : public testing::Test {
protected:
    RegistroPropio r;
    int abiertas = 0;
    cOpcGeneral opcGeneral{r.Registro(), r.Log()};
    cOpcTipoLectura opcTipoLectura{r.Registro(), r.Log()};
    ucOpcGeneral general{opcGeneral, [this] { ++abiertas; }};
    ucOpcTipoLectura tipo{opcTipoLectura,
                          {.editoresTexto = [this] { ++abiertas; }, .teclasLeeTeclado = [this] { ++abiertas; }}};

    static QCheckBox *Casilla(QWidget &pagina, const char *nombre) {
        return pagina.findChild<QCheckBox *>(QLatin1String(nombre));
    }
    static QWidget *De(QWidget &pagina, const char *nombre) {
        return pagina.findChild<QWidget *>(QLatin1String(nombre));
    }
};

// Where a picture of `uno` and one of `otro` differ.
QRect Diferencia(QWidget &uno, QWidget &otro) {
    const QImage esta = uno.grab().toImage(), aquella = otro.grab().toImage();
    EXPECT_EQ(esta.size(), aquella.size());
    QRect donde;
    for (int y = 0; y < esta.height(); ++y)
        for (int x = 0; x < esta.width(); ++x)
            if (esta.pixel(x, y) != aquella.pixel(x, y)) donde |= QRect(x, y, 1, 1);
    return donde;
}

TEST(EnlaceTest, ALetterOfALinkHasALineOfItsOwnBelowTheLinks) {
    cEnlace llano("Llano", QStringLiteral("Una ventana")), marcado("Marcado", QStringLiteral("Una &ventana")),
        vecino("Vecino", QStringLiteral("Una ventana"));
    vecino.SubrayaTambien(4);
    for (cEnlace *uno : {&llano, &marcado, &vecino}) uno->resize(llano.sizeHint());
    EXPECT_EQ(marcado.sizeHint(), llano.sizeHint());
    EXPECT_EQ(marcado.accessibleName(), "Una ventana");
    const QRect linea = Diferencia(marcado, llano);
    EXPECT_EQ(Diferencia(vecino, llano), linea);
    ASSERT_FALSE(linea.isEmpty());
    const QFontMetrics letra = marcado.fontMetrics();
    const int izquierda = (llano.width() - letra.horizontalAdvance(llano.text())) / 2;
    EXPECT_NEAR(linea.left(), izquierda + letra.horizontalAdvance(QStringLiteral("Una ")), 1);
    EXPECT_NEAR(linea.width(), letra.horizontalAdvance(QLatin1Char('v')), 1);
    EXPECT_GT(linea.top(), (llano.height() - letra.height()) / 2 + letra.ascent());
    EXPECT_LT(linea.bottom(), llano.height());
}

TEST_F(PaginasSencillasTest, TheDesignStateEqualsTheTable) {
    CompruebaDiseno(general, opcGeneral);
    CompruebaDiseno(tipo, opcTipoLectura);
}

TEST_F(PaginasSencillasTest, TheCaptionsAreTheGivenOnes) {
    EXPECT_EQ(SinMarca(Casilla(general, "CheckInicio")->text()), "Arrancar Ondalis al inicio de Windows");
    EXPECT_EQ(SinMarca(Casilla(general, "CheckSignosPunt")->text()), "Pronunciar signos de puntuación");
    EXPECT_EQ(SinMarca(general.findChild<cEnlace *>("LinkSonidos")->text()), "Utilizar sonidos de aviso");
    EXPECT_EQ(SinMarca(Casilla(tipo, "CheckPortapapeles")->text()), "Leer cualquier texto copiado al Portapapeles");
    EXPECT_EQ(tipo.findChild<QLabel *>("LinkPausas")->text(), "Pausar/Reanudar la lectura automáticamente");
    EXPECT_EQ(SinMarca(tipo.findChild<cEnlace *>("LinkLeeConTeclas")->text()), "Teclas que inician la lectura");
}

TEST_F(PaginasSencillasTest, AcceptingStoresTheEditsAndCancellingDropsThem) {
    Casilla(general, "CheckPrioridad")->setChecked(true);
    general.EstableceValores();
    EXPECT_FALSE(Casilla(general, "CheckPrioridad")->isChecked());
    Casilla(general, "CheckPrioridad")->setChecked(true);
    EXPECT_FALSE(opcGeneral.PrioridadAlta());
    general.GuardaValores();
    EXPECT_TRUE(opcGeneral.PrioridadAlta());
    EXPECT_EQ(r.Lee("General", "PrioridadAlta"), "True");
}

TEST_F(PaginasSencillasTest, StartingWithTheSystemIsNoStoredOption) {
    Casilla(general, "CheckInicio")->setChecked(true);
    general.GuardaValores();
    EXPECT_TRUE(opcGeneral.ArrancaEnInicio());
    EXPECT_FALSE(r.Registro().GetAutoarranque("Ondalis"));
}

TEST_F(PaginasSencillasTest, TheSoundsLinkNeedsTheSounds) {
    auto *enlace = general.findChild<cEnlace *>("LinkSonidos");
    EXPECT_TRUE(enlace->isEnabled());
    enlace->click();
    EXPECT_EQ(abiertas, 1);
    Casilla(general, "CheckSonidos")->setChecked(false);
    EXPECT_FALSE(enlace->isEnabled());
}

TEST_F(PaginasSencillasTest, TheClipboardEnablesWhatDependsOnItAndThePauseBoxStaysAsItIs) {
    for (const bool si : {false, true}) {
        Casilla(tipo, "CheckPortapapeles")->setChecked(si);
        for (const char *suyo :
             {"CheckMiniTexto", "ValorMiniTexto", "Etiqueta", "CheckEditores", "LinkEditores", "LinkPausas"})
            EXPECT_EQ(De(tipo, suyo)->isEnabled(), si) << suyo;
        EXPECT_FALSE(De(tipo, "CheckPausas")->isEnabled());
        EXPECT_TRUE(Casilla(tipo, "CheckPausas")->isChecked());
    }
    Casilla(tipo, "CheckEditores")->setChecked(false);
    EXPECT_FALSE(De(tipo, "LinkEditores")->isEnabled());
}

TEST_F(PaginasSencillasTest, TypedTextEnablesWhatDependsOnIt) {
    for (const bool si : {true, false}) {
        Casilla(tipo, "CheckLeeTeclado")->setChecked(si);
        EXPECT_EQ(De(tipo, "CheckLeeCambioApp")->isEnabled(), si);
        EXPECT_EQ(De(tipo, "LinkLeeConTeclas")->isEnabled(), si);
    }
}

TEST_F(PaginasSencillasTest, WhereAPasswordCouldBeHeardThePageSaysSoToEyesAndEars) {
    const auto *letrero = tipo.findChild<QLabel *>("AvisoContrasenas");
    ASSERT_NE(letrero, nullptr);
    EXPECT_TRUE(letrero->text().contains("contraseñas"));
    EXPECT_TRUE(letrero->text().contains("programas que no dicen qué campos tienen"));
    EXPECT_EQ(Casilla(tipo, "CheckLeeTeclado")->accessibleDescription(), letrero->text());
}

TEST_F(PaginasSencillasTest, ALinkWhoseWindowIsNotThereStaysDisabled) {
    ucOpcGeneral sola{opcGeneral};
    sola.EstableceValores();
    EXPECT_FALSE(De(sola, "LinkSonidos")->isEnabled());
}

TEST_F(PaginasSencillasTest, TheShortTextsLimitIsReadFromItsBox) {
    tipo.findChild<cCajaNumero *>("ValorMiniTexto")->setValue(3);
    tipo.GuardaValores();
    EXPECT_EQ(opcTipoLectura.CharsMiniTexto(), 3);
    EXPECT_EQ(r.Lee("TipoLectura", "CharsMiniTexto"), "3");
    EXPECT_FALSE(r.Registro().Busca("CU", Producto::Ruta(), "TipoLectura", "CheckPausas").has_value());
}

TEST_F(PaginasSencillasTest, NoTwoControlsOfAPageHaveTheSameName) {
    for (const QWidget *pagina : {static_cast<QWidget *>(&general), static_cast<QWidget *>(&tipo)}) {
        QStringList nombres;
        for (const QWidget *uno : pagina->findChildren<QWidget *>())
            if (!uno->accessibleName().isEmpty()) nombres << uno->accessibleName();
        EXPECT_EQ(nombres.removeDuplicates(), 0);
    }
}

}  // namespace
}  // namespace ondalis::prueba
