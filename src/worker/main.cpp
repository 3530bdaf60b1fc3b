// The engine worker: speaks for the reader at the other end of a socket pair and ends when that end closes.
//   ondalis-motor FD [--nice N]
// Or says the first line of its standard input once, as the pattern that another program's speech is measured against:
//   ondalis-motor --patron LANGUAGE WORDS-A-MINUTE
// Exit codes: 0 the reader closed, 1 the reader sent garbage, 64 wrong arguments.
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "worker/cServidor.h"
#include "worker/orden/Patron.h"

namespace {

constexpr int kMalUso = 64;

struct Argumentos {
    int zocalo = -1;
    int amable = 0;
    bool bien = false;
};

bool Numero(std::string_view texto, int &valor) {
    const auto r = std::from_chars(texto.data(), texto.data() + texto.size(), valor);
    return r.ec == std::errc() && r.ptr == texto.data() + texto.size();
}

Argumentos LeeArgumentos(int argc, char **argv) {
    Argumentos a;
    if (argc != 2 && argc != 4) return a;
    a.bien = Numero(argv[1], a.zocalo) && a.zocalo >= 0;
    if (argc == 4) a.bien = a.bien && std::string_view(argv[2]) == "--nice" && Numero(argv[3], a.amable);
    struct stat estado {};
    a.bien = a.bien && fstat(a.zocalo, &estado) == 0 && S_ISSOCK(estado.st_mode);
    return a;
}

}  // namespace

int main(int argc, char **argv) {
    int ritmo = 0;
    if (argc == 4 && std::string_view(argv[1]) == "--patron" && Numero(argv[3], ritmo))
        return ondalis::DicePatron(argv[2], ritmo);
    const Argumentos a = LeeArgumentos(argc, argv);
    if (!a.bien) {
        std::fprintf(stderr, "uso: %s descriptor-de-zócalo [--nice N]\n", argc > 0 ? argv[0] : "ondalis-motor");
        return kMalUso;
    }
    // No locale is ever set here: numbers in the engine's files are read as the C locale writes them.
    prctl(PR_SET_PDEATHSIG, SIGKILL);  // a stopped one would never see any other
    std::signal(SIGPIPE, SIG_IGN);
    if (a.amable != 0 && setpriority(PRIO_PROCESS, 0, a.amable) != 0)
        std::fprintf(stderr, "setpriority: %s\n", std::strerror(errno));
    const auto motor = ondalis::CreaMotor(a.zocalo);
    return ondalis::cServidor(a.zocalo, *motor).Atiende();
}
