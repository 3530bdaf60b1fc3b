// The page "Diccionario" of the configuration window: the one editor of the pronunciation dictionary. It edits its own
// rows; the table that governs speech changes on acceptance only. Main thread.
#pragma once

#include <functional>

#include "settings/pagina/PaginaOpciones.h"
#include "text/cOpcDiccionario.h"

class QBoxLayout;
class QLineEdit;
class QModelIndex;
class QPushButton;
class QTreeView;

namespace ondalis {

class cModeloDiccionario;

class ucOpcDiccionario : public PaginaOpciones {
public:
    // `probar` speaks a text with the accepted voice and throws ErrorFallo when it can't; empty: the button stays
    // disabled.
    ucOpcDiccionario(cOpcDiccionario &diccionario, cGeneral &general,
                     std::function<void(const QString &texto)> probar = {});

    void SetTags() override {}
    void EstableceValores() override;
    void TerminaEdicion() override {}
    void GuardaValores() override { Salva(); }

    const cListaDiccionario &Lista() const { return m_filas; }

protected:
    void Salva() override { m_diccionario.GuardaValores(m_filas); }

private:
    QTreeView *CreaLista();
    QLineEdit *CreaCaja(const char *nombre, const QString &rotulo, QBoxLayout &columna);
    QPushButton *CreaBoton(const char *nombre, const QString &rotulo, void (ucOpcDiccionario::*accion)());
    void ListaDiccionario_ItemClick(const QModelIndex &indice);
    void TxtConversion_Change();
    void Actualizar_Click();
    void Suprimir_Click();
    void Probar_Click();
    bool EnterEnCaja();  // false: the key means what it means elsewhere
    int FilaTecleada() const;
    // A button that is disabled under the user's hand gives the focus on, to where the work goes on.
    void Deshabilita(std::initializer_list<QPushButton *> botones, QWidget *sigue);

    cOpcDiccionario &m_diccionario;
    cGeneral &m_general;
    std::function<void(const QString &)> m_probar;
    cListaDiccionario m_filas;
    cModeloDiccionario *m_modelo;  // children
    QTreeView *m_lista;
    QLineEdit *m_clave, *m_conversion;
    QPushButton *m_actualizar, *m_suprimir, *m_probarBoton;
};

}  // namespace ondalis
