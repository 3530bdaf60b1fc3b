#include "worker/cMotorEspeak.h"

#include <espeak-ng/espeak_ng.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <span>

#include "worker/Caracteres.h"
#include "worker/PiezaTexto.h"
#include "worker/Seguidor.h"
#include "worker/VozFormantes.h"
#include "worker/cAspereza.h"
#include "worker/cEstirador.h"

namespace ondalis {

namespace {

constexpr double kTonoLlano = 100;  // hertz of a request that stand for a plain voice's own pitch
constexpr int kMsBloque = 200;      // of sound in one callback: what a stop waits for at most
// The engine's own volume: the highest at which no plain voice clips, and one that leaves room for the strongest
// formant voice. The gain is ours.
constexpr int kVolumenLlana = 90, kVolumenFormantes = 45;
constexpr double kPausaLetra = 60;  // milliseconds between spelled letters at 170 words a minute

// What a stressed stretch changes.
constexpr double kEnfasisTono = 1.12, kEnfasisRitmo = .88, kEnfasisGanancia = 1.25;
constexpr int kEnfasisFluctuacion = 30;

// The pause is the sentence's or paragraph's own: a stretch that stops in mid-sentence goes on without one.
bool AcabaFrase(std::string_view texto) {
    if (texto.ends_with("\n\n")) return true;
    const std::size_t ultimo = texto.find_last_not_of(" \n\t\"')");
    return ultimo != std::string_view::npos && std::string_view(".!?:;").find(texto[ultimo]) != std::string_view::npos;
}

ValoresFormantes ValoresDe(const EstadoHabla &estado) {
    const double fluctuacion = estado.fluctuacion + (estado.enfasis ? kEnfasisFluctuacion : 0);
    const double tono = estado.tono * (estado.enfasis ? kEnfasisTono : 1);
    const auto entero = [](double valor) { return static_cast<int>(std::lround(valor)); };
    return {entero(tono), std::min(100, entero(fluctuacion)), entero(estado.aspereza), entero(estado.diafonia),
            entero(estado.tamCabeza)};
}

// Linear up to the knee, then ever flatter and never at the limit.
constexpr double kCodo = 27000;
std::int16_t Redondeada(double m) {
    constexpr double kResto = 32600 - kCodo;
    const double fuerza = std::abs(m);
    if (fuerza > kCodo) m = std::copysign(kCodo + kResto * (1 - std::exp((kCodo - fuerza) / kResto)), m);
    return static_cast<std::int16_t>(m + std::copysign(.5, m));  // as lround, without the call
}

}  // namespace

// The utterance under way, as the callback sees it.
struct cMotorEspeak::Vuelo {
    Emisor &emisor;
    int hercios;
    std::uint64_t muestras = 0;  // sent so far
    double ganancia = 1;
    double estirado = 1;
    double velocidad = 170, tono = 106;
    CompasTexto compas = {};
    std::string idioma = {};  // of what was said last
    bool vivo = true;
    cAspereza aspereza{hercios};

    // Of the piece under way.
    const Tramo *tramo = nullptr;
    Seguidor *seguidor = nullptr;
    cEstirador *estirador = nullptr;
    std::uint64_t base = 0;  // its first sample
    std::vector<std::int16_t> bloque = {};
    std::vector<float> flotante = {};

    bool Palabra(std::uint64_t muestra, std::size_t inicio, std::size_t fin) {
        const std::uint32_t posicion = Origen(*tramo, inicio);
        const std::uint32_t ultima = Origen(*tramo, fin - 1);
        const std::uint32_t longitud = ultima >= posicion ? ultima - posicion + 1 : 1;
        vivo = vivo && emisor.Palabra(std::max(muestra, muestras), posicion, longitud);
        return vivo;
    }

    bool BajoElCodo() const {
        int mayor = 0;
        for (const std::int16_t m : bloque) mayor = std::max(mayor, std::abs(static_cast<int>(m)));
        return mayor * ganancia <= kCodo;
    }

    static int Devolucion(short *muestras, int n, espeak_EVENT *eventos);

