// What the watcher of other programs' focus tells the keyboard hook, with cVigiaFoco's thread behind it.
#include "platform/atspi/cFocoAccesible.h"

#include <gmock/gmock.h>

#include <QDBusConnectionInterface>
#include <QElapsedTimer>
#include <QFile>
#include <optional>

#include "ServicioFalso.h"
#include "fakes/RegistroPropio.h"

namespace ondalis::prueba {
namespace {

using Rol = FocoAccesible::Rol;
using testing::ElementsAre;
using testing::IsEmpty;

struct Dicho {
    int proceso;
    std::optional<Rol> rol;  // none: it is being asked
    bool operator==(const Dicho &) const = default;
};
void PrintTo(const Dicho &d, std::ostream *o) {
    *o << d.proceso << (d.rol ? " is " + std::to_string(static_cast<int>(*d.rol)) : " is asked");
}

class cFocoAccesibleTest : public testing::Test {
protected:
    cFocoAccesibleTest() {
        foco->SetPregunta([this](int proceso) { dicho.push_back({proceso, std::nullopt}); });
        foco->SetRespuesta([this](int proceso, Rol rol) { dicho.push_back({proceso, rol}); });
    }
    void Conecta() {
        servicio.emplace(bus.Cliente("servicio"));
        foco->Inicia();
        ASSERT_TRUE(EsperaA([this] { return foco->Conectado(); }));
    }
    bool EsperaDichos(std::size_t n) {
        return EsperaA([this, n] { return dicho.size() >= n; });
    }
    // The role that follows a focus; all that was told before is forgotten.
    std::optional<Rol> Enfoca(const QByteArray &ruta) {
        dicho.clear();
        programa.Manda("foco " + ruta);
        EXPECT_TRUE(EsperaDichos(2));
        return dicho.back().rol;
    }
    QByteArray Diario() {
        QFile f(registro.Log().Fichero());
        return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray();
    }

