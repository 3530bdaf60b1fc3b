#include "text/cModeloDiccionario.h"

namespace ondalis {

cModeloDiccionario::cModeloDiccionario(cListaDiccionario &lista, QObject *padre)
    : QAbstractTableModel(padre), m_lista(lista) {}

int cModeloDiccionario::rowCount(const QModelIndex &padre) const { return padre.isValid() ? 0 : m_lista.Cuantas(); }

int cModeloDiccionario::columnCount(const QModelIndex &padre) const { return padre.isValid() ? 0 : kColumnas; }

QVariant cModeloDiccionario::data(const QModelIndex &indice, int papel) const {
    if (!indice.isValid() || (papel != Qt::DisplayRole && papel != Qt::ToolTipRole)) return {};
    const cListaDiccionario::Fila &fila = m_lista[indice.row()];
    return indice.column() == Texto ? fila.clave : fila.conversion;
}

QVariant cModeloDiccionario::headerData(int seccion, Qt::Orientation orientacion, int papel) const {
    if (orientacion != Qt::Horizontal || papel != Qt::DisplayRole) return {};
    return seccion == Texto ? QStringLiteral("Texto") : QStringLiteral("Conversión");
}

void cModeloDiccionario::Rehace(const std::function<void()> &cambia) {
    beginResetModel();
    cambia();
    endResetModel();
}

int cModeloDiccionario::Anade(const QString &clave, const QString &conversion) {
    const int sitio = m_lista.Sitio(clave);
    beginInsertRows({}, sitio, sitio);
    m_lista.Anade(clave, conversion);
    endInsertRows();
    return sitio;
}

void cModeloDiccionario::PonConversion(int fila, const QString &conversion) {
    m_lista.PonConversion(fila, conversion);
    const QModelIndex indice = index(fila, Conversion);
    emit dataChanged(indice, indice);
}

void cModeloDiccionario::Quita(int fila) {
    beginRemoveRows({}, fila, fila);
    m_lista.Quita(fila);
    endRemoveRows();
}

}  // namespace ondalis