    // What the engine made becomes what is heard: rougher, at its gain, and rounded where it would clip.
    void Acaba() {
        if (!aspereza.Activa() && BajoElCodo()) {  // nearly every block, and the bulk of the work behind the engine's
            const auto g = static_cast<float>(ganancia);
            if (g != 1)
                for (std::int16_t &m : bloque) {
                    const float f = static_cast<float>(m) * g;
                    m = static_cast<std::int16_t>(f + std::copysign(.5F, f));
                }
            return;
        }
        flotante.assign(bloque.begin(), bloque.end());
        aspereza.Pasa(flotante);
        for (std::size_t i = 0; i < bloque.size(); i++) bloque[i] = Redondeada(flotante[i] * ganancia);
    }

    bool Pcm() {
        Acaba();
        muestras += bloque.size();
        vivo = vivo && (bloque.empty() || emisor.Pcm(bloque.data(), bloque.size()));
        bloque.clear();
        return vivo;
    }
};

cMotorEspeak::Vuelo *cMotorEspeak::s_vuelo = nullptr;

int cMotorEspeak::Vuelo::Devolucion(short *muestras, int n, espeak_EVENT *eventos) {
    if (!s_vuelo) return 1;
    Vuelo &vuelo = *s_vuelo;
    for (; eventos && eventos->type != espeakEVENT_LIST_TERMINATED; eventos++) {
        if (eventos->type != espeakEVENT_WORD || !vuelo.seguidor) continue;
        const Ficha *ficha = vuelo.seguidor->Palabra(eventos->text_position);
        if (!ficha) continue;
        const double muestra = std::max(eventos->sample, 0) / vuelo.estirado;
        if (!vuelo.Palabra(vuelo.base + static_cast<std::uint64_t>(muestra), ficha->inicio, ficha->fin)) return 1;
    }
    if (muestras && n > 0) {
        const std::span<const std::int16_t> nuevas(muestras, static_cast<std::size_t>(n));
        if (vuelo.estirador)
            vuelo.estirador->Mete(nuevas, vuelo.bloque);
        else
            vuelo.bloque.assign(nuevas.begin(), nuevas.end());
        vuelo.Pcm();
    }
    return vuelo.vivo ? 0 : 1;
}

bool cMotorEspeak::Inicia() {
    if (!m_hercios) {
        // The library (1.51) asks for the sound server even where it is only to give samples.
        setenv("PULSE_SERVER", "unix:/dev/null", 1);
        m_hercios = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, kMsBloque, nullptr, espeakINITIALIZE_DONT_EXIT);
        if (*m_hercios > 0) {
            const char *datos = nullptr;
            espeak_Info(&datos);
            m_lenguas.SetDatos(datos ? datos : "");
            espeak_SetSynthCallback(Vuelo::Devolucion);
        }
    }
    return *m_hercios > 0;
}

// The first use of Spanish, the language of most texts and of the notices, costs the engine milliseconds.
void cMotorEspeak::Prepara() {
    if (!Inicia()) return;
    if (const auto identificador = m_lenguas.Identificador("roa/es"))
        CargaVoz(TextoDeVoz(m_lenguas.Texto(*identificador), {}));
}

std::vector<TramaVoz> cMotorEspeak::Voces() {
    if (!Inicia()) return {};
    auto voces = m_lenguas.Voces();
    m_cargada.clear();
    return voces;
}

void cMotorEspeak::Habla(const Locucion &locucion, Emisor &emisor) {
    if (!Inicia()) return emisor.Error("eSpeak NG no arranca: faltan sus datos");
    if (locucion.voz.motor != "espeak") return emisor.Error("motor desconocido: " + locucion.voz.motor);
    Recorrido recorrido(locucion);
    if (!EligeVoz(locucion.voz, recorrido.Estado())) return emisor.Error("voz desconocida: " + locucion.voz.voz);
    Vuelo vuelo{.emisor = emisor, .hercios = *m_hercios};
    if (!emisor.Formato(static_cast<std::uint32_t>(*m_hercios))) return;
    while (const auto paso = recorrido.Siguiente()) {
        switch (paso->tipo) {
            case Paso::Tipo::Texto: DiceTexto(locucion, *paso, recorrido.Estado(), vuelo); break;
            case Paso::Tipo::Pausa: Silencio(paso->ms, vuelo); break;
            case Paso::Tipo::Marca: vuelo.vivo = emisor.Marca(vuelo.muestras, paso->tramo->texto); break;
        }
        if (!vuelo.vivo || !emisor.Vigente()) return;
    }
}

