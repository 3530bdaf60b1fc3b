#include <gtest/gtest.h>
#include <poll.h>
#include <stdlib.h>
#include <unistd.h>

#include <cerrno>

#include "engine/cLanzadorProceso.h"
#include "fakes/CarpetaPropia.h"

namespace ondalis {
namespace {

// All that the program writes to its socket.
std::string Dicho(ProcesoMotor &proceso) {
    std::string texto;
    char bloque[256];
    for (pollfd espera{proceso.Descriptor(), POLLIN, 0}; poll(&espera, 1, 20'000) > 0;) {
        const ssize_t n = read(proceso.Descriptor(), bloque, sizeof bloque);
        if (n == 0) break;
        if (n > 0) texto.append(bloque, static_cast<std::size_t>(n));
        if (n < 0 && errno != EAGAIN && errno != EINTR) break;
    }
    return texto;
}

TEST(cLanzadorProceso, AWorkerHasTheEnvironmentThatItsLauncherWasMadeWith) {
    const prueba::CarpetaPropia carpeta;
    carpeta.Escribe("programa", "#!/bin/sh\nprintf %s \"$ONDALIS_PRUEBA_ENTORNO\" >&\"$1\"\n");
    ASSERT_EQ(chmod(carpeta.Ruta("programa").c_str(), 0700), 0);
    setenv("ONDALIS_PRUEBA_ENTORNO", "de antes", 1);
    cLanzadorProceso lanzador(carpeta.Ruta("programa"));
    setenv("ONDALIS_PRUEBA_ENTORNO", "de ahora", 1);
    const auto proceso = lanzador.Lanza();
    unsetenv("ONDALIS_PRUEBA_ENTORNO");
    ASSERT_NE(proceso, nullptr);
    EXPECT_EQ(Dicho(*proceso), "de antes");
}

}  // namespace
}  // namespace ondalis
