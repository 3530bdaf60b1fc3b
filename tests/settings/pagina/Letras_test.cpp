// Pages and small dialogs in every look, with letters from small to very large. A page that needs more than its values
// has the same test beside its others.
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <QVBoxLayout>

#include "desktop/cListaOpciones.h"
#include "fakes/Aspectos.h"
#include "fakes/EnVentana.h"
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
        CompruebaAspectos([&] { return EnVentana(r, cual, crea()); },
                          QLatin1String(cListaOpciones::Fila(cListaOpciones::Indice(cual)).control));
    }
    template <class Dialogo, class Opciones>
    void Comprueba(Opciones &opciones) {
        CompruebaAspectos([&] {
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

TEST_F(LetrasTest, TheChecksFindWhatOverlapsWhatIsOutOfOrderAndALetterUsedTwice) {
    QWidget ventana;
    QPushButton primero(QStringLiteral("&Abrir"), &ventana), segundo(QStringLiteral("&Atrás"), &ventana),
        tercero(QStringLiteral("Otro"), &ventana);
    tercero.setGeometry(0, 50, 80, 30);
    primero.setGeometry(0, 100, 80, 30);
    segundo.setGeometry(20, 110, 80, 30);
    ventana.show();
    EXPECT_NONFATAL_FAILURE(CompruebaQueNadaSeSolapa(ventana), "Abrir");
    primero.setGeometry(0, 0, 80, 30);
    segundo.setGeometry(0, 100, 80, 30);
    CompruebaQueNadaSeSolapa(ventana);
    EXPECT_NONFATAL_FAILURE(CompruebaOrdenDeLectura(ventana), "comes behind");
    EXPECT_NONFATAL_FAILURE(CompruebaMnemonicos(ventana), "Alt+A");
}

TEST_F(LetrasTest, TheCheckFindsATextThatIsTooFaint) {
    QWidget ventana;
    ventana.resize(300, 200);
    QPalette tenue = ventana.palette();
    tenue.setColor(QPalette::Window, Qt::white);
    tenue.setColor(QPalette::WindowText, QColor(170, 170, 170));
    ventana.setPalette(tenue);
    std::vector<std::unique_ptr<QLabel>> rotulos;
    for (int i = 0; i < 3; ++i) {
        rotulos.push_back(
            std::make_unique<QLabel>(i == 1 ? QStringLiteral("Tenue") : QStringLiteral("Fuerte"), &ventana));
        rotulos.back()->setGeometry(0, 40 * i, 200, 30);
        if (i != 1) rotulos.back()->setStyleSheet(QStringLiteral("color: black"));
    }
    ventana.show();
    EXPECT_NONFATAL_FAILURE(CompruebaQueSeLee(ventana, 4.5), "Tenue");
}

TEST_F(LetrasTest, TheCheckFindsACaptionWithoutALetterALetterThatLeadsNowhereAndAMarkThatIsHeard) {
    QWidget ventana;
    auto *columna = new QVBoxLayout(&ventana);
    std::vector<QPushButton *> botones;
    for (const char *rotulo : {"&Uno", "&Dos", "&Tres", "Cuatro"}) {
        botones.push_back(new QPushButton(QLatin1String(rotulo)));
        columna->addWidget(botones.back());
    }
    ventana.show();
    EXPECT_NONFATAL_FAILURE(CompruebaLetrasPulsadas(ventana), "Cuatro\" has no letter");
    botones[3]->setText(QStringLiteral("&Cuatro"));
    CompruebaLetrasPulsadas(ventana);
    auto *etiqueta = new QLabel(QStringLiteral("&Nada"));
    columna->addWidget(etiqueta);
    auto *sinFoco = new QWidget;
    columna->addWidget(sinFoco);
    etiqueta->setBuddy(sinFoco);
    QCoreApplication::processEvents();
    EXPECT_NONFATAL_FAILURE(CompruebaLetrasPulsadas(ventana), "Alt+N");
    CompruebaMnemonicos(ventana);
    botones[1]->setAccessibleName(QStringLiteral("&Dos"));
    EXPECT_NONFATAL_FAILURE(CompruebaMnemonicos(ventana), "Dos");
}

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
