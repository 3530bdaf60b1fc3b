#include "libs/candado.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <time.h>
#include <unistd.h>

#include <chrono>

namespace ondalis {

namespace {

// Age of a file by the clock that dates it. A clock that has been put back makes it old as well: a lock must not stay
// for ever because it comes from the future.
std::chrono::nanoseconds Edad(const struct stat &datos) {
    using std::chrono::nanoseconds, std::chrono::seconds;
    struct timespec ahora {};
    clock_gettime(CLOCK_REALTIME, &ahora);
    return std::chrono::abs(seconds(ahora.tv_sec - datos.st_mtim.tv_sec) +
                            nanoseconds(ahora.tv_nsec - datos.st_mtim.tv_nsec));
}

}  // namespace

void SueltaCandadoHuerfano(const char *ruta) {
    constexpr std::chrono::milliseconds kReciente{200};
    const int fd = open(ruta, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW);
    if (fd < 0) return;
    struct stat datos {};
    const bool viejo = fstat(fd, &datos) == 0 && S_ISREG(datos.st_mode) && Edad(datos) >= kReciente;
    if (viejo && flock(fd, LOCK_EX | LOCK_NB) == 0) unlink(ruta);
    close(fd);
}

}  // namespace ondalis
