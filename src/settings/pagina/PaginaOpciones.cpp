#include "settings/pagina/PaginaOpciones.h"

#include <QAbstractSpinBox>

#include "settings/pagina/EnlaceControles.h"

namespace ondalis {

PaginaOpciones::PaginaOpciones(const char *nombre, TablaOpciones *opciones, QWidget *padre)
    : QWidget(padre), m_opciones(opciones) {
    setObjectName(QLatin1String(nombre));
}

QWidget *PaginaOpciones::Control(const char *nombre) const { return findChild<QWidget *>(QLatin1String(nombre)); }

void PaginaOpciones::SetTags() {
    if (!m_opciones) return;
    for (const FilaOpcion &fila : m_opciones->Filas())
        if (const QWidget *control = Control(fila.control))
            m_opciones->SetTag(QLatin1String(fila.control), EstadoControl(*control));
}

void PaginaOpciones::EstableceValores() {
    if (m_opciones)
        for (const FilaOpcion &fila : m_opciones->Filas())
            if (QWidget *control = Control(fila.control))
                PonEstadoControl(*control, m_opciones->Tag(QLatin1String(fila.control)));
    Habilita();
}

// A box that hasn't lost the focus still holds what was typed.
void PaginaOpciones::TerminaEdicion() {
    for (QAbstractSpinBox *caja : findChildren<QAbstractSpinBox *>()) caja->interpretText();
}

void PaginaOpciones::GuardaValores() {
    SetTags();
    Salva();
}

}  // namespace ondalis
