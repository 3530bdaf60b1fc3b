#include "worker/orden/cProcesoOrden.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

namespace ondalis {

namespace {

constexpr std::size_t kMaxSalida = std::size_t{32} * 1024 * 1024;  // bytes of one piece: minutes of sound
constexpr int kBuzon = 1 << 20;  // of the pipe, so that a piece fits while another is sent
constexpr int kTextoHijo = 3, kSalidaHijo = 4, kTiemposHijo = 5;  // its descriptors
constexpr int kLibres = 10;                                       // ours stand above those

void Cierra(int &descriptor) {
    if (descriptor >= 0) close(descriptor);
    descriptor = -1;
}

// A process that outlives the worker for as long as it takes to kill the groups of programs that it was told of: the
// worker itself dies of a signal that it can't see. It holds none of the worker's descriptors but the pipe's end.
class Guardian {
public:
    // Before the first program is made.
    void Despierta() {
        if (m_pid != getpid()) Nace();
    }
    // A program tells of itself before it runs, so that there is no moment at which nobody knows of it.
    void Apunta(pid_t grupo) { Dice(grupo); }
    void Borra(pid_t grupo) { Dice(-grupo); }

private:
    void Dice(pid_t grupo) {
        if (m_tubo >= 0 && write(m_tubo, &grupo, sizeof grupo) < 0) Cierra(m_tubo);
    }

    void Nace() {
        m_pid = getpid();
        std::array<int, 2> tubo{};
        if (pipe2(tubo.data(), O_CLOEXEC) != 0) return;
        const pid_t hijo = fork();
        if (hijo == 0) Vela(tubo[0]);
        close(tubo[0]);
        m_tubo = tubo[1];
        if (hijo < 0) Cierra(m_tubo);
    }

    [[noreturn]] static void Vela(int tubo) {
        setpgid(0, 0);
        dup2(tubo, STDIN_FILENO);
        close_range(STDOUT_FILENO, ~0u, 0);
        std::array<pid_t, 16> grupos{};  // a worker has two at a time
        pid_t dicho = 0;
        ssize_t n = 0;
        while ((n = read(STDIN_FILENO, &dicho, sizeof dicho)) != 0) {
            if (n != static_cast<ssize_t>(sizeof dicho)) continue;
            for (pid_t &grupo : grupos)
                if (dicho > 0 ? grupo == 0 : grupo == -dicho) {
                    grupo = std::max(dicho, 0);
                    break;
                }
        }
        for (const pid_t grupo : grupos)
            if (grupo > 0) kill(-grupo, SIGKILL);
        _exit(0);
    }

    pid_t m_pid = -1;
    int m_tubo = -1;
};

Guardian &ElGuardian() {
    static Guardian guardian;  // one a process
    return guardian;
}

struct Extremos {
    int entrada = -1, salida = -1, texto = -1, fichero = -1, tiempos = -1;  // the program's, above kLibres
};

// Between fork and exec: nothing that allocates.
[[noreturn]] void Ejecuta(const Extremos &e, char *const *argumentos, pid_t padre) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != padre) _exit(127);
    ElGuardian().Apunta(getpid());
    for (const int senal : {SIGPIPE, SIGTERM, SIGINT, SIGHUP, SIGCHLD}) signal(senal, SIG_DFL);
    sigset_t ninguna;
    sigemptyset(&ninguna);
    sigprocmask(SIG_SETMASK, &ninguna, nullptr);
    const rlimit tope{kMaxSalida, kMaxSalida}, nada{0, 0};
    // Nobody looks at the file while a voice is paused. Programs that write to a pipe may have larger files of their
    // own (sound libraries make shared memory, and die of the limit).
    if (e.fichero >= 0) setrlimit(RLIMIT_FSIZE, &tope);
    setrlimit(RLIMIT_CORE, &nada);
    const int nulo = open("/dev/null", O_RDWR);
    dup2(e.entrada >= 0 ? e.entrada : nulo, STDIN_FILENO);
    dup2(e.salida >= 0 ? e.salida : nulo, STDOUT_FILENO);
    dup2(nulo, STDERR_FILENO);
    close(kTextoHijo);
    close(kSalidaHijo);
    close(kTiemposHijo);
    if (e.texto >= 0) dup2(e.texto, kTextoHijo);
    if (e.fichero >= 0) dup2(e.fichero, kSalidaHijo);
    if (e.tiempos >= 0) dup2(e.tiempos, kTiemposHijo);
    close_range(kTiemposHijo + 1, ~0u, 0);
    execv(argumentos[0], argumentos);
    _exit(127);
}

