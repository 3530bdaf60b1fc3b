#include "desktop/cListaOpciones.h"

#include <algorithm>

namespace ondalis {

namespace {

constexpr FilaLista kFilas[kNumPaginas] = {
    {"TeclasRapidas", "Teclas rápidas", "FrameTeclasRap", Pagina::TeclasRap},
    {"General", "General", "FrameGeneral", Pagina::General},
    {"TipoLectura", "Tipo lectura", "FrameTipoLectura", Pagina::TipoLectura},
    {"Voces", "Voces", "FrameVoces", Pagina::Voces},
    {"Grabar", "Grabar", "FrameGrabar", Pagina::Grabar},
    {"Diccionario", "Diccionario", "FrameDiccionario", Pagina::Diccionario},
};

}  // namespace

cListaOpciones::cListaOpciones() {
    m_marcas.fill(Marca::Reposo);
    m_textos.fill(Texto::Normal);
    OpcMain_Click(Indice(Pagina::General));
}

const FilaLista &cListaOpciones::Fila(int indice) { return kFilas[indice]; }

int cListaOpciones::Indice(Pagina pagina) {
    const auto *fila = std::find_if(std::begin(kFilas), std::end(kFilas),
                                    [pagina](const FilaLista &una) { return una.pagina == pagina; });
    return static_cast<int>(fila - kFilas);
}

void cListaOpciones::OpcMain_Click(int indice) {
    for (std::size_t i = 0; i < kNumPaginas; ++i) {
        if (m_textos[i] != Texto::Elegido) continue;
        m_textos[i] = Texto::Normal;
        m_marcas[i] = Marca::Reposo;
    }
    m_textos[static_cast<std::size_t>(indice)] = Texto::Elegido;
    m_marcas[static_cast<std::size_t>(indice)] = Marca::Elegida;
}

void cListaOpciones::OpcMain_MouseMove(int indice) {
    ImgFondo_MouseMove();
    Marca &marca = m_marcas[static_cast<std::size_t>(indice)];
    if (marca == Marca::Reposo) marca = Marca::BajoRaton;
}

void cListaOpciones::ImgFondo_MouseMove() {
    std::replace(m_marcas.begin(), m_marcas.end(), Marca::BajoRaton, Marca::Reposo);
}

QString cListaOpciones::TemaAyuda() const {
    const auto elegida = std::find(m_marcas.begin(), m_marcas.end(), Marca::Elegida);
    if (elegida == m_marcas.end()) return {};
    return QStringLiteral("Opc%1.htm").arg(QLatin1String(Fila(static_cast<int>(elegida - m_marcas.begin())).etiqueta));
}

}  // namespace ondalis
