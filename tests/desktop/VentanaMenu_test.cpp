#include "desktop/VentanaMenu.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>

#include "desktop/cMenuBandeja.h"
#include "fakes/Aspectos.h"

namespace ondalis {
namespace {

class VentanaMenuTest : public testing::Test {
protected:
    MenuIcono estado;
    cCola cola;
    cMenuBandeja menu{estado, cola};
    VentanaMenu ventana{menu.Menu()};
    QPushButton *Boton(const char *nombre) { return ventana.findChild<QPushButton *>(QLatin1String(nombre)); }
    void Pulsa(int tecla) {
        QKeyEvent baja(QEvent::KeyPress, tecla, Qt::NoModifier);
        QApplication::sendEvent(ventana.focusWidget(), &baja);
    }
};

TEST_F(VentanaMenuTest, EveryEntryOfTheMenuIsAButtonInItsOrder) {
    QStringList botones;
    for (const QPushButton *boton : ventana.findChildren<QPushButton *>()) botones << boton->objectName();
    EXPECT_EQ(botones, (QStringList{"ActivarDesactivar", "PausaReanudar", "Detener", "RepetirLectura",
                                    "AvanzarPalabras", "RetrocederPalabras", "Opciones", "AbrirEditor",
                                    "FicheroTextoAAudio", "MenuAyuda", "Salir"}));
    EXPECT_EQ(ventana.windowTitle(), "Ondalis");
}

TEST_F(VentanaMenuTest, CaptionsAndStateFollowTheMenu) {
    estado.Detener.SetHabilitada(true);
    estado.ActivarDesactivar.SetRotulo("Activar (Alt+1) & más");
    EXPECT_TRUE(Boton("Detener")->isEnabled());
    EXPECT_EQ(Boton("ActivarDesactivar")->accessibleName(), "Activar (Alt+1) & más");
    EXPECT_FALSE(Boton("Opciones")->isEnabled());
}

TEST_F(VentanaMenuTest, TheKeyboardAloneReachesAnEntryAndChoosesIt) {
    int salidas = 0;
    menu.AlPulsar(estado.Salir, [&] { ++salidas; });
    ventana.show();
    ASSERT_EQ(ventana.focusWidget(), Boton("ActivarDesactivar"));
    for (int i = 0; i < 15 && ventana.focusWidget() != Boton("Salir"); ++i) Pulsa(Qt::Key_Down);
    ASSERT_EQ(ventana.focusWidget(), Boton("Salir"));
    Pulsa(Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(salidas, 1);
}

TEST_F(VentanaMenuTest, ClosingItLeavesItAmongTheMinimizedWindows) {
    ventana.show();
    ventana.close();
    EXPECT_TRUE(ventana.isVisible());
    EXPECT_TRUE(ventana.isMinimized());
}

TEST_F(VentanaMenuTest, ItIsWholeInEveryLook) {
    prueba::CompruebaAspectos(
        [this] {
            auto otra = std::make_unique<VentanaMenu>(menu.Menu());
            otra->show();
            return otra;
        },
        {}, prueba::Letras::LasQueHaya);
}

}  // namespace
}  // namespace ondalis
