#include "platform/dbus/cMpris.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusReply>
#include <QDBusVariant>

#include "Oyente.h"
#include "fakes/BusPropio.h"
#include "fakes/RegistroPropio.h"

namespace ondalis::prueba {
namespace {

class cMprisTest : public testing::Test {
protected:
    cMprisTest() {
        conexion.Conecta();
        EXPECT_TRUE(EsperaA([this] {
            const QDBusReply<bool> hay = cliente.interface()->isServiceRegistered(QLatin1String(cMpris::Nombre));
            return hay.isValid() && hay.value();
        }));
    }
    QDBusMessage Llama(const char *interfaz, const char *metodo, const QVariantList &argumentos = {}) {
        QDBusMessage mensaje = QDBusMessage::createMethodCall(
            QLatin1String(cMpris::Nombre), QLatin1String(cMpris::Ruta), QLatin1String(interfaz), QLatin1String(metodo));
        mensaje.setArguments(argumentos);
        QDBusPendingCall llamada = cliente.asyncCall(mensaje);
        EXPECT_TRUE(EsperaA([&] { return llamada.isFinished(); }));
        EXPECT_EQ(llamada.reply().type(), QDBusMessage::ReplyMessage) << metodo;
        return llamada.reply();
    }
    QVariant Propiedad(const char *interfaz, const char *nombre) {
        return Llama("org.freedesktop.DBus.Properties", "Get", {QLatin1String(interfaz), QLatin1String(nombre)})
            .arguments()
            .value(0)
            .value<QDBusVariant>()
            .variant();
    }
    QVariant DelReproductor(const char *nombre) { return Propiedad(cMpris::InterfazReproductor, nombre); }
    QString Titulo() {
        return qdbus_cast<QVariantMap>(DelReproductor("Metadata")).value(QStringLiteral("xesam:title")).toString();
    }
    void Suena() {
        menu.PausaReanudar.SetHabilitada(true);
        menu.Detener.SetHabilitada(true);
        menu.AvanzarPalabras.SetHabilitada(true);
        menu.RetrocederPalabras.SetHabilitada(true);
    }

    BusPropio bus;
    RegistroPropio registro;
    cCola cola;
    MenuIcono menu;
    QStringList teclas;
    QString texto = QStringLiteral("Platero es pequeño");
    cReproduccion controles{menu, cola, [this](const QString &tecla) { teclas << tecla; }, [this] { return texto; }};
    cConexionBus conexion{registro.Log()};
    cMpris mpris{conexion, controles};
    QDBusConnection cliente = bus.Cliente();
};

TEST_F(cMprisTest, ThePlayerIsFoundUnderItsNameWithBothInterfaces) {
    EXPECT_EQ(Propiedad("org.mpris.MediaPlayer2", "Identity").toString(), QStringLiteral("Ondalis"));
    EXPECT_EQ(Propiedad("org.mpris.MediaPlayer2", "DesktopEntry").toString(), QStringLiteral("com.ferrano.Ondalis"));
    EXPECT_EQ(DelReproductor("PlaybackStatus").toString(), QStringLiteral("Stopped"));
    EXPECT_TRUE(DelReproductor("CanControl").toBool());
    EXPECT_FALSE(DelReproductor("CanPlay").toBool());
    EXPECT_EQ(Titulo(), QString());
}

TEST_F(cMprisTest, StateAndTitleFollowTheReading) {
    Suena();
    EXPECT_EQ(DelReproductor("PlaybackStatus").toString(), QStringLiteral("Playing"));
    EXPECT_EQ(Titulo(), texto);
    EXPECT_TRUE(DelReproductor("CanGoNext").toBool() && DelReproductor("CanGoPrevious").toBool());
    menu.PausaReanudar.SetRotulo(QStringLiteral("Reanudar (Ctrl + 1)"));
    EXPECT_EQ(DelReproductor("PlaybackStatus").toString(), QStringLiteral("Paused"));
}

TEST_F(cMprisTest, TheCommandsPressTheHotKeys) {
    Suena();
    for (const char *metodo : {"Pause", "PlayPause", "Next", "Previous", "Stop"}) {
        Llama(cMpris::InterfazReproductor, metodo);
        cola.DejaCorrer();
    }
    EXPECT_EQ(teclas, (QStringList{QStringLiteral("Pausa"), QStringLiteral("Pausa"), QStringLiteral("Avanzar"),
                                   QStringLiteral("Retroceder"), QStringLiteral("Detener")}));
    teclas.clear();
    menu.Detener.SetHabilitada(false);
    menu.PausaReanudar.SetHabilitada(false);
    menu.RepetirLectura.SetHabilitada(true);
    Llama(cMpris::InterfazReproductor, "Play");
    cola.DejaCorrer();
    EXPECT_EQ(teclas, QStringList{QStringLiteral("Repetir")});
}

TEST_F(cMprisTest, SeveralEntriesThatChangeTogetherAreOneChange) {
    Oyente oyente;
    ASSERT_TRUE(cliente.connect(QLatin1String(cMpris::Nombre), QLatin1String(cMpris::Ruta),
                                QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("PropertiesChanged"),
                                &oyente, SLOT(Cambia(QString, QVariantMap, QStringList))));
    DelReproductor("Rate");  // a round trip: the watch is in force
    Suena();
    ASSERT_TRUE(EsperaA([&] { return !oyente.cambios.empty(); }));
    menu.PausaReanudar.SetRotulo(QStringLiteral("Reanudar (Ctrl + 1)"));
    ASSERT_TRUE(EsperaA([&] { return oyente.cambios.size() > 1; }));
    EXPECT_EQ(oyente.Valores("PlaybackStatus"), (QStringList{QStringLiteral("Playing"), QStringLiteral("Paused")}));
    ASSERT_EQ(oyente.cambios.size(), 2u);
    EXPECT_EQ(oyente.cambios[1].size(), 1);  // only what has changed
}

}  // namespace
}  // namespace ondalis::prueba
