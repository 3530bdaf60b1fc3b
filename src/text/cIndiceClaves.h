// Finds which of many keys occur in a text, all in one walk over it, whatever their number (the automaton of Aho and
// Corasick over UTF-16 units). Built once for a set of keys, then only read. Owned by the filter. Main thread.
#pragma once

#include <QString>
#include <QStringView>
#include <cstdint>
#include <vector>

namespace ondalis {

class cIndiceClaves {
public:
    // A key is known by its index here. Empty keys never occur; of equal ones only the first is ever marked.
    explicit cIndiceClaves(const std::vector<QString> &claves);

    // Sets the marks of the keys that occur in `texto`; sets no other and clears none. `marcas` has one element a key,
    // and its true ones must come from earlier calls alone: a mark tells that its key's inner keys are marked as well.
    void Marca(QStringView texto, std::vector<char> &marcas) const;

    qsizetype LongitudMaxima() const { return m_longitudMaxima; }  // of the longest key, 0 without keys

private:
    struct Nodo {
        std::uint32_t fallo = 0;   // the longest other way to be in the middle of keys here
        std::uint32_t salida = 0;  // the next node on that way at which a key ends; 0 = none
        std::int32_t clave = -1;   // the key that ends here
        std::uint32_t padre = 0;
        char16_t letra = 0;
    };
    std::uint32_t Hijo(std::uint32_t nodo, char16_t letra) const;  // 0 = none
    std::uint32_t Paso(std::uint32_t nodo, char16_t letra) const;
    void Inserta(const QString &clave, std::int32_t indice);
    void Enlaza();
    std::size_t Casilla(std::uint32_t nodo, char16_t letra) const;
    void Amplia();

    std::vector<Nodo> m_nodos;              // 0 is the root
    std::vector<std::uint32_t> m_primeros;  // the root's children by their letter
    // All other edges, hashed: node and letter to child.
    std::vector<std::uint64_t> m_aristas;
    std::vector<std::uint32_t> m_hijos;
    std::size_t m_ocupadas = 0;
    qsizetype m_longitudMaxima = 0;
};

}  // namespace ondalis
