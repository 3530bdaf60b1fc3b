#include "settings/cDialogoFichero.h"

namespace ondalis {

std::vector<FiltroFichero> cDialogoFichero::Filtros(const QString &filtro) {
    std::vector<FiltroFichero> filtros;
    const QStringList partes = filtro.split(QChar::Null);
    for (qsizetype i = 0; i + 1 < partes.size() && !partes[i].isEmpty(); i += 2) {
        FiltroFichero uno{partes[i], {}};
        bool todos = false;
        for (const QString &parte : partes[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
            const QString patron = parte.trimmed();
            todos = todos || patron == QLatin1String("*.*") || patron == QLatin1String("*");
            uno.patrones << patron;
        }
        if (todos) uno.patrones.clear();
        filtros.push_back(uno);
    }
    return filtros;
}

QString cDialogoFichero::GetFicheroDialogo(const QString &extension, const QString &filtro) {
    const bool cualquiera = extension == QLatin1String("*");
    const PeticionFichero peticion{QStringLiteral("Abrir"), cualquiera ? QString() : extension, Filtros(filtro),
                                   !cualquiera};
    return m_dialogo.Elige(peticion).value_or(QString()).trimmed();
}

}  // namespace ondalis
