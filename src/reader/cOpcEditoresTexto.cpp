#include "reader/cOpcEditoresTexto.h"

#include "settings/Catalogo.h"

namespace ondalis {

namespace {
constexpr int kMaxSalto = 5;  // words either way

constexpr FilaOpcion kFilas[] = {
    FilaDe("LocalizaPalabrasWord", "Editores", "PalabrasWord"),
    FilaDe("LocalizaParadaWord", "Editores", "ParadaWord"),
    FilaDe("SeleccionaWord", "Editores", "MarcaWord"),
    FilaDe("SliderSalto", "Editores", "SaltoWord", "6"),
};
}  // namespace

cOpcEditoresTexto::cOpcEditoresTexto(cRegistro &registro, cLog &log)
    : TablaOpciones(kFilas, registro, log, QStringLiteral("EditoresTexto")) {
    for (const char *control : {"LocalizaPalabrasWord", "LocalizaParadaWord", "SeleccionaWord"})
        if (const auto valor = LeeFila(Fila(control))) SetTag(QLatin1String(control), *valor);
    if (const auto salto = LeeEntero(Fila("SliderSalto"), -kMaxSalto, kMaxSalto)) SetSaltoWord(*salto);
}

void cOpcEditoresTexto::GuardaValores() {
    for (const char *control : {"LocalizaPalabrasWord", "LocalizaParadaWord", "SeleccionaWord"})
        SalvaFila(Fila(control), Tag(QLatin1String(control)));
    SalvaFila(Fila("SliderSalto"), QString::number(SaltoWord()));
}

}  // namespace ondalis
