// Every page and small dialog with letters from small to very large. A page that is added to the program is added here.
#include "fakes/Letras.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "desktop/Principal.h"
#include "fakes/RegistroPropio.h"
#include "reader/EditoresTexto.h"
#include "settings/SonidosAviso.h"
#include "settings/ucOpcGeneral.h"
#include "settings/ucOpcTipoLectura.h"

namespace ondalis::prueba {
namespace {

class LetrasTest : public testing::Test {
protected:
    // The page in the window, as it is used.
    void Comprueba(Pagina cual, const std::function<PaginaOpciones *()> &crea) {
        CompruebaLetras([&] {
            auto ventana = std::make_unique<Principal>(r.Registro(), r.Log(), Principal::Acciones{});
            ventana->PonPagina(cual, crea());
            ventana->Muestra();
            return ventana;
        });
    }
    template <class Dialogo, class Opciones>
    void Comprueba(Opciones &opciones) {
        CompruebaLetras([&] {
            auto dialogo = std::make_unique<Dialogo>(
                opciones, DialogoOpciones::Colaboradores{
                              .duena = nullptr, .registro = r.Registro(), .log = r.Log(), .ayuda = {}, .alFrente = {}});
            dialogo->Init();
            return dialogo;
        });
    }

    RegistroPropio r;
    cOpcGeneral general{r.Registro(), r.Log()};
    cOpcTipoLectura tipoLectura{r.Registro(), r.Log()};
    cOpcSonidosAviso sonidos{r.Registro(), r.Log()};
    cOpcEditoresTexto editores{r.Registro(), r.Log()};
};

TEST_F(LetrasTest, ThePageGeneralIsNeverCut) {
    Comprueba(Pagina::General, [this] { return new ucOpcGeneral(general); });
}

TEST_F(LetrasTest, ThePageTipoLecturaIsNeverCut) {
    Comprueba(Pagina::TipoLectura, [this] { return new ucOpcTipoLectura(tipoLectura); });
}

TEST_F(LetrasTest, TheDialogOfNoticeSoundsIsNeverCut) { Comprueba<SonidosAviso>(sonidos); }

TEST_F(LetrasTest, TheDialogOfTextEditorsIsNeverCut) { Comprueba<EditoresTexto>(editores); }

// What the check would miss, it must first find.
TEST_F(LetrasTest, TheCheckFindsACaptionThatIsCut) {
    QWidget ventana;
    QLabel cortada(QStringLiteral("Un rótulo demasiado largo"), &ventana);
    QLabel otra(QStringLiteral("a"), &ventana), tercera(QStringLiteral("b"), &ventana);
    cortada.setObjectName(QStringLiteral("Cortada"));
    otra.resize(otra.sizeHint());
    tercera.resize(tercera.sizeHint());
    cortada.resize(20, cortada.sizeHint().height());
    ventana.show();
    EXPECT_NONFATAL_FAILURE(CompruebaTextosEnteros(ventana, 9), "Cortada");
}

}  // namespace
}  // namespace ondalis::prueba
