#include "desktop/Rutas.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

namespace ondalis {
namespace {

class Variable {
public:
    Variable(const char *nombre, const QByteArray &valor) : m_nombre(nombre), m_antes(qgetenv(nombre)) {
        qputenv(nombre, valor);
    }
    ~Variable() { qputenv(m_nombre, m_antes); }

private:
    const char *m_nombre;
    QByteArray m_antes;
};

void Crea(const QString &ruta) {
    QFile fichero(ruta);
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
}

TEST(Rutas, DataAndLogFollowTheDesktopsFolders) {
    const Variable datos("XDG_DATA_HOME", "/tal/datos");
    const Variable estado("XDG_STATE_HOME", "/tal/estado");
    EXPECT_EQ(rutas::CarpetaDatos(), QStringLiteral("/tal/datos/ondalis"));
    EXPECT_EQ(rutas::FicheroLog(), QStringLiteral("/tal/estado/ondalis/Ondalis.log"));
}

TEST(Rutas, WithoutAStateFolderOrWithARelativeOneTheLogIsInTheHome) {
    for (const char *valor : {"", "relativa"}) {
        const Variable estado("XDG_STATE_HOME", valor);
        EXPECT_EQ(rutas::FicheroLog(), QDir::homePath() + QStringLiteral("/.local/state/ondalis/Ondalis.log"));
    }
}

TEST(Rutas, TheRecordingGoesToTheHomeWhereThereIsNoMusicFolder) {
    EXPECT_EQ(rutas::LecturaWav(), QDir::homePath() + QStringLiteral("/Lectura.wav"));
}

TEST(Rutas, TheWorkerStandsBesideTheProgramOrInLibexecUnlessOneIsNamed) {
    const QTemporaryDir raiz;
    QDir(raiz.path()).mkpath(QStringLiteral("bin"));
    QDir(raiz.path()).mkpath(QStringLiteral("libexec/ondalis"));
    const QString bin = raiz.path() + QStringLiteral("/bin");
    EXPECT_EQ(rutas::ProgramaMotor(bin), bin + QStringLiteral("/ondalis-motor"));
    Crea(raiz.path() + QStringLiteral("/libexec/ondalis/ondalis-motor"));
    EXPECT_EQ(rutas::ProgramaMotor(bin), raiz.path() + QStringLiteral("/libexec/ondalis/ondalis-motor"));
    Crea(bin + QStringLiteral("/ondalis-motor"));
    EXPECT_EQ(rutas::ProgramaMotor(bin), bin + QStringLiteral("/ondalis-motor"));
    const Variable indicado("ONDALIS_MOTOR", "/otro/motor");
    EXPECT_EQ(rutas::ProgramaMotor(bin), QStringLiteral("/otro/motor"));
}

TEST(Rutas, TheInstalledDataAreFoundFromTheProgramsOwnFolder) {
    EXPECT_EQ(rutas::CarpetaInstalada(QStringLiteral("/usr/bin")), QStringLiteral("/usr/share/ondalis"));
    EXPECT_EQ(rutas::CarpetaInstalada(QStringLiteral("/opt/otro sitio/bin")),
              QStringLiteral("/opt/otro sitio/share/ondalis"));
}

}  // namespace
}  // namespace ondalis
