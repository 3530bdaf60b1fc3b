// Start and end of the resident reader, and the border that all procedures of the controller share.
#include "reader/cFormPrincipal.h"

namespace ondalis {

namespace {

constexpr int kIntervaloLectura = 400;  // milliseconds

// The main window's handle as the hot-key service wants it: any value but 0. The keys belong to the whole desktop.
constexpr std::uintptr_t kVentanaPrincipal = 1;

struct TeclaFija {
    const char *nombre;
    int modificador;
    int virtualKey;
};
constexpr TeclaFija kTeclasFijas[] = {
    {"ImprPant", -1, 44}, {"MenosVel", 4, 120}, {"MasVel", 4, 121}, {"MostrarConf", 4, 112}, {"MostrarEditor", 4, 113},
};

bool EsRepetible(const QString &comando) {
    static const QStringList repetibles = {QStringLiteral("MenosVel"), QStringLiteral("MasVel"),
                                           QStringLiteral("Avanzar"), QStringLiteral("Retroceder")};
    return repetibles.contains(comando);
}

}  // namespace

cFormPrincipal::cFormPrincipal(const ColaboradoresPrincipal &colaboradores) : c(colaboradores) {
    c.timerLectura.SetIntervalo(kIntervaloLectura);
    c.timerLectura.SetManejador([this] { TimerLectura_Timer(); });
    c.tecla.SetHotKeyPulsada([this](const QString &nombre) { tecla_HotKeyPulsada(nombre); });
    c.tecla.SetRepetible(EsRepetible);
    c.gancho.SetTecleada([this](const TeclaEscrita &tecla) {
        c.cola.Pon(cCola::Clase::Tecla, [this, tecla] { TextoWindows_Tecleada(tecla); });
    });
}

EventosVoz cFormPrincipal::Eventos() {
    return {[this] { Voz_StartSpeaking(); }, [this] { Voz_StopSpeaking(); },
            [this](std::int32_t pos) { Voz_WordPosition(pos); }};
}

bool cFormPrincipal::Ejecuta(const char *procedimiento, const std::function<void()> &cuerpo, cGeneral::Aviso aviso) {
    return c.general.Ejecuta(QStringLiteral("cFormPrincipal.%1: ").arg(QLatin1String(procedimiento)), aviso, cuerpo);
}

void cFormPrincipal::Form_Load() {
    Ejecuta("Form_Load", [this] {
        if (c.opcGeneral.PrioridadAlta()) c.general.SetPrioridadAlta(true);
        if (c.leeValoresVoces) c.leeValoresVoces();
        c.opcVoz.SetTagsAvanzados();
        // What was copied before the program started isn't for us.
        c.portapapeles.Vacia();
        m_l.TextoCopiado.clear();
        m_l.TipoLectura = 0;
        m_l.Leyendo = false;
        m_l.EnPausa = false;
        c.estadoVoz.valor = cEstadoVoz::Lectura;
        m_l.PendienteTeclado = false;
        RecuperaConfiguracion();
        m_numIcono = IconoReposo();
        // The tag keeps the bare caption: the key's name is appended to the caption later, and changes with it.
        for (EntradaMenu *entrada :
             {&m_menu.Detener, &m_menu.RepetirLectura, &m_menu.AvanzarPalabras, &m_menu.RetrocederPalabras})
            entrada->SetEtiqueta(entrada->Rotulo());
        SetIconoBarra(m_numIcono);
        if (c.opcTipoLectura.LeeTeclado()) SetHook(true);
    });
}

void cFormPrincipal::RecuperaConfiguracion() {
    Ejecuta("RecuperaConfiguracion", [this] {
        c.motor.AplicaConfiguracion();
        c.filtro.SetMarca(c.opcVoz.Marca());
    });
}

void cFormPrincipal::Init() {
    Ejecuta("Init", [this] {
        c.timerLectura.SetEnabled(true);
        if (!c.opcGeneral.ActivaAlArrancar())
            ActivarDesactivar_Click();
        else if (c.opcGeneral.Aviso())
            c.ventanas.Aviso();
        c.tecla.Init(kVentanaPrincipal);
        RegistraTeclas();
        RotulaMenu();
        if (c.opcGeneral.VerLupa()) c.ventanas.MuestraLupa();
    });
}

void cFormPrincipal::RegistraTeclas() {
    for (const TeclaFija &fija : kTeclasFijas)
        c.tecla.AddTecla(fija.modificador, static_cast<std::int16_t>(fija.virtualKey), QLatin1String(fija.nombre));
    for (const char *comando : ComandosConfigurables()) {
        const QString nombre = QLatin1String(comando);
        c.tecla.AddTecla(c.opcTeclasRap.GetModif(nombre), static_cast<std::int16_t>(c.opcTeclasRap.GetAscii(nombre)),
                         nombre);
    }
}

void cFormPrincipal::Form_Unload() {
    Ejecuta("Form_Unload", [this] {
        c.motor.CancelaECI();
        if (m_menu.Detener.Habilitada()) Detener_Click();
        c.tecla.Termina();
        if (c.opcTipoLectura.LeeTeclado()) SetHook(false);
        c.timerLectura.SetEnabled(false);
        c.ventanas.DescargaFormularios();
    });
}

}  // namespace ondalis
