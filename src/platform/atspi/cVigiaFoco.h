// The accessibility bus as cFocoAccesible's thread serves it: listens to focus changes and asks the object that has got
// the focus for its role, once a change. Comes back by itself after the bus. All of it on that thread; only the signals
// leave it.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QHash>
#include <QObject>
#include <QTimer>
#include <functional>

namespace ondalis {

class cVigiaFoco : public QObject {
    Q_OBJECT
public:
    cVigiaFoco();
    ~cVigiaFoco() override;

    void Inicia();
    void Termina();

Q_SIGNALS:
    void Pregunta(int proceso);
    void Respuesta(int proceso, int rol);  // a FocoAccesible::Rol
    void Conectado(bool conectado);

private Q_SLOTS:
    void CambiaEstado(const QDBusMessage &aviso);
    void Perdido();

private:
    struct Programa {
        int proceso = 0;  // 0: not known yet
        quint32 vuelta = 0;
    };
    using Resultado = std::function<void(const QDBusMessage &)>;

    QString Direccion();
    void Conecta();
    void Desconecta();
    void PreguntaRol(const QString &nombre, const QString &objeto, quint32 vuelta);
    void Llama(const QDBusMessage &mensaje, int limiteMs, Resultado resultado);
    QDBusConnection Bus() const { return QDBusConnection(m_nombre); }

    bool m_encendido = false;
    QString m_nombre;  // of the connection; empty: there is none
    QTimer m_reintento;
    QHash<QString, Programa> m_programas;  // by their names on the bus
    quint32 m_vueltas = 0;
};

}  // namespace ondalis
