// The option list on the configuration window: one label a page, painted by the state's colours, on dark and
// high-contrast desktops by the palette's. Arrows, Home, End and first letters choose, as in any list. Main thread.
#pragma once

#include <QListWidget>

#include "desktop/cListaOpciones.h"

namespace ondalis {

class ListaOpciones : public QListWidget {
    Q_OBJECT
public:
    explicit ListaOpciones(QWidget *padre = nullptr);

    // Adds the label of a page in the pages' order; one that is there stays as it is.
    void Anade(Pagina pagina);
    // As a click on its label; false when the page has none.
    bool Elige(Pagina pagina);
    // `sentido` 1 or -1: the next or previous label, round the end.
    void Pasa(int sentido);
    const cListaOpciones &Estado() const { return m_estado; }

    // Colours on the screen for a state.
    QColor Color(cListaOpciones::Marca marca) const;
    QColor Color(cListaOpciones::Texto texto) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

signals:
    void Elegida(ondalis::Pagina pagina);

protected:
    bool viewportEvent(QEvent *evento) override;
    void changeEvent(QEvent *evento) override;
    void focusInEvent(QFocusEvent *evento) override;

private:
    bool ColoresPropios() const;
    void OpcMain_Click(int fila);

    cListaOpciones m_estado;
};

}  // namespace ondalis
