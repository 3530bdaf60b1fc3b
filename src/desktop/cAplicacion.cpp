#include "desktop/cAplicacion.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QTimer>
#include <cstdio>

#include "audio/cGrabadora.h"
#include "audio/cVozEnFicheroSAPI5.h"
#include "desktop/Aviso.h"
#include "desktop/Recursos.h"
#include "desktop/Rutas.h"
#include "engine/cCanalMotor.h"
#include "platform/x11/AlFrente.h"
#include "platform/x11/cCapturaX11.h"

namespace ondalis {

namespace {

constexpr int kEsperaSonidoMs = 5000;  // a sound server that is starting with the session gets so long

// Paints what waits to be painted; nothing else is delivered.
void Repinta() {
    for (QWidget *ventana : QApplication::topLevelWidgets())
        if (ventana->isVisible()) QCoreApplication::sendPostedEvents(ventana, QEvent::UpdateRequest);
}

}  // namespace

Preparativos::Preparativos(cLog &elLog, const QString &programaMotor)
    : log(elLog),
      lanzador(programaMotor.toStdString()),
      lanzadorFicheros(programaMotor.toStdString(), {"--nice", "10"}),
      tokens(lanzador),
      servidor(Producto::Titulo) {}

struct cAplicacion::Opciones {
    Opciones(cRegistro &registro, cLog &log, cGeneral &servicios, const cVoces &voces, bool haySAPI5)
        : general(registro, log),
          voz(registro, log, voces, haySAPI5),
          tipoLectura(registro, log),
          grabar(registro, log, rutas::LecturaWav()),
          teclasRap(registro, log),
          sonidosAviso(registro, log),
          editoresTexto(registro, log),
          diccionario(servicios, rutas::CarpetaDatos()) {}

    cOpcGeneral general;
    cOpcVoz voz;
    cOpcTipoLectura tipoLectura;
    cOpcGrabar grabar;
    cOpcTeclasRap teclasRap;
    cOpcSonidosAviso sonidosAviso;
    cOpcEditoresTexto editoresTexto;
    cOpcDiccionario diccionario;
};

struct cAplicacion::Lector {
    Lector(cAplicacion &a, Opciones &o)
        : motor(a.m_voz, a.m_vozSAPI5.get(), &a.m_vozECI, o.voz),
          filtro(a.p.log),
          temporal(a.p.log, QStringLiteral("~temp.wav"), {rutas::CarpetaEstado(), cGeneral::DirectorioWindowsTemp()}),
          timerGrabacion(a.m_cola),
          grabadora({.general = a.m_general,
                     .grabar = o.grabar,
                     .voz = o.voz,
                     .eci = a.m_vozECI,
                     .temporal = temporal,
                     .timer = timerGrabacion,
                     .creaVozSAPI5 = [&a] { return a.CreaVozEnFichero(); },
                     .cola = &a.m_cola}),
          teclasLeeTeclado(a.m_registro, a.m_general, rutas::CarpetasDeLectura(QCoreApplication::applicationDirPath())),
          extractor(a.m_general),
          colaboradores{.log = a.p.log,
                        .general = a.m_general,
                        .cola = a.m_cola,
                        .opcGeneral = o.general,
                        .opcVoz = o.voz,
                        .opcTipoLectura = o.tipoLectura,
                        .opcGrabar = o.grabar,
                        .opcTeclasRap = o.teclasRap,
                        .sonidosAviso = o.sonidosAviso,
                        .editoresTexto = o.editoresTexto,
                        .estadoVoz = a.m_estadoVoz,
                        .motor = motor,
                        .filtro = filtro,
                        .txtLengua = txtLengua,
                        .sonido = a.m_sonido,
                        .tecla = a.m_tecla,
                        .timerLectura = a.m_timerLectura,
                        .portapapeles = a.m_portapapeles,
                        .enlaceWord = enlaceWord,
                        .enlaceExplorer = enlaceExplorer,
                        .ventanaEnFoco = a.m_ventanaEnFoco,
                        .gancho = a.m_gancho,
                        .teclasLeeTeclado = teclasLeeTeclado,
                        .grabadora = grabadora,
                        .iconoBarra = a.m_bandeja,
                        .ventanas = a.m_ventanas,
                        .editor = nullptr,
                        .leeValoresVoces = [&a] { a.m_voces.LeeValoresVoces(a.m_voz); },
                        .extractor = &extractor},
          form(colaboradores),
          menu(form.Menu(), a.m_cola),
          prueba({.lector = colaboradores,
                  .form = form,
                  .puntero = a.m_puntero,
                  .voces = a.m_voces,
                  .voz = a.m_voz,
                  .sapi5 = a.m_vozSAPI5.get()}),
          configuracion({.lector = colaboradores,
                         .form = form,
                         .registro = a.m_registro,
                         .diccionario = o.diccionario,
                         .ayuda = a.m_superficie.Ayuda(),
                         .dialogo = a.m_dialogo,
                         .voces = a.m_voces,
                         .prueba = prueba,
                         .velocidadConSuper = [&a] { return a.VelocidadConSuper(); },
                         .pagWeb = [&a] { a.m_superficie.PagWebOndalis_Click(); },
                         .alFrente = [](WId ventana) { TraeAlFrente(static_cast<std::uint32_t>(ventana)); },
                         .comandoAutoarranque = a.ComandoDeEstaVez()}) {
        form.Menu().Opciones.SetHabilitada(true);
    }

