#include "settings/cOpcGeneral.h"

#include "settings/Catalogo.h"

namespace ondalis {

namespace {
constexpr FilaOpcion kFilas[] = {
    FilaSinClave("CheckInicio", FormaOpcion::Booleano, "0"),  // lives in the autostart folder
    FilaDe("CheckActivo", "General", "ActivaAlArrancar"),        FilaDe("CheckPrioridad", "General", "PrioridadAlta"),
    FilaDe("CheckSonidos", "General", "UtilizaSonidos"),         FilaDe("CheckVerLupa", "General", "VerLupa"),
    FilaDe("CheckSignosPunt", "General", "PronunciaSignosPunt"),
};
}  // namespace

cOpcGeneral::cOpcGeneral(cRegistro &registro, cLog &log)
    : TablaOpciones(kFilas, registro, log, QStringLiteral("ucOpcGeneral")) {
    CargaFilas();
}

void cOpcGeneral::ReleeVerLupa() {
    if (const auto valor = LeeFila(Fila("CheckVerLupa"))) SetTag(QStringLiteral("CheckVerLupa"), *valor);
}

}  // namespace ondalis
