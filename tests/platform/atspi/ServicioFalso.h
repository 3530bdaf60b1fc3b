// The accessibility service as the focus watcher needs it, on the test's own bus, and another program on it.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QDBusVirtualObject>
#include <QProcess>

#include "fakes/BusPropio.h"

namespace ondalis::prueba {

// The launcher and the registry in one. The address that it gives is the bus that it is on.
class ServicioFalso : public QDBusVirtualObject {
    Q_OBJECT
public:
    explicit ServicioFalso(const QDBusConnection &bus, bool encendido = true) : m_encendido(encendido), m_bus(bus) {
        EXPECT_TRUE(m_bus.registerVirtualObject(QStringLiteral("/org/a11y"), this, QDBusConnection::SubPath));
        EXPECT_TRUE(m_bus.registerService(QStringLiteral("org.a11y.Bus")));
        EXPECT_TRUE(m_bus.registerService(QStringLiteral("org.a11y.atspi.Registry")));
    }
    ~ServicioFalso() override { QDBusConnection::disconnectFromBus(m_bus.name()); }

    void SetAveriado(bool averiado) { m_averiado = averiado; }  // it gives no address
    int Negadas() const { return m_negadas; }
    bool Encendido() const { return m_encendido; }
    const QStringList &Puestas() const { return m_puestas; }          // properties that were set
    const QStringList &Registrados() const { return m_registrados; }  // events asked for

    QString introspect(const QString &) const override { return {}; }
    bool handleMessage(const QDBusMessage &mensaje, const QDBusConnection &bus) override {
        const QString metodo = mensaje.member();
        const QVariantList datos = mensaje.arguments();
        if (metodo == QStringLiteral("GetAddress")) {
            m_negadas += m_averiado;
            bus.send(m_averiado ? mensaje.createErrorReply(QDBusError::Failed, QStringLiteral("no hay bus"))
                                : mensaje.createReply(BusPropio::Direccion()));
        } else if (metodo == QStringLiteral("Get")) {
            bus.send(mensaje.createReply(QVariant::fromValue(QDBusVariant(m_encendido))));
        } else if (metodo == QStringLiteral("Set")) {
            m_puestas << datos.value(1).toString();
            m_encendido = datos.value(2).value<QDBusVariant>().variant().toBool();
            bus.send(mensaje.createReply());
        } else if (metodo == QStringLiteral("RegisterEvent")) {
            m_registrados << datos.value(0).toString();
            bus.send(mensaje.createReply());
        } else {
            return false;
        }
        return true;
    }

private:
    bool m_encendido, m_averiado = false;
    int m_negadas = 0;
    QStringList m_puestas, m_registrados;
    QDBusConnection m_bus;
};

// See ayudante_accesible.cpp. A process of its own: our own fields aren't asked.
class ProgramaAjeno {
public:
    ProgramaAjeno() {
        m_proceso.start(QStringLiteral(AYUDANTE_ACCESIBLE), {BusPropio::Direccion()});
        EXPECT_TRUE(EsperaA([this] { return m_proceso.canReadLine(); }));
        EXPECT_EQ(m_proceso.readLine().trimmed(), "listo");
    }
    ~ProgramaAjeno() {
        m_proceso.closeWriteChannel();
        m_proceso.waitForFinished();
    }
    void Manda(const QByteArray &orden) { m_proceso.write(orden + '\n'); }
    int Proceso() const { return static_cast<int>(m_proceso.processId()); }
    // Paths of the objects that it was asked about, in order.
    const QStringList &Preguntas() {
        Lee();
        return m_preguntas;
    }
    // How many of its focus changes have reached the bus.
    int Dados() {
        Lee();
        return m_dados;
    }

private:
    void Lee() {
        while (m_proceso.canReadLine()) {
            const QString linea = QString::fromUtf8(m_proceso.readLine().trimmed());
            if (linea == QStringLiteral("dado"))
                ++m_dados;
            else
                m_preguntas << linea.section(QLatin1Char(' '), 1);
        }
    }
    QProcess m_proceso;
    QStringList m_preguntas;
    int m_dados = 0;
};

}  // namespace ondalis::prueba
