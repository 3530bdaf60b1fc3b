#include "settings/SonidosAviso.h"

#include <QCheckBox>
#include <QVBoxLayout>

#include "settings/pagina/CasillaEnlace.h"

namespace ondalis {

SonidosAviso::SonidosAviso(cOpcSonidosAviso &opciones, Colaboradores c)
    : DialogoOpciones("SonidosAviso", QStringLiteral("Sonidos de aviso"), QStringLiteral("OpcGeneral.htm#Sonidos"),
                      &opciones, std::move(c)),
      m_opciones(opciones) {
    for (QCheckBox *una : {Casilla("CheckAvisosGenerales", QStringLiteral("En avisos &generales"), true),
                           Casilla("CheckActivarDesactivar", QStringLiteral("Al activar y &desactivar"), true),
                           Casilla("CheckPortapapeles", QStringLiteral("Al leer el &Portapapeles"), true),
                           Casilla("CheckLeeTeclado", QStringLiteral("Al leer el texto &tecleado"))})
        Cuerpo().addWidget(una);
    Cuerpo().addStretch();
    Prepara();
}

}  // namespace ondalis
