#include "reader/cConfiguracion.h"

#include "reader/PruebaLector.h"

namespace ondalis::prueba {
namespace {

class VistaFalsa : public VistaConfiguracion {
public:
    explicit VistaFalsa(Diario &diario) : m_diario(diario) {}
    bool Visible() const override { return visible; }
    bool HayModal() const override { return modal; }
    void Muestra() override {
        m_diario.Anota("vista.Muestra");
        visible = true;
    }
    void TraeAlFrente() override { m_diario.Anota("vista.TraeAlFrente"); }
    void Oculta() override {
        m_diario.Anota("vista.Oculta");
        visible = false;
    }
    void EnfocaAceptar() override {
        m_diario.Anota("vista.EnfocaAceptar");
        if (alEnfocar) alEnfocar();
    }

    bool visible = false, modal = false;
    std::function<void()> alEnfocar;

private:
    Diario &m_diario;
};

class PaginaDiario : public PaginaConfiguracion {
public:
    PaginaDiario(Diario &diario, QString nombre) : m_diario(diario), m_nombre(std::move(nombre)) {}
    void EstableceValores() override { m_diario.Anota(m_nombre + ".Establece"); }
    void EstableceCambiados() override { m_diario.Anota(m_nombre + ".Cambiados"); }
    void TerminaEdicion() override { m_diario.Anota(m_nombre + ".Termina"); }
    void GuardaValores() override {
        m_diario.Anota(m_nombre + ".Guarda");
        if (alGuardar) alGuardar();
    }
    std::function<void()> alGuardar;

private:
    Diario &m_diario;
    QString m_nombre;
};

class ConfiguracionTest : public PruebaLector {
protected:
    ConfiguracionTest() {
        configuracion.PonPagina(Pagina::General, general_);
        configuracion.PonPagina(Pagina::Voces, voces_);
        configuracion.PonPagina(Pagina::TipoLectura, tipo);
        configuracion.PonPagina(Pagina::Grabar, grabar);
        configuracion.PonPagina(Pagina::Diccionario, diccionario);
        configuracion.PonPagina(Pagina::TeclasRap, teclasRap);
        Arranca();
    }
    Lineas Acepta() {
        diario.Olvida();
        configuracion.Aceptar_Click();
        return diario.Todo();
    }
    static long Sitio(const Lineas &lineas, const std::string &linea) {
        return std::find(lineas.begin(), lineas.end(), linea) - lineas.begin();
    }
    QString Autoarranque() const {
        QFile fichero(almacen.Ruta("autostart/ondalis.desktop"));
        return fichero.open(QIODevice::ReadOnly) ? QString::fromUtf8(fichero.readAll()) : QString();
    }

