#include "settings/cOpcTipoLectura.h"

#include "settings/Catalogo.h"

namespace ondalis {

namespace {
constexpr FilaOpcion kFilas[] = {
    FilaDe("CheckPortapapeles", "TipoLectura", "LeePortapapeles"),
    FilaDe("CheckMiniTexto", "TipoLectura", "IgnoraMiniTexto"),
    FilaDe("ValorMiniTexto", "TipoLectura", "CharsMiniTexto"),
    FilaDe("CheckEditores", "TipoLectura", "TrataEditores"),
    FilaSinClave("CheckPausas", FormaOpcion::Booleano, "1"),  // only says what always is so
    FilaDe("CheckLeeTeclado", "TipoLectura", "LeeTeclado"),
    FilaDe("CheckLeeCambioApp", "TipoLectura", "LeeCambioApp"),
};
}  // namespace

cOpcTipoLectura::cOpcTipoLectura(cRegistro &registro, cLog &log)
    : TablaOpciones(kFilas, registro, log, QStringLiteral("ucOpcTipoLectura")) {
    CargaFilas();
    // A limit that the box can't show would silence the clipboard behind the user's back.
    if (CharsMiniTexto() >= 0 && CharsMiniTexto() <= MaxMiniTexto) return;
    AnotaSinSentido(Fila("ValorMiniTexto"));
    SetTag(QStringLiteral("ValorMiniTexto"), QLatin1String(Fila("ValorMiniTexto").diseno));
}

}  // namespace ondalis
