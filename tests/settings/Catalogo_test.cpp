#include "settings/Catalogo.h"

#include <gtest/gtest.h>

#include <set>

#include "audio/cOpcGrabar.h"
#include "fakes/RegistroPropio.h"
#include "keys/cOpcTeclasRap.h"
#include "reader/cOpcEditoresTexto.h"
#include "settings/cOpcGeneral.h"
#include "settings/cOpcSonidosAviso.h"
#include "settings/cOpcTipoLectura.h"

namespace ondalis {
namespace {

using prueba::RegistroPropio;

TEST(Catalogo, EachSettingStandsOnce) {
    std::set<std::pair<QString, QString>> vistos;
    for (const FilaCatalogo &fila : Catalogo())
        EXPECT_TRUE(vistos.insert({QString(fila.seccion).toLower(), QString(fila.clave).toLower()}).second)
            << fila.seccion << "\\" << fila.clave;
    EXPECT_EQ(vistos.size(), 102u);
}

TEST(Catalogo, EachDefaultHasItsForm) {
    for (const FilaCatalogo &fila : Catalogo()) {
        if (!fila.defecto) continue;
        bool bien = true;
        const QString defecto = QString::fromLatin1(fila.defecto);
        if (fila.forma == FormaOpcion::Booleano) bien = defecto == "True" || defecto == "False";
        if (fila.forma == FormaOpcion::BooleanoComoCifra) bien = defecto == "1" || defecto == "0";
        if (fila.forma == FormaOpcion::Entero) (void)defecto.toInt(&bien);
        EXPECT_TRUE(bien) << fila.seccion << "\\" << fila.clave;
    }
}

TEST(Catalogo, AfterRestoringEachSettingReadsAsItsDefaultAgain) {
    RegistroPropio p;
    for (const FilaCatalogo &fila : Catalogo()) ASSERT_TRUE(p.Salva(fila.seccion, fila.clave, "otra cosa"));
    for (const FilaCatalogo &fila : Catalogo()) ASSERT_EQ(p.Lee(fila.seccion, fila.clave), "otra cosa");
    RestauraConfiguracion(p.Registro());
    for (const FilaCatalogo &fila : Catalogo()) {
        const QString defecto = QString::fromLatin1(fila.defecto ? fila.defecto : "actual");
        EXPECT_EQ(p.Lee(fila.seccion, fila.clave, defecto), defecto) << fila.seccion << "\\" << fila.clave;
        EXPECT_FALSE(p.Registro().Busca("CU", Producto::Ruta(), fila.seccion, fila.clave));
    }
}

TEST(Catalogo, RestoringTakesTheStartEntryAndLeavesTheRouteAndTheSystemsStore) {
    RegistroPropio p;
    p.Registro().SalvaAutoarranque("Ondalis", "ondalis");
    ASSERT_TRUE(p.Salva("", "Propia", "1"));
    ASSERT_TRUE(p.Salva("Otra", "Ajena", "1"));
    ASSERT_TRUE(p.Registro().Salva("LM", Producto::Ruta(), "", "CMD1", "orden"));
    ASSERT_TRUE(p.Registro().Salva("LM", Producto::Ruta(), "Voz", "Velocidad", "1"));
    RestauraConfiguracion(p.Registro());
    EXPECT_FALSE(p.Registro().GetAutoarranque("Ondalis"));
    EXPECT_EQ(p.Lee("", "Propia"), "1");
    EXPECT_EQ(p.Lee("Otra", "Ajena"), "1");
    EXPECT_EQ(p.Registro().Lee("LM", Producto::Ruta(), "", "CMD1"), "orden");
    EXPECT_EQ(p.Registro().Lee("LM", Producto::Ruta(), "Voz", "Velocidad"), "1");
}

TEST(Catalogo, AfterRestoringTheAssistantIsDueAgain) {
    RegistroPropio p;
    ASSERT_TRUE(p.Salva("General", "Aviso", "False"));
    RestauraConfiguracion(p.Registro());
    EXPECT_EQ(cRegistro::ABooleano(p.Lee("General", "Aviso", true)), std::optional<bool>(true));
}

// One page's rows against the catalogue; what a page stores is in it, with its form.
template <class Pagina, class... Resto>
void CompruebaPagina(const Resto &...resto) {
    RegistroPropio p;
    Pagina pagina(p.Registro(), p.Log(), resto...);
    for (const FilaOpcion &fila : pagina.Filas()) {
        if (!fila.clave) continue;
        const bool hay = std::any_of(Catalogo().begin(), Catalogo().end(), [&](const FilaCatalogo &una) {
            return qstrcmp(una.seccion, fila.seccion) == 0 && qstrcmp(una.clave, fila.clave) == 0 &&
                   una.forma == fila.forma;
        });
        EXPECT_TRUE(hay) << fila.seccion << "\\" << fila.clave;
    }
    // What an untouched page stores is each setting's default, and nothing else.
    pagina.GuardaValores();
    for (const FilaOpcion &fila : pagina.Filas()) {
        if (!fila.clave) continue;
        for (const FilaCatalogo &una : Catalogo())
            if (una.defecto && qstrcmp(una.seccion, fila.seccion) == 0 && qstrcmp(una.clave, fila.clave) == 0) {
                EXPECT_EQ(p.Lee(fila.seccion, fila.clave, "ausente"), una.defecto) << una.seccion << "\\" << una.clave;
            }
    }
    EXPECT_TRUE(p.LineasLog().isEmpty());
}

TEST(Catalogo, AnUntouchedPageStoresTheDefaultsOfTheCatalogue) {
    CompruebaPagina<cOpcGeneral>();
    CompruebaPagina<cOpcTipoLectura>();
    CompruebaPagina<cOpcSonidosAviso>();
    CompruebaPagina<cOpcEditoresTexto>();
    CompruebaPagina<cOpcTeclasRap>();
    CompruebaPagina<cOpcGrabar>(QStringLiteral("/musica/Lectura.wav"));
}

}  // namespace
}  // namespace ondalis
