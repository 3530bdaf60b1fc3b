#include "libs/candado.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <ctime>

namespace ondalis {

void SueltaCandadoHuerfano(const char *ruta) {
    constexpr std::time_t kReciente = 2;  // seconds
    const int fd = open(ruta, O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOFOLLOW);
    if (fd < 0) return;
    struct stat datos {};
    // A clock that has been put back must not keep it for ever.
    const bool viejo =
        fstat(fd, &datos) == 0 && S_ISREG(datos.st_mode) && std::abs(std::time(nullptr) - datos.st_mtime) >= kReciente;
    if (viejo && flock(fd, LOCK_EX | LOCK_NB) == 0) unlink(ruta);
    close(fd);
}

}  // namespace ondalis
