#include "desktop/Vidas.h"

#include <QApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QTranslator>
#include <cstdio>

#include "desktop/LineaComandos.h"
#include "desktop/Rutas.h"
#include "desktop/cAplicacion.h"
#include "desktop/cAplicacionLote.h"
#include "desktop/cEstilo.h"
#include "platform/dbus/SondaBus.h"
#include "platform/sistema/cMensajesAparte.h"
#include "platform/sistema/cSenales.h"
#include "platform/x11/AlFrente.h"
#include "platform/x11/HayPantalla.h"
#include "reader/Arranque.h"

// The macro declares a function of the global namespace.
static void RegistraIconos() { Q_INIT_RESOURCE(iconos); }

namespace ondalis {

namespace {

// The toolkit, with no say in the command line: its own options have no meaning here. GuardaDelBusQueCalla goes before
// it, and before any thread of ours: it changes the environment for a moment.
class Escritorio {
public:
    explicit Escritorio(char **argv) : m_aplicacion(m_soloNombre, argv) {
        // No display name: the toolkit would append it to the windows' titles.
        QApplication::setApplicationName(QLatin1String(Producto::Titulo));
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
    GuardaDelBusQueCalla();
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
    GuardaDelBusQueCalla();
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
    GuardaDelBusQueCalla();
    Preparativos preparativos(log, rutas::ProgramaMotor(rutas::CarpetaEjecutable()));
    const Escritorio escritorio(argv);
    cAplicacion ondalis(preparativos, linea);
    return ondalis.Ejecuta();
}

int MuestraCaja(int argc, char **argv) {
    if (!HayPantalla() || argc < 4) return kSinPantalla;
    QFile entrada;
    if (!entrada.open(stdin, QIODevice::ReadOnly)) return kSinPantalla;
    const QString texto = QString::fromUtf8(entrada.readAll());
    const QByteArray clase(argv[2]);
    GuardaDelBusQueCalla();
    const Escritorio escritorio(argv);
    cMensajesQt mensajes([](WId ventana) { TraeAlFrente(static_cast<std::uint32_t>(ventana)); });
    const cSenales senales([&mensajes] { mensajes.Cierra(); });
    const bool si = mensajes.Muestra(texto, clase != cMensajesAparte::Aviso, clase == cMensajesAparte::PreguntaSi,
                                     QFile::decodeName(argv[3]));
    return si ? cMensajesAparte::CodigoSi : cMensajesAparte::CodigoNo;
}

std::optional<int> EjecutaLineaComandos(char **argv, const QString &linea, cLog &log,
                                        std::optional<cInstancia> &instancia) {
    if (!EsLineaDeLote(linea)) return std::nullopt;
    // A reader that starts meanwhile finds this copy; one that runs is left alone.
    instancia.emplace(cInstancia::Fichero(rutas::Ejecutable(), rutas::CarpetaEstado()), log).EntraLote();
    int soloNombre = 1;
    const QCoreApplication aplicacion(soloNombre, argv);
    cAplicacionLote lote(log);
    lote.EjecutaLineaComandos(linea);
    return lote.Interrumpida() ? kLoteInterrumpido : 0;
}

}  // namespace ondalis
