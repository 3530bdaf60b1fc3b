#include "platform/x11/cPortapapelesX11.h"

#include <QElapsedTimer>
#include <QTemporaryDir>
#include <optional>

#include "platform/x11/ServidorX.h"

namespace ondalis {
namespace {

using pruebas::Ayudante;
using pruebas::Corre;
using pruebas::EsperaA;

class cPortapapelesX11Prueba : public testing::Test {
protected:
    void SetUp() override {
        if (!pruebas::ServidorX::Unico()) GTEST_SKIP() << "no Xvfb on this machine";
        otra.emplace([](const xcb_generic_event_t &) {});  // only now: the first test's server has just come
        ASSERT_TRUE(otra->Viva());
        Abre({});
    }
    void Abre(cPortapapelesX11::Plazos plazos) {
        portapapeles.emplace(log, plazos);
        portapapeles->AlRecoger([this] { ++recogidas; });
        ASSERT_TRUE(portapapeles->Conectado());
    }
    // Takes the part as another program and waits until its clipboard has been looked at.
    std::unique_ptr<Ayudante> Copia(const char *papel, const QString &texto = {}) {
        QCoreApplication::processEvents();  // what is told of earlier owners isn't this one's
        const int antes = recogidas;
        auto ayudante = std::make_unique<Ayudante>(QStringList{QLatin1String(papel), texto});
        EXPECT_TRUE(ayudante->Listo());
        EXPECT_TRUE(EsperaA([&] { return recogidas > antes; }));
        return ayudante;
    }
    bool Espera(const QString &texto) {
        return EsperaA([&] { return portapapeles->HayTexto() && portapapeles->Texto() == texto; });
    }
    bool EsperaDueno(bool alguno) {
        return EsperaA([&] {
            const XcbPtr<xcb_get_selection_owner_reply_t> r(xcb_get_selection_owner_reply(
                otra->Xcb(), xcb_get_selection_owner(otra->Xcb(), otra->Atomo("CLIPBOARD")), nullptr));
            return (r->owner != XCB_NONE) == alguno;
        });
    }

