#include "settings/cComandosRegistro.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace ondalis {

namespace {
const QString kRaiz = QStringLiteral("LM");
}

// The mark holds name and text: the same command left anew under another number runs again.
QString cComandosRegistro::Marca(const QString &nombre, const QString &comando) const {
    const QByteArray huella =
        QCryptographicHash::hash((nombre + QLatin1Char('=') + comando).toUtf8(), QCryptographicHash::Sha256).toHex();
    return m_carpetaEstado + QStringLiteral("/comandos/") + QString::fromLatin1(huella);
}

void cComandosRegistro::EjecutaComandosRegistro() {
    for (int n = 1;; ++n) {
        const QString nombre = QStringLiteral("CMD%1").arg(n);
        const QString comando = m_registro.Lee(kRaiz, Producto::Ruta(), QString(), nombre);
        if (comando.isEmpty()) return;
        const QString marca = Marca(nombre, comando);
        if (QFileInfo::exists(marca)) continue;
        if (!m_lanzador.Lanza(comando)) continue;
        if (m_registro.Borra(kRaiz, Producto::Ruta(), QString(), nombre)) continue;
        QFile fichero(marca);
        QDir().mkpath(QFileInfo(marca).absolutePath());
        if (!fichero.open(QIODevice::WriteOnly))
            m_log.Escribe(QStringLiteral("cGeneral.EjecutaComandosRegistro: "), Fallo::De(Fallo::ErrorDeAcceso), marca);
    }
}

}  // namespace ondalis
