#include "desktop/cAyuda.h"

#include "settings/cRegistro.h"

namespace ondalis {

QString cAyuda::NombreFichero(const QString &comentarios) {
    return QLatin1String(Producto::Titulo) + comentarios.left(3) + QStringLiteral(".rcc");
}

void cAyuda::MuestraClave(std::uintptr_t ventana, const QString &tema) {
    if (m_fichero.isEmpty() || !cGeneral::ExisteFichero(m_fichero)) return;
    m_general.Ejecuta(QStringLiteral("cAyuda.MuestraClave: "), cGeneral::Aviso::SoloLog, [&] {
        const Fallo fallo = m_visor.Muestra(m_fichero, ventana, tema);
        if (fallo) throw ErrorFallo{fallo};
    });
}

}  // namespace ondalis
