// The page "Grabar" of the configuration window: whether readings are spoken, recorded or both, and into what file.
// Main thread.
#pragma once

#include "audio/cOpcGrabar.h"
#include "settings/cDialogoFichero.h"
#include "settings/pagina/PaginaOpciones.h"

class QCheckBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QRadioButton;

namespace ondalis {

class cCajaFichero;
class cLista;

class ucOpcGrabar : public PaginaOpciones {
public:
    ucOpcGrabar(cOpcGrabar &opciones, cDialogoFichero &dialogo);

protected:
    void Salva() override { m_opciones.GuardaValores(); }
    void Habilita() override;

private:
    void PonFormato(QGridLayout &rejilla);
    void PonFichero(QGridLayout &rejilla);
    void PonCalidad(QGridLayout &rejilla);
    void Conecta();
    bool EsWAV() const;
    void FormatoAudio_Click();
    void Examinar_Click();

    cOpcGrabar &m_opciones;
    cDialogoFichero &m_dialogo;
    QCheckBox *m_leer, *m_grabar;  // children, all of them
    QLabel *m_etiqFormato, *m_etiqTipo, *m_etiqFichero, *m_etiqCalidad;
    cLista *m_formato, *m_tipo, *m_kHz, *m_kbps;
    cCajaFichero *m_fichero;
    QPushButton *m_examinar;
    QRadioButton *m_anadir, *m_sobrescribir, *m_numerar;
};

}  // namespace ondalis
