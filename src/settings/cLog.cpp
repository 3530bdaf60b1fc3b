#include "settings/cLog.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLocale>

namespace ondalis {

cLog::cLog(QString fichero) : m_fichero(std::move(fichero)) {}

void cLog::Escribe(const QString &procedimiento, const Fallo &fallo, const QString &extra) {
    QString texto;
    if (fallo) texto = fallo.descripcion + QStringLiteral(" (%1)").arg(fallo.numero);
    if (!extra.isEmpty()) texto += QStringLiteral(" [%1]").arg(extra.trimmed());
    if (texto.isEmpty()) return;

    texto.replace(QLatin1Char('\n'), QLatin1Char(' '))
        .replace(QLatin1Char('\r'), QLatin1Char(' '))  // one line an event
        .remove(QChar(u'\0'));                         // the tail of an engine's error text
    const QString linea = QLocale::system().toString(QDateTime::currentDateTime(), QLocale::ShortFormat) +
                          QLatin1Char(' ') + procedimiento + texto + QLatin1Char('\n');
    const std::lock_guard cerrojo(m_cerrojo);
    QDir().mkpath(QFileInfo(m_fichero).absolutePath());
    // Opening a pipe under this name would hold the caller.
    const QFileInfo presente(m_fichero);
    if (presente.exists() && !presente.isFile()) return;
    QFile fichero(m_fichero);
    // A log that can't be written is no reason to disturb the user; there is nowhere else to tell.
    if (fichero.open(QIODevice::Append, QFile::ReadOwner | QFile::WriteOwner)) fichero.write(linea.toUtf8());
}

}  // namespace ondalis
