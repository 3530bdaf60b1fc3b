// The start-with-the-system entry: one desktop entry in the user's autostart folder.
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include "settings/cRegistro.h"

namespace ondalis {

namespace {

// One argument as Exec takes it: reserved characters make quotes necessary, and a field code begins with "%".
QString Entrecomilla(const QString &argumento) {
    static const QString kReservados = QStringLiteral(" \t\n\"'\\><~|&;$*?#()`");
    bool comillas = argumento.isEmpty();
    QString texto;
    for (const QChar c : argumento) {
        comillas = comillas || kReservados.contains(c);
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') || c == QLatin1Char('\\'))
            texto += QLatin1Char('\\');
        if (c == QLatin1Char('%')) texto += QLatin1Char('%');
        texto += c;
    }
    return comillas ? QLatin1Char('"') + texto + QLatin1Char('"') : texto;
}

// Any text as the value of a desktop entry's key.
QString Escapa(QString texto) {
    texto.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    texto.replace(QLatin1Char('\n'), QLatin1String("\\n"));
    texto.replace(QLatin1Char('\r'), QLatin1String("\\r"));
    texto.replace(QLatin1Char('\t'), QLatin1String("\\t"));
    return texto;
}

}  // namespace

QString cRegistro::ComandoAutoarranque(const QStringList &argumentos) {
    QStringList partes;
    for (const QString &argumento : argumentos) partes << Entrecomilla(argumento);
    return partes.join(QLatin1Char(' '));
}

QString cRegistro::FicheroAutoarranque(const QString &nombre) const {
    return m_carpetaAutoarranque + QLatin1Char('/') + nombre.toLower() + QStringLiteral(".desktop");
}

void cRegistro::SalvaAutoarranque(const QString &nombre, const QString &comando) {
    QDir().mkpath(m_carpetaAutoarranque);
    QSaveFile fichero(FicheroAutoarranque(nombre));
    const QString texto = QStringLiteral(
                              "[Desktop Entry]\nType=Application\nName=%1\nExec=%2\nTerminal=false\n"
                              "X-GNOME-Autostart-enabled=true\n")
                              .arg(Escapa(nombre), Escapa(comando));
    const QByteArray bytes = texto.toUtf8();
    if (!fichero.open(QIODevice::WriteOnly) || fichero.write(bytes) != bytes.size() || !fichero.commit())
        m_log.Escribe(QStringLiteral("cRegistro.SalvaAutoarranque: "), Fallo::De(Fallo::ErrorDeAcceso),
                      fichero.fileName());
}

bool cRegistro::BorraAutoarranque(const QString &nombre) { return QFile::remove(FicheroAutoarranque(nombre)); }

bool cRegistro::GetAutoarranque(const QString &nombre) {
    QFile fichero(FicheroAutoarranque(nombre));
    if (!QFileInfo(fichero).isFile() || !fichero.open(QIODevice::ReadOnly)) return false;
    bool enEntrada = false;
    bool comando = false;
    while (!fichero.atEnd()) {
        const QString linea = QString::fromUtf8(fichero.readLine()).trimmed();
        if (linea.startsWith(QLatin1Char('['))) enEntrada = linea == QLatin1String("[Desktop Entry]");
        const qsizetype igual = linea.indexOf(QLatin1Char('='));
        if (!enEntrada || igual < 0 || linea.startsWith(QLatin1Char('#'))) continue;
        const QString clave = linea.left(igual).trimmed();
        const QString valor = linea.mid(igual + 1).trimmed();
        if (clave == QLatin1String("Hidden") && valor == QLatin1String("true")) return false;
        if (clave == QLatin1String("X-GNOME-Autostart-enabled") && valor == QLatin1String("false")) return false;
        if (clave == QLatin1String("Exec")) comando = !valor.isEmpty();
    }
    return comando;
}

}  // namespace ondalis
