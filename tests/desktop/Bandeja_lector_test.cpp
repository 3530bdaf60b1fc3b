// The tray's real widgets over the whole controller: what a click in the notification area does.
#include <QAction>
#include <QMenu>

#include "desktop/cBandeja.h"
#include "desktop/cMenuBandeja.h"
#include "fakes/IconoDelBusGuion.h"
#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class VigiaPresente : public VigiaBandeja {
public:
    bool HayEnElBus() override { return true; }
    bool LlegaElToolkit() override { return true; }
    bool HayEnX() override { return false; }
    void SetAlAparecer(std::function<void()>) override {}
    void SetAlDesaparecer(std::function<void()>) override {}
};

class BandejaLector : public PruebaLector {
protected:
    BandejaLector() {
        Conecta(menu.ActivarDesactivar, &cFormPrincipal::ActivarDesactivar_Click);
        Conecta(menu.PausaReanudar, &cFormPrincipal::PausaReanudar_Click);
        Conecta(menu.Detener, &cFormPrincipal::Detener_Click);
        Conecta(menu.RepetirLectura, &cFormPrincipal::RepetirLectura_Click);
        Conecta(menu.Salir, &cFormPrincipal::Salir_Click);
        bandeja.SetMenu(&espejo.Menu());
        bandeja.AlDobleClick([this] { principal.Opciones_Click(); });
        Arranca();
        bandeja.SetImagen(principal.GetIconoBarra());
    }
    ~BandejaLector() override { bandeja.SetMenu(nullptr); }

    void Conecta(const EntradaMenu &entrada, void (cFormPrincipal::*accion)()) {
        espejo.AlPulsar(entrada, [this, accion] { (principal.*accion)(); });
    }
    QAction *Accion(const char *nombre) { return espejo.Menu().findChild<QAction *>(QLatin1String(nombre)); }
    void Elige(const char *nombre) {
        Accion(nombre)->trigger();
        Corre();
    }

    VigiaPresente vigia;
    IconoDelBusGuion propio;
    cBandeja bandeja{vigia, propio, log};
    cMenuBandeja espejo{menu, cola};
};

TEST_F(BandejaLector, TheDoubleClickOpensTheConfigurationEvenWhileInactive) {
    for (const bool activo : {true, false}) {
        EXPECT_EQ(principal.ProgramaActivo(), activo);
        diario.Olvida();
        bandeja.Pulsado(QSystemTrayIcon::Trigger);
        bandeja.Pulsado(QSystemTrayIcon::DoubleClick);
        EXPECT_EQ(diario.Todo(), Lineas{"ventanas.Opciones"});
        principal.ActivarDesactivar_Click();
    }
}

TEST_F(BandejaLector, TheRightButtonOnlyOpensTheMenu) {
    bandeja.Pulsado(QSystemTrayIcon::Context);
    EXPECT_EQ(diario.Todo(), Lineas{});
    EXPECT_EQ(bandeja.Menu(), &espejo.Menu());
}

TEST_F(BandejaLector, AnInactiveStartShowsActivarAndNoEntryOfAReading) {
    opcGeneral.SetActivaAlArrancar(false);
    principal.Form_Load();
    principal.Init();
    EXPECT_EQ(Accion("ActivarDesactivar")->text(), QStringLiteral("Activar (Alt + 1)"));
    for (const char *nombre : {"PausaReanudar", "Detener", "RepetirLectura", "AvanzarPalabras", "RetrocederPalabras"})
        EXPECT_FALSE(Accion(nombre)->isEnabled()) << nombre;
    EXPECT_TRUE(Accion("Salir")->isEnabled());
    EXPECT_EQ(icono.imagen, 9);
    Elige("ActivarDesactivar");
    EXPECT_EQ(Accion("ActivarDesactivar")->text(), QStringLiteral("Desactivar (Alt + 1)"));
    EXPECT_EQ(icono.imagen, 1);
}

