// The rows of the dictionary's list as the user edits them: pairs of texts, each text once, in the list's order. Apart
// from the table that governs speech. A value; main thread.
#pragma once

#include <QCollator>
#include <QSet>
#include <QString>
#include <functional>
#include <vector>

namespace ondalis {

class cListaDiccionario {
public:
    struct Fila {
        QString clave, conversion;
        bool operator==(const Fila &) const = default;
    };

    cListaDiccionario();

    // A row's key: a full stop before the text.
    static QString ClaveFila(const QString &clave) { return QLatin1Char('.') + clave; }
    // What a text is once stored: without NULs, and without what no UTF-8 can hold.
    static QString Normaliza(const QString &texto);

    int Cuantas() const { return static_cast<int>(m_filas.size()); }
    const Fila &operator[](int fila) const { return m_filas[static_cast<std::size_t>(fila)].fila; }
    // The row with that key; -1: none.
    int Busca(const QString &claveFila) const;

    void Vacia();
    // Empties the list and adds what `siguiente` gives until it says false, then switches the sorting on. Throws
    // ErrorFallo (457) at a key that is there already: the rows before it stay, the sorting as it was.
    void Carga(const std::function<bool(QString &clave, QString &conversion)> &siguiente);
    // Where a row with this text would go: behind its equals when the list is sorted, else at the end.
    int Sitio(const QString &clave) const;
    // Adds a row in its place and returns its number. Throws as Carga does.
    int Anade(const QString &clave, const QString &conversion);
    void PonConversion(int fila, const QString &conversion);
    void Quita(int fila);
    // Sorts by the text as the user's language does, blind to case, equals in the order that they had; rows that come
    // later go to their place.
    void Ordena();
    bool Ordenada() const { return m_ordenada; }

private:
    struct Guardada {
        Fila fila;
        QCollatorSortKey orden;
    };
    void Apunta(const QString &clave);

    QCollator m_cotejo;
    std::vector<Guardada> m_filas;
    QSet<QString> m_claves;
    bool m_ordenada = false;
};

}  // namespace ondalis
