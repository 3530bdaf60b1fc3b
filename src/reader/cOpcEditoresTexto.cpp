#include "reader/cOpcEditoresTexto.h"

namespace ondalis {

namespace {

constexpr int kCentro = 6;  // slider position of no jump; it runs from 1 to 11

constexpr FilaOpcion kFilas[] = {
    {"LocalizaPalabrasWord", "Editores", "PalabrasWord", FormaOpcion::Booleano, "1"},
    {"LocalizaParadaWord", "Editores", "ParadaWord", FormaOpcion::Booleano, "0"},
    {"SeleccionaWord", "Editores", "MarcaWord", FormaOpcion::Booleano, "1"},
    {"SliderSalto", "Editores", "SaltoWord", FormaOpcion::Entero, "6"},
};
constexpr const FilaOpcion &kSalto = kFilas[3];

}  // namespace

cOpcEditoresTexto::cOpcEditoresTexto(cRegistro &registro, cLog &log)
    : TablaOpciones(kFilas, registro, log, QStringLiteral("EditoresTexto")) {
    for (const FilaOpcion &fila : kFilas) {
        const std::optional<QString> leido = LeeFila(fila);
        if (!leido) continue;
        if (&fila != &kSalto) {
            SetTag(QLatin1String(fila.control), *leido);
            continue;
        }
        const int palabras = leido->toInt();
        if (palabras < 1 - kCentro || palabras > kCentro - 1)
            m_log.Escribe(QStringLiteral("EditoresTexto.Load: "), QStringLiteral("SaltoWord fuera de rango"));
        else
            SetSaltoWord(palabras);
    }
}

void cOpcEditoresTexto::GuardaValores() {
    for (const FilaOpcion &fila : kFilas) {
        const QString valor = &fila == &kSalto ? QString::number(SaltoWord()) : Tag(QLatin1String(fila.control));
        SalvaFila(fila, valor);
    }
}

}  // namespace ondalis
