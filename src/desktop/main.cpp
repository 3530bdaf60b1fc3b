// The program's entry: what can work by itself is set going, the toolkit starts, and one owner builds the rest.
#include <QApplication>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QTranslator>

#include "desktop/Rutas.h"
#include "desktop/cAplicacion.h"

int main(int argc, char **argv) {
    using namespace ondalis;
    QStringList partes;
    for (int i = 1; i < argc; ++i) partes << QString::fromLocal8Bit(argv[i]);
    const QString carpeta = QFileInfo(QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget()).absolutePath();

    Preparativos preparativos(rutas::FicheroLog(), rutas::ProgramaMotor(carpeta));

    int soloNombre = 1;  // the command line is ours: the toolkit's own options have no meaning here
    QApplication aplicacion(soloNombre, argv);
    QApplication::setApplicationName(QStringLiteral("ondalis"));
    QApplication::setApplicationDisplayName(QLatin1String(Producto::Titulo));
    QApplication::setDesktopFileName(QStringLiteral("com.ferrano.Ondalis"));
    QApplication::setQuitOnLastWindowClosed(false);
    QTranslator traductor;
    if (traductor.load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QApplication::installTranslator(&traductor);

    cAplicacion ondalis(preparativos, partes.join(QLatin1Char(' ')));
    return ondalis.Ejecuta();
}
