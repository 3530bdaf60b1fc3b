#include "platform/dbus/SondaBus.h"

#include <gtest/gtest.h>

#include <QElapsedTimer>
#include <optional>

#include "fakes/BusPropio.h"

namespace ondalis::prueba {
namespace {

using std::chrono::milliseconds;

// The answer from the event loop.
VidaBus Pregunta(const QString &direccion, milliseconds limite) {
    cSondaBus sonda;
    std::optional<VidaBus> vida;
    sonda.Pregunta(direccion, limite, [&](VidaBus una) { vida = una; });
    EXPECT_FALSE(vida);  // never inside the call
    EXPECT_TRUE(EsperaA([&] { return vida.has_value(); }));
    return vida.value_or(VidaBus::NoEsta);
}

TEST(SondaBus, ALivingBusAnswers) {
    const BusPropio bus;
    EXPECT_EQ(SondeaBus(BusPropio::Direccion(), milliseconds(10'000)), VidaBus::Responde);
    EXPECT_EQ(Pregunta(BusPropio::Direccion(), milliseconds(10'000)), VidaBus::Responde);
}

TEST(SondaBus, ABusThatHangsIsKnownWhenTheLimitHasPassed) {
    BusPropio bus;
    bus.Para();
    QElapsedTimer reloj;
    reloj.start();
    EXPECT_EQ(SondeaBus(BusPropio::Direccion(), milliseconds(50)), VidaBus::Calla);
    EXPECT_EQ(Pregunta(BusPropio::Direccion(), milliseconds(50)), VidaBus::Calla);
    EXPECT_GE(reloj.elapsed(), 90);  // timers may be a twentieth early
    EXPECT_LT(reloj.elapsed(), 5000);
    bus.Sigue();
}

TEST(SondaBus, ABusThatIsNotThereIsKnownAtOnce) {
    const QString ninguna = QStringLiteral("unix:path=/nonexistent/bus");
    QElapsedTimer reloj;
    reloj.start();
    for (const QString &direccion : {ninguna, QString()}) {
        EXPECT_EQ(SondeaBus(direccion, milliseconds(10'000)), VidaBus::NoEsta);
        EXPECT_EQ(Pregunta(direccion, milliseconds(10'000)), VidaBus::NoEsta);
    }
    EXPECT_LT(reloj.elapsed(), 5000);
}

TEST(SondaBus, OfSeveralAddressesTheFirstThatTakesTheCallIsAsked) {
    const BusPropio bus;
    const QString direccion = QStringLiteral("unix:path=/nonexistent/bus;") + BusPropio::Direccion() +
                              QStringLiteral(",guid=0123456789abcdef0123456789abcdef");
    EXPECT_EQ(SondeaBus(direccion, milliseconds(10'000)), VidaBus::Responde);
}

TEST(SondaBus, ABusThatIsNoLocalSocketCountsAsLiving) {
    EXPECT_EQ(SondeaBus(QStringLiteral("tcp:host=localhost,port=1"), milliseconds(10)), VidaBus::Responde);
    EXPECT_EQ(Pregunta(QStringLiteral("autolaunch:"), milliseconds(10)), VidaBus::Responde);
}

TEST(SondaBus, AQuestionThatIsDroppedIsNeverAnswered) {
    const BusPropio bus;
    cSondaBus sonda;
    int primera = 0, segunda = 0;
    sonda.Pregunta(BusPropio::Direccion(), milliseconds(10'000), [&](VidaBus) { ++primera; });
    sonda.Pregunta(BusPropio::Direccion(), milliseconds(10'000), [&](VidaBus) { ++segunda; });
    ASSERT_TRUE(EsperaA([&] { return segunda == 1; }));
    EXPECT_EQ(primera, 0);
}

}  // namespace
}  // namespace ondalis::prueba
