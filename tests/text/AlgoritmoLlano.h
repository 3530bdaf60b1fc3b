// The dictionary pass said in the plainest way, one replacement an entry: what the filter's result must equal.
#pragma once

#include <QString>
#include <array>

#include "libs/ondalis_dicc.h"

namespace ondalis {

inline void ConversionesUnaAUna(QString &texto) {
    std::array<char, ONDALIS_DICC_TAM> clave{}, conversion{};
    for (PrimeraPosicionDicc(); GetPosicionDicc(clave.data(), conversion.data()) == 1; SigPosicionDicc())
        texto.replace(QString::fromUtf8(clave.data()), QLatin1Char(' ') + QString::fromUtf8(conversion.data()));
}

}  // namespace ondalis
