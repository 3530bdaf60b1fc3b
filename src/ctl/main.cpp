// ondalisctl: commands for the running reader from a terminal or a script.
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTimer>
#include <cstdio>

#include "ctl/Argumentos.h"
#include "ctl/cCliente.h"
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
    cCliente cliente(*a, comando);
    QTimer::singleShot(0, &cliente, &cCliente::Empieza);
    return QCoreApplication::exec();
}
