// The backquote dialect takes any text and never fails.
#include "engine/Dialectos.h"
#include "fuzz/Tramos_fuzz.h"

using namespace ondalis;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *datos, std::size_t n) {
    for (const std::u16string &texto : {TextoDeBytes(datos, n), TextoDeLetras(datos, n)}) {
        const auto tramos = AnalizaComilla(texto);
        CompruebaTramos(tramos, texto.size());
        Exige(AnalizaComilla(texto) == tramos);
    }
    return 0;
}
