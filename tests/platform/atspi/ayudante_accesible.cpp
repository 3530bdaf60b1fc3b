// Another program on the accessibility bus, whose address is its argument. Obeys lines: "foco PATH" gives an object the
// focus, "pierde PATH" takes it away, "contesta" answers the questions kept so far. An object is known by its path:
// "/secreto…" a password field, "/lento…" one too, whose answer is kept until asked for, "/averia…" answers with an
// error, any other an ordinary field. Prints "listo", "dado" when a focus change has reached the
// bus, and "pregunta PATH" for each time that it is asked for a role.
#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QList>
#include <QSocketNotifier>
#include <cstdio>
#include <iostream>
#include <string>

namespace {

constexpr uint kContrasena = 40, kEntrada = 79;  // "password text" and "entry" in the service's list of roles

class cProgramaAccesible : public QDBusVirtualObject {
    Q_OBJECT
public:
    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &mensaje, const QDBusConnection &bus) override {
        if (mensaje.member() != QStringLiteral("GetRole")) return false;
        const QString ruta = mensaje.path();
        std::printf("pregunta %s\n", qPrintable(ruta));
        std::fflush(stdout);
        mensaje.setDelayedReply(true);
        if (ruta.startsWith(QStringLiteral("/lento")))
            m_porContestar << mensaje;
        else if (ruta.startsWith(QStringLiteral("/averia")))
            bus.send(mensaje.createErrorReply(QDBusError::Failed, QStringLiteral("se ha ido")));
        else
            bus.send(mensaje.createReply(ruta.startsWith(QStringLiteral("/secreto")) ? kContrasena : kEntrada));
        return true;
    }
    void Contesta(const QDBusConnection &bus) {
        for (const QDBusMessage &mensaje : std::as_const(m_porContestar)) bus.send(mensaje.createReply(kContrasena));
        m_porContestar.clear();
    }

private:
    QList<QDBusMessage> m_porContestar;
};

void Avisa(const QDBusConnection &bus, const QString &ruta, int tiene) {
    QDBusMessage aviso =
        QDBusMessage::createSignal(ruta, QStringLiteral("org.a11y.atspi.Event.Object"), QStringLiteral("StateChanged"));
    aviso << QStringLiteral("focused") << tiene << 0 << QVariant::fromValue(QDBusVariant(0)) << QVariantMap();
    bus.send(aviso);
    bus.interface()->serviceOwner(bus.baseService());  // the answer comes behind it
    std::puts("dado");
    std::fflush(stdout);
}

}  // namespace

int main(int argc, char **argv) {
    std::ios::sync_with_stdio(false);
    const QCoreApplication aplicacion(argc, argv);
    QDBusConnection bus =
        QDBusConnection::connectToBus(QString::fromLocal8Bit(argc > 1 ? argv[1] : ""), QStringLiteral("ayudante"));
    cProgramaAccesible programa;
    if (!bus.registerVirtualObject(QStringLiteral("/"), &programa, QDBusConnection::SubPath)) return 1;
    QSocketNotifier entrada(0, QSocketNotifier::Read);
    QObject::connect(&entrada, &QSocketNotifier::activated, [&] {
        std::string orden;
        do {  // the stream may hold more than one: the notifier doesn't tell of those
            if (!std::getline(std::cin, orden)) return QCoreApplication::quit();
            const QStringList partes = QString::fromStdString(orden).split(QLatin1Char(' '));
            if (partes[0] == QStringLiteral("contesta"))
                programa.Contesta(bus);
            else
                Avisa(bus, partes.value(1), partes[0] == QStringLiteral("foco") ? 1 : 0);
        } while (std::cin.rdbuf()->in_avail() > 0);
    });
    std::puts("listo");
    std::fflush(stdout);
    return QCoreApplication::exec();
}

#include "ayudante_accesible.moc"
