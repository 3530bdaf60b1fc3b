// The option list of the configuration window as state: a label and a marker for each page, whose colours tell which
// page is selected and which label the mouse is over. The widget paints by it. Main thread.
#pragma once

#include <QString>
#include <array>

#include "settings/PaginaConfiguracion.h"

namespace ondalis {

// One label of the list; the tag also names the page's help topic.
struct FilaLista {
    const char *etiqueta;
    const char *rotulo;
    const char *control;  // the page's name on the form
    Pagina pagina;
};

class cListaOpciones {
public:
    // The numbers are colours with blue in the high byte, as other parts read them back.
    enum class Marca { Reposo = 16777215, BajoRaton = 4194304, Elegida = 8388608 };
    enum class Texto { Normal = 0x404000, Elegido = 0x400000 };

    // "General" is selected.
    cListaOpciones();

    static const FilaLista &Fila(int indice);  // 0 to kNumPaginas - 1
    static int Indice(Pagina pagina);

    void OpcMain_Click(int indice);
    void OpcMain_MouseMove(int indice);
    void ImgFondo_MouseMove();
    Marca MarcaOpc(int indice) const { return m_marcas[static_cast<std::size_t>(indice)]; }
    Texto OpcMain(int indice) const { return m_textos[static_cast<std::size_t>(indice)]; }
    // Help topic of the first selected label; empty without one.
    QString TemaAyuda() const;

private:
    std::array<Marca, kNumPaginas> m_marcas;
    std::array<Texto, kNumPaginas> m_textos;
};

}  // namespace ondalis
