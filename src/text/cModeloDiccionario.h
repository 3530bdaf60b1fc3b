// Shows a dictionary's rows to a view: two columns, "Texto" and "Conversión". Rows change through it, so that the view
// follows. The list outlives it. Main thread.
#pragma once

#include <QAbstractTableModel>

#include "text/cListaDiccionario.h"

namespace ondalis {

class cModeloDiccionario : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Columna { Texto, Conversion, kColumnas };

    explicit cModeloDiccionario(cListaDiccionario &lista, QObject *padre = nullptr);

    int rowCount(const QModelIndex &padre = {}) const override;
    int columnCount(const QModelIndex &padre = {}) const override;
    QVariant data(const QModelIndex &indice, int papel = Qt::DisplayRole) const override;
    QVariant headerData(int seccion, Qt::Orientation orientacion, int papel = Qt::DisplayRole) const override;

    // All rows anew; `cambia` changes the list.
    void Rehace(const std::function<void()> &cambia);
    // As the list's own; the row's number.
    int Anade(const QString &clave, const QString &conversion);
    void PonConversion(int fila, const QString &conversion);
    void Quita(int fila);

private:
    cListaDiccionario &m_lista;
};

}  // namespace ondalis
