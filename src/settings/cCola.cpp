#include "settings/cCola.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEvent>
#include <QTimer>
#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>
#include <utility>

namespace ondalis {

namespace {
const QEvent::Type kEntrega = static_cast<QEvent::Type>(QEvent::registerEventType());
const QEvent::Type kDespierta = static_cast<QEvent::Type>(QEvent::registerEventType());

// Counts one level of a handler for as long as it lives, also when the handler throws.
class Nivel {
public:
    explicit Nivel(int &contador) : m_contador(contador) { ++m_contador; }
    ~Nivel() { --m_contador; }
    Nivel(const Nivel &) = delete;
    Nivel &operator=(const Nivel &) = delete;

private:
    int &m_contador;
};
}  // namespace

cCola::cCola(QObject *padre) : QObject(padre) {}

cCola::~cCola() = default;

cCola::Retencion::~Retencion() {
    if (--m_cola.m_retenciones == 0) m_cola.PideEntrega();
}

void cCola::Pon(Clase clase, std::function<void()> accion) {
    {
        const std::lock_guard cerrojo(m_cerrojo);
        if (m_cerrada) return;
        m_pendientes[static_cast<int>(clase)].push_back(std::move(accion));
    }
    PideEntrega();
}

// Events are made under the lock and met under it: so the thread sanitizer, which can't see the toolkit's own locks,
// knows that they have been handed over.
void cCola::PideEntrega() {
    std::unique_ptr<QEvent> aviso;
    {
        const std::lock_guard cerrojo(m_cerrojo);
        const bool nada = std::all_of(std::begin(m_pendientes), std::end(m_pendientes),
                                      [](const auto &cola) { return cola.empty(); });
        if (m_pedida || m_cerrada || nada) return;
        m_pedida = true;
        aviso = std::make_unique<QEvent>(kEntrega);
    }
    QCoreApplication::postEvent(this, aviso.release(), Qt::HighEventPriority);
}

bool cCola::event(QEvent *evento) {
    if (evento->type() == kEntrega) {
        {
            const std::lock_guard cerrojo(m_cerrojo);
            m_pedida = false;
        }
        // One handler an event: the window system and the timers get their turn between two of ours.
        EntregaUno();
        return true;
    }
    if (evento->type() == kDespierta) {
        PideEntrega();  // a modal window may have opened: what waited for it may be delivered
        return true;
    }
    return QObject::event(evento);
}

bool cCola::EntregaUno() {
    if (m_retenciones > 0) return false;
    const bool modal = m_hayModal && m_hayModal();
    std::function<void()> accion;
    std::deque<std::function<void()>> caidos;  // dropped ones die outside the lock
    int clase = 0;
    {
        const std::lock_guard cerrojo(m_cerrojo);
        for (; clase < NumClases; ++clase) {
            auto &cola = m_pendientes[clase];
            if (clase == static_cast<int>(Clase::Tecla) && m_profundidad > 0 && !modal) continue;
            if (clase == static_cast<int>(Clase::Tic) && m_ticsEnCurso > 0 && !modal) caidos.swap(cola);
            if (cola.empty()) continue;
            accion = std::move(cola.front());
            cola.pop_front();
            break;
        }
    }
    if (!accion) return false;
    {
        int ninguno = 0;
        const Nivel manejador(m_profundidad);
        const Nivel tic(clase == static_cast<int>(Clase::Tic) ? m_ticsEnCurso : ninguno);
        accion();
    }
    if (m_profundidad == 0) {
        const auto finales = std::exchange(m_alTerminar, {});
        for (const auto &final : finales) final();
    }
    // What waited for the end of this handler (a key behind a key) needs a delivery of its own.
    PideEntrega();
    return true;
}

void cCola::DejaCorrer() {
    // What handlers put while we deliver belongs to "now" as well, but a handler that always puts another must not
    // keep us here for ever.
    for (int i = 0; i < 10000 && EntregaUno(); ++i) {
    }
    if (m_repinta) m_repinta();
}

void cCola::AlTerminar(std::function<void()> accion) {
    if (m_profundidad == 0)
        accion();
    else
        m_alTerminar.push_back(std::move(accion));
}

bool cCola::EsperaBloqueando(const std::function<bool()> &listo, int limiteMs) {
    const Retencion retencion(*this);
    const QDeadlineTimer plazo =
        limiteMs < 0 ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(limiteMs, Qt::PreciseTimer);
    QTimer alarma;  // ends the wait for events at the deadline
    alarma.setSingleShot(true);
    alarma.setTimerType(Qt::PreciseTimer);
    while (!listo()) {
        if (plazo.hasExpired()) return listo();
        // Armed anew on each pass: one that came a moment too early must not cost a whole interval more.
        if (limiteMs >= 0) {
            constexpr qint64 kMayor = std::numeric_limits<int>::max() - 1;
            alarma.start(static_cast<int>(std::min<qint64>(plazo.remainingTime(), kMayor)) + 1);
        }
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
    }
    return true;
}

void cCola::Despierta() {
    std::unique_ptr<QEvent> aviso;
    {
        const std::lock_guard cerrojo(m_cerrojo);
        aviso = std::make_unique<QEvent>(kDespierta);
    }
    QCoreApplication::postEvent(this, aviso.release(), Qt::HighEventPriority);
}

void cCola::Cierra() {
    std::deque<std::function<void()>> caidos[NumClases];  // they die outside the lock
    const std::lock_guard cerrojo(m_cerrojo);
    m_cerrada = true;
    for (int clase = 0; clase < NumClases; ++clase) caidos[clase].swap(m_pendientes[clase]);
}

}  // namespace ondalis