TEST_F(BandejaLector, TheEntriesFollowAReadingAndActOnIt) {
    Envia(QStringLiteral("uno dos tres"));
    EXPECT_FALSE(Accion("Detener")->isEnabled());  // Sent
    Corre();
    for (const char *nombre : {"PausaReanudar", "Detener", "AvanzarPalabras", "RetrocederPalabras"})
        EXPECT_TRUE(Accion(nombre)->isEnabled()) << nombre;
    motor.Palabra(4);
    Elige("PausaReanudar");
    EXPECT_TRUE(Pausada());
    EXPECT_EQ(Accion("PausaReanudar")->text(), QStringLiteral("Reanudar (Ctrl + 1)"));
    Elige("Detener");
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(Accion("PausaReanudar")->text(), QStringLiteral("Pausa (Ctrl + 1)"));
    EXPECT_TRUE(Accion("RepetirLectura")->isEnabled());
    Elige("RepetirLectura");
    EXPECT_TRUE(Hablando());
}

TEST_F(BandejaLector, ANoticeLeavesTheMenuAsItIs) {
    const auto estadoDelMenu = [this] {
        QStringList lineas;
        for (const QAction *accion : espejo.Menu().actions())
            lineas << accion->text() + (accion->isEnabled() ? QStringLiteral(" +") : QStringLiteral(" -"));
        return lineas;
    };
    const QStringList antes = estadoDelMenu();
    for (const char *comando : {"Detener", "Pausa", "Repetir", "Avanzar", "Retroceder", "ImprPant"}) {
        diario.Olvida();
        Pulsa(comando);
        const Lineas todo = diario.Todo();
        ASSERT_GE(todo.size(), 2U) << comando;
        EXPECT_EQ(todo[todo.size() - 2], "sonido.ERROR") << comando;
        EXPECT_EQ(todo.back().rfind("motor.HablaAviso(", 0), 0U) << comando;
        EXPECT_EQ(Motor().size(), 1U) << comando;
        EXPECT_EQ(estadoDelMenu(), antes) << comando;
        Corre();  // its Start
        EXPECT_EQ(estadoDelMenu(), antes) << comando;
        EXPECT_FALSE(campos.Leyendo) << comando;
        TerminaTexto();
        EXPECT_EQ(estadoDelMenu(), antes) << comando;
        EXPECT_EQ(Estado(), 0) << comando;
        EXPECT_EQ(Sonidos(), Lineas{"ERROR"}) << comando;
    }
}

TEST_F(BandejaLector, CaptionsStandToTheLetter) {
    const std::pair<const char *, const char *> rotulos[] = {
        {"ActivarDesactivar", "Desactivar (Alt + 1)"},
        {"PausaReanudar", "Pausa (Ctrl + 1)"},
        {"Detener", "Detener lectura (Ctrl + 2)"},
        {"RepetirLectura", "Repetir última lectura (Ctrl + 3)"},
        {"AvanzarPalabras", "Avanzar palabras (Ctrl + 4)"},
        {"RetrocederPalabras", "Retroceder palabras (Ctrl + 5)"},
        {"Opciones", "Configuración... (Ctrl+Alt+F1)"},
        {"AbrirEditor", "Editor texto (Ctrl+Alt+F2)"},
        {"FicheroTextoAAudio", "Convertir fichero texto a audio..."},
        {"MenuAyuda", "Ayuda"},
        {"AyudaOndalis", "Ayuda de Ondalis"},
        {"VerLeame", "Ver archivo Léame"},
        {"AcercaDe", "Acerca de Ondalis..."},
        {"DescargarActualizaciones", "Descargar actualizaciones..."},
        {"PagWebOndalis", "Página Web de Ondalis"},
        {"Salir", "Salir"},
    };
    for (const auto &[nombre, rotulo] : rotulos) {
        QAction *accion = Accion(nombre);
        if (accion == nullptr) accion = Accion("MenuAyuda")->menu()->findChild<QAction *>(QLatin1String(nombre));
        ASSERT_NE(accion, nullptr) << nombre;
        EXPECT_EQ(accion->text(), QString::fromUtf8(rotulo));
    }
}

}  // namespace ondalis::prueba
