#include "engine/ConstructorTramos.h"

#include <algorithm>

#include "engine/Dialectos.h"

namespace ondalis {

void ConstructorTramos::Texto(std::u16string_view trozo, std::size_t origen) {
    if (trozo.empty()) return;
    if (m_texto.texto.empty() || origen != m_siguienteOrigen)
        m_texto.cortes.push_back(
            {static_cast<std::uint32_t>(m_texto.texto.size()), static_cast<std::uint32_t>(origen)});
    m_texto.texto += trozo;
    m_siguienteOrigen = origen + trozo.size();
}

void ConstructorTramos::Orden(TipoTramo tipo, double valor, bool absoluto) {
    CierraTexto();
    m_tramos.push_back({tipo, absoluto, valor, {}, {}});
}

void ConstructorTramos::Orden(TipoTramo tipo, std::u16string texto) {
    CierraTexto();
    m_tramos.push_back({tipo, false, 0, std::move(texto), {}});
}

std::vector<Tramo> ConstructorTramos::Termina() {
    CierraTexto();
    return std::move(m_tramos);
}

void ConstructorTramos::CierraTexto() {
    if (m_texto.texto.empty()) return;
    m_tramos.push_back(std::exchange(m_texto, Tramo{}));
}

bool IgualSinCaja(std::u16string_view texto, std::u16string_view minusculas) {
    return std::equal(texto.begin(), texto.end(), minusculas.begin(), minusculas.end(),
                      [](char16_t a, char16_t b) { return Minuscula(a) == b; });
}

bool LeeNumero(std::u16string_view texto, std::size_t &pos, long &numero) {
    std::size_t i = pos;
    const bool negativo = i < texto.size() && texto[i] == u'-';
    if (negativo || (i < texto.size() && texto[i] == u'+')) ++i;
    if (i >= texto.size() || !EsCifra(texto[i])) return false;
    long valor = 0;
    for (; i < texto.size() && EsCifra(texto[i]); ++i)
        valor = std::min(kTopeNumero, valor * 10 + static_cast<long>(texto[i] - u'0'));
    numero = negativo ? -valor : valor;
    pos = i;
    return true;
}

std::vector<Tramo> TextoLlano(std::u16string_view texto) {
    ConstructorTramos salida;
    salida.Texto(texto, 0);
    return salida.Termina();
}

}  // namespace ondalis
