#include "platform/sistema/cSenales.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <csignal>

namespace ondalis {
namespace {

TEST(cSenales, ARequestToEndIsTakenFromTheEventLoop) {
    for (const int senal : {SIGTERM, SIGINT, SIGHUP}) {
        int veces = 0;
        const cSenales senales([&] { ++veces; });
        std::raise(senal);
        EXPECT_EQ(veces, 0);
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        EXPECT_EQ(veces, 1) << senal;
    }
}

TEST(cSenales, APipeThatIsGoneDoesNotEndTheProgram) {
    const cSenales senales([] {});
    std::raise(SIGPIPE);
}

}  // namespace
}  // namespace ondalis
