// What other programs command on the session bus: com.ferrano.Ondalis, /com/ferrano/Ondalis/Voice. Execute takes a
// command ("SPEAK " and a text, "FILETXT " and a path) and answers when it has been accepted; DDELink says
// "StopSpeaking" at the end of each remote speech. ExecuteNumbered answers with the command's number, and Finished
// tells that number when its own speech has ended. Owned by main. Main thread.
#pragma once

#include <QDBusContext>
#include <QObject>
#include <cstdint>
#include <functional>

#include "platform/dbus/cConexionBus.h"

namespace ondalis {

class cServicioVoz : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "com.ferrano.Ondalis.Voice")
    Q_PROPERTY(QString DDELink READ DDELink SCRIPTABLE true)
public:
    static constexpr const char *Nombre = "com.ferrano.Ondalis";
    static constexpr const char *Ruta = "/com/ferrano/Ondalis/Voice";
    static constexpr const char *Interfaz = "com.ferrano.Ondalis.Voice";
    static constexpr const char *Rechazada = "com.ferrano.Ondalis.Error.Refused";

    // `ejecuta`: judges a command at once and carries it out later; cancel -1 is a refusal. The number is 0 then.
    using Ejecuta = std::function<std::uint32_t(const QString &comando, std::int16_t &cancel)>;
    cServicioVoz(cConexionBus &bus, Ejecuta ejecuta, QString ddeLink);

    QString DDELink() const { return m_ddeLink; }
    void SetDDELink(const QString &texto);  // told on each call
    void Termina(std::uint32_t numero);     // that command's speech has ended

public Q_SLOTS:
    Q_SCRIPTABLE void Execute(const QString &command);
    Q_SCRIPTABLE uint ExecuteNumbered(const QString &command);

Q_SIGNALS:
    Q_SCRIPTABLE void Finished(uint number);

private:
    cConexionBus &m_bus;
    Ejecuta m_ejecuta;
    QString m_ddeLink;
};

}  // namespace ondalis
