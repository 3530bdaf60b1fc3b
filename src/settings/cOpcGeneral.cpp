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
constexpr FilaOpcion kAviso = FilaDe("CheckMostrar", "General", "Aviso");
}  // namespace

cOpcGeneral::cOpcGeneral(cRegistro &registro, cLog &log)
    : TablaOpciones(kFilas, registro, log, QStringLiteral("ucOpcGeneral")) {
    CargaFilas();
}

void cOpcGeneral::ReleeVerLupa() {
    if (const auto valor = LeeFila(Fila("CheckVerLupa"))) SetTag(QStringLiteral("CheckVerLupa"), *valor);
}

bool cOpcGeneral::Aviso() { return LeeFila(kAviso).value_or(QString::fromLatin1(kAviso.diseno)) == QLatin1String("1"); }

void cOpcGeneral::SalvaAviso(bool valor) { SalvaFila(kAviso, valor ? QStringLiteral("1") : QStringLiteral("0")); }

}  // namespace ondalis
