// main() of every test program: a core application and folders of its own, so that no test touches a real home.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

int main(int argc, char **argv) {
    testing::InitGoogleTest(&argc, argv);
    QTemporaryDir casa;
    for (const char *variable :
         {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        qputenv(variable, casa.path().toUtf8());
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, casa.path() + QStringLiteral("/usuario"));
    QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, casa.path() + QStringLiteral("/sistema"));
    QCoreApplication aplicacion(argc, argv);
    return RUN_ALL_TESTS();
}
