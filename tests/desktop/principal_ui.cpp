// main() of the tests of real widgets: the offscreen platform, and folders of its own.
#include <gtest/gtest.h>

#include <QApplication>
#include <QTemporaryDir>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
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
