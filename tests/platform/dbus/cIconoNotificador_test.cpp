#include "platform/dbus/cIconoNotificador.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QDBusVariant>

#include "VigilanteFalso.h"
#include "fakes/BusPropio.h"
#include "fakes/RegistroPropio.h"

namespace ondalis::prueba {
namespace {

class cIconoNotificadorTest : public testing::Test {
protected:
    cIconoNotificadorTest() { conexion.ConectaYa(); }
    QDBusMessage Llama(const char *interfaz, const char *metodo, const QVariantList &argumentos) {
        QDBusMessage mensaje =
            QDBusMessage::createMethodCall(vigilante.registrados.value(0), QLatin1String(cIconoNotificador::Ruta),
                                           QLatin1String(interfaz), QLatin1String(metodo));
        mensaje.setArguments(argumentos);
        QDBusPendingCall llamada = cliente.asyncCall(mensaje);
        EXPECT_TRUE(EsperaA([&] { return llamada.isFinished(); }));
        return llamada.reply();
    }
    QVariant Propiedad(const char *nombre) {
        const QDBusMessage respuesta = Llama("org.freedesktop.DBus.Properties", "Get",
                                             {QStringLiteral("org.kde.StatusNotifierItem"), QLatin1String(nombre)});
        EXPECT_EQ(respuesta.type(), QDBusMessage::ReplyMessage) << nombre;
        return respuesta.arguments().value(0).value<QDBusVariant>().variant();
    }
    bool Nombrado(const QString &nombre) {
        const QDBusReply<bool> hay = cliente.interface()->isServiceRegistered(nombre);
        return hay.isValid() && hay.value();
    }

    BusPropio bus;
    RegistroPropio registro;
    cConexionBus conexion{registro.Log()};
    cIconoNotificador icono{conexion};
    QDBusConnection cliente = bus.Cliente();
    VigilanteFalso vigilante{bus.Cliente("vigilante"), true};
    const ImagenPixeles blanco{1, 2, {0xFF010203, 0x80FFFFFF}};
};

TEST_F(cIconoNotificadorTest, TheWatcherHearsOfItAndItsPictureIsInNetworkOrder) {
    EXPECT_FALSE(Nombrado(QStringLiteral("org.kde.StatusNotifierItem-%1-7").arg(getpid())));
    icono.Muestra({blanco});
    ASSERT_TRUE(EsperaA([this] { return vigilante.registrados.size() == 1; }));
    EXPECT_EQ(Propiedad("Title").toString(), QStringLiteral("Ondalis"));
    EXPECT_EQ(Propiedad("Status").toString(), QStringLiteral("Active"));
    EXPECT_EQ(Propiedad("Menu").value<QDBusObjectPath>().path(), QStringLiteral("/NO_DBUSMENU"));
    const auto imagenes = qdbus_cast<ImagenesNotificador>(Propiedad("IconPixmap"));
    ASSERT_EQ(imagenes.size(), 1);
    EXPECT_EQ(imagenes[0].ancho, 1);
    EXPECT_EQ(imagenes[0].alto, 2);
    EXPECT_EQ(imagenes[0].pixeles, QByteArray("\xFF\x01\x02\x03\x80\xFF\xFF\xFF", 8));
    EXPECT_EQ(qdbus_cast<RotuloNotificador>(Propiedad("ToolTip")).titulo, QStringLiteral("Ondalis"));
}

TEST_F(cIconoNotificadorTest, ClicksReachTheirHandlersWithThePlaceForTheMenu) {
    int pulsado = 0;
    QPoint donde;
    icono.SetAlPulsar([&] { ++pulsado; });
    icono.SetAlPedirMenu([&](const QPoint &sitio) { donde = sitio; });
    icono.Muestra({blanco});
    ASSERT_TRUE(EsperaA([this] { return vigilante.registrados.size() == 1; }));
    Llama("org.kde.StatusNotifierItem", "Activate", {1, 2});
    Llama("org.kde.StatusNotifierItem", "ContextMenu", {30, 40});
    Llama("org.kde.StatusNotifierItem", "SecondaryActivate", {1, 2});
    EXPECT_EQ(pulsado, 1);
    EXPECT_EQ(donde, QPoint(30, 40));
}

TEST_F(cIconoNotificadorTest, ItGoesWithItsNameAndComesBack) {
    icono.Muestra({blanco});
    ASSERT_TRUE(EsperaA([this] { return vigilante.registrados.size() == 1; }));
    const QString nombre = vigilante.registrados[0];
    EXPECT_TRUE(Nombrado(nombre));
    icono.Quita();
    icono.Quita();
    EXPECT_TRUE(EsperaA([&] { return !Nombrado(nombre); }));
    icono.Muestra({blanco});
    EXPECT_TRUE(EsperaA([&] { return vigilante.registrados.size() == 2 && Nombrado(nombre); }));
}

TEST_F(cIconoNotificadorTest, OnABusThatIsStartedAgainItRegistersAgain) {
    icono.Muestra({blanco});
    ASSERT_TRUE(EsperaA([this] { return vigilante.registrados.size() == 1; }));
    bus.Mata();
    ASSERT_TRUE(EsperaA([this] { return !conexion.Conectada(); }));
    bus.Arranca();
    const VigilanteFalso otro(bus.Cliente("vigilante"), true);
    EXPECT_TRUE(EsperaA([&] { return otro.registrados.size() == 1; }));
}

}  // namespace
}  // namespace ondalis::prueba