// A descriptor above those that the program gets, which closes itself in other programs.
int Arriba(int descriptor) {
    if (descriptor < 0) return descriptor;
    const int arriba = fcntl(descriptor, F_DUPFD_CLOEXEC, kLibres);
    close(descriptor);
    return arriba;
}

bool HazTubo(int &lee, int &escribe) {
    std::array<int, 2> tubo{};
    if (pipe2(tubo.data(), O_CLOEXEC) != 0) return false;
    lee = Arriba(tubo[0]);
    escribe = Arriba(tubo[1]);
    return lee >= 0 && escribe >= 0;
}

// Texts never touch the disk.
int HazFichero(const std::string &contenido) {
    int fichero = Arriba(memfd_create("ondalis", MFD_CLOEXEC));
    if (fichero >= 0 && !contenido.empty() &&
        pwrite(fichero, contenido.data(), contenido.size(), 0) != static_cast<ssize_t>(contenido.size()))
        Cierra(fichero);
    return fichero;
}

// Whether it was there.
bool PonRuta(std::vector<std::string> &argumentos, const std::string &hueco, int descriptor) {
    bool hay = false;
    for (std::string &a : argumentos)
        for (std::size_t i = a.find(hueco); i != std::string::npos; i = a.find(hueco), hay = true)
            a.replace(i, hueco.size(), "/proc/self/fd/" + std::to_string(descriptor));
    return hay;
}

std::vector<std::uint8_t> Contenido(int fichero, std::size_t maximo) {
    struct stat estado {};
    if (fichero < 0 || fstat(fichero, &estado) != 0) return {};
    std::vector<std::uint8_t> bytes(std::min(static_cast<std::size_t>(estado.st_size), maximo));
    const ssize_t n = pread(fichero, bytes.data(), bytes.size(), 0);
    bytes.resize(n > 0 ? static_cast<std::size_t>(n) : 0);
    return bytes;
}

}  // namespace

std::unique_ptr<cProcesoOrden> cProcesoOrden::Lanza(Encargo encargo) {
    std::unique_ptr<cProcesoOrden> p(new cProcesoOrden);
    Extremos suyos;
    bool bien = true;
    if (encargo.porEntrada) bien = HazTubo(suyos.entrada, p->m_haciaEl);
    if (encargo.aFichero) {
        bien = bien && (p->m_fichero = HazFichero({})) >= 0;
        suyos.fichero = p->m_fichero;
        PonRuta(encargo.argumentos, "{salida}", kSalidaHijo);
    }
    const bool tiemposEnFichero = encargo.conTiempos && PonRuta(encargo.argumentos, "{tiempos}", kTiemposHijo);
    if (tiemposEnFichero) {
        bien = bien && (p->m_ficheroTiempos = HazFichero({})) >= 0;
        suyos.tiempos = p->m_ficheroTiempos;
    }
    p->m_tiemposPorTubo = encargo.conTiempos && !tiemposEnFichero && encargo.aFichero;
    if (!encargo.aFichero || p->m_tiemposPorTubo) bien = bien && HazTubo(p->m_desdeEl, suyos.salida);
    if (encargo.textoEnFichero) {
        bien = bien && (suyos.texto = HazFichero(encargo.texto)) >= 0;
        PonRuta(encargo.argumentos, "{texto}", kTextoHijo);
    }
    std::vector<char *> punteros;
    for (std::string &a : encargo.argumentos) punteros.push_back(a.data());
    punteros.push_back(nullptr);
    const pid_t padre = getpid();
    ElGuardian().Despierta();
    if (bien) p->m_pid = fork();
    if (bien && p->m_pid == 0) Ejecuta(suyos, punteros.data(), padre);
    Cierra(suyos.entrada);
    Cierra(suyos.salida);
    Cierra(suyos.texto);
    if (p->m_pid <= 0) return nullptr;
    setpgid(p->m_pid, p->m_pid);  // whichever of the two comes first
    p->m_fin = Arriba(static_cast<int>(syscall(SYS_pidfd_open, p->m_pid, 0)));
    for (const int d : {p->m_haciaEl, p->m_desdeEl})
        if (d >= 0) fcntl(d, F_SETFL, O_NONBLOCK);
    if (p->m_desdeEl >= 0) fcntl(p->m_desdeEl, F_SETPIPE_SZ, kBuzon);
    if (encargo.porEntrada) p->m_texto = std::move(encargo.texto);
    if (p->m_fin < 0) return nullptr;
    return p;
}

