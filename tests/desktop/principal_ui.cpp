// main() of the tests of real widgets: the offscreen platform, and folders of its own.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

#ifdef __SANITIZE_THREAD__
#include <sched.h>

namespace {
// The toolkit paints large areas on a pool of as many threads as there are processors. The thread sanitizer can't see
// the lock of the pool's queue, and its reports of two threads there name nothing that could be excused: so there is
// one.
void QuedaEnUnProcesador() {
    cpu_set_t uno;
    CPU_ZERO(&uno);
    CPU_SET(sched_getcpu(), &uno);
    sched_setaffinity(0, sizeof uno, &uno);
}
}  // namespace
#endif

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
#ifdef __SANITIZE_THREAD__
    QuedaEnUnProcesador();
#endif
    QTemporaryDir casa;
    for (const char *variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, casa.path().toUtf8());
    // A run with other screens names them behind the platform.
    if (!qgetenv("QT_QPA_PLATFORM").startsWith("offscreen:")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication aplicacion(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
