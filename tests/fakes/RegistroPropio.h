// A settings store, a log and an autostart folder of a test's own: nothing is shared, nothing outlives the test.
#pragma once

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>

#include "settings/cLog.h"
#include "settings/cRegistro.h"

namespace ondalis::prueba {

class RegistroPropio {
public:
    RegistroPropio() {
        QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, m_carpeta.filePath("usuario"));
        QSettings::setPath(QSettings::IniFormat, QSettings::SystemScope, m_carpeta.filePath("sistema"));
    }

    cLog &Log() { return m_log; }
    cRegistro &Registro() { return m_registro; }
    QString Ruta(const QString &nombre) const { return m_carpeta.filePath(nombre); }
    QString FicheroUsuario() const { return Ruta(QStringLiteral("usuario/Ferrano/Ondalis.ini")); }
    QString FicheroSistema() const { return Ruta(QStringLiteral("sistema/Ferrano/Ondalis.ini")); }

    bool Salva(const QString &seccion, const QString &nombre, const QString &valor) {
        return m_registro.Salva(QStringLiteral("CU"), Producto::Ruta(), seccion, nombre, valor);
    }
    QString Lee(const QString &seccion, const QString &nombre, const QVariant &defecto = {}) {
        return m_registro.Lee(QStringLiteral("CU"), Producto::Ruta(), seccion, nombre, defecto);
    }

    QStringList LineasLog() const {
        QFile fichero(m_log.Fichero());
        if (!fichero.open(QIODevice::ReadOnly)) return {};
        return QString::fromUtf8(fichero.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    // Puts a file of the test's own text where the store looks for it; before the store is first used.
    static void Escribe(const QString &ruta, const QByteArray &texto) {
        QDir().mkpath(QFileInfo(ruta).absolutePath());
        QFile fichero(ruta);
        if (!fichero.open(QIODevice::WriteOnly) || fichero.write(texto) != texto.size()) qFatal("%s", qPrintable(ruta));
    }

private:
    QTemporaryDir m_carpeta;
    cLog m_log{m_carpeta.filePath("Ondalis.log")};
    cRegistro m_registro{m_log, m_carpeta.filePath("autostart")};
};

}  // namespace ondalis::prueba
