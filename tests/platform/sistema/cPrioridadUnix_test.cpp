#include "platform/sistema/cPrioridadUnix.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QtGlobal>

namespace ondalis {
namespace {

// In a child, because the way back isn't everybody's.
int EnUnHijo(int (*prueba)()) {
    const pid_t hijo = fork();
    if (hijo == 0) {
        qputenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/no/hay");  // nobody to raise it for us
        _exit(prueba());
    }
    int estado = 0;
    waitpid(hijo, &estado, 0);
    return WIFEXITED(estado) ? WEXITSTATUS(estado) : -1;
}

TEST(cPrioridadUnix, WithoutTheRightTheAnswerIsNoAndNothingChanges) {
    EXPECT_EQ(EnUnHijo([] {
                  const rlimit ninguno{0, 0};
                  setrlimit(RLIMIT_NICE, &ninguno);
                  if (getuid() == 0 && setuid(65534) != 0) return 1;
                  cPrioridadUnix prioridad;
                  const int antes = getpriority(PRIO_PROCESS, 0);
                  return !prioridad.SetClase(true) && !prioridad.SetHilo(true) && getpriority(PRIO_PROCESS, 0) == antes
                             ? 0
                             : 2;
              }),
              0);
}

TEST(cPrioridadUnix, WithTheRightItRisesAndGoesBackToWhereItWas) {
    const int resultado = EnUnHijo([] {
        setpriority(PRIO_PROCESS, 0, 3);
        cPrioridadUnix prioridad;
        if (!prioridad.SetClase(true)) return 77;
        const bool alta = getpriority(PRIO_PROCESS, 0) < 0;
        return prioridad.SetClase(false) && alta && getpriority(PRIO_PROCESS, 0) == 3 ? 0 : 1;
    });
    if (resultado == 77) GTEST_SKIP() << "no right to raise a priority here";
    EXPECT_EQ(resultado, 0);
}

}  // namespace
}  // namespace ondalis
