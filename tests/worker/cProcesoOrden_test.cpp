#include "worker/orden/cProcesoOrden.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>

#include <filesystem>
#include <iterator>

namespace ondalis {
namespace {

std::ptrdiff_t Descriptores() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
}

// Files of this process may not grow beyond so many bytes while it lives.
class LimiteDeFichero {
public:
    explicit LimiteDeFichero(rlim_t bytes) : m_manejador(signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_antes);
        const rlimit corto{bytes, m_antes.rlim_max};
        setrlimit(RLIMIT_FSIZE, &corto);
    }
    ~LimiteDeFichero() {
        setrlimit(RLIMIT_FSIZE, &m_antes);
        signal(SIGXFSZ, m_manejador);
    }
    LimiteDeFichero(const LimiteDeFichero &) = delete;
    LimiteDeFichero &operator=(const LimiteDeFichero &) = delete;

private:
    sighandler_t m_manejador;
    rlimit m_antes{};
};

Encargo PorFichero() { return {{"/bin/true"}, std::string(1000, 'a'), false, false, true}; }

TEST(cProcesoOrden, ATextThatNoFileHoldsMakesNoProcessAndKeepsNoDescriptor) {
    ASSERT_NE(cProcesoOrden::Lanza(PorFichero()), nullptr);  // the first call wakes the guardian, which stays
    const auto antes = Descriptores();
    {
        const LimiteDeFichero limite(8);
        for (int i = 0; i < 3; ++i) EXPECT_EQ(cProcesoOrden::Lanza(PorFichero()), nullptr);
    }
    EXPECT_EQ(Descriptores(), antes);
    EXPECT_NE(cProcesoOrden::Lanza(PorFichero()), nullptr);
}

}  // namespace
}  // namespace ondalis
