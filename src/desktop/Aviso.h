// The assistant that greets a new user: five pages in one window, walked forward and back. There is no way to leave it
// without keeping what stands on its pages. It lets the reader go on behind it. Made by its Init's caller, owned by
// main. Main thread.
#pragma once

#include <QDialog>
#include <array>
#include <functional>

#include "desktop/cAviso.h"
#include "desktop/cAyuda.h"
#include "reader/cPruebaVoz.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QStackedWidget;

namespace ondalis {

class Aviso : public QDialog {
    Q_OBJECT
public:
    struct Colaboradores {
        cAviso::Colaboradores logica;
        const cVoces &voces;
        cPruebaVoz &prueba;
        cAyuda &ayuda;
        std::function<void(WId)> alFrente = {};  // where asking the window manager politely isn't enough
    };
    explicit Aviso(Colaboradores colaboradores);

    // Prepares the window and shows it on its first page. Called again while it is open, it only brings it to the
    // front.
    void Init();
    // The program ends: what stands on the pages is stored, and the window closes.
    void Descarga();

    void reject() override;  // Esc

protected:
    void closeEvent(QCloseEvent *evento) override;

private:
    struct ListasTecla {
        QComboBox *modificador;
        QComboBox *tecla;
    };

    // A page with its texts; `descripcion` gets them as its first control is to tell them.
    QBoxLayout *Frame(const QString &titulo, const QString &texto, QString *descripcion = nullptr);
    void PonPrimero(QWidget *control, const QString &descripcion);
    void CreaPaginaIcono();
    void CreaPaginaLectura();
    void CreaPaginaVoz();
    void CreaPaginaTeclas();
    void CreaPaginaFin();
    void CreaBotones(QBoxLayout &columna);
    QPushButton *Boton(const char *nombre, const QString &rotulo, void (Aviso::*accion)());

    void EstableceValores();
    void Coloca();
    void MuestraPagina();
    void ComboFabricantes_Click();
    void Probar_Click();
    void AsistSig_Click();
    void AsistAtras_Click();
    void Cancelar_Click();
    void Ayuda_Click();
    cAviso::Valores EnPantalla() const;
    void Termina();

    Colaboradores c;
    cAviso m_logica;
    QStackedWidget *m_paginas;                              // children, all of them
    std::array<QWidget *, cAviso::NumPaginas> m_primero{};  // what takes the focus
    QCheckBox *m_portapapeles, *m_teclado, *m_verConfig, *m_noMostrar;
    QComboBox *m_fabricantes, *m_voces;
    std::array<ListasTecla, cAviso::NumTeclas> m_teclas{};
    QPushButton *m_atras, *m_siguiente;
    bool m_guardando = false;
};

}  // namespace ondalis
