#include "desktop/cMenuAyuda.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTemporaryDir>

#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"

namespace ondalis {
namespace {

class VisorFalso : public VisorAyuda {
public:
    Fallo Muestra(const QString &fichero, std::uintptr_t ventana, const QString &tema) override {
        vistos << QStringLiteral("%1|%2|%3").arg(fichero).arg(ventana).arg(tema);
        return fallo;
    }
    QStringList vistos;
    Fallo fallo;
};

class AbridorFalso : public AbridorEscritorio {
public:
    void Abre(const QString &objeto, std::function<void(bool)> alSaber) override {
        abiertos << objeto;
        alSaber(!fallan.contains(objeto));
    }
    QStringList abiertos, fallan;
};

class cMenuAyudaPrueba : public testing::Test {
protected:
    prueba::RegistroPropio r;
    prueba::MensajesGuion mensajes;
    prueba::PrioridadFalsa prioridad;
    cGeneral general{r.Log(), mensajes, prioridad};
    cCola cola;
    VisorFalso visor;
    AbridorFalso abridor;
    cAyuda ayuda{general, visor};
    QString usuario = r.Ruta(QStringLiteral("usuario")), programa = r.Ruta(QStringLiteral("programa"));
    cMenuAyuda menu{general, cola, ayuda, abridor, {usuario, programa}, QStringLiteral("https://sitio.example/")};

    QString Pon(const QString &ruta) {
        prueba::RegistroPropio::Escribe(ruta, "x");
        return ruta;
    }
};

TEST_F(cMenuAyudaPrueba, TheHelpFileIsNamedByTheFirstThreeCharactersOfTheEdition) {
    EXPECT_EQ(cAyuda::NombreFichero(QStringLiteral("1.0 Libre")), QStringLiteral("Ondalis1.0.rcc"));
}

TEST_F(cMenuAyudaPrueba, WithoutAHelpFileATopicDoesNothingSilently) {
    ayuda.MuestraClave(7, QStringLiteral("Editor.htm"));
    ayuda.Init(programa + QStringLiteral("/Ondalis1.0.rcc"));
    ayuda.MuestraClave(7, QStringLiteral("Editor.htm"));
    EXPECT_TRUE(visor.vistos.isEmpty());
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_TRUE(r.LineasLog().isEmpty());
}

TEST_F(cMenuAyudaPrueba, ATopicGoesToTheViewerWithItsOwner) {
    const QString fichero = Pon(programa + QStringLiteral("/Ondalis1.0.rcc"));
    ayuda.Init(fichero);
    ayuda.MuestraClave(7, QStringLiteral("OpcGeneral.htm#Sonidos"));
    menu.AyudaOndalis_Click();
    EXPECT_EQ(visor.vistos,
              QStringList({fichero + QStringLiteral("|7|OpcGeneral.htm#Sonidos"), fichero + QStringLiteral("|0|")}));
}

TEST_F(cMenuAyudaPrueba, ATopicThatCantBeShownLeavesALogLine) {
    ayuda.Init(Pon(programa + QStringLiteral("/Ondalis1.0.rcc")));
    visor.fallo = Fallo::De(Fallo::FicheroNoEncontrado);
    ayuda.MuestraClave(0, QStringLiteral("NoEsta.htm"));
    EXPECT_EQ(r.LineasLog().filter(QStringLiteral("cAyuda.MuestraClave: ")).size(), 1);
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cMenuAyudaPrueba, TheReadMeFileIsOpenedByTheDesktopAndTheUsersCopyWins) {
    Pon(programa + QStringLiteral("/LEAME.txt"));
    menu.VerLeame_Click();
    const QString propia = Pon(usuario + QStringLiteral("/LEAME.txt"));
    menu.VerLeame_Click();
    cola.DejaCorrer();
    EXPECT_EQ(abridor.abiertos, QStringList({programa + QStringLiteral("/LEAME.txt"), propia}));
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cMenuAyudaPrueba, WithoutTheTextFileTheDocumentOpensWithNoMessage) {
    const QString documento = Pon(programa + QStringLiteral("/LEAMEEMP.pdf"));
    menu.VerLeame_Click();
    cola.DejaCorrer();
    EXPECT_EQ(abridor.abiertos, QStringList({documento}));
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cMenuAyudaPrueba, ATextFileThatNothingOpensIsFollowedByTheDocument) {
    const QString texto = Pon(programa + QStringLiteral("/LEAME.txt"));
    const QString documento = Pon(programa + QStringLiteral("/LEAMEEMP.pdf"));
    abridor.fallan << texto;
    menu.VerLeame_Click();
    cola.DejaCorrer();
    EXPECT_EQ(abridor.abiertos, QStringList({texto, documento}));
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(cMenuAyudaPrueba, WithoutEitherTheMessageNamesTheFirstFile) {
    menu.VerLeame_Click();
    cola.DejaCorrer();
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_EQ(mensajes.cajas[0].texto, QStringLiteral("Imposible abrir el archivo \"%1/LEAME.txt\"").arg(programa));
    EXPECT_TRUE(abridor.abiertos.isEmpty());
}

TEST_F(cMenuAyudaPrueba, AReadMeFileThatFailsAfterBeingStartedIsTold) {
    abridor.fallan << Pon(programa + QStringLiteral("/LEAME.txt"));
    menu.VerLeame_Click();
    EXPECT_TRUE(mensajes.cajas.empty());  // never inside the opener's own call
    cola.DejaCorrer();
    EXPECT_EQ(mensajes.cajas.size(), 1U);
}

TEST_F(cMenuAyudaPrueba, AWebPageThatCantBeOpenedIsToldWithItsAddress) {
    menu.PagWebOndalis_Click();
    cola.DejaCorrer();
    EXPECT_TRUE(mensajes.cajas.empty());
    abridor.fallan << QStringLiteral("https://sitio.example/");
    menu.PagWebOndalis_Click();
    cola.DejaCorrer();
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_EQ(mensajes.cajas[0].texto, QStringLiteral("Imposible abrir la página https://sitio.example/"));
}

}  // namespace
}  // namespace ondalis