    PaginaDiario general_{diario, "general"}, voces_{diario, "voces"}, tipo{diario, "tipo"}, grabar{diario, "grabar"},
        diccionario{diario, "diccionario"}, teclasRap{diario, "teclas"};
    VistaFalsa vista{diario};
    ColaboradoresPrincipal lector = Colaboradores(motor);
    cConfiguracion configuracion{{.lector = lector,
                                  .form = principal,
                                  .registro = registro,
                                  .vista = vista,
                                  .comandoAutoarranque = "/usr/bin/ondalis -nosapi5"}};
};

TEST_F(ConfiguracionTest, OpeningShowsTheAcceptedValuesOfTheVoicesFirstAndThenOfTheOthers) {
    configuracion.Opciones_Click();
    EXPECT_EQ(diario.Todo(), (Lineas{"voces.Establece", "general.Establece", "tipo.Establece", "grabar.Establece",
                                     "diccionario.Establece", "teclas.Establece", "vista.Muestra"}));
}

TEST_F(ConfiguracionTest, OpenedAgainWhileItIsVisibleItOnlyComesToTheFront) {
    vista.visible = true;
    vista.modal = true;  // a window of one of its pages
    configuracion.Opciones_Click();
    EXPECT_EQ(diario.Todo(), Lineas{"vista.TraeAlFrente"});
}

TEST_F(ConfiguracionTest, WhatIsAcceptedElsewhereGoesToThePagesOfAnOpenWindowOnly) {
    configuracion.AceptadoFuera();
    EXPECT_EQ(diario.Todo(), Lineas{});
    configuracion.Opciones_Click();
    diario.Olvida();
    configuracion.AceptadoFuera();
    EXPECT_EQ(diario.Todo(), (Lineas{"general.Cambiados", "voces.Cambiados", "tipo.Cambiados", "grabar.Cambiados",
                                     "diccionario.Cambiados", "teclas.Cambiados"}));
}

TEST_F(ConfiguracionTest, BehindAModalWindowItCannotBeShown) {
    vista.modal = true;
    try {
        configuracion.Opciones_Click();
        FAIL();
    } catch (const ErrorFallo &error) {
        EXPECT_EQ(error.fallo.numero, 401);
    }
    EXPECT_EQ(diario.Todo(), Lineas{});
}

TEST_F(ConfiguracionTest, TheUserWhoAsksForItBehindAModalWindowIsToldOnce) {
    vista.modal = true;
    ventanas.alPedirOpciones = [this] { configuracion.Opciones_Click(); };
    mensajes.alMostrar = [this] { Pulsa("MostrarConf"); };
    Pulsa("MostrarConf");
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_EQ(mensajes.cajas[0].texto, "cFormPrincipal.Opciones_Click: Hay una ventana modal abierta [401]");
    Pulsa("MostrarConf");
    EXPECT_EQ(mensajes.cajas.size(), 2U);
}

TEST_F(ConfiguracionTest, OpeningReadsTheStartWithTheSystemAndTheMagnifierAnew) {
    opcGeneral.SetVerLupa(true);
    almacen.Salva("General", "VerLupa", "0");  // as the magnifier closed by hand leaves it
    registro.SalvaAutoarranque("Ondalis", "/usr/bin/ondalis");
    configuracion.Opciones_Click();
    EXPECT_FALSE(opcGeneral.VerLupa());
    EXPECT_TRUE(opcGeneral.ArrancaEnInicio());
    registro.BorraAutoarranque("Ondalis");
    vista.visible = false;
    configuracion.Opciones_Click();
    EXPECT_FALSE(opcGeneral.ArrancaEnInicio());
}

TEST_F(ConfiguracionTest, AcceptingTakesThePagesInTheirOrderBehindTheFocusAndHidesTheWindowAtTheEnd) {
    const Lineas hecho = Acepta();
    const Lineas esperado{"vista.EnfocaAceptar", "general.Termina",     "voces.Termina",  "tipo.Termina",
                          "grabar.Termina",      "diccionario.Termina", "teclas.Termina", "general.Guarda",
                          "voces.Guarda",        "tipo.Guarda",         "grabar.Guarda",  "diccionario.Guarda",
                          "teclas.Guarda"};
    ASSERT_GE(hecho.size(), esperado.size());
    EXPECT_EQ(Lineas(hecho.begin(), hecho.begin() + static_cast<long>(esperado.size())), esperado);
    EXPECT_GT(Sitio(hecho, "icono.1"), Sitio(hecho, "teclas.Guarda"));
    EXPECT_EQ((Lineas(hecho.end() - 2, hecho.end())), (Lineas{"vista.Oculta", "ventanas.DescargaLupa"}));
    EXPECT_TRUE(mensajes.cajas.empty());
}

TEST_F(ConfiguracionTest, AcceptingStopsTheReadingInCourseFirst) {
    Lee("uno dos tres");
    ASSERT_TRUE(Hablando());
    const Lineas hecho = Acepta();
    EXPECT_TRUE(Ociosa());
    EXPECT_LT(Sitio(hecho, "motor.Detiene"), Sitio(hecho, "vista.EnfocaAceptar"));
}

TEST_F(ConfiguracionTest, TheVoiceOfTheAcceptedFamilyAndItsMarkAreInUse) {
    voces_.alGuardar = [this] { PasaASAPI5(); };
    const Lineas hecho = Acepta();
    EXPECT_EQ(filtro.Marca(), "<BOOKMARK mark='1'/>");
    EXPECT_LT(Sitio(hecho, "motor.Selecciona"), static_cast<long>(hecho.size()));
    voces_.alGuardar = [this] {
        opcVoz.SetFabricanteActivo("IBM");
        opcVoz.SetVozActiva("Carlos");
    };
    Acepta();
    EXPECT_EQ(filtro.Marca(), "\\Mrk=1\\");
}

TEST_F(ConfiguracionTest, AsynchronousRecordingIsKeptWithIBMAndCorrectedWithOneMessageWithSAPI5) {
    opcGrabar.SetGrabarTexto(true);
    opcGrabar.SetGrabaSincrono(false);
    Acepta();
    EXPECT_FALSE(opcGrabar.GrabaSincrono());
    EXPECT_TRUE(mensajes.cajas.empty());
    PasaASAPI5();
    const Lineas hecho = Acepta();
    EXPECT_TRUE(opcGrabar.GrabaSincrono());
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_EQ(mensajes.cajas[0].texto,
              "La voz elegida no permite grabar el texto leído de forma Asíncrona.\n"
              "La grabación del audio se hará de forma Síncrona.");
    EXPECT_EQ(std::count(hecho.begin(), hecho.end(), "grabar.Guarda"), 2);
    EXPECT_EQ(std::count(hecho.begin(), hecho.end(), "grabar.Establece"), 1);
}

TEST_F(ConfiguracionTest, AsynchronousAndAppendingGiveTwoMessagesAndOneSavingAfterEach) {
    PasaASAPI5();
    opcGrabar.SetGrabarTexto(true);
    opcGrabar.SetGrabaSincrono(false);
    opcGrabar.SetAnadirFich(true);
    opcGrabar.SetSobrescribirFich(false);
    mensajes.alMostrar = [this] { diario.Anota("mensaje"); };
    const Lineas hecho = Acepta();
    ASSERT_EQ(mensajes.cajas.size(), 2U);
    EXPECT_EQ(mensajes.cajas[1].texto,
              "La voz elegida no permite añadir el audio al fichero existente.\n"
              "La grabación sobrescribirá el fichero /x/Lectura.wav");
    EXPECT_FALSE(opcGrabar.AnadirFich());
    EXPECT_TRUE(opcGrabar.SobrescribirFich());
    const auto desde = hecho.begin() + Sitio(hecho, "mensaje");
    EXPECT_EQ(Lineas(desde, desde + 6),
              (Lineas{"mensaje", "grabar.Establece", "grabar.Guarda", "mensaje", "grabar.Establece", "grabar.Guarda"}));
}

TEST_F(ConfiguracionTest, WithoutRecordingNothingIsCorrected) {
    PasaASAPI5();
    opcGrabar.SetGrabaSincrono(false);
    opcGrabar.SetAnadirFich(true);
    Acepta();
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_FALSE(opcGrabar.GrabaSincrono());
    EXPECT_TRUE(opcGrabar.AnadirFich());
}

TEST_F(ConfiguracionTest, StartingWithTheSystemStoresTheCommandLineOfThisRun) {
    opcGeneral.SetArrancaEnInicio(true);
    Acepta();
    EXPECT_TRUE(Autoarranque().contains("Exec=/usr/bin/ondalis -nosapi5\n")) << Autoarranque().toStdString();
    opcGeneral.SetArrancaEnInicio(false);
    Acepta();
    EXPECT_FALSE(registro.GetAutoarranque("Ondalis"));
}

TEST_F(ConfiguracionTest, AcceptingTwiceWithNumberedFilesWorksTheNumberOutEachTime) {
    Acepta();
    EXPECT_EQ(diario.Veces("graba.EstableceNroFichero"), 0);
    opcGrabar.SetNumerarFich(true);
    for (int i = 0; i < 2; ++i) {
        Acepta();
        EXPECT_EQ(diario.Veces("graba.EstableceNroFichero"), 1);
    }
}

TEST_F(ConfiguracionTest, TheMenusCaptionsNameTheAcceptedKeys) {
    teclasRap.alGuardar = [this] {
        opcTeclasRap.SetModif("Pausa", 1);
        opcTeclasRap.SetAscii("Pausa", 112);
        opcTeclasRap.SetAscii("Detener", 57);
        opcTeclasRap.SetAscii("Activar", 56);
    };
    Acepta();
    EXPECT_EQ(menu.PausaReanudar.Rotulo(), "Pausa (Alt + F1)");
    EXPECT_EQ(menu.Detener.Rotulo(), "Detener (Ctrl + 9)");
    EXPECT_EQ(menu.RepetirLectura.Rotulo(), "Repetir (Ctrl + 3)");
    EXPECT_EQ(menu.AvanzarPalabras.Rotulo(), "Avanzar (Ctrl + 4)");
    EXPECT_EQ(menu.RetrocederPalabras.Rotulo(), "Retroceder (Ctrl + 5)");
    EXPECT_EQ(menu.ActivarDesactivar.Rotulo(), "Desactivar (Alt + 8)");
    menu.PausaReanudar.SetRotulo("Reanudar (Ctrl + 1)");
    Acepta();
    EXPECT_EQ(menu.PausaReanudar.Rotulo(), "Reanudar (Alt + F1)");
    menu.PausaReanudar.SetRotulo("");
    Acepta();
    EXPECT_EQ(menu.PausaReanudar.Rotulo(), "Pausa (Alt + F1)");
}

TEST_F(ConfiguracionTest, AnInactiveProgramKeepsItsIconAndItsState) {
    principal.ActivarDesactivar_Click();
    opcGrabar.SetGrabarTexto(true);
    tipo.alGuardar = [this] { opcTipoLectura.SetLeeTeclado(true); };
    Acepta();
    EXPECT_EQ(icono.imagen, 9);
    EXPECT_FALSE(principal.ProgramaActivo());
    EXPECT_EQ(diario.De("gancho."), Lineas{});
    principal.ActivarDesactivar_Click();
    Acepta();
    EXPECT_EQ(icono.imagen, 5);
}

TEST_F(ConfiguracionTest, TypedKeysAreHeardFromTheAcceptanceOnThatWantsThem) {
    campos.TextoWindows = "viejo";
    tipo.alGuardar = [this] { opcTipoLectura.SetLeeTeclado(true); };
    Acepta();
    EXPECT_EQ(diario.De("gancho."), Lineas{"si"});
    EXPECT_EQ(campos.TextoWindows, "");
    Acepta();
    EXPECT_EQ(diario.De("gancho."), Lineas{});
    tipo.alGuardar = [this] { opcTipoLectura.SetLeeTeclado(false); };
    Acepta();
    EXPECT_EQ(diario.De("gancho."), Lineas{"no"});
}

TEST_F(ConfiguracionTest, TheMagnifierFollowsItsOptionAndThePriorityComesLast) {
    opcGeneral.SetVerLupa(true);
    opcGeneral.SetPrioridadAlta(true);
    EXPECT_EQ(Acepta().back(), "ventanas.MuestraLupa");
    EXPECT_EQ(prioridad.clase, true);
    opcGeneral.SetPrioridadAlta(false);
    Acepta();
    EXPECT_EQ(prioridad.clase, false);
}

TEST_F(ConfiguracionTest, AFailureIsToldAndLoggedHidesTheWindowAndLeavesWhatWasSaved) {
    opcGeneral.SetVerLupa(true);
    tipo.alGuardar = [] { throw ErrorFallo{Fallo::De(Fallo::PermisoDenegado)}; };
    vista.visible = true;
    const Lineas hecho = Acepta();
    EXPECT_EQ(Sitio(hecho, "grabar.Guarda"), static_cast<long>(hecho.size()));
    EXPECT_EQ((Lineas(hecho.end() - 2, hecho.end())), (Lineas{"vista.Oculta", "ventanas.MuestraLupa"}));
    ASSERT_EQ(mensajes.cajas.size(), 1U);
    EXPECT_EQ(mensajes.cajas[0].texto, "cFormPrincipal.Aceptar_Click: Permiso denegado [70]");
    ASSERT_FALSE(Log().isEmpty());
    EXPECT_TRUE(Log().last().contains("cFormPrincipal.Aceptar_Click: Permiso denegado (70) ["))
        << Log().last().toStdString();
    EXPECT_FALSE(prioridad.clase.has_value());
}

TEST_F(ConfiguracionTest, CancellingHidesTheWindowAndNothingElse) {
    diario.Olvida();
    configuracion.Cancelar_Click();
    EXPECT_EQ(diario.Todo(), Lineas{"vista.Oculta"});
}

TEST_F(ConfiguracionTest, PagesThatAreNotThereArePassedOverAndCorrectionsAreStoredAllTheSame) {
    cConfiguracion sola{{.lector = lector, .form = principal, .registro = registro, .vista = vista}};
    PasaASAPI5();
    opcGrabar.SetGrabarTexto(true);
    opcGrabar.SetGrabaSincrono(false);
    sola.Opciones_Click();
    sola.Aceptar_Click();
    EXPECT_TRUE(opcGrabar.GrabaSincrono());
    EXPECT_EQ(almacen.Lee("Grabar", "GrabaSincrono"), "True");
}

TEST_F(ConfiguracionTest, PressedAgainWhileItWaitsItIsAcceptedOnce) {
    vista.alEnfocar = [this] { configuracion.Aceptar_Click(); };
    Acepta();
    EXPECT_EQ(diario.Veces("general.Guarda"), 1);
}

TEST_F(ConfiguracionTest, TheProgramsEndInTheMiddleOfAnAcceptanceStillStoresTheValues) {
    opcGeneral.SetVerLupa(true);
    vista.alEnfocar = [this] { configuracion.Descarga(); };
    Acepta();
    EXPECT_EQ(diario.Veces("teclas.Guarda"), 1);
    EXPECT_EQ(diario.Veces("ventanas.MuestraLupa"), 0);
    diario.Olvida();
    configuracion.Opciones_Click();
    EXPECT_EQ(diario.Todo(), Lineas{});
}

}  // namespace
}  // namespace ondalis::prueba
