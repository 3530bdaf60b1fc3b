// The bookkeeping of one utterance over failing workers.
#include <gtest/gtest.h>

#include "BancoBomba.h"
#include "engine/cRecorrido.h"

namespace ondalis {
namespace {

using Remedio = cRecorrido::Remedio;

TEST(cRecorrido, AClauseThatGotFurtherBeforeItFailedAgainIsNotSkipped) {
    cRecorrido recorrido;
    recorrido.Empieza(LocucionDe(1, u"uno dos tres cuatro cinco. Seis."));
    std::uint64_t muestra = 0;
    for (const std::uint32_t posicion : {0u, 4u, 8u, 13u}) {
        ASSERT_TRUE(recorrido.Palabra(0, posicion, 3));
        recorrido.Recibidas(100);
        ++muestra;
        EXPECT_EQ(recorrido.Falla(), Remedio::Reintenta) << "failure " << muestra;
    }
    // Now it fails where it failed before: that is the clause's doing.
    EXPECT_EQ(recorrido.Falla(), Remedio::Salta);
    EXPECT_EQ(recorrido.Peticion().desde, 26u);
}

}  // namespace
}  // namespace ondalis
