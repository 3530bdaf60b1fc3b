#include "reader/Puertos.h"

namespace ondalis {

void SinVentanas::Opciones() {
    m_log.Escribe(QStringLiteral("cFormPrincipal.Opciones_Click: "),
                  QStringLiteral("La ventana de configuración no está disponible"));
}

void SinVentanas::AbrirEditor() {
    m_log.Escribe(QStringLiteral("cFormPrincipal.AbrirEditor_Click: "), QStringLiteral("El editor no está disponible"));
}

void SinVentanas::Salir() {
    if (m_salir) m_salir();
}

}  // namespace ondalis
