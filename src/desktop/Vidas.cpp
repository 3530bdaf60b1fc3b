#include "desktop/Vidas.h"

#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <cstdio>

#include "desktop/LineaComandos.h"
#include "desktop/Rutas.h"
#include "desktop/cAplicacion.h"
#include "desktop/cEstilo.h"
#include "platform/sistema/cSenales.h"
#include "platform/x11/AlFrente.h"
#include "platform/x11/HayPantalla.h"
#include "reader/Arranque.h"

// The macro declares a function of the global namespace.
static void RegistraIconos() { Q_INIT_RESOURCE(iconos); }

namespace ondalis {

namespace {

// The toolkit, with no say in the command line: its own options have no meaning here.
class Escritorio {
public:
    explicit Escritorio(char **argv) : m_aplicacion(m_soloNombre, argv) {
        QApplication::setApplicationName(QStringLiteral("ondalis"));
        QApplication::setApplicationDisplayName(QLatin1String(Producto::Titulo));
        QApplication::setDesktopFileName(QStringLiteral("com.ferrano.Ondalis"));
        QApplication::setQuitOnLastWindowClosed(false);
        QApplication::setStyle(new cEstilo);  // the application takes it
        RegistraIconos();
        QApplication::setWindowIcon(QIcon(QStringLiteral(":/iconos/3-128.png")));
        if (m_traductor.load(QStringLiteral("qtbase_es"), QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
            QApplication::installTranslator(&m_traductor);
    }

private:
    int m_soloNombre = 1;
    QApplication m_aplicacion;
    QTranslator m_traductor;
};

void Escribe(FILE *donde, const QString &linea) {
    std::fprintf(donde, "%s\n", qPrintable(linea));
    std::fflush(donde);
}

}  // namespace

int MuestraAyuda(char **argv) {
    if (!HayPantalla()) {
        for (const QString &linea : TextosLineaComandos()) Escribe(stdout, linea);
        return 0;
    }
    const Escritorio escritorio(argv);
    LineaComandos ventana;
    ventana.exec();
    return 0;
}

int AvisaYaArrancado(char **argv, cLog &log) {
    const QString texto = QStringLiteral("El programa ya está arrancado.");
    if (!HayPantalla()) {
        Escribe(stderr, texto);
        return 0;
    }
    const Escritorio escritorio(argv);
    cMensajesQt mensajes([](WId ventana) { TraeAlFrente(static_cast<std::uint32_t>(ventana)); });
    const cSenales senales([&mensajes] { mensajes.Cierra(); });
    cPrioridadUnix prioridad;
    cGeneral(log, mensajes, prioridad).VMsg(texto);
    return 0;
}

int Reside(char **argv, const QString &linea, cLog &log) {
    if (!HayPantalla()) {
        const QString texto = QStringLiteral("no se puede conectar con ningún escritorio (DISPLAY)");
        log.Escribe(QStringLiteral("Main: "), texto);
        Escribe(stderr, QStringLiteral("ondalis: ") + texto);
        return kSinPantalla;
    }
    Preparativos preparativos(log, rutas::ProgramaMotor(rutas::CarpetaEjecutable()));
    const Escritorio escritorio(argv);
    cAplicacion ondalis(preparativos, linea);
    return ondalis.Ejecuta();
}

bool EjecutaLineaComandos(const QString &linea, cLog &log) {
    if (!EsLineaDeLote(linea)) return false;
    // What the line holds may be a text to be read: it stays out of the log.
    const QString texto =
        QStringLiteral("esta versión todavía no lee ni graba textos desde la línea de comandos; vea -help");
    log.Escribe(QStringLiteral("EjecutaLineaComandos: "), texto);
    Escribe(stderr, QStringLiteral("ondalis: ") + texto);
    return true;
}

}  // namespace ondalis
