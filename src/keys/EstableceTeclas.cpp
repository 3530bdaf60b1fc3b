#include "keys/EstableceTeclas.h"

#include <QStringList>

namespace ondalis {

void EstableceTeclasRapidas(cTecla &tecla, const cOpcTeclasRap &opciones) {
    const auto codigo = [&](const QString &nombre) { return static_cast<std::int16_t>(opciones.GetAscii(nombre)); };
    QStringList cambiadas;
    for (const QString nombre : ComandosConfigurables())
        if (!tecla.Registrada(opciones.GetModif(nombre), codigo(nombre), nombre)) cambiadas << nombre;
    // All of them are let go first: two commands may exchange their keys.
    for (const QString &nombre : cambiadas) tecla.BorraTecla(nombre);
    for (const QString &nombre : cambiadas) tecla.AddTecla(opciones.GetModif(nombre), codigo(nombre), nombre);
}

}  // namespace ondalis