    QTemporaryDir carpeta;
    cLog log{carpeta.path() + QStringLiteral("/Ondalis.log")};
    std::optional<cConexionX> otra;
    int recogidas = 0;
    std::optional<cPortapapelesX11> portapapeles;
};

TEST_F(cPortapapelesX11Prueba, ACopyOfAnotherProgramIsFetched) {
    if (!pruebas::Hay("xclip")) GTEST_SKIP() << "no xclip on this machine";
    ASSERT_TRUE(
        Corre(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard")}, "La niña comió"));
    EXPECT_TRUE(Espera(QStringLiteral("La niña comió")));
}

TEST_F(cPortapapelesX11Prueba, TheTextThatIsThereAtTheStartIsFetched) {
    const auto dueno = Copia("texto", QStringLiteral("de antes"));
    Abre({});
    EXPECT_TRUE(Espera(QStringLiteral("de antes")));
}

TEST_F(cPortapapelesX11Prueba, ATextOfMoreThanFiveMegabytesComesWholeInPieces) {
    const auto dueno = Copia("incr", QStringLiteral("6000000"));
    ASSERT_TRUE(portapapeles->HayTexto());
    EXPECT_EQ(portapapeles->Texto().size(), 6000000);
    EXPECT_TRUE(portapapeles->Texto().startsWith(QStringLiteral("palabra 0 palabra 1 ")));
    EXPECT_TRUE(portapapeles->Texto().contains(QStringLiteral(" palabra 300000 ")));
}

TEST_F(cPortapapelesX11Prueba, ATextThatIsTooLongIsNoTextInPiecesOrInOneAndTheNextOneIsRead) {
    portapapeles.emplace(log, cPortapapelesX11::Plazos{}, 1000);
    portapapeles->AlRecoger([this] { ++recogidas; });
    { const auto dueno = Copia("texto", QString(1000, QLatin1Char('x'))); }
    EXPECT_EQ(portapapeles->Texto().size(), 1000);
    const auto pieza = Copia("texto", QString(1001, QLatin1Char('x')));
    EXPECT_FALSE(portapapeles->HayTexto());
    const auto piezas = Copia("incr", QStringLiteral("200000"));
    EXPECT_FALSE(portapapeles->HayTexto());
    QFile diario(log.Fichero());
    ASSERT_TRUE(diario.open(QIODevice::ReadOnly));
    EXPECT_EQ(diario.readAll().count("el texto es demasiado largo"), 2);
    const auto dueno = Copia("texto", QStringLiteral("corto"));
    EXPECT_TRUE(Espera(QStringLiteral("corto")));
}

TEST_F(cPortapapelesX11Prueba, TheOldFormatsAreTakenWhereTheNewOnesAreMissing) {
    { const auto dueno = Copia("mime", QStringLiteral("señal")); }
    EXPECT_EQ(portapapeles->Texto(), QStringLiteral("señal"));
    { const auto dueno = Copia("antiguo", QStringLiteral("anciano")); }
    EXPECT_EQ(portapapeles->Texto(), QStringLiteral("anciano"));
}

TEST_F(cPortapapelesX11Prueba, ALatinTextIsReadAsLatin) {
    const auto dueno = Copia("latin1", QStringLiteral("plain"));
    EXPECT_EQ(portapapeles->Texto(), QStringLiteral("plain"));
}

TEST_F(cPortapapelesX11Prueba, AHungOwnerIsGivenUpWhileTheLoopRunsOn) {
    portapapeles.reset();
    Abre({.respuestaMs = 300});
    { const auto dueno = Copia("texto", QStringLiteral("anterior")); }
    int latidos = 0;  // a loop that waited for the owner would give none
    QTimer latido;
    QObject::connect(&latido, &QTimer::timeout, [&] { ++latidos; });
    latido.start(5);
    const auto colgado = Copia("colgado");
    EXPECT_GE(latidos, 3);
    EXPECT_EQ(portapapeles->Texto(), QStringLiteral("anterior"));
    EXPECT_TRUE(QFile::exists(log.Fichero()));
    const auto dueno = Copia("texto", QStringLiteral("siguiente"));
    EXPECT_TRUE(Espera(QStringLiteral("siguiente")));
}

TEST_F(cPortapapelesX11Prueba, AnOwnerThatExitsKeepsTheTextLastFetched) {
    auto dueno = Copia("texto", QStringLiteral("queda"));
    dueno.reset();
    ASSERT_TRUE(EsperaDueno(false));
    QCoreApplication::processEvents();
    EXPECT_TRUE(portapapeles->HayTexto());
    EXPECT_EQ(portapapeles->Texto(), QStringLiteral("queda"));
}

TEST_F(cPortapapelesX11Prueba, AnOwnerThatDiesInTheMiddleOfALongTextKeepsTheTextBefore) {
    { const auto dueno = Copia("texto", QStringLiteral("entero")); }
    const auto muere = Copia("medio", QStringLiteral("1000000"));
    EXPECT_TRUE(EsperaA([&] { return muere->Acabado(); }));
    EXPECT_EQ(portapapeles->Texto(), QStringLiteral("entero"));
}

TEST_F(cPortapapelesX11Prueba, ClearingEndsTheText) {
    const auto dueno = Copia("texto", QStringLiteral("fuera"));
    ASSERT_TRUE(portapapeles->HayTexto());
    ASSERT_TRUE(dueno->Suelta());
    EXPECT_TRUE(EsperaA([&] { return !portapapeles->HayTexto(); }));
    EXPECT_EQ(portapapeles->Texto(), QString());
}

TEST_F(cPortapapelesX11Prueba, AnOwnerWithoutTextEndsTheText) {
    { const auto dueno = Copia("texto", QStringLiteral("fuera")); }
    ASSERT_TRUE(portapapeles->HayTexto());
    const auto imagen = Copia("imagen");
    EXPECT_FALSE(portapapeles->HayTexto());
}

TEST_F(cPortapapelesX11Prueba, ASecretIsNeitherReadNorKept) {
    { const auto dueno = Copia("texto", QStringLiteral("antes")); }
    const auto secreto = Copia("secreto", QStringLiteral("contraseña"));
    EXPECT_FALSE(portapapeles->HayTexto());
    EXPECT_EQ(portapapeles->Texto(), QString());
}

TEST_F(cPortapapelesX11Prueba, NulCharactersBelongToNoText) {
    const auto dueno = Copia("texto", QStringLiteral("nulos"));
    EXPECT_EQ(portapapeles->Texto(), QStringLiteral("unodos"));
}

TEST_F(cPortapapelesX11Prueba, InvalidBytesSpoilOnlyThemselves) {
    const auto dueno = Copia("texto", QStringLiteral("invalido"));
    EXPECT_EQ(portapapeles->Texto(), QStringLiteral("ma\uFFFDana ñ"));
}

TEST_F(cPortapapelesX11Prueba, EmptyingLeavesTheSelectionWithoutOwner) {
    const auto dueno = Copia("texto", QStringLiteral("viejo"));
    portapapeles->Vacia();
    EXPECT_FALSE(portapapeles->HayTexto());
    EXPECT_TRUE(EsperaDueno(false));
    EXPECT_FALSE(portapapeles->HayTexto());
}

TEST_F(cPortapapelesX11Prueba, EmptyingBeforeTheFirstFetchHasEndedEmptiesAllTheSame) {
    const auto dueno = Copia("texto", QStringLiteral("de antes"));
    portapapeles.reset();
    Abre({});
    portapapeles->Vacia();
    EXPECT_TRUE(EsperaDueno(false));
    EXPECT_FALSE(portapapeles->HayTexto());
    // What a clipboard manager brings back is known although it was never shown.
    const auto gestor = Copia("texto", QStringLiteral("de antes"));
    EXPECT_FALSE(portapapeles->HayTexto());
}

TEST_F(cPortapapelesX11Prueba, EmptyingAHungOwnerDoesNotWaitForIt) {
    portapapeles.reset();
    Abre({.respuestaMs = 100});
    const auto colgado = Copia("colgado");
    portapapeles->Vacia();
    EXPECT_TRUE(EsperaDueno(false));
}

TEST_F(cPortapapelesX11Prueba, ACopyMadeRightAfterTheCallStands) {
    const auto dueno = Copia("texto", QStringLiteral("viejo"));
    xcb_connection_t *x = otra->Xcb();
    const xcb_window_t ventana = xcb_generate_id(x);
    xcb_create_window(x, 0, ventana, otra->Raiz(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0,
                      nullptr);
    const xcb_atom_t seleccion = otra->Atomo("CLIPBOARD");
    for (int vuelta = 0; vuelta < 20; ++vuelta) {
        portapapeles->Vacia();
        xcb_set_selection_owner(x, ventana, seleccion, XCB_CURRENT_TIME);
        otra->PonteAlDia();
        EsperaA([&] { return false; }, 10);  // all that could still take it away has had its turn
        const XcbPtr<xcb_get_selection_owner_reply_t> r(
            xcb_get_selection_owner_reply(x, xcb_get_selection_owner(x, seleccion), nullptr));
        EXPECT_EQ(r->owner, ventana) << vuelta;
    }
}

TEST_F(cPortapapelesX11Prueba, ACopyMadeRightBeforeTheCallIsEmptied) {
    const Ayudante dueno({QStringLiteral("texto"), QStringLiteral("reciente")});
    ASSERT_TRUE(dueno.Listo());
    portapapeles->Vacia();
    EXPECT_TRUE(EsperaDueno(false));
    EXPECT_FALSE(portapapeles->HayTexto());
}

TEST_F(cPortapapelesX11Prueba, TheEmptiedTextComingBackAtOnceIsNotACopy) {
    const auto dueno = Copia("texto", QStringLiteral("vuelve"));
    portapapeles->Vacia();
    ASSERT_TRUE(EsperaDueno(false));
    const auto gestor = Copia("texto", QStringLiteral("vuelve"));
    EXPECT_FALSE(portapapeles->HayTexto());
    const auto otro = Copia("texto", QStringLiteral("nuevo"));
    EXPECT_EQ(portapapeles->Texto(), QStringLiteral("nuevo"));
}

TEST_F(cPortapapelesX11Prueba, TheEmptiedTextComingBackLaterIsACopy) {
    portapapeles.reset();
    Abre({.retornoMs = 0});
    const auto dueno = Copia("texto", QStringLiteral("vuelve"));
    portapapeles->Vacia();
    ASSERT_TRUE(EsperaDueno(false));
    QElapsedTimer reloj;
    reloj.start();
    EsperaA([&] { return reloj.hasExpired(2); });
    const auto usuario = Copia("texto", QStringLiteral("vuelve"));
    EXPECT_TRUE(portapapeles->HayTexto());
}

}  // namespace
}  // namespace ondalis
