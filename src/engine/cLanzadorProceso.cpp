#include "engine/cLanzadorProceso.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

extern char **environ;

namespace ondalis {

namespace {

constexpr int kZocalo = STDERR_FILENO + 1;  // where the worker finds its socket; told as its first argument

class cProceso final : public ProcesoMotor {
public:
    cProceso(pid_t pid, int descriptor) : m_pid(pid), m_descriptor(descriptor) {}
    ~cProceso() override {
        close(m_descriptor);
        kill(m_pid, SIGKILL);  // stopped, looping or asleep: it dies of this one
        while (waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    cProceso(const cProceso &) = delete;
    cProceso &operator=(const cProceso &) = delete;
    int Descriptor() const override { return m_descriptor; }

private:
    pid_t m_pid;
    int m_descriptor;
};

// As the C library wants a list: it lives as long as the strings, and doesn't change them.
void Anade(std::vector<std::string> &textos, std::vector<char *> &lista) {
    for (std::string &texto : textos) lista.push_back(texto.data());
    lista.push_back(nullptr);
}

int Engendra(const std::string &programa, char *const *argumentos, char *const *entorno, int suyo, pid_t &pid) {
    posix_spawn_file_actions_t acciones;
    posix_spawnattr_t atributos;
    posix_spawn_file_actions_init(&acciones);
    posix_spawnattr_init(&atributos);
    posix_spawn_file_actions_adddup2(&acciones, suyo, kZocalo);
    posix_spawn_file_actions_addopen(&acciones, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&acciones, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addclosefrom_np(&acciones, kZocalo + 1);
    // The reader may block or ignore signals; a worker starts with none of that.
    sigset_t ninguna;
    sigset_t corrientes;
    sigemptyset(&ninguna);
    sigemptyset(&corrientes);
    for (const int senal : {SIGTERM, SIGINT, SIGHUP, SIGCHLD}) sigaddset(&corrientes, senal);
    posix_spawnattr_setsigmask(&atributos, &ninguna);
    posix_spawnattr_setsigdefault(&atributos, &corrientes);
    posix_spawnattr_setflags(&atributos, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    const int error = posix_spawn(&pid, programa.c_str(), &acciones, &atributos, argumentos, entorno);
    posix_spawnattr_destroy(&atributos);
    posix_spawn_file_actions_destroy(&acciones);
    return error;
}

}  // namespace

cLanzadorProceso::cLanzadorProceso(std::string programa, std::vector<std::string> argumentos)
    : m_programa(std::move(programa)), m_argumentos(std::move(argumentos)) {
    for (char **variable = environ; variable && *variable; ++variable) m_entorno.emplace_back(*variable);
}

std::unique_ptr<ProcesoMotor> cLanzadorProceso::Lanza() {
    int extremos[2];
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, extremos) != 0) return nullptr;
    fcntl(extremos[0], F_SETFL, O_NONBLOCK);
    std::string zocalo = std::to_string(kZocalo);
    std::vector<char *> argumentos{m_programa.data(), zocalo.data()}, entorno;
    Anade(m_argumentos, argumentos);
    Anade(m_entorno, entorno);
    pid_t pid = 0;
    const int error = Engendra(m_programa, argumentos.data(), entorno.data(), extremos[1], pid);
    close(extremos[1]);
    if (error != 0) {
        close(extremos[0]);
        return nullptr;
    }
    return std::make_unique<cProceso>(pid, extremos[0]);
}

}  // namespace ondalis