    MotorVoz motor;
    cFiltro filtro;
    cTxtLengua txtLengua;
    SinEnlaceWord enlaceWord;
    SinEnlaceExplorer enlaceExplorer;
    cTemporalAudio temporal;
    cTemporizador timerGrabacion;
    cGrabadora grabadora;
    cTeclasLeeTeclado teclasLeeTeclado;
    ExtractorTextoLlano extractor;
    ColaboradoresPrincipal colaboradores;
    cFormPrincipal form;
    cMenuBandeja menu;
    cPruebaVoz prueba;
    cVentanaConfiguracion configuracion;
    std::unique_ptr<Aviso> aviso;  // the assistant, where it has been shown
};

void cAplicacion::Ventanillas::Opciones() {
    if (a.m_lector) a.m_lector->configuracion.Opciones();
}

void cAplicacion::Ventanillas::Aviso() {
    Lector &l = *a.m_lector;
    if (!l.aviso)
        l.aviso = std::make_unique<ondalis::Aviso>(ondalis::Aviso::Colaboradores{
            .logica = {.lector = l.colaboradores,
                       .form = l.form,
                       .registro = a.m_registro,
                       .gancho = [&l](bool encendido) { l.form.SetHook(encendido); },
                       .aceptado = [&l] { l.configuracion.AceptadoFuera(); }},
            .voces = a.m_voces,
            .prueba = l.prueba,
            .ayuda = a.m_superficie.Ayuda(),
            .alFrente = [](WId ventana) { TraeAlFrente(static_cast<std::uint32_t>(ventana)); }});
    l.aviso->Init();
}

// The pages' windows go before the boxes: what waits in one for an answer gets it then.
void cAplicacion::Ventanillas::DescargaFormularios() {
    a.m_superficie.DescargaFormularios();
    if (a.m_lector) a.m_lector->configuracion.Descarga();
    if (a.m_lector && a.m_lector->aviso) a.m_lector->aviso->Descarga();
    a.m_mensajes.Cierra();
    a.m_ventanaFichero.Cierra();
}

// The executable and the arguments of this run. A resident reader's arguments hold no blanks.
QString cAplicacion::ComandoDeEstaVez() const {
    return cRegistro::ComandoAutoarranque(QStringList(rutas::Ejecutable())
                                          << m_linea.split(QLatin1Char(' '), Qt::SkipEmptyParts));
}

cAplicacion::cAplicacion(Preparativos &preparativos, QString linea)
    : p(preparativos),
      m_linea(std::move(linea)),
      m_mensajes([](WId ventana) { TraeAlFrente(static_cast<std::uint32_t>(ventana)); },
                 [this] { m_cola.Despierta(); }),
      m_general(p.log, m_mensajes, m_prioridad),
      m_ventanaFichero(m_mensajes, [](WId ventana) { TraeAlFrente(static_cast<std::uint32_t>(ventana)); }),
      m_registro(p.log, rutas::CarpetaAutoarranque()),
      m_portapapeles(p.log),
      m_teclas(p.log),
      m_bus(p.log),
      m_vigia(m_bus),
      m_iconoDelBus(m_bus),
      m_bandeja(m_vigia, m_iconoDelBus, p.log),
      m_esperaBandeja(m_cola),
      m_sinBandeja(m_esperaBandeja, p.log,
                   {[this] { return m_bandeja.HaySitio(); }, [this](bool visible) { MuestraVentanaMenu(visible); },
                    [this](const QString &texto) { AvisaEnReposo(texto); }}),
      m_salidaSonido(p.servidor),
      m_sonido(m_salidaSonido, m_cola),
      m_teclado(p.log),
      m_foco(p.log),
      m_esperaFoco(m_cola),
      m_gancho(m_teclado, m_foco, m_esperaFoco, m_reloj),
      m_salidaIBM(p.servidor, Producto::Titulo),
      m_salidaSAPI5(p.servidor, Producto::Titulo),
      m_salidaECI(p.servidor, Producto::Titulo),
      m_canalIBM([this] { return std::make_unique<cCanalMotor>(p.lanzador, m_salidaIBM, m_reloj, p.tokens.Plazos()); }),
      m_canalSAPI5(
          [this] { return std::make_unique<cCanalMotor>(p.lanzador, m_salidaSAPI5, m_reloj, p.tokens.Plazos()); }),
      m_canalECI([this] { return std::make_unique<cCanalMotor>(p.lanzador, m_salidaECI, m_reloj, p.tokens.Plazos()); }),
      m_canalFicheros([this] {
          return std::make_unique<cCanalMotor>(p.lanzadorFicheros, m_salidaFicheros, m_reloj,
                                               p.tokens.Plazos().SinPrisa());
      }),
      m_voz(m_canalIBM, m_cola, m_estadoVoz, p.log),
      m_servicioECI(ServiciosDeECI()),
      m_vozECI(p.log),
      m_voces(p.log),
      m_tecla(m_teclas, m_cola, p.log),
      m_timerLectura(m_cola),
      m_superficie({.registro = m_registro,
                    .general = m_general,
                    .cola = m_cola,
                    .abridor = m_abridor,
                    .captura = [] { return std::make_unique<cCapturaX11>(); },
                    .alFrente = [](WId ventana) { TraeAlFrente(static_cast<std::uint32_t>(ventana)); },
                    .carpetas = rutas::CarpetasDeLectura(QCoreApplication::applicationDirPath()),
                    .pagina = QStringLiteral(ONDALIS_WEB)}),
      m_ventanas(*this) {
    RegistraSonidos();
    m_bus.ConectaYa();
    m_cola.SetHayModal([] { return QApplication::activeModalWidget() != nullptr; });
    m_cola.SetRepinta(Repinta);
}

cAplicacion::~cAplicacion() {
    m_cola.Cierra();
    m_bandeja.SetMenu(nullptr);
}

// A speech that is waited for holds the queue back, but windows are painted and the bus is answered.
ServicioECI cAplicacion::ServiciosDeECI() {
    return {.vivo = &m_canalECI,
            .fichero = &m_canalFicheros,
            .salida = &m_salidaFicheros,
            .espera = [this](const std::function<bool()> &listo) { m_cola.EsperaBloqueando(listo, -1); },
            .despierta = [this] { m_cola.Despierta(); },
            .avisa =
                [this](const std::u16string &texto) {
                    p.log.Escribe(QStringLiteral("cVozECI: "), QString::fromStdU16String(texto));
                }};
}

std::unique_ptr<VozEnFichero> cAplicacion::CreaVozEnFichero() {
    if (!m_vozSAPI5) return nullptr;
    const auto creaCanal = [this](SalidaAudio &salida) {
        return std::make_unique<cCanalMotor>(p.lanzadorFicheros, salida, m_reloj, p.tokens.Plazos().SinPrisa());
    };
    return std::make_unique<cVozEnFicheroSAPI5>(creaCanal, p.tokens, m_cola, p.log);
}

int cAplicacion::Ejecuta() {
    PreparaCarpetas();
    ConectaSalida();
    if (!HaySonido() && !PreguntaSinSonido()) return 0;
    if (!CargaLector()) return 0;
    if (qEnvironmentVariableIsSet("ONDALIS_AVISA_LISTO")) {
        std::fputs("ONDALIS LISTO\n", stderr);
        std::fflush(stderr);
    }
    if (!m_saliendo) m_tecla.EsperaTeclas();
    return 0;
}

// False when the program has been told to end meanwhile.
bool cAplicacion::CargaLector() {
    cCursor cursor(m_puntero, m_cola);
    cursor.SetPuntero(cCursor::RelojDeArena);
    m_superficie.Pantalla().MuestraCargando();
    m_cola.DejaCorrer();
    EsperaVoces();
    ReuneVoces();
    CreaLector();
    if (m_saliendo) return false;
    m_lector->form.Form_Load();
    m_lector->form.Init();
    m_remoto = std::make_unique<cRemoto>(m_lector->form, m_cola, m_estadoVoz, m_bus);
    m_superficie.Pantalla().OcultaCargando();
    m_sinBandeja.Revisa();
    return true;
}

// The splash is painted while the voices are waited for.
void cAplicacion::EsperaVoces() {
    constexpr std::chrono::milliseconds kVuelta(2);
    if (p.tokens.Listos()) return;
    QTimer pulso;
    pulso.start(kVuelta);
    m_cola.EsperaBloqueando([this] { return p.tokens.Listos(); }, -1);
}

// The resident reader lives in its data folder.
void cAplicacion::PreparaCarpetas() {
    const QString datos = rutas::CarpetaDatos();
    if (!QDir().mkpath(datos) || !QDir::setCurrent(datos))
        p.log.Escribe(QStringLiteral("Main: "), Fallo::De(Fallo::RutaNoEncontrada), datos);
}

void cAplicacion::ConectaSalida() {
    const auto sal = [this] { PideSalida(); };
    m_senales = std::make_unique<cSenales>(sal);
    m_finSesion = std::make_unique<cFinSesion>(sal);
}

// The end is an order like others; but a file being spoken or recorded holds orders back, so that one is cut at once.
void cAplicacion::PideSalida() {
    CortaEsperas();
    m_cola.Pon(cCola::Clase::Orden, [this] { m_ventanas.Salir(); });
}

void cAplicacion::CortaEsperas() {
    if (!m_lector) return;
    m_lector->form.CierraRemoto();
    m_lector->grabadora.Cancela();
}

// A server that is there answers within milliseconds; one that isn't gets its time while the desktop is served.
bool cAplicacion::HaySonido() {
    const QDeadlineTimer plazo(kEsperaSonidoMs);
    constexpr std::chrono::milliseconds kVuelta(20);
    for (;;) {
        if (p.servidor.EsperaConexion(kVuelta) && !p.servidor.Dispositivos().empty()) return true;
        if (plazo.hasExpired() || m_saliendo) return false;
        QTimer::singleShot(kVuelta, &m_cola, [] {});
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
}

bool cAplicacion::PreguntaSinSonido() {
    return !m_saliendo &&
           m_general.VMsg(QStringLiteral("NO se ha detectado tarjeta de sonido. ¿Desea continuar?"), true);
}

void cAplicacion::ReuneVoces() {
    const bool sinSAPI5 = cGeneral::GetParam(m_linea, QStringLiteral("nosapi5"));
    m_voces.ChequeaSAPI5Compatible([this] { return !p.tokens.Tokens().empty(); });
    m_voces.RecogeVocesEquipo(&p.tokens, sinSAPI5, [this] { m_cola.DejaCorrer(); });
    if (!sinSAPI5)
        for (const QString &queja : p.tokens.Quejas()) p.log.Escribe(QStringLiteral("RecogeVocesEquipo: "), queja);
    if (m_voces.SAPI5Compatible() && !sinSAPI5)
        m_vozSAPI5 = std::make_unique<SpVoice>(m_canalSAPI5, p.tokens, m_cola, m_estadoVoz, p.log);
    m_opciones = std::make_unique<Opciones>(m_registro, p.log, m_general, m_voces, m_vozSAPI5 != nullptr);
    // The worker of the family in use is there before the first text.
    (m_opciones->voz.EsIBM() ? m_canalIBM : m_canalSAPI5).Calienta();
}

void cAplicacion::CreaLector() {
    m_lector = std::make_unique<Lector>(*this, *m_opciones);
    m_voz.SetEventos(m_lector->form.Eventos());
    if (m_vozSAPI5) m_vozSAPI5->SetEventos(m_lector->form.Eventos());
    ConectaMenu();
}

void cAplicacion::ConectaMenu() {
    cFormPrincipal &form = m_lector->form;
    MenuIcono &e = form.Menu();
    cMenuBandeja &menu = m_lector->menu;
    menu.AlPulsar(e.ActivarDesactivar, [&form] { form.ActivarDesactivar_Click(); });
    menu.AlPulsar(e.PausaReanudar, [&form] { form.PausaReanudar_Click(); });
    menu.AlPulsar(e.Detener, [&form] { form.Detener_Click(); });
    menu.AlPulsar(e.RepetirLectura, [&form] { form.RepetirLectura_Click(); });
    menu.AlPulsar(e.AvanzarPalabras, [&form] { form.AvanzarPalabras_Click(); });
    menu.AlPulsar(e.RetrocederPalabras, [&form] { form.RetrocederPalabras_Click(); });
    menu.AlPulsar(e.Opciones, [&form] { form.Opciones_Click(); });
    menu.AlPulsar(e.AbrirEditor, [&form] { form.AbrirEditor_Click(); });
    menu.AlPulsar(e.Salir, [&form] { form.Salir_Click(); });
    m_superficie.Conecta(e, menu);
    // Under the bus's protocol for menus the click comes in while a file is spoken.
    if (auto *salir = menu.Menu().findChild<QAction *>(QStringLiteral("Salir")))
        QObject::connect(salir, &QAction::triggered, &m_cola, [this] { CortaEsperas(); });
    m_bandeja.AlCambiarSitio([this] { m_sinBandeja.Revisa(); });
    m_bandeja.SetMenu(&menu.Menu());
    m_bandeja.AlDobleClick([this, &form] { m_cola.Pon(cCola::Clase::Orden, [&form] { form.Opciones_Click(); }); });
}

// Whether the keymap has made Super of Alt in the keys of speed.
bool cAplicacion::VelocidadConSuper() const {
    for (const int identificador : m_teclas.ConSuper()) {
        const auto fila = static_cast<std::size_t>(identificador - cTecla::PrimerIdentificador);
        if (fila < m_tecla.Teclas().size() && m_tecla.Teclas()[fila].NombreTecla == QLatin1String("MasVel"))
            return true;
    }
    return false;
}

void cAplicacion::MuestraVentanaMenu(bool visible) {
    if (!m_ventanaMenu) m_ventanaMenu = std::make_unique<VentanaMenu>(m_lector->menu.Menu());
    m_ventanaMenu->setVisible(visible);
}

// A notice takes the place of what is sounding: while something is read it is left out.
void cAplicacion::AvisaEnReposo(const QString &texto) {
    cFormPrincipal &form = m_lector->form;
    if (!form.Menu().Detener.Habilitada()) form.DiAviso(texto);
}

// Unloads the main window. What a handler further out still has to do, it does; then the main loop ends.
void cAplicacion::Salir() {
    if (m_saliendo) return;
    m_saliendo = true;
    m_mensajes.Cierra();
    m_ventanaFichero.Cierra();
    m_bandeja.AlCambiarSitio({});
    m_esperaBandeja.SetEnabled(false);
    m_ventanaMenu.reset();
    if (m_lector) m_lector->form.Form_Unload();
}

}  // namespace ondalis
