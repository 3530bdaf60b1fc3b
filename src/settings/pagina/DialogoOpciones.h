// What the small dialogs behind the pages' links have in common: a frame with "Aceptar", "Cancelar" and "Ayuda", modal,
// above all other windows, in the place where it was left. Enter accepts; Esc and the frame's close cancel; F1 helps.
// The accepted values live in the dialog's table, as a page's do. Made on first use, with the configuration window as
// its parent, which hides it when it hides itself. Main thread.
//
// A dialog of its own: derive; build the controls into Cuerpo(), in their design state, each with the objectName of its
// row, an accessible name and its place in the tab order; call Prepara last; write Salva; connect what changes the
// enabled state to Habilita.
#pragma once

#include <QDialog>
#include <functional>

#include "settings/SitioVentana.h"
#include "settings/TablaOpciones.h"

class QPushButton;
class QVBoxLayout;

namespace ondalis {

class DialogoOpciones : public QDialog {
    Q_OBJECT
public:
    struct Colaboradores {
        QWidget *duena;  // the configuration window; null in tests
        cRegistro &registro;
        cLog &log;
        std::function<void(std::uintptr_t ventana, const QString &tema)> ayuda;
        std::function<void(WId)> alFrente;  // where asking the window manager politely isn't enough; may be empty
    };

    // Shows the accepted values, and stands there until it is answered; returns at once. When it stands there already,
    // it comes to the front as it is.
    void Init();

protected:
    // `nombre`: the dialog's, as in "LeftSonidosAviso". `tema`: its help topic. `opciones` outlives the dialog; null:
    // it keeps its values elsewhere and overrides the next two.
    DialogoOpciones(const char *nombre, const QString &titulo, const QString &tema, TablaOpciones *opciones,
                    Colaboradores c);

    // Every bound control's state goes to its tag.
    virtual void SetTags();
    // Every tag to its control, in the table's order, then Habilita.
    virtual void EstableceValores();
    // Stores the accepted values.
    virtual void Salva() = 0;
    // Enables the controls by the others' present state.
    virtual void Habilita() {}
    // False: what is in the controls can't be accepted, the user has been told, and the dialog stays.
    virtual bool PuedeAceptar() { return true; }

    // Where the controls go, above the buttons.
    QVBoxLayout &Cuerpo() { return *m_cuerpo; }
    // The end of the deriving constructor: the buttons come last in the tab order, and the values are shown.
    void Prepara();

    void showEvent(QShowEvent *evento) override;
    void hideEvent(QHideEvent *evento) override;

private:
    QPushButton *Boton(const char *nombre, const QString &rotulo, const std::function<void()> &accion);
    void Aceptar_Click();
    void Ayuda_Click();
    void Coloca();
    void TraeAlFrente();

    Colaboradores c;
    SitioVentana m_sitio;
    QString m_tema;
    TablaOpciones *m_opciones;
    bool m_colocada = false;
    QVBoxLayout *m_cuerpo;  // children
    QPushButton *m_aceptar, *m_cancelar, *m_ayuda;
};

}  // namespace ondalis
