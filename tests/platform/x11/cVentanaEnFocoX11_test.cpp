#include "platform/x11/cVentanaEnFocoX11.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "platform/x11/ServidorX.h"

namespace ondalis {
namespace {

void Proceso(const QTemporaryDir &proc, int pid, const QByteArray &resto) {
    QDir(proc.path()).mkdir(QString::number(pid));
    QFile fichero(proc.path() + QStringLiteral("/%1/stat").arg(pid));
    ASSERT_TRUE(fichero.open(QIODevice::WriteOnly));
    fichero.write(QByteArray::number(pid) + resto);
}

TEST(cVentanaEnFocoX11, TheClassOfATerminalIsKnownWhateverItsCase) {
    EXPECT_TRUE(EsClaseDeConsola("XTerm"));
    EXPECT_TRUE(EsClaseDeConsola("konsole"));
    EXPECT_FALSE(EsClaseDeConsola("Navigator"));
}

TEST(cVentanaEnFocoX11, AProcessWhoseChildLeadsASessionWithATerminalIsATerminal) {
    const QTemporaryDir proc;
    Proceso(proc, 100, " (ventana) S 1 100 100 0 -1");
    Proceso(proc, 101, " (b) a) (sh) S 100 101 101 34816 101");
    EXPECT_TRUE(TieneTerminalPropio(100, proc.path().toStdString()));
}

TEST(cVentanaEnFocoX11, AChildWithoutATerminalOrInAnothersSessionDoesNotCount) {
    const QTemporaryDir proc;
    Proceso(proc, 100, " (ventana) S 1 100 100 0 -1");
    Proceso(proc, 101, " (demonio) S 100 101 101 0 -1");
    Proceso(proc, 102, " (ayuda) S 100 102 90 34816 102");
    EXPECT_FALSE(TieneTerminalPropio(100, proc.path().toStdString()));
}

TEST(cVentanaEnFocoX11, WithoutAWindowManagerNothingIsATerminal) {
    if (!pruebas::ServidorX::Unico()) GTEST_SKIP() << "no Xvfb on this machine";
    cVentanaEnFocoX11 ventana;
    EXPECT_FALSE(ventana.EsConsola());
}

TEST(cVentanaEnFocoX11, TheActiveWindowsClassDecides) {
    if (!pruebas::ServidorX::Unico()) GTEST_SKIP() << "no Xvfb on this machine";
    cConexionX gestor([](const xcb_generic_event_t &) {});
    xcb_connection_t *x = gestor.Xcb();
    const xcb_window_t otra = xcb_generate_id(x);
    xcb_create_window(x, 0, otra, gestor.Raiz(), 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0,
                      nullptr);
    const auto activa = gestor.Atomo("_NET_ACTIVE_WINDOW");
    xcb_change_property(x, XCB_PROP_MODE_REPLACE, gestor.Raiz(), activa, XCB_ATOM_WINDOW, 32, 1, &otra);
    const auto clase = [&](const std::string &texto) {
        xcb_change_property(x, XCB_PROP_MODE_REPLACE, otra, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
                            static_cast<std::uint32_t>(texto.size()), texto.data());
        gestor.Atomo("WM_CLASS");  // waits until the server has taken it
    };
    cVentanaEnFocoX11 ventana;
    clase(std::string("xterm\0XTerm\0", 12));
    EXPECT_TRUE(ventana.EsConsola());
    clase(std::string("Navigator\0firefox-esr\0", 22));
    EXPECT_FALSE(ventana.EsConsola());
    xcb_delete_property(x, gestor.Raiz(), activa);
    gestor.Despacha();
}

}  // namespace
}  // namespace ondalis
