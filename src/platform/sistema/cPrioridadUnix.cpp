#include "platform/sistema/cPrioridadUnix.h"

#include <sys/resource.h>
#include <unistd.h>

#include <QDir>
#include <algorithm>

namespace ondalis {

namespace {
constexpr int kAlta = -5;
constexpr int kHiloAlto = -10;

// Linux keeps a nice value for each thread; a call for a process reaches only the one that calls.
bool Pon(id_t hilo, int valor) { return setpriority(PRIO_PROCESS, hilo, valor) == 0; }
}  // namespace

cPrioridadUnix::cPrioridadUnix() : m_inicial(getpriority(PRIO_PROCESS, 0)) {}

bool cPrioridadUnix::SetClase(bool alta) {
    const int valor = alta ? std::min(kAlta, m_inicial) : m_inicial;
    bool todos = true;
    const QStringList hilos = QDir(QStringLiteral("/proc/self/task")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &hilo : hilos) todos = Pon(hilo.toUInt(), valor) && todos;
    return todos && !hilos.isEmpty();
}

bool cPrioridadUnix::SetHilo(bool alta) {
    return Pon(static_cast<id_t>(gettid()), alta ? std::min(kHiloAlto, m_inicial) : m_inicial);
}

}  // namespace ondalis
