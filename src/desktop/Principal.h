// The main window in its visible state: the configuration. An option list, the page of the selected label, and the
// buttons. It decides nothing: what its buttons do is handed to it. Hidden when not in use; it keeps its place. Made on
// first use. Main thread.
#pragma once

#include <QDialog>
#include <QTimer>
#include <functional>

#include "reader/cConfiguracion.h"
#include "settings/SitioVentana.h"

class QPushButton;
class QStackedLayout;

namespace ondalis {

class ListaOpciones;
class PaginaOpciones;

class Principal : public QDialog, public VistaConfiguracion {
    Q_OBJECT
public:
    struct Acciones {
        std::function<void()> aceptar, cancelar;
        std::function<void(std::uintptr_t ventana, const QString &tema)> ayuda;
        std::function<void()> pagWeb;
        std::function<void(WId)> alFrente;  // where asking the window manager politely isn't enough; may be empty
    };
    static constexpr int kEsperaSitioMs = 500;  // moves that follow each other are written once

    Principal(cRegistro &registro, cLog &log, Acciones acciones);

    // Takes the page over and puts its label into the list. Its objectName is the one the list has for `cual`.
    void PonPagina(Pagina cual, PaginaOpciones *pagina);
    PaginaOpciones *PaginaVisible() const;  // null: there is none
    ListaOpciones &Lista() { return *m_lista; }

    bool Visible() const override { return isVisible(); }
    bool HayModal() const override;
    void Muestra() override;
    void TraeAlFrente() override;
    void Oculta() override;
    void EnfocaAceptar() override;

    void reject() override;  // Esc

protected:
    void closeEvent(QCloseEvent *evento) override;
    void moveEvent(QMoveEvent *evento) override;
    void resizeEvent(QResizeEvent *evento) override;

private:
    QPushButton *Boton(const char *nombre, const QString &rotulo, const std::function<void()> &accion);
    void Atajo(const QKeySequence &tecla, const std::function<void()> &accion);
    void OrdenaTabulacion();
    void PasaPagina(int sentido);
    void Ayuda_Click();
    void Coloca();
    void GuardaSitio();

    Acciones m_acciones;
    SitioVentana m_sitio;
    QTimer m_esperaSitio;
    bool m_colocada = false;
    ListaOpciones *m_lista;  // children
    QWidget *m_paginas;
    QStackedLayout *m_pila;
    QPushButton *m_aceptar, *m_cancelar, *m_ayuda, *m_nomEmpresa;
};

}  // namespace ondalis
