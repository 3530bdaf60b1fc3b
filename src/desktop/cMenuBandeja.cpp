#include "desktop/cMenuBandeja.h"

#include <QAction>

namespace ondalis {

namespace {
// The toolkit takes "&" for a mnemonic; in a caption it is a character like any other.
QString SinMnemonicos(QString rotulo) { return rotulo.replace(QLatin1Char('&'), QLatin1String("&&")); }
}  // namespace

cMenuBandeja::cMenuBandeja(MenuIcono &estado, cCola &cola) : m_estado(estado), m_cola(cola) {
    m_menu.setObjectName(QStringLiteral("MenuIcono"));
    MenuIcono &e = m_estado;
    Anade(m_menu, "ActivarDesactivar", e.ActivarDesactivar);
    m_menu.addSeparator();
    Anade(m_menu, "PausaReanudar", e.PausaReanudar);
    Anade(m_menu, "Detener", e.Detener);
    Anade(m_menu, "RepetirLectura", e.RepetirLectura);
    Anade(m_menu, "AvanzarPalabras", e.AvanzarPalabras);
    Anade(m_menu, "RetrocederPalabras", e.RetrocederPalabras);
    m_menu.addSeparator();
    Anade(m_menu, "Opciones", e.Opciones);
    Anade(m_menu, "AbrirEditor", e.AbrirEditor);
    Anade(m_menu, "FicheroTextoAAudio", e.FicheroTextoAAudio);
    m_menu.addSeparator();
    Anade(m_menu, "MenuAyuda", e.MenuAyuda);
    m_acciones.at(&e.MenuAyuda)->setMenu(&m_ayuda);
    Anade(m_ayuda, "AyudaOndalis", e.AyudaOndalis);
    Anade(m_ayuda, "VerLeame", e.VerLeame);
    Anade(m_ayuda, "AcercaDe", e.AcercaDe);
    Anade(m_ayuda, "DescargarActualizaciones", e.DescargarActualizaciones);
    Anade(m_ayuda, "PagWebOndalis", e.PagWebOndalis);
    m_menu.addSeparator();
    Anade(m_menu, "Salir", e.Salir);
    m_menu.setDefaultAction(m_acciones.at(&e.Opciones));
}

cMenuBandeja::~cMenuBandeja() {
    MenuIcono &e = m_estado;
    for (EntradaMenu *entrada :
         {&e.ActivarDesactivar, &e.PausaReanudar, &e.Detener, &e.RepetirLectura, &e.AvanzarPalabras,
          &e.RetrocederPalabras, &e.Opciones, &e.AbrirEditor, &e.FicheroTextoAAudio, &e.MenuAyuda, &e.AyudaOndalis,
          &e.VerLeame, &e.AcercaDe, &e.DescargarActualizaciones, &e.PagWebOndalis, &e.Salir})
        entrada->AlCambiar({});
}

void cMenuBandeja::Anade(QMenu &menu, const char *nombre, EntradaMenu &entrada) {
    QAction *accion = menu.addAction(QString());
    accion->setObjectName(QLatin1String(nombre));
    m_acciones[&entrada] = accion;
    const auto refleja = [accion, &entrada] {
        accion->setText(SinMnemonicos(entrada.Rotulo()));
        accion->setEnabled(entrada.Habilitada());
    };
    refleja();
    entrada.AlCambiar(refleja);
}

void cMenuBandeja::AlPulsar(const EntradaMenu &entrada, std::function<void()> accion) {
    QObject::connect(m_acciones.at(&entrada), &QAction::triggered, &m_menu,
                     [this, accion = std::move(accion)] { m_cola.Pon(cCola::Clase::Orden, accion); });
}

}  // namespace ondalis
