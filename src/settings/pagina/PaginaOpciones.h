// What the pages of the configuration window have in common. The accepted values live in the page's table, which the
// rest of the program reads; the page holds the controls and moves values between both. It never writes the store while
// the user edits. Made with the reader, owned by the window's owner. Main thread.
//
// A page of its own: derive; build the controls in the constructor, in their design state, each with the objectName of
// its row, an accessible name and its place in the tab order; write Salva; connect what changes the enabled state to
// Habilita. Register it with Principal::PonPagina.
#pragma once

#include <QWidget>
#include <map>

#include "settings/PaginaConfiguracion.h"
#include "settings/TablaOpciones.h"

namespace ondalis {

class PaginaOpciones : public QWidget, public PaginaConfiguracion {
public:
    // `nombre`: the control's name on the form ("FrameGeneral"). `opciones` outlives the page; null: the page keeps its
    // values elsewhere and overrides what follows.
    PaginaOpciones(const char *nombre, TablaOpciones *opciones, QWidget *padre = nullptr);

    // Every bound control's state goes to its tag. Rows without a control keep theirs.
    virtual void SetTags();
    // Every tag to its control, in the table's order, then Habilita.
    void EstableceValores() override;
    void EstableceCambiados() override;
    void TerminaEdicion() override;
    // SetTags, then Salva.
    void GuardaValores() override;

protected:
    // Stores the accepted values.
    virtual void Salva() = 0;
    // Enables and shows the controls by the others' present state.
    virtual void Habilita() {}
    // Whether the row's accepted value is another one than when the page was last shown or stored.
    bool AceptadoFuera(const char *nombre) const;
    // The control of a row; null: the page has none of that name.
    QWidget *Control(const char *nombre) const;

private:
    void Recuerda();

    TablaOpciones *m_opciones;
    std::map<QString, QString> m_vistos;  // accepted values by control, as the page last had them
};

}  // namespace ondalis
