#include "reader/Arranque.h"

#include "reader/cLineaLote.h"
#include "settings/cGeneral.h"

namespace ondalis {

Vida DecideVida(const QString &linea, const PuertosArranque &puertos) {
    if (cGeneral::GetParam(linea, QStringLiteral("help"))) return Vida::Ayuda;
    if (cGeneral::GetParam(linea, QStringLiteral("clear"))) puertos.restauraConfiguracion();
    puertos.ejecutaComandosRegistro();
    if (puertos.ejecutaLineaComandos()) return Vida::Lote;
    return puertos.entraResidente() ? Vida::Residente : Vida::YaArrancado;
}

bool EsLineaDeLote(const QString &linea) { return cLineaLote::De(linea).has_value(); }

QStringList TextosLineaComandos() {
    return {
        QStringLiteral("Uso: Ondalis  [-clear] [-debug] [-nosapi5] [-filetxt nomfich] [-outputfile nomfich] [texto]"),
        QStringLiteral("-clear: Restaura la configuración predeterminada"),
        QStringLiteral("-nosapi5: Ignora las voces SAPI5"),
        QStringLiteral("-filetxt nomfich: Lee el fichero de texto nomfich sin dejar Ondalis residente"),
        QStringLiteral("-outputfile nomfich: Graba la voz en nomfich (con extensión WAV o MP3)"),
        QStringLiteral("texto: Lee el texto sin dejar Ondalis residente"),
    };
}

}  // namespace ondalis
