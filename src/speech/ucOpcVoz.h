// The page "Voces" of the configuration window: maker, voice, speed, volume, the five advanced values of an "IBM"
// voice, and the button that speaks with what is on screen. Main thread.
#pragma once

#include <array>
#include <functional>

#include "reader/cPruebaVoz.h"
#include "settings/pagina/PaginaOpciones.h"

class QCheckBox;
class QComboBox;
class QGridLayout;
class QGridLayout;
class QLabel;
class QPushButton;

namespace ondalis {

class cDeslizador;

class ucOpcVoz : public PaginaOpciones {
public:
    struct Colaboradores {
        cOpcVoz &opciones;
        const cVoces &voces;
        cGeneral &general;
        cPruebaVoz &prueba;
        // True where the two keys of speed are Super+Ctrl+F9 and F10, because the given ones switch terminals; may be
        // empty. Asked each time that the page shows its values.
        std::function<bool()> velocidadConSuper = {};
    };
    explicit ucOpcVoz(const Colaboradores &colaboradores);

    // A list without a selection keeps its tag: a stored voice that isn't there at this start isn't forgotten.
    void SetTags() override;
    void EstableceValores() override;
    void EstableceCambiados() override;
    // A hot key has changed the accepted speed: the bar and its box show it, unless another family is on screen.
    void EstableceVelocidad();

    int ScrollVelocidadValue() const;  // what the bars show, not the engine's values
    int ScrollVolumenValue() const;

protected:
    void Salva() override { c.opciones.GuardaValores(); }
    void Habilita() override;

private:
    static constexpr int kNumAvanzados = 5;

    void PonListas(QGridLayout &tabla);
    void PonVelocidad(QGridLayout &tabla);
    void PonAvanzados(QGridLayout &tabla);
    void PonProbar(QGridLayout &tabla);

    bool EsIBM() const;
    void CargaComboFabricantes();
    void CargaVocesFab(const QString &voz);
    void AplicaRangos();
    void PonValoresDeLaVoz();
    void MuestraTeclas();
    void ComboFabricantes_Click();
    void ComboVoces_Click();
    void CheckAvanzados_Click();
    void Probar_Click();
    // A handler's body at its border, under "ucOpcVoz.`procedimiento`: ".
    void Ejecuta(const char *procedimiento, const std::function<void()> &cuerpo);

    Colaboradores c;
    QComboBox *m_fabricantes, *m_voces;  // children, all of them
    cDeslizador *m_velocidad, *m_volumen;
    QLabel *m_teclas;
    QCheckBox *m_avanzados;
    std::array<QLabel *, kNumAvanzados> m_rotulos;
    std::array<cDeslizador *, kNumAvanzados> m_barras;
    QPushButton *m_probar;
};

}  // namespace ondalis