    BusPropio bus;
    RegistroPropio registro;
    std::optional<ServicioFalso> servicio;
    ProgramaAjeno programa;
    std::vector<Dicho> dicho;
    std::optional<cFocoAccesible> foco{registro.Log()};
};

TEST_F(cFocoAccesibleTest, APasswordFieldIsSecretAndAnyOtherFieldOrdinary) {
    Conecta();
    const int p = programa.Proceso();
    programa.Manda("foco /secreto");
    ASSERT_TRUE(EsperaDichos(2));
    programa.Manda("foco /campo");
    ASSERT_TRUE(EsperaDichos(4));
    EXPECT_THAT(dicho, ElementsAre(Dicho{p, {}}, Dicho{p, Rol::Secreto}, Dicho{p, {}}, Dicho{p, Rol::Corriente}));
}

TEST_F(cFocoAccesibleTest, OnlyFocusChangesAreAskedForAndEachIsAskedAboutOnce) {
    Conecta();
    EXPECT_THAT(servicio->Registrados(), ElementsAre(QStringLiteral("object:state-changed:focused")));
    programa.Manda("pierde /secreto");
    EXPECT_EQ(Enfoca("/campo"), Rol::Corriente);
    EXPECT_EQ(Enfoca("/secreto"), Rol::Secreto);
    EXPECT_EQ(Enfoca("/campo"), Rol::Corriente);
    EXPECT_THAT(programa.Preguntas(),
                ElementsAre(QStringLiteral("/campo"), QStringLiteral("/secreto"), QStringLiteral("/campo")));
}

TEST_F(cFocoAccesibleTest, AnObjectThatFailsToAnswerIsUnknown) {
    Conecta();
    EXPECT_EQ(Enfoca("/averia"), Rol::Desconocido);
    EXPECT_EQ(Enfoca("/secreto"), Rol::Secreto);
}

TEST_F(cFocoAccesibleTest, AnObjectThatKeepsItsAnswerBackIsUnknownWithinTheLimit) {
    Conecta();
    EXPECT_EQ(Enfoca("/campo"), Rol::Corriente);
    QElapsedTimer reloj;
    reloj.start();
    EXPECT_EQ(Enfoca("/lento"), Rol::Desconocido);
    EXPECT_LT(reloj.elapsed(), 15'000);  // the limit is 5 s; the bus's own, 25 s
    // The answer that comes after it changes nothing.
    programa.Manda("contesta");
    EXPECT_EQ(Enfoca("/campo"), Rol::Corriente);
    EXPECT_EQ(dicho.size(), 2U);
}

TEST_F(cFocoAccesibleTest, OnlyTheNewestQuestionAboutAProgramIsAnswered) {
    Conecta();
    EXPECT_EQ(Enfoca("/campo"), Rol::Corriente);
    dicho.clear();
    const int p = programa.Proceso();
    programa.Manda("foco /lento\nfoco /campo\ncontesta");
    ASSERT_TRUE(EsperaDichos(3));
    EXPECT_EQ(Enfoca("/campo2"), Rol::Corriente);  // whatever was late would be there by now
    EXPECT_THAT(dicho, ElementsAre(Dicho{p, {}}, Dicho{p, Rol::Corriente}));
}

TEST_F(cFocoAccesibleTest, TwoProgramsAreToldApart) {
    Conecta();
    ProgramaAjeno otro;
    EXPECT_EQ(Enfoca("/secreto"), Rol::Secreto);
    dicho.clear();
    otro.Manda("foco /campo");
    ASSERT_TRUE(EsperaDichos(2));
    EXPECT_THAT(dicho, ElementsAre(Dicho{otro.Proceso(), {}}, Dicho{otro.Proceso(), Rol::Corriente}));
}

TEST_F(cFocoAccesibleTest, OurOwnFieldsAreNotAsked) {
    Conecta();
    QDBusMessage aviso = QDBusMessage::createSignal(
        QStringLiteral("/propio"), QStringLiteral("org.a11y.atspi.Event.Object"), QStringLiteral("StateChanged"));
    aviso << QStringLiteral("focused") << 1 << 0 << QVariant::fromValue(QDBusVariant(0)) << QVariantMap();
    ASSERT_TRUE(bus.Cliente("propio").send(aviso));
    EXPECT_EQ(Enfoca("/campo"), Rol::Corriente);
    EXPECT_EQ(Enfoca("/campo"), Rol::Corriente);
    EXPECT_EQ(dicho.size(), 2U);
    for (const Dicho &d : dicho) EXPECT_EQ(d.proceso, programa.Proceso());
}

TEST_F(cFocoAccesibleTest, BetweenEndAndStartNothingIsAsked) {
    Conecta();
    EXPECT_EQ(Enfoca("/campo"), Rol::Corriente);
    dicho.clear();
    const QDBusConnection testigo = bus.Cliente("testigo");
    const auto conexiones = [&testigo] { return testigo.interface()->registeredServiceNames().value().size(); };
    const auto antes = conexiones();
    foco->Termina();
    foco->Termina();  // twice is harmless
    ASSERT_TRUE(EsperaA([&] { return conexiones() == antes - 1; }));
    programa.Manda("foco /secreto");
    ASSERT_TRUE(EsperaA([this] { return programa.Dados() == 2; }));
    foco->Inicia();
    foco->Inicia();
    ASSERT_TRUE(EsperaA([this] { return servicio->Registrados().size() == 2; }));
    ASSERT_TRUE(EsperaA([this] { return foco->Conectado(); }));
    EXPECT_THAT(dicho, IsEmpty());
    EXPECT_EQ(Enfoca("/campo"), Rol::Corriente);
    EXPECT_EQ(conexiones(), antes);  // one listener, however often it was started
    EXPECT_THAT(programa.Preguntas(), ElementsAre(QStringLiteral("/campo"), QStringLiteral("/campo")));
}

TEST_F(cFocoAccesibleTest, AccessibilityIsSwitchedOnAndNoScreenReaderStarted) {
    servicio.emplace(bus.Cliente("servicio"), false);
    foco->Inicia();
    ASSERT_TRUE(EsperaA([this] { return foco->Conectado(); }));
    EXPECT_TRUE(servicio->Encendido());
    EXPECT_THAT(servicio->Puestas(), ElementsAre(QStringLiteral("IsEnabled")));
}

TEST_F(cFocoAccesibleTest, AccessibilityThatIsOnIsLeftAlone) {
    Conecta();
    EXPECT_THAT(servicio->Puestas(), IsEmpty());
}

TEST_F(cFocoAccesibleTest, AServiceThatGivesNoBusIsLoggedOnceAndLeftWhenItDoes) {
    servicio.emplace(bus.Cliente("servicio"));
    servicio->SetAveriado(true);
    const QByteArray aviso = "El servicio de accesibilidad no responde";
    for (int vuelta = 1; vuelta <= 2; ++vuelta) {
        foco->Inicia();
        ASSERT_TRUE(EsperaA([&] { return servicio->Negadas() == vuelta && Diario().contains(aviso); }));
        EXPECT_FALSE(foco->Conectado());
        foco->Termina();
    }
    servicio->SetAveriado(false);
    foco->Inicia();
    ASSERT_TRUE(EsperaA([this] { return foco->Conectado(); }));
    EXPECT_EQ(Enfoca("/secreto"), Rol::Secreto);
    EXPECT_EQ(Diario().count(aviso), 1);
}

TEST_F(cFocoAccesibleTest, WhatWasKnownEndsWithTheBusAndComesBackWithIt) {
    Conecta();
    EXPECT_EQ(Enfoca("/secreto"), Rol::Secreto);
    const int p = programa.Proceso();
    dicho.clear();
    bus.Mata();
    ASSERT_TRUE(EsperaDichos(1));
    EXPECT_THAT(dicho, ElementsAre(Dicho{p, Rol::Desconocido}));
    ASSERT_TRUE(EsperaA([this] { return !foco->Conectado(); }));
    servicio.reset();
    bus.Arranca();
    servicio.emplace(bus.Cliente("servicio"));
    ASSERT_TRUE(EsperaA([this] { return foco->Conectado(); }));  // it tries again by itself, every five seconds
    ProgramaAjeno otro;
    dicho.clear();
    otro.Manda("foco /secreto");
    ASSERT_TRUE(EsperaDichos(2));
    EXPECT_THAT(dicho, ElementsAre(Dicho{otro.Proceso(), {}}, Dicho{otro.Proceso(), Rol::Secreto}));
}

TEST_F(cFocoAccesibleTest, ABusThatHangsHoldsNothingUpButTheEnd) {
    servicio.emplace(bus.Cliente("servicio"));
    bus.Para();
    QElapsedTimer reloj;
    reloj.start();
    foco->Inicia();
    foco->Termina();
    foco->Inicia();
    EXPECT_LT(reloj.elapsed(), 1'000);  // the limit of one call to the service is two seconds
    bus.Sigue();
    EXPECT_TRUE(EsperaA([this] { return foco->Conectado(); }));
}

}  // namespace
}  // namespace ondalis::prueba
