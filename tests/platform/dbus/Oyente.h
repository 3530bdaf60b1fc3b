// A watcher of the bus's signals as another program has them.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>
#include <vector>

namespace ondalis::prueba {

class Oyente : public QObject {
    Q_OBJECT
public:
    std::vector<QVariantMap> cambios;
    std::vector<uint> terminadas;

    // The values that one property took, in order.
    QStringList Valores(const char *propiedad) const {
        QStringList valores;
        for (const QVariantMap &cambio : cambios)
            if (cambio.contains(QLatin1String(propiedad))) valores << cambio[QLatin1String(propiedad)].toString();
        return valores;
    }

public Q_SLOTS:
    void Cambia(const QString &, const QVariantMap &valores, const QStringList &) { cambios.push_back(valores); }
    void Termina(uint numero) { terminadas.push_back(numero); }
};

}  // namespace ondalis::prueba