// Puts the voice of `estado` into the engine. False: there is no such voice or language; the former one stays.
bool cMotorEspeak::EligeVoz(const ParametrosVoz &voz, const EstadoHabla &estado) {
    auto identificador = m_lenguas.Identificador(estado.voz);
    if (!estado.idioma.empty())
        if (auto otro = m_lenguas.DeIdioma(estado.idioma)) identificador = otro;
    if (!identificador) return false;
    const std::string &idioma = m_lenguas.Texto(*identificador);
    std::string texto;
    if (voz.formantes) {
        ValoresFormantes valores = ValoresDe(estado);
        valores.tono = static_cast<int>(std::lround(TonoDelMotor(valores.tono, *identificador)));
        texto = TextoDeVoz(idioma, valores);
    } else {
        texto = TextoDeVozLlana(idioma, estado.tono * (estado.enfasis ? kEnfasisTono : 1) / kTonoLlano);
    }
    if (!CargaVoz(texto)) return false;
    m_idioma = *identificador;
    return true;
}

// The engine reads voices from files only: one in memory.
bool cMotorEspeak::CargaVoz(const std::string &texto) {
    if (texto == m_cargada) return true;
    const int fichero = memfd_create("ondalis-voz", MFD_CLOEXEC);
    if (fichero < 0) return false;
    bool bien = write(fichero, texto.data(), texto.size()) == static_cast<ssize_t>(texto.size());
    const std::string ruta = "/proc/self/fd/" + std::to_string(fichero);
    bien = bien && espeak_ng_SetVoiceByFile(ruta.c_str()) == ENS_OK;
    close(fichero);
    if (bien)
        m_cargada = texto;
    else
        m_cargada.clear();
    return bien;
}

// All of them before each stretch: whatever the engine keeps from the one before is undone.
void cMotorEspeak::PonParametros(const EstadoHabla &estado, bool formantes, int nominal) {
    const bool conSignos = estado.puntuacion && LenguaDeSignos(m_idioma) == LenguaSignos::Ninguna;
    espeak_SetParameter(espeakRATE, nominal, 0);
    espeak_SetParameter(espeakVOLUME, formantes ? kVolumenFormantes : kVolumenLlana, 0);
    espeak_SetParameter(espeakPITCH, 50, 0);
    espeak_SetParameter(espeakRANGE, 50, 0);
    espeak_SetParameter(espeakPUNCTUATION, conSignos ? espeakPUNCT_ALL : espeakPUNCT_NONE, 0);
    espeak_SetParameter(espeakCAPITALS, 0, 0);
    espeak_SetParameter(espeakWORDGAP, 0, 0);
}

bool cMotorEspeak::DiceTexto(const Locucion &locucion, const Paso &paso, const EstadoHabla &estado, Vuelo &vuelo) {
    EligeVoz(locucion.voz, estado);  // an unknown one in mid-text: the voice before goes on
    const double velocidad = estado.velocidad * (estado.enfasis ? kEnfasisRitmo : 1);
    vuelo.velocidad = velocidad;
    vuelo.tono = ValoresDe(estado).tono;
    vuelo.ganancia = estado.ganancia * (estado.enfasis ? kEnfasisGanancia : 1);
    if (locucion.voz.formantes) {
        vuelo.ganancia *= GananciaDeVoz(ValoresDe(estado), m_idioma);
        vuelo.aspereza.Pon(estado.aspereza);
    }
    vuelo.tramo = paso.tramo;
    if (estado.deletreo) {
        const Ritmo ritmo = RitmoDe(velocidad, m_idioma);
        vuelo.estirado = ritmo.estirado;
        PonParametros(estado, locucion.voz.formantes, ritmo.nominal);
        return Deletrea(paso, vuelo);
    }
    if (m_idioma != vuelo.idioma) vuelo.compas.Olvida();
    vuelo.idioma = m_idioma;
    const OpcionesPieza opciones{LenguaDeSignos(m_idioma), locucion.voz.formantes, estado.puntuacion};
    const std::u16string_view texto = paso.tramo->texto;
    for (std::size_t i = paso.inicio; i < texto.size() && vuelo.vivo;) {
        const Pieza pieza = HazPieza(texto, i, opciones);
        i = pieza.siguiente;
        // Something follows in the utterance: the pause at the end of a sentence is made.
        const bool sigue = i < texto.size() || paso.tramo != &locucion.tramos.back();
        if (!pieza.hablable) continue;
        const Ritmo ritmo = RitmoDePieza(texto, pieza, locucion.voz.formantes, vuelo);
        vuelo.estirado = ritmo.estirado;
        PonParametros(estado, locucion.voz.formantes, ritmo.nominal);
        DicePieza(pieza, sigue, vuelo);
    }
    return vuelo.vivo;
}

