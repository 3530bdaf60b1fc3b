#include "platform/sistema/cAbridorXdg.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <algorithm>

namespace ondalis {

// One that was started. It stays until it has ended, so that it leaves no dead entry in the process table.
struct cAbridorXdg::Encargo {
    pid_t pid = -1;
    int descriptor = -1;
    std::unique_ptr<QSocketNotifier> fin;
    std::unique_ptr<QTimer> plazo;
    std::function<void(bool)> alSaber;  // empty once it has been told

    void Di(bool bien) {
        if (const auto aviso = std::exchange(alSaber, {})) aviso(bien);
    }
    ~Encargo() {
        fin.reset();
        if (descriptor >= 0) close(descriptor);
    }
};

cAbridorXdg::cAbridorXdg(std::string programa, int plazoMs) : m_programa(std::move(programa)), m_plazoMs(plazoMs) {}

cAbridorXdg::~cAbridorXdg() = default;

void cAbridorXdg::Avisa(std::function<void(bool)> alSaber, bool bien) {
    QTimer::singleShot(0, &m_contexto, [alSaber = std::move(alSaber), bien] { alSaber(bien); });
}

pid_t cAbridorXdg::Lanza(const QByteArray &objeto) {
    posix_spawn_file_actions_t ficheros;
    posix_spawnattr_t atributos;
    posix_spawn_file_actions_init(&ficheros);
    posix_spawn_file_actions_addopen(&ficheros, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&ficheros, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&ficheros, STDOUT_FILENO, STDERR_FILENO);
    posix_spawn_file_actions_addclosefrom_np(&ficheros, STDERR_FILENO + 1);
    posix_spawnattr_init(&atributos);
    sigset_t ninguna, todas;
    sigemptyset(&ninguna);
    sigfillset(&todas);
    posix_spawnattr_setsigmask(&atributos, &ninguna);
    posix_spawnattr_setsigdefault(&atributos, &todas);
    posix_spawnattr_setflags(&atributos, POSIX_SPAWN_SETSID | POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    std::string programa = m_programa, argumento = objeto.toStdString();
    char *argumentos[] = {programa.data(), argumento.data(), nullptr};
    pid_t pid = -1;
    const int error = posix_spawnp(&pid, programa.c_str(), &ficheros, &atributos, argumentos, environ);
    posix_spawnattr_destroy(&atributos);
    posix_spawn_file_actions_destroy(&ficheros);
    return error == 0 ? pid : -1;
}

void cAbridorXdg::Abre(const QString &objeto, std::function<void(bool)> alSaber) {
    const bool esFichero = objeto.startsWith(QLatin1Char('/'));
    const pid_t pid = esFichero && !QFileInfo::exists(objeto) ? -1 : Lanza(QFile::encodeName(objeto));
    if (pid < 0) return Avisa(std::move(alSaber), false);
    auto encargo = std::make_unique<Encargo>();
    Encargo &e = *encargo;
    e.pid = pid;
    e.alSaber = std::move(alSaber);
    e.descriptor = static_cast<int>(syscall(SYS_pidfd_open, pid, 0));
    if (e.descriptor < 0) return Avisa(std::move(e.alSaber), true);  // it runs; how it ends can't be seen
    e.fin = std::make_unique<QSocketNotifier>(e.descriptor, QSocketNotifier::Read);
    QObject::connect(e.fin.get(), &QSocketNotifier::activated, &m_contexto, [this, &e] { Acaba(e); });
    e.plazo = std::make_unique<QTimer>();
    e.plazo->setSingleShot(true);
    QObject::connect(e.plazo.get(), &QTimer::timeout, &m_contexto, [&e] { e.Di(true); });
    e.plazo->start(m_plazoMs);
    m_encargos.push_back(std::move(encargo));
}

void cAbridorXdg::Acaba(Encargo &encargo) {
    int estado = 0;
    if (waitpid(encargo.pid, &estado, WNOHANG) == 0) return;
    encargo.fin->setEnabled(false);
    encargo.plazo->stop();
    encargo.Di(WIFEXITED(estado) && WEXITSTATUS(estado) == 0);
    // The notifier is at work in this very call.
    QTimer::singleShot(0, &m_contexto, [this, &encargo] {
        std::erase_if(m_encargos, [&](const auto &uno) { return uno.get() == &encargo; });
    });
}

}  // namespace ondalis