cProcesoOrden::~cProcesoOrden() {
    if (m_pid > 0 && !m_acabado) {
        kill(-m_pid, SIGKILL);
        ElGuardian().Borra(m_pid);
        while (waitpid(m_pid, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    for (int *d : {&m_fin, &m_haciaEl, &m_desdeEl, &m_fichero, &m_ficheroTiempos}) Cierra(*d);
}

void cProcesoOrden::Bombea(int esperaMs) {
    if (m_acabado || m_desbordado) return;
    std::array<pollfd, 3> p{pollfd{m_fin, POLLIN, 0}, pollfd{m_desdeEl, POLLIN, 0}, pollfd{m_haciaEl, POLLOUT, 0}};
    if (poll(p.data(), p.size(), esperaMs) <= 0) return MiraFichero();
    if (p[2].revents != 0) Escribe();
    if (p[1].revents != 0) Lee();
    MiraFichero();
    if (p[0].revents != 0 && !m_desbordado) Acaba();
}

void cProcesoOrden::Escribe() {
    while (m_escritos < m_texto.size()) {
        const ssize_t n = write(m_haciaEl, m_texto.data() + m_escritos, m_texto.size() - m_escritos);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0 && errno == EAGAIN) return;
        if (n < 0) break;  // it wants no more: what it makes of the rest is its affair
        m_escritos += static_cast<std::size_t>(n);
    }
    Cierra(m_haciaEl);
}

void cProcesoOrden::Lee() {
    std::array<std::uint8_t, 65536> bytes;
    while (m_desdeEl >= 0 && !m_desbordado) {
        const ssize_t n = read(m_desdeEl, bytes.data(), bytes.size());
        if (n < 0 && errno == EINTR) continue;
        if (n < 0 && errno == EAGAIN) return;
        if (n <= 0) return Cierra(m_desdeEl);
        std::vector<std::uint8_t> &destino = m_tiemposPorTubo ? m_tiempos : m_salida;
        destino.insert(destino.end(), bytes.begin(), bytes.begin() + n);
        m_desbordado = destino.size() > kMaxSalida;
    }
}

void cProcesoOrden::MiraFichero() {
    struct stat estado {};
    if (m_fichero < 0 || m_hayFichero || fstat(m_fichero, &estado) != 0) return;
    m_hayFichero = estado.st_size > 0;
}

// The program has ended: what it left behind in its group goes as well, and what it has written is all there is.
void cProcesoOrden::Acaba() {
    kill(-m_pid, SIGKILL);
    ElGuardian().Borra(m_pid);
    while (waitpid(m_pid, &m_estado, 0) < 0 && errno == EINTR) {
    }
    m_acabado = true;
    Lee();
    if (m_fichero >= 0) m_salida = Contenido(m_fichero, kMaxSalida);
    if (m_ficheroTiempos >= 0) m_tiempos = Contenido(m_ficheroTiempos, kMaxSalida);
}

}  // namespace ondalis