// A plain voice keeps its own pace: its speed is no number of words.
Ritmo cMotorEspeak::RitmoDePieza(std::u16string_view texto, const Pieza &pieza, bool formantes, Vuelo &vuelo) const {
    if (!formantes) return RitmoDe(vuelo.velocidad, m_idioma);
    const RasgosPieza rasgos = RasgosDe(texto, pieza, LenguaDeSignos(m_idioma));
    return RitmoDe(vuelo.velocidad, m_idioma, vuelo.compas.Entra(rasgos), vuelo.tono);
}

bool cMotorEspeak::DicePieza(const Pieza &pieza, bool sigue, Vuelo &vuelo) {
    Seguidor seguidor(pieza.fichas);
    std::optional<cEstirador> estirador;
    if (vuelo.estirado != 1) estirador.emplace(vuelo.hercios, vuelo.estirado);
    vuelo.seguidor = &seguidor;
    vuelo.estirador = estirador ? &*estirador : nullptr;
    vuelo.base = vuelo.muestras;
    const unsigned modo = espeakCHARS_UTF8 | (sigue && AcabaFrase(pieza.utf8) ? espeakENDPAUSE : 0u);
    s_vuelo = &vuelo;
    espeak_Synth(pieza.utf8.c_str(), pieza.utf8.size() + 1, 0, POS_CHARACTER, 0, modo, nullptr, nullptr);
    s_vuelo = nullptr;
    if (vuelo.vivo && estirador) {
        estirador->Termina(vuelo.bloque);
        vuelo.Pcm();
    }
    vuelo.seguidor = nullptr;
    vuelo.estirador = nullptr;
    return vuelo.vivo;
}

bool cMotorEspeak::Deletrea(const Paso &paso, Vuelo &vuelo) {
    const std::u16string_view texto = paso.tramo->texto;
    for (std::size_t i = paso.inicio; i < texto.size() && vuelo.vivo;) {
        PuntoCodigo p = LeePunto(texto, i);
        const std::size_t inicio = i;
        i += p.unidades;
        while (i < texto.size() && EsCombinable(texto[i])) {
            if (const char32_t junto = Compone(p.c, texto[i])) p.c = junto;
            i++;
        }
        if (EsBlanco(p.c) || p.roto || EsInvisible(p.c)) continue;
        if (!vuelo.Palabra(vuelo.muestras, inicio, i)) break;
        vuelo.base = vuelo.muestras;
        s_vuelo = &vuelo;
        espeak_Char(static_cast<wchar_t>(p.c));
        s_vuelo = nullptr;
        if (vuelo.vivo) Silencio(kPausaLetra * 170 / vuelo.velocidad, vuelo);
    }
    return vuelo.vivo;
}

bool cMotorEspeak::Silencio(double ms, Vuelo &vuelo) {
    static const std::array<std::int16_t, 2048> kCeros{};
    auto quedan = static_cast<std::uint64_t>(std::llround(ms * vuelo.hercios / 1000));
    while (quedan > 0 && vuelo.vivo) {
        const std::size_t n = std::min<std::uint64_t>(quedan, kCeros.size());
        vuelo.vivo = vuelo.emisor.Pcm(kCeros.data(), n);
        vuelo.muestras += n;
        quedan -= n;
    }
    return vuelo.vivo;
}

}  // namespace ondalis
