// While one lives no file of this process can grow beyond so many bytes: what a full disk does to a write, also for
// root.
#pragma once

#include <sys/resource.h>

#include <csignal>

namespace ondalis::prueba {

class DiscoLleno {
public:
    explicit DiscoLleno(rlim_t tope = 0) {
        m_senal = std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_antes);
        const rlimit nuevo{tope, m_antes.rlim_max};
        setrlimit(RLIMIT_FSIZE, &nuevo);
    }
    ~DiscoLleno() {
        setrlimit(RLIMIT_FSIZE, &m_antes);
        std::signal(SIGXFSZ, m_senal);
    }
    DiscoLleno(const DiscoLleno &) = delete;
    DiscoLleno &operator=(const DiscoLleno &) = delete;

private:
    rlimit m_antes{};
    void (*m_senal)(int) = SIG_DFL;
};

}  // namespace ondalis::prueba
