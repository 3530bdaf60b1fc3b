// The window "Teclas que inician la lectura": a list of keys and signs with check boxes, modal above the configuration
// window. It stays loaded, hidden, between its uses. Made on first use. Main thread.
#pragma once

#include <QDialog>

#include "keys/cTeclasLeeTeclado.h"
#include "settings/SitioVentana.h"

class QListWidget;

namespace ondalis {

class TeclasLeeTeclado : public QDialog {
public:
    // `ayuda` shows a topic of the help above this window.
    TeclasLeeTeclado(cTeclasLeeTeclado &teclas, cRegistro &registro, cLog &log,
                     std::function<void(std::uintptr_t ventana, const QString &tema)> ayuda, QWidget *dueno = nullptr);

    // Shows it with the accepted choice; returns when it closes.
    void Init();

    void done(int resultado) override;  // every way out

private:
    void Rellena();
    void Marcas();
    void Coloca();

    cTeclasLeeTeclado &m_teclas;
    SitioVentana m_sitio;
    bool m_colocada = false;
    QListWidget *m_lista;  // child
};

}  // namespace ondalis
