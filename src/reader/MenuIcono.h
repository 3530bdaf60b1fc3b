// The popup menu of the tray icon as state, in its order. Captions and enabled states are the system's own state:
// ActivarDesactivar's caption tells whether the program is active, Detener enabled that a reading runs. Main thread.
#pragma once

#include "settings/EntradaMenu.h"

namespace ondalis {

struct MenuIcono {
    EntradaMenu ActivarDesactivar{QStringLiteral("Desactivar")};
    EntradaMenu PausaReanudar{QStringLiteral("Pausa"), false};
    EntradaMenu Detener{QStringLiteral("Detener lectura"), false};
    EntradaMenu RepetirLectura{QStringLiteral("Repetir última lectura"), false};
    EntradaMenu AvanzarPalabras{QStringLiteral("Avanzar palabras"), false};
    EntradaMenu RetrocederPalabras{QStringLiteral("Retroceder palabras"), false};
    // Disabled while their windows don't exist; main enables what is there.
    EntradaMenu Opciones{QStringLiteral("Configuración... (Ctrl+Alt+F1)"), false};
    EntradaMenu AbrirEditor{QStringLiteral("Editor texto (Ctrl+Alt+F2)"), false};
    EntradaMenu FicheroTextoAAudio{QStringLiteral("Convertir fichero texto a audio..."), false};
    EntradaMenu MenuAyuda{QStringLiteral("Ayuda"), false};
    EntradaMenu AyudaOndalis{QStringLiteral("Ayuda de Ondalis"), false};
    EntradaMenu VerLeame{QStringLiteral("Ver archivo Léame"), false};
    EntradaMenu AcercaDe{QStringLiteral("Acerca de Ondalis..."), false};
    EntradaMenu DescargarActualizaciones{QStringLiteral("Descargar actualizaciones..."), false};
    EntradaMenu PagWebOndalis{QStringLiteral("Página Web de Ondalis"), false};
    EntradaMenu Salir{QStringLiteral("Salir")};
};

}  // namespace ondalis
