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
    Recuerda();
}

void PaginaOpciones::EstableceValores() {
    if (m_opciones) MuestraTags(*this, *m_opciones);
    Recuerda();
    Habilita();
}

void PaginaOpciones::Recuerda() {
    if (!m_opciones) return;
    for (const FilaOpcion &fila : m_opciones->Filas())
        m_vistos[QLatin1String(fila.control)] = m_opciones->Tag(QLatin1String(fila.control));
}

bool PaginaOpciones::AceptadoFuera(const char *nombre) const {
    const auto visto = m_vistos.find(QLatin1String(nombre));
    return visto != m_vistos.end() && visto->second != m_opciones->Tag(QLatin1String(nombre));
}

void PaginaOpciones::EstableceCambiados() {
    if (!m_opciones) return;
    for (const FilaOpcion &fila : m_opciones->Filas())
        if (QWidget *control = Control(fila.control); control && AceptadoFuera(fila.control))
            PonEstadoControl(*control, m_opciones->Tag(QLatin1String(fila.control)));
    Recuerda();
    Habilita();
}

void PaginaOpciones::TerminaEdicion() { TerminaEdicionDe(*this); }

void PaginaOpciones::GuardaValores() {
    SetTags();
    Salva();
}

}  // namespace ondalis
