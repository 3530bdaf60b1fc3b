#include "text/cIndiceClaves.h"

#include <algorithm>

namespace ondalis {

namespace {

constexpr std::size_t kLetras = 65536;
constexpr std::uint64_t kLibre = ~std::uint64_t{0};  // no node has that number

std::uint64_t Arista(std::uint32_t nodo, char16_t letra) { return std::uint64_t{nodo} << 16 | letra; }

}  // namespace

cIndiceClaves::cIndiceClaves(const std::vector<QString> &claves)
    : m_nodos(1), m_primeros(kLetras, 0), m_aristas(1024, kLibre), m_hijos(1024, 0) {
    for (std::size_t i = 0; i < claves.size(); ++i) Inserta(claves[i], static_cast<std::int32_t>(i));
    Enlaza();
}

void cIndiceClaves::Marca(QStringView texto, std::vector<char> &marcas) const {
    if (m_longitudMaxima == 0) return;
    std::uint32_t nodo = 0;
    for (const QChar letra : texto) {
        nodo = Paso(nodo, letra.unicode());
        std::uint32_t fin = m_nodos[nodo].clave >= 0 ? nodo : m_nodos[nodo].salida;
        // Behind a key that is marked the rest of its chain is marked: no chain is walked twice.
        while (fin != 0) {
            char &marca = marcas[static_cast<std::size_t>(m_nodos[fin].clave)];
            if (marca) break;
            marca = 1;
            fin = m_nodos[fin].salida;
        }
    }
}

std::uint32_t cIndiceClaves::Paso(std::uint32_t nodo, char16_t letra) const {
    for (;;) {
        const std::uint32_t hijo = Hijo(nodo, letra);
        if (hijo != 0 || nodo == 0) return hijo;
        nodo = m_nodos[nodo].fallo;
    }
}

std::uint32_t cIndiceClaves::Hijo(std::uint32_t nodo, char16_t letra) const {
    if (nodo == 0) return m_primeros[letra];
    const std::size_t casilla = Casilla(nodo, letra);
    return m_aristas[casilla] == kLibre ? 0 : m_hijos[casilla];
}

// The edge's place, or the free one where it would go.
std::size_t cIndiceClaves::Casilla(std::uint32_t nodo, char16_t letra) const {
    const std::uint64_t arista = Arista(nodo, letra);
    const std::size_t mascara = m_aristas.size() - 1;
    auto casilla = static_cast<std::size_t>((arista * 0x9E3779B97F4A7C15u) >> 20) & mascara;
    while (m_aristas[casilla] != kLibre && m_aristas[casilla] != arista) casilla = (casilla + 1) & mascara;
    return casilla;
}

void cIndiceClaves::Inserta(const QString &clave, std::int32_t indice) {
    if (clave.isEmpty()) return;
    std::uint32_t nodo = 0;
    for (const QChar qletra : clave) {
        const char16_t letra = qletra.unicode();
        std::uint32_t hijo = Hijo(nodo, letra);
        if (hijo == 0) {
            hijo = static_cast<std::uint32_t>(m_nodos.size());
            m_nodos.push_back({0, 0, -1, nodo, letra});
            if (nodo == 0) {
                m_primeros[letra] = hijo;
            } else {
                if (2 * ++m_ocupadas > m_aristas.size()) Amplia();
                const std::size_t casilla = Casilla(nodo, letra);
                m_aristas[casilla] = Arista(nodo, letra);
                m_hijos[casilla] = hijo;
            }
        }
        nodo = hijo;
    }
    if (m_nodos[nodo].clave < 0) m_nodos[nodo].clave = indice;
    m_longitudMaxima = std::max(m_longitudMaxima, clave.size());
}

void cIndiceClaves::Amplia() {
    const auto aristas = std::exchange(m_aristas, std::vector<std::uint64_t>(2 * m_aristas.size(), kLibre));
    const auto hijos = std::exchange(m_hijos, std::vector<std::uint32_t>(m_aristas.size(), 0));
    for (std::size_t i = 0; i < aristas.size(); ++i) {
        if (aristas[i] == kLibre) continue;
        const std::size_t casilla =
            Casilla(static_cast<std::uint32_t>(aristas[i] >> 16), static_cast<char16_t>(aristas[i]));
        m_aristas[casilla] = aristas[i];
        m_hijos[casilla] = hijos[i];
    }
}

// A node's ways lead to nodes nearer to the root, so those are finished first.
void cIndiceClaves::Enlaza() {
    std::vector<std::uint32_t> profundidad(m_nodos.size(), 0);
    std::vector<std::uint32_t> orden(m_nodos.size() - 1);
    for (std::uint32_t i = 1; i < m_nodos.size(); ++i) {
        profundidad[i] = profundidad[m_nodos[i].padre] + 1;
        orden[i - 1] = i;
    }
    std::stable_sort(orden.begin(), orden.end(), [&](auto a, auto b) { return profundidad[a] < profundidad[b]; });
    for (const std::uint32_t i : orden) {
        Nodo &nodo = m_nodos[i];
        nodo.fallo = nodo.padre == 0 ? 0 : Paso(m_nodos[nodo.padre].fallo, nodo.letra);
        nodo.salida = m_nodos[nodo.fallo].clave >= 0 ? nodo.fallo : m_nodos[nodo.fallo].salida;
    }
}

}  // namespace ondalis
