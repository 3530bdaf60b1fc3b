#include "ctl/Argumentos.h"

#include <QDir>

namespace ondalis::ctl {

namespace {

constexpr double kMaxPlazo = 1'000'000;  // seconds

bool LeePlazo(const QString &texto, int &milisegundos) {
    bool bien = false;
    const double segundos = texto.toDouble(&bien);
    if (!bien || !(segundos > 0) || segundos > kMaxPlazo) return false;
    milisegundos = qMax(1, qRound(segundos * 1000));
    return true;
}

bool Completa(Argumentos &a, const QStringList &sueltos, QString &error) {
    const QString orden = sueltos.value(0);
    const QStringList resto = sueltos.mid(1);
    if (orden == QLatin1String("habla")) {
        a.orden = Argumentos::Orden::Habla;
        a.valor = resto.join(QLatin1Char(' '));
        if (resto.isEmpty()) error = QStringLiteral("falta el texto de «habla»");
    } else if (orden == QLatin1String("fichero")) {
        a.orden = Argumentos::Orden::Fichero;
        a.valor = resto.value(0);
        if (resto.size() != 1 || a.valor.isEmpty()) error = QStringLiteral("«fichero» quiere una ruta");
    } else if (orden == QLatin1String("espera")) {
        a.orden = Argumentos::Orden::Espera;
        if (!resto.isEmpty()) error = QStringLiteral("«espera» no quiere nada detrás");
    } else {
        error = orden.isEmpty() ? QStringLiteral("falta la orden") : QStringLiteral("orden desconocida: ") + orden;
    }
    return error.isEmpty();
}

}  // namespace

std::optional<Argumentos> Analiza(const QStringList &partes, QString &error) {
    Argumentos a;
    QStringList sueltos;
    error.clear();
    for (qsizetype i = 0; i < partes.size(); ++i) {
        const QString &parte = partes[i];
        if (parte == QLatin1String("--")) {
            sueltos += partes.mid(i + 1);
            break;
        }
        if (parte == QLatin1String("-") || !parte.startsWith(QLatin1Char('-'))) {
            sueltos << parte;
        } else if (parte == QLatin1String("--espera")) {
            a.espera = true;
        } else if (parte == QLatin1String("--plazo") || parte.startsWith(QLatin1String("--plazo="))) {
            const bool pegado = parte.contains(QLatin1Char('='));
            const QString valor = pegado ? parte.section(QLatin1Char('='), 1) : partes.value(++i);
            if (!LeePlazo(valor, a.plazoMs)) error = QStringLiteral("«--plazo» quiere un número de segundos");
        } else if (parte == QLatin1String("--ayuda") || parte == QLatin1String("--help") ||
                   parte == QLatin1String("-h")) {
            return Argumentos{};
        } else if (parte == QLatin1String("--version")) {
            Argumentos version;
            version.orden = Argumentos::Orden::Version;
            return version;
        } else {
            error = QStringLiteral("opción desconocida: ") + parte;
        }
        if (!error.isEmpty()) return std::nullopt;
    }
    if (!Completa(a, sueltos, error)) return std::nullopt;
    return a;
}

QString Uso() {
    return QStringLiteral(
        "Uso: ondalisctl [--espera] [--plazo SEGUNDOS] ORDEN\n"
        "\n"
        "  habla TEXTO...   lee el texto; con «-», lo que llegue por la entrada estándar\n"
        "  fichero RUTA     lee un fichero de texto\n"
        "  espera           espera al final de la lectura pedida por otro programa\n"
        "\n"
        "  --espera            no vuelve hasta que la lectura pedida haya terminado\n"
        "  --plazo SEGUNDOS    renuncia pasado ese tiempo\n"
        "  --                  lo que sigue no son opciones\n"
        "  --ayuda, --version\n"
        "\n"
        "Salida: 0 bien; 1 el lector rechaza la orden; 2 mal uso; 3 no hay lector; 4 se acabó el plazo.\n");
}

QString ComandoFichero(const QString &ruta, const QString &carpeta) {
    return QStringLiteral("FILETXT ") + QDir::cleanPath(QDir(carpeta).absoluteFilePath(ruta));
}

}  // namespace ondalis::ctl
