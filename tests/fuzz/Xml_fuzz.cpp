// The XML dialect gives sound spans or refuses.
#include "engine/Dialectos.h"
#include "fuzz/Tramos_fuzz.h"

using namespace ondalis;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *datos, std::size_t n) {
    for (const std::u16string &texto : {TextoDeBytes(datos, n), TextoDeLetras(datos, n)}) {
        const auto tramos = AnalizaXml(texto);
        if (tramos) CompruebaTramos(*tramos, texto.size());
    }
    return 0;
}
