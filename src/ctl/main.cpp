// ondalisctl: commands for the running reader from a terminal or a script.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <chrono>
#include <cstdio>

#include "ctl/Argumentos.h"
#include "ctl/cCliente.h"
#include "platform/dbus/SondaBus.h"
#include "settings/cGeneral.h"
#include "text/Codificacion.h"

using namespace ondalis;
using namespace ondalis::ctl;

namespace {

// Empty on failure, which has been told.
QString Comando(const Argumentos &a, bool &bien) {
    bien = true;
    if (a.orden == Argumentos::Orden::Fichero) return ComandoFichero(a.valor, QDir::currentPath());
    if (a.orden != Argumentos::Orden::Habla) return {};
    if (a.valor != QLatin1String("-")) return QStringLiteral("SPEAK ") + a.valor;
    QFile entrada;
    QByteArray bytes;
    if (entrada.open(stdin, QIODevice::ReadOnly)) bytes = entrada.read(kMaxFicheroTexto + 1);
    bien = bytes.size() <= kMaxFicheroTexto && !EsBinario(bytes);
    if (!bien) std::fputs("ondalisctl: lo que llega por la entrada no es un texto que se pueda leer\n", stderr);
    return QStringLiteral("SPEAK ") + TextoDeBytes(bytes, QString());
}

// A client joins the bus by waiting for it: one that hangs would hold it up beyond its own time limit.
int CompruebaBus(const Argumentos &a) {
    constexpr std::chrono::seconds kLimite(25);
    const std::chrono::milliseconds limite = a.plazoMs > 0 ? std::chrono::milliseconds(a.plazoMs) : kLimite;
    switch (SondeaBus(DireccionBusSesion(), limite)) {
        case VidaBus::Responde: return Bien;
        case VidaBus::NoEsta: std::fputs("ondalisctl: no hay bus de sesión\n", stderr); return SinLector;
        case VidaBus::Calla: break;
    }
    std::fputs("ondalisctl: el bus de sesión no contesta\n", stderr);
    return a.plazoMs > 0 ? SinTiempo : SinLector;
}

}  // namespace

int main(int argc, char **argv) {
    QCoreApplication aplicacion(argc, argv);
    QString error;
    const auto a = Analiza(QCoreApplication::arguments().mid(1), error);
    if (!a) {
        std::fprintf(stderr, "ondalisctl: %s\n%s", qUtf8Printable(error), qUtf8Printable(Uso()));
        return MalUso;
    }
    if (a->orden == Argumentos::Orden::Ayuda || a->orden == Argumentos::Orden::Version) {
        std::fputs(a->orden == Argumentos::Orden::Ayuda
                       ? qUtf8Printable(Uso())
                       : qUtf8Printable(QStringLiteral("ondalisctl ") + cGeneral::MiVersion(QStringLiteral(".")) +
                                        QLatin1Char('\n')),
                   stdout);
        return Bien;
    }
    bool bien = false;
    const QString comando = Comando(*a, bien);
    if (!bien) return MalUso;
    if (const int salida = CompruebaBus(*a)) return salida;
    cCliente cliente(*a, comando);
    QTimer::singleShot(0, &cliente, &cCliente::Empieza);
    return QCoreApplication::exec();
}
