#include "reader/PruebaLector.h"

namespace ondalis::prueba {

class Arranque : public PruebaLector {};

TEST_F(Arranque, FormLoadGoesThroughItsStepsInOrder) {
    principal.Form_Load();
    EXPECT_EQ(diario.Todo(),
              (Lineas{"voces.LeeValoresVoces", "portapapeles.Vacia", "motor.Selecciona", "motor.FijaVelocidad(170)",
                      "motor.FijaVolumen(65000)", "motor.FijaAvanzados", "icono.1"}));
}

TEST_F(Arranque, FormLoadClearsTheFieldsOfAReading) {
    campos.TextoCopiado = QStringLiteral("x");
    campos.TipoLectura = 3;
    campos.Leyendo = campos.EnPausa = campos.PendienteTeclado = true;
    Estado() = 1;
    principal.Form_Load();
    EXPECT_EQ(campos.TextoCopiado, QString());
    EXPECT_EQ(campos.TipoLectura, 0);
    EXPECT_FALSE(campos.Leyendo || campos.EnPausa || campos.PendienteTeclado);
    EXPECT_EQ(Estado(), 0);
}

TEST_F(Arranque, TextCopiedBeforeTheStartIsNeverRead) {
    Copia(QStringLiteral("de antes"));
    Arranca();
    Tic();
    Corre();
    EXPECT_TRUE(Ociosa());
    EXPECT_EQ(Motor(), Lineas{});
}

TEST_F(Arranque, TheMarkFollowsTheFamily) {
    principal.Form_Load();
    EXPECT_EQ(filtro.Marca(), QStringLiteral("\\Mrk=1\\"));
    PasaASAPI5();
    principal.Form_Load();
    EXPECT_EQ(filtro.Marca(), QStringLiteral("<BOOKMARK mark='1'/>"));
}

TEST_F(Arranque, HighPriorityIsAskedForOnlyWhenWanted) {
    principal.Form_Load();
    EXPECT_FALSE(prioridad.clase.has_value());
    opcGeneral.SetPrioridadAlta(true);
    principal.Form_Load();
    EXPECT_EQ(prioridad.clase, true);
    EXPECT_EQ(prioridad.hilo, true);
}

TEST_F(Arranque, TheFirstIconTellsWhetherRecordingIsOn) {
    opcGrabar.SetGrabarTexto(true);
    principal.Form_Load();
    EXPECT_EQ(icono.imagen, 5);
    EXPECT_EQ(principal.GetIconoBarra(), 5);
}

TEST_F(Arranque, TheTagsOfFourEntriesKeepTheBareCaptions) {
    principal.Form_Load();
    EXPECT_EQ(menu.Detener.Etiqueta(), QStringLiteral("Detener lectura"));
    EXPECT_EQ(menu.RepetirLectura.Etiqueta(), QStringLiteral("Repetir última lectura"));
    EXPECT_EQ(menu.AvanzarPalabras.Etiqueta(), QStringLiteral("Avanzar palabras"));
    EXPECT_EQ(menu.RetrocederPalabras.Etiqueta(), QStringLiteral("Retroceder palabras"));
    EXPECT_EQ(menu.PausaReanudar.Etiqueta(), QString());
}

TEST_F(Arranque, TheTimerTicksEvery400MillisecondsAndOnlyFromInitOn) {
    principal.Form_Load();
    EXPECT_EQ(timer.intervalo, 400);
    EXPECT_FALSE(timer.Enabled());
    principal.Init();
    EXPECT_TRUE(timer.Enabled());
}

TEST_F(Arranque, InitRegistersTheElevenKeysInOrder) {
    Arranca();
    struct Esperada {
        const char *nombre;
        std::uint32_t mascara;
        int tecla;
    };
    const Esperada esperadas[] = {
        {"ImprPant", 0, 44},       {"MenosVel", 3, 120}, {"MasVel", 3, 121},    {"MostrarConf", 3, 112},
        {"MostrarEditor", 3, 113}, {"Activar", 1, 49},   {"Pausa", 2, 49},      {"Detener", 2, 50},
        {"Repetir", 2, 51},        {"Avanzar", 2, 52},   {"Retroceder", 2, 53},
    };
    ASSERT_EQ(tecla.Teclas().size(), std::size(esperadas) + 1);
    for (std::size_t i = 0; i < std::size(esperadas); ++i) {
        EXPECT_EQ(tecla.Teclas()[i].NombreTecla, QLatin1String(esperadas[i].nombre));
        EXPECT_EQ(tecla.Teclas()[i].Modificadores, esperadas[i].mascara);
        EXPECT_EQ(tecla.Teclas()[i].CodigoTecla, esperadas[i].tecla);
    }
}

TEST_F(Arranque, AConfiguredKeyIsRegisteredAndShown) {
    opcTeclasRap.SetModif(QStringLiteral("Pausa"), 2);
    opcTeclasRap.SetAscii(QStringLiteral("Pausa"), 50);
    Arranca();
    EXPECT_TRUE(tecla.Registrada(2, 50, QStringLiteral("Pausa")));
    EXPECT_EQ(menu.PausaReanudar.Rotulo(), QStringLiteral("Pausa (Shift + 2)"));
}

TEST_F(Arranque, InitShowsTheMagnifierLastAndOnlyWhenWanted) {
    opcGeneral.SalvaAviso(false);
    principal.Init();
    EXPECT_EQ(diario.De("ventanas"), Lineas{});
    opcGeneral.SetVerLupa(true);
    principal.Init();
    EXPECT_EQ(diario.Todo().back(), "ventanas.MuestraLupa");
}

TEST_F(Arranque, TheAssistantComesAtAnActiveStartUntilItIsToldNotTo) {
    principal.Init();
    EXPECT_EQ(diario.Todo(), (Lineas{"timer.si", "ventanas.Aviso"}));
    opcGeneral.SalvaAviso(false);
    diario.Olvida();
    principal.Init();
    EXPECT_EQ(diario.De("ventanas"), Lineas{});
}

TEST_F(Arranque, AnInactiveStartShowsNoAssistant) {
    opcGeneral.SetActivaAlArrancar(false);
    principal.Init();
    EXPECT_EQ(diario.De("ventanas"), Lineas{});
}

TEST_F(Arranque, InitPutsTheKeysNamesBehindTheCaptions) {
    Arranca();
    const auto con = [this](const QString &rotulo, const char *comando) {
        return rotulo + QStringLiteral(" (") + opcTeclasRap.GetNombre(QLatin1String(comando)) + QStringLiteral(")");
    };
    EXPECT_EQ(menu.ActivarDesactivar.Rotulo(), con(QStringLiteral("Desactivar"), "Activar"));
    EXPECT_EQ(menu.PausaReanudar.Rotulo(), con(QStringLiteral("Pausa"), "Pausa"));
    EXPECT_EQ(menu.Detener.Rotulo(), con(QStringLiteral("Detener lectura"), "Detener"));
    EXPECT_EQ(menu.RepetirLectura.Rotulo(), con(QStringLiteral("Repetir última lectura"), "Repetir"));
    EXPECT_EQ(menu.AvanzarPalabras.Rotulo(), con(QStringLiteral("Avanzar palabras"), "Avanzar"));
    EXPECT_EQ(menu.RetrocederPalabras.Rotulo(), con(QStringLiteral("Retroceder palabras"), "Retroceder"));
}

TEST_F(Arranque, WithActivaAlArrancarOffTheReaderStartsInactiveAndStaysSo) {
    opcGeneral.SetActivaAlArrancar(false);
    Arranca();
    EXPECT_FALSE(principal.ProgramaActivo());
    EXPECT_TRUE(menu.ActivarDesactivar.Rotulo().startsWith(QStringLiteral("Activar (")));
    EXPECT_FALSE(timer.Enabled());
    EXPECT_EQ(icono.imagen, 9);
    EXPECT_EQ(tecla.Teclas().size(), 12U);  // deaf to copies, but not to keys
}

TEST_F(Arranque, AllReadingEntriesStartDisabled) {
    Arranca();
    for (const EntradaMenu *entrada :
         {&menu.PausaReanudar, &menu.Detener, &menu.RepetirLectura, &menu.AvanzarPalabras, &menu.RetrocederPalabras})
        EXPECT_FALSE(entrada->Habilitada()) << entrada->Rotulo().toStdString();
}

TEST_F(Arranque, AHotKeyReachesTheController) {
    Arranca();
    ASSERT_TRUE(teclas.Pulsa(3, 112));
    Corre();
    EXPECT_EQ(diario.Todo(), Lineas{"ventanas.Opciones"});
}

TEST_F(Arranque, UnloadGoesThroughItsStepsInOrder) {
    Arranca();
    Lee(QStringLiteral("uno dos"));
    principal.Form_Unload();
    EXPECT_EQ(Motor(), (Lineas{"CancelaECI", "Detiene"}));
    EXPECT_TRUE(Ociosa());
    EXPECT_FALSE(timer.Enabled());
    EXPECT_EQ(diario.Todo().back(), "ventanas.DescargaFormularios");
}

TEST_F(Arranque, UnloadWithoutAReadingDoesNotTouchTheEngine) {
    Arranca();
    principal.Form_Unload();
    EXPECT_EQ(Motor(), Lineas{"CancelaECI"});
    EXPECT_EQ(Sonidos(), Lineas{});
}

TEST_F(Arranque, UnloadEndsTheMainLoop) {
    Arranca();
    cola.Pon(cCola::Clase::Orden, [this] { principal.Form_Unload(); });
    tecla.EsperaTeclas();
    EXPECT_EQ(diario.Todo().back(), "ventanas.DescargaFormularios");
}

TEST_F(Arranque, SalirLeavesByTheWindowsPort) {
    Arranca();
    principal.Salir_Click();
    EXPECT_EQ(diario.Todo(), Lineas{"ventanas.Salir"});
}

}  // namespace ondalis::prueba
