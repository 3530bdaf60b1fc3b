#include "settings/pagina/PaginaOpciones.h"

#include "settings/pagina/EnlaceControles.h"

namespace ondalis {

PaginaOpciones::PaginaOpciones(const char *nombre, TablaOpciones *opciones, QWidget *padre)
    : QWidget(padre), m_opciones(opciones) {
    setObjectName(QLatin1String(nombre));
}

QWidget *PaginaOpciones::Control(const char *nombre) const { return findChild<QWidget *>(QLatin1String(nombre)); }

void PaginaOpciones::SetTags() {
    if (m_opciones) TomaTags(*this, *m_opciones);
}

void PaginaOpciones::EstableceValores() {
    if (m_opciones) MuestraTags(*this, *m_opciones);
    Habilita();
}

void PaginaOpciones::TerminaEdicion() { TerminaEdicionDe(*this); }

void PaginaOpciones::GuardaValores() {
    SetTags();
    Salva();
}

}  // namespace ondalis
