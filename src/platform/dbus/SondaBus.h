// Asks a message bus for a sign of life before anybody connects to it: a connection waits for the daemon's greeting,
// and one that has been stopped never greets. Plain functions and an object of the event loop; any thread, one at a
// time.
#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QString>
#include <QTimer>
#include <chrono>
#include <functional>
#include <memory>

namespace ondalis {

// Addresses of the two buses as the environment names them; empty: there is none. Without an address the library would
// start a session bus of its own, which nobody would ever see.
QString DireccionBusSesion();
QString DireccionBusSistema();

enum class VidaBus { Responde, Calla, NoEsta };

// Waits for the answer, `limite` at most. A bus over anything but a local socket isn't asked: it counts as living.
VidaBus SondeaBus(const QString &direccion, std::chrono::milliseconds limite);

// The same question from the event loop.
class cSondaBus {
public:
    cSondaBus();
    ~cSondaBus();
    cSondaBus(const cSondaBus &) = delete;
    cSondaBus &operator=(const cSondaBus &) = delete;

    // `alSaber` is called once, from the event loop. A question that is still open is dropped.
    void Pregunta(const QString &direccion, std::chrono::milliseconds limite, std::function<void(VidaBus)> alSaber);
    void Deja();

private:
    friend VidaBus SondeaBus(const QString &, std::chrono::milliseconds);
    class Saludo;
    void Lee();
    void Acaba(VidaBus vida);

    std::unique_ptr<Saludo> m_saludo;
    std::unique_ptr<QSocketNotifier> m_aviso;
    QTimer m_plazo;
    VidaBus m_alVencer = VidaBus::Calla;
    std::function<void(VidaBus)> m_alSaber;
};

// Gives the toolkit's own connection to the session bus its answer before the toolkit waits for it: where the bus keeps
// silent that connection fails at once and for good. Programs that are started still find the bus. Before QApplication
// and before any thread of ours, as it changes the environment for a moment.
void GuardaDelBusQueCalla();

}  // namespace ondalis
