#include "platform/dbus/cServicioVoz.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QDBusVariant>
#include <algorithm>

#include "Oyente.h"
#include "fakes/BusPropio.h"
#include "fakes/RegistroPropio.h"

namespace ondalis::prueba {
namespace {

class cServicioVozTest : public testing::Test {
protected:
    cServicioVozTest() {
        conexion.Conecta();
        EXPECT_TRUE(EsperaA([this] { return Nombrado(); }));
    }
    bool Nombrado() {
        if (!cliente.isConnected()) cliente = bus.Cliente();
        const QDBusReply<bool> hay = cliente.interface()->isServiceRegistered(QLatin1String(cServicioVoz::Nombre));
        return hay.isValid() && hay.value();
    }
    static QDBusMessage Llamada(const char *metodo, const QString &comando) {
        QDBusMessage mensaje =
            QDBusMessage::createMethodCall(QLatin1String(cServicioVoz::Nombre), QLatin1String(cServicioVoz::Ruta),
                                           QLatin1String(cServicioVoz::Interfaz), QLatin1String(metodo));
        mensaje << comando;
        return mensaje;
    }
    QDBusMessage Llama(const char *metodo, const QString &comando) {
        QDBusPendingCall llamada = cliente.asyncCall(Llamada(metodo, comando));
        EXPECT_TRUE(EsperaA([&] { return llamada.isFinished(); }));
        return llamada.reply();
    }
    void Oye(Oyente &oyente) {
        EXPECT_TRUE(cliente.connect(QLatin1String(cServicioVoz::Nombre), QLatin1String(cServicioVoz::Ruta),
                                    QStringLiteral("org.freedesktop.DBus.Properties"),
                                    QStringLiteral("PropertiesChanged"), &oyente,
                                    SLOT(Cambia(QString, QVariantMap, QStringList))));
        EXPECT_TRUE(cliente.connect(QLatin1String(cServicioVoz::Nombre), QLatin1String(cServicioVoz::Ruta),
                                    QLatin1String(cServicioVoz::Interfaz), QStringLiteral("Finished"), &oyente,
                                    SLOT(Termina(uint))));
    }

    BusPropio bus;
    RegistroPropio registro;
    QStringList comandos;
    bool rechaza = false;
    cConexionBus conexion{registro.Log()};
    cServicioVoz servicio{conexion,
                          [this](const QString &comando, std::int16_t &cancel) {
                              comandos << comando;
                              cancel = rechaza ? -1 : 0;
                              return rechaza ? 0u : static_cast<std::uint32_t>(comandos.size());
                          },
                          QStringLiteral("Vínculo")};
    QDBusConnection cliente = bus.Cliente();
};

TEST_F(cServicioVozTest, ACommandArrivesWholeAndItsAnswerIsEmpty) {
    const QDBusMessage respuesta = Llama("Execute", QStringLiteral("SPEAK  ¿qué? 😀 "));
    EXPECT_EQ(respuesta.type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(respuesta.arguments().isEmpty());
    EXPECT_EQ(comandos, QStringList{QStringLiteral("SPEAK  ¿qué? 😀 ")});
    EXPECT_EQ(Llama("ExecuteNumbered", QStringLiteral("SPEAK b")).arguments().value(0).toUInt(), 2u);
}

TEST_F(cServicioVozTest, ARefusalIsAnError) {
    rechaza = true;
    for (const char *metodo : {"Execute", "ExecuteNumbered"}) {
        const QDBusMessage respuesta = Llama(metodo, QStringLiteral("CANTA"));
        EXPECT_EQ(respuesta.type(), QDBusMessage::ErrorMessage) << metodo;
        EXPECT_EQ(respuesta.errorName(), QLatin1String(cServicioVoz::Rechazada)) << metodo;
    }
}

TEST_F(cServicioVozTest, AMegabyteArrivesWhole) {
    const QString texto = QStringLiteral("SPEAK ") + QStringLiteral("año ").repeated(250'000);
    EXPECT_EQ(Llama("Execute", texto).type(), QDBusMessage::ReplyMessage);
    ASSERT_EQ(comandos.size(), 1);
    EXPECT_EQ(comandos[0], texto);
}

TEST_F(cServicioVozTest, TheWatchedItemIsReadAndEachOfItsChangesIsTold) {
    Oyente oyente;
    Oye(oyente);
    QDBusMessage lee =
        QDBusMessage::createMethodCall(QLatin1String(cServicioVoz::Nombre), QLatin1String(cServicioVoz::Ruta),
                                       QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    lee << QLatin1String(cServicioVoz::Interfaz) << QStringLiteral("DDELink");
    QDBusPendingCall llamada = cliente.asyncCall(lee);
    ASSERT_TRUE(EsperaA([&] { return llamada.isFinished(); }));
    EXPECT_EQ(llamada.reply().arguments().value(0).value<QDBusVariant>().variant().toString(),
              QStringLiteral("Vínculo"));
    servicio.SetDDELink(QString());
    servicio.SetDDELink(QStringLiteral("StopSpeaking"));
    servicio.SetDDELink(QStringLiteral("StopSpeaking"));
    servicio.Termina(7);
    ASSERT_TRUE(EsperaA([&] { return !oyente.terminadas.empty(); }));
    EXPECT_EQ(oyente.Valores("DDELink"),
              (QStringList{QString(), QStringLiteral("StopSpeaking"), QStringLiteral("StopSpeaking")}));
    EXPECT_EQ(oyente.terminadas, std::vector<uint>{7});
}

TEST_F(cServicioVozTest, FourClientsBurstsAllArriveEachInItsOwnOrder) {
    std::vector<QDBusConnection> clientes;
    for (int i = 0; i < 4; ++i) clientes.push_back(bus.Cliente());
    std::vector<QDBusPendingCall> llamadas;
    for (int n = 0; n < 100; ++n)
        for (int i = 0; i < 4; ++i)
            llamadas.push_back(clientes[static_cast<std::size_t>(i)].asyncCall(
                Llamada("Execute", QStringLiteral("SPEAK %1 %2").arg(i).arg(n))));
    ASSERT_TRUE(EsperaA([&] {
        return std::ranges::all_of(llamadas, [](const QDBusPendingCall &llamada) { return llamada.isFinished(); });
    }));
    ASSERT_EQ(comandos.size(), 400);
    for (int i = 0; i < 4; ++i) {
        const QStringList suyas = comandos.filter(QStringLiteral("SPEAK %1 ").arg(i));
        ASSERT_EQ(suyas.size(), 100);
        for (int n = 0; n < 100; ++n) EXPECT_EQ(suyas[n], QStringLiteral("SPEAK %1 %2").arg(i).arg(n));
    }
}

TEST_F(cServicioVozTest, ABusThatGoesAwayAndComesBackFindsTheServiceAgain) {
    for (int vuelta = 0; vuelta < 3; ++vuelta) {
        bus.Mata();
        ASSERT_TRUE(EsperaA([this] { return !conexion.Conectada(); }));
        servicio.SetDDELink(QStringLiteral("StopSpeaking"));  // nobody hears it, nothing breaks
        bus.Arranca();
        ASSERT_TRUE(EsperaA([this] { return conexion.Conectada(); }));
        cliente = bus.Cliente();
        ASSERT_TRUE(EsperaA([this] { return Nombrado(); }));
        comandos.clear();
        EXPECT_EQ(Llama("Execute", QStringLiteral("SPEAK otra vez")).type(), QDBusMessage::ReplyMessage);
        EXPECT_EQ(comandos.size(), 1);
    }
}

}  // namespace
}  // namespace ondalis::prueba
