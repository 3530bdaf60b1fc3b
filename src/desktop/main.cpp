// The program's entry: what its command line asks for decides which of its lives it leads.
#include <QFile>
#include <cstdio>
#include <optional>

#include "desktop/Rutas.h"
#include "desktop/Vidas.h"
#include "platform/sistema/cInstancia.h"
#include "platform/sistema/cLanzadorComandosUnix.h"
#include "platform/sistema/cMensajesAparte.h"
#include "reader/Arranque.h"
#include "settings/Catalogo.h"
#include "settings/cComandosRegistro.h"

namespace {

using namespace ondalis;

// What comes before any window: the store is opened and closed again here, so that the reader finds it as it stands.
Vida Decide(char **argv, const QString &linea, cLog &log, std::optional<cInstancia> &instancia,
            std::optional<int> &estadoLote) {
    std::optional<cRegistro> registro;
    const auto almacen = [&]() -> cRegistro & {
        return registro ? *registro : registro.emplace(log, rutas::CarpetaAutoarranque());
    };
    cLanzadorComandosUnix lanzador;
    return DecideVida(
        linea,
        {.restauraConfiguracion = [&] { RestauraConfiguracion(almacen()); },
         .ejecutaComandosRegistro =
             [&] { cComandosRegistro(almacen(), log, lanzador, rutas::CarpetaEstado()).EjecutaComandosRegistro(); },
         .ejecutaLineaComandos =
             [&] {
                 registro.reset();
                 estadoLote = EjecutaLineaComandos(argv, linea, log, instancia);
                 return estadoLote.has_value();
             },
         .entraResidente =
             [&] {
                 return instancia.emplace(cInstancia::Fichero(rutas::Ejecutable(), rutas::CarpetaEstado()), log)
                     .EntraResidente();
             }});
}

}  // namespace

int main(int argc, char **argv) {
    if (argc > 1 && QByteArrayView(argv[1]) == cMensajesAparte::Argumento) return MuestraCaja(argc, argv);

    QStringList partes;
    for (int i = 1; i < argc; ++i) partes << QFile::decodeName(argv[i]);
    const QString linea = partes.join(QLatin1Char(' '));

    cLog log(rutas::FicheroLog());
    std::optional<cInstancia> instancia;  // held to the end of the process
    std::optional<int> estadoLote;
    switch (Decide(argv, linea, log, instancia, estadoLote)) {
        case Vida::Ayuda: return MuestraAyuda(argv);
        case Vida::Lote: return estadoLote.value_or(0);
        case Vida::YaArrancado: return AvisaYaArrancado(argv, log);
        case Vida::Residente: break;
    }
    return Reside(argv, linea, log);
}
