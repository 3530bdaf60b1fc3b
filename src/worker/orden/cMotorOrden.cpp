#include "worker/orden/cMotorOrden.h"

#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <utility>

#include "worker/cEstirador.h"
#include "worker/orden/BuscaPalabras.h"
#include "worker/orden/EstimaPalabras.h"
#include "worker/orden/Patron.h"

namespace ondalis {

namespace {

using Reloj = std::chrono::steady_clock;
using std::chrono::milliseconds;

constexpr int kMsVuelta = 10;        // a stop is looked for so often while a program works
constexpr milliseconds kPulso{300};  // the reader is told so often that work goes on; it waits a second
constexpr std::uint32_t kHerciosSiNo = 22050;
constexpr std::size_t kAdelante = 2;   // calls under way
constexpr int kMaxFallosSeguidos = 3;  // then the rest won't come either
constexpr milliseconds kPlazoAyuda{1000};
constexpr double kVelocidadMinima = 20;
constexpr double kEnfasisTono = 1.12, kEnfasisRitmo = .88, kEnfasisGanancia = 1.25;  // as in eSpeak NG's voices
constexpr double kTonoLlano = 100;  // hertz of a request that stand for a voice's own pitch

std::string Cifras(double valor, int decimales) {
    std::array<char, 64> texto{};
    const auto r = std::to_chars(texto.data(), texto.data() + texto.size(), valor, std::chars_format::fixed, decimales);
    return {texto.data(), r.ptr};
}

void Cambia(std::string &texto, std::string_view hueco, const std::string &valor) {
    for (std::size_t i = texto.find(hueco); i != std::string::npos; i = texto.find(hueco, i + valor.size()))
        texto.replace(i, hueco.size(), valor);
}

std::string_view EnTexto(const std::vector<std::uint8_t> &bytes) {
    return {reinterpret_cast<const char *>(bytes.data()), bytes.size()};
}

void Pasa(cEstirador &&estirador, std::vector<std::int16_t> &muestras) {
    std::vector<std::int16_t> salida;
    estirador.Mete(muestras, salida);
    estirador.Termina(salida);
    muestras = std::move(salida);
}

}  // namespace

// The utterance under way.
class cMotorOrden::Vuelo {
public:
    Vuelo(const Locucion &l, const VozOrden *laVoz, Emisor &e) : locucion(l), recorrido(l), voz(laVoz), emisor(e) {}

    bool Formato(std::uint32_t propios) {
        if (hercios != 0) return vivo;
        hercios = propios != 0 ? propios : kHerciosSiNo;
        ultimoPulso = Reloj::now();
        return vivo = emisor.Formato(hercios);
    }
    // Programs that work ahead are kept fed and read meanwhile.
    void Bombea() {
        for (Tarea &tarea : tareas)
            for (const auto &proceso : {tarea.proceso.get(), tarea.ayuda.get()})
                if (proceso) proceso->Bombea(0);
    }
    bool Vigente() {
        const auto ahora = Reloj::now();
        if (hercios != 0 && ahora - ultimoPulso >= kPulso) {
            ultimoPulso = ahora;
            vivo = vivo && emisor.Formato(hercios);
        }
        return vivo = vivo && emisor.Vigente();
    }
    bool Pcm(std::span<const std::int16_t> bloque) {
        Bombea();
        vivo = vivo && (bloque.empty() || emisor.Pcm(bloque.data(), bloque.size()));
        muestras += bloque.size();
        ultimoPulso = Reloj::now();
        return vivo;
    }

    const Locucion &locucion;
    Recorrido recorrido;
    const VozOrden *voz;
    Emisor &emisor;
    std::deque<Tarea> tareas;
    std::optional<Paso> texto;  // a span with pieces left, from its `inicio`
    std::uint32_t hercios = 0;
    std::uint64_t muestras = 0;
    Reloj::time_point ultimoPulso = Reloj::now();
    bool vivo = true, primera = true, abandona = false;
    int fallos = 0;
};

const VozOrden *cMotorOrden::Voz(const std::string &id) const {
    const auto voz =
        std::find_if(m_motor.voces.begin(), m_motor.voces.end(), [&id](const VozOrden &una) { return una.id == id; });
    return voz == m_motor.voces.end() ? nullptr : &*voz;
}

std::uint32_t cMotorOrden::Hercios(const VozOrden &voz) const {
    const Descripcion &d = m_motor.descripcion;
    if (voz.hercios != 0) return voz.hercios;
    if (d.hercios != 0 || !d.modelos || d.modelos->acompana.empty() || voz.modelo.empty()) return d.hercios;
    return HerciosDeModelo(voz.modelo + d.modelos->acompana);
}

void cMotorOrden::Habla(const Locucion &locucion, Emisor &emisor) {
    const VozOrden *voz = Voz(locucion.voz.voz);
    if (!voz) return emisor.Error("voz desconocida: " + locucion.voz.voz);
    Vuelo vuelo(locucion, voz, emisor);
    while (vuelo.vivo && !vuelo.abandona) {
        while (vuelo.tareas.size() < kAdelante && Siguiente(vuelo)) {
        }
        if (vuelo.tareas.empty()) {
            vuelo.Formato(Hercios(*voz));
            return;
        }
        Tarea tarea = std::move(vuelo.tareas.front());
        vuelo.tareas.pop_front();
        if (!Dice(tarea, vuelo) || !vuelo.Vigente()) return;
    }
}

// Adds the next thing to do; false: there is none left.
bool cMotorOrden::Siguiente(Vuelo &vuelo) const {
    while (true) {
        if (vuelo.texto) {
            const Paso paso = *vuelo.texto;
            vuelo.texto.reset();
            if (TomaPieza(vuelo, paso)) return true;
            continue;
        }
        const auto paso = vuelo.recorrido.Siguiente();
        if (!paso) return false;
        if (paso->tipo == Paso::Tipo::Texto) {
            vuelo.texto = paso;
            continue;
        }
        Tarea tarea;
        tarea.paso = *paso;
        vuelo.tareas.push_back(std::move(tarea));
        return true;
    }
}

// The next piece of a span's text. False when it held nothing to say.
bool cMotorOrden::TomaPieza(Vuelo &vuelo, const Paso &paso) const {
    const std::u16string_view texto = paso.tramo->texto;
    Tarea tarea;
    tarea.paso = paso;
    tarea.estado = vuelo.recorrido.Estado();
    if (const VozOrden *otra = Voz(tarea.estado.voz)) vuelo.voz = otra;  // an unknown one: the voice before goes on
    tarea.voz = vuelo.voz;
    const LenguaSignos lengua = LenguaDeLcid(tarea.voz->lengua);
    const std::size_t maximo = m_motor.descripcion.maxCaracteres;
    if (tarea.estado.deletreo) {
        tarea.pieza = PiezaDeletreada(texto, paso.inicio, maximo, lengua);
    } else {
        const std::size_t fin =
            FinDeFrase(texto, paso.inicio, maximo, vuelo.primera && m_motor.descripcion.primeraCorta);
        tarea.pieza = HazPieza(texto.substr(0, fin), paso.inicio, {lengua, false, tarea.estado.puntuacion});
    }
    if (tarea.pieza.siguiente < texto.size()) {
        vuelo.texto = paso;
        vuelo.texto->inicio = tarea.pieza.siguiente;
    }
    if (!tarea.pieza.hablable) return false;
    vuelo.primera = false;
    Encarga(tarea);
    vuelo.tareas.push_back(std::move(tarea));
    return true;
}

void cMotorOrden::Encarga(Tarea &tarea) const {
    const Descripcion &d = m_motor.descripcion;
    const EstadoHabla &e = tarea.estado;
    const double velocidad = std::max(e.velocidad * (e.enfasis ? kEnfasisRitmo : 1), kVelocidadMinima);
    const double factor = velocidad / d.palabrasMinuto;
    const double suyo = d.ritmo == RitmoOrden::Ninguno ? 1 : std::clamp(factor, d.ritmoMinimo, d.ritmoMaximo);
    tarea.estirado = factor / suyo;
    const double ritmo = d.ritmo == RitmoOrden::Inverso ? 1 / suyo : suyo;
    const double tono = d.tonoCentro * e.tono / kTonoLlano * (e.enfasis ? kEnfasisTono : 1);

    Encargo encargo;
    encargo.texto = EnUnaLinea(tarea.pieza.utf8);
    encargo.porEntrada = d.entrada == EntradaOrden::Estandar;
    encargo.textoEnFichero = d.entrada == EntradaOrden::Fichero;
    encargo.aFichero = d.salida == SalidaOrden::Fichero;
    encargo.conTiempos = d.tiempos != TiemposOrden::Ninguno;
    encargo.argumentos = Argumentos(d.argumentos, tarea, encargo.texto);
    for (std::string &a : encargo.argumentos) {
        Cambia(a, "{ritmo}", d.ritmo == RitmoOrden::Palabras ? Cifras(suyo * d.palabrasMinuto, 0) : Cifras(ritmo, 3));
        Cambia(a, "{tono}", Cifras(std::clamp(tono, d.tonoMinimo, d.tonoMaximo), 1));
    }
    if (encargo.porEntrada) encargo.texto += '\n';
    tarea.proceso = cProcesoOrden::Lanza(std::move(encargo));
    if (tarea.proceso) EncargaAyuda(tarea, suyo * d.palabrasMinuto);
}

std::vector<std::string> cMotorOrden::Argumentos(const std::vector<std::string> &plantilla, const Tarea &tarea,
                                                 const std::string &texto) const {
    std::vector<std::string> argumentos{m_motor.programa};
    for (std::string a : plantilla) {
        Cambia(a, "{voz}", tarea.voz->id);
        Cambia(a, "{modelo}", tarea.voz->modelo);
        // A text that looks like an option isn't one.
        if (m_motor.descripcion.entrada == EntradaOrden::Argumento)
            Cambia(a, "{texto}", a == "{texto}" && texto.starts_with('-') ? ' ' + texto : texto);
        argumentos.push_back(std::move(a));
    }
    return argumentos;
}

// The words one by one for a program that names its sounds; else, for one that tells nothing, the pattern.
void cMotorOrden::EncargaAyuda(Tarea &tarea, double palabrasMinuto) const {
    const Descripcion &d = m_motor.descripcion;
    Encargo encargo;
    if (d.tiempos == TiemposOrden::Segmentos) {
        for (const std::string &palabra : PalabrasDe(tarea.pieza)) encargo.texto += palabra + "\n\n";
        encargo.porEntrada = d.entrada == EntradaOrden::Estandar;
        encargo.textoEnFichero = d.entrada == EntradaOrden::Fichero;
        encargo.argumentos = Argumentos(d.argumentosPalabras, tarea, encargo.texto);
    } else if (auto argumentos = ArgumentosDePatron(tarea.voz->lengua, palabrasMinuto);
               argumentos && d.tiempos == TiemposOrden::Ninguno) {
        encargo.texto = TextoDePatron(tarea.pieza);
        encargo.argumentos = std::move(*argumentos);
    } else {
        return;
    }
    tarea.ayuda = cProcesoOrden::Lanza(std::move(encargo));
}

bool cMotorOrden::Dice(Tarea &tarea, Vuelo &vuelo) const {
    if (tarea.paso.tipo == Paso::Tipo::Marca) {
        // Words and marks are told behind the rate.
        return vuelo.Formato(Hercios(*vuelo.voz)) &&
               (vuelo.vivo = vuelo.emisor.Marca(vuelo.muestras, tarea.paso.tramo->texto));
    }
    if (tarea.paso.tipo == Paso::Tipo::Pausa) {
        if (!vuelo.Formato(Hercios(*vuelo.voz))) return false;
        static const std::array<std::int16_t, 2048> kCeros{};
        auto quedan = static_cast<std::uint64_t>(std::llround(tarea.paso.ms * vuelo.hercios / 1000));
        for (; quedan > 0 && vuelo.vivo; quedan -= std::min<std::uint64_t>(quedan, kCeros.size()))
            vuelo.Pcm(std::span(kCeros).first(std::min<std::uint64_t>(quedan, kCeros.size())));
        return vuelo.vivo;
    }
    Onda onda = Espera(tarea, vuelo);
    if (!vuelo.vivo) return false;
    if (onda.fallo.empty() && onda.muestras.empty()) onda.fallo = "no ha dado sonido";
    if (onda.fallo.empty()) {
        vuelo.fallos = 0;
        EsperaAyuda(tarea, vuelo);
        return Emite(tarea, std::move(onda), vuelo);
    }
    if (!vuelo.Formato(Hercios(*tarea.voz))) return false;
    vuelo.abandona = ++vuelo.fallos >= kMaxFallosSeguidos;
    vuelo.emisor.Error(m_nombre + ": el programa " + onda.fallo + (vuelo.abandona ? "; se deja el resto" : ""));
    return vuelo.Vigente();
}

// Until the program has given all, at most for its limits, which count from here: what it did ahead is a gift.
Onda cMotorOrden::Espera(Tarea &tarea, Vuelo &vuelo) const {
    if (!tarea.proceso) return {0, {}, "no se puede ejecutar"};
    const Descripcion &d = m_motor.descripcion;
    const auto desde = Reloj::now();
    cProcesoOrden &proceso = *tarea.proceso;
    while (true) {
        proceso.Bombea(kMsVuelta);
        if (proceso.Acabado()) break;
        if (tarea.ayuda) tarea.ayuda->Bombea(0);
        vuelo.Bombea();
        if (!vuelo.Vigente()) return {};
        if (proceso.Desbordado()) return {0, {}, "no deja de dar datos"};
        const auto llevado = Reloj::now() - desde;
        if (!proceso.HaDadoAlgo() && llevado > milliseconds(d.plazoPrimeraMs)) return {0, {}, "no responde"};
        if (llevado > milliseconds(d.plazoMs)) return {0, {}, "no termina a tiempo"};
    }
    if (proceso.Desbordado()) return {0, {}, "no deja de dar datos"};
    const int estado = proceso.Estado();
    if (WIFSIGNALED(estado)) return {0, {}, "ha muerto por la señal " + std::to_string(WTERMSIG(estado))};
    if (WEXITSTATUS(estado) != 0) return {0, {}, "ha fallado con " + std::to_string(WEXITSTATUS(estado))};
    return LaOnda(tarea);
}

Onda cMotorOrden::LaOnda(const Tarea &tarea) const {
    const Descripcion &d = m_motor.descripcion;
    const auto &bytes = tarea.proceso->Salida();
    if (bytes.empty()) return {0, {}, "no ha dado nada"};
    if (d.formato == FormatoOrden::Wav) return LeeWav(bytes);
    const std::uint32_t hercios = Hercios(*tarea.voz);
    if (hercios == 0) return {0, {}, "tiene un modelo que no dice su frecuencia"};
    return LeeCruda(bytes, hercios, d.canales);
}

// It hurries where the program itself has ended: words told a little off are better than silence.
void cMotorOrden::EsperaAyuda(Tarea &tarea, Vuelo &vuelo) const {
    const auto desde = Reloj::now();
    while (tarea.ayuda && !tarea.ayuda->Acabado()) {
        tarea.ayuda->Bombea(kMsVuelta);
        vuelo.Bombea();
        if (!vuelo.Vigente() || tarea.ayuda->Desbordado() || Reloj::now() - desde > kPlazoAyuda) tarea.ayuda.reset();
    }
    if (tarea.ayuda && tarea.ayuda->Estado() != 0) tarea.ayuda.reset();
}

// The sample of the program's own sound at which each word begins.
std::vector<std::uint64_t> cMotorOrden::Inicios(const Tarea &tarea, const Onda &onda) const {
    const double duracion = static_cast<double>(onda.muestras.size()) / onda.hercios;
    std::optional<std::vector<double>> segundos;
    const std::string_view dicho = EnTexto(tarea.proceso->Tiempos());
    switch (m_motor.descripcion.tiempos) {
        case TiemposOrden::Segmentos:
            if (tarea.ayuda) segundos = PorSegmentos(dicho, EnTexto(tarea.ayuda->Salida()), duracion, tarea.pieza);
            break;
        case TiemposOrden::Palabras: segundos = PorPalabras(dicho, duracion, tarea.pieza); break;
        case TiemposOrden::Ninguno:
            if (tarea.ayuda) segundos = PorPatron(tarea.ayuda->Salida(), onda, tarea.pieza);
            break;
    }
    const std::size_t n = tarea.pieza.fichas.size();
    if (!segundos || segundos->size() != n)
        return EstimaPalabras(tarea.pieza, onda.muestras, onda.hercios, LenguaDeLcid(tarea.voz->lengua));
    std::vector<std::uint64_t> inicios(n);
    for (std::size_t i = 0; i < n; i++)
        inicios[i] = std::min(static_cast<std::uint64_t>((*segundos)[i] * onda.hercios), onda.muestras.size() - 1);
    return inicios;
}

bool cMotorOrden::Emite(const Tarea &tarea, Onda &&onda, Vuelo &vuelo) const {
    if (!vuelo.Formato(onda.hercios)) return false;
    const auto inicios = Inicios(tarea, onda);
    const std::size_t antes = onda.muestras.size();
    std::vector<std::int16_t> x = std::move(onda.muestras);
    if (std::abs(tarea.estirado - 1) > .01) Pasa(cEstirador(static_cast<int>(onda.hercios), tarea.estirado), x);
    CambiaHercios(x, onda.hercios, vuelo.hercios);
    const double ganancia = tarea.estado.ganancia * (tarea.estado.enfasis ? kEnfasisGanancia : 1);
    if (ganancia != 1)
        for (std::int16_t &m : x)
            m = static_cast<std::int16_t>(std::clamp<long>(std::lround(m * ganancia), -32768, 32767));

    const std::uint64_t base = vuelo.muestras;
    const double paso = static_cast<double>(x.size()) / static_cast<double>(antes);
    const std::size_t bloque = std::max<std::size_t>(1, vuelo.hercios / 20);
    std::size_t palabra = 0;
    for (std::size_t i = 0; i < x.size() && vuelo.vivo; i += bloque) {
        const std::size_t n = std::min(bloque, x.size() - i);
        for (; palabra < inicios.size(); palabra++) {
            const auto donde = static_cast<std::uint64_t>(static_cast<double>(inicios[palabra]) * paso);
            if (donde >= i + n && i + n < x.size()) break;
            const Ficha &f = tarea.pieza.fichas[palabra];
            const std::uint32_t posicion = Origen(*tarea.paso.tramo, f.inicio);
            const std::uint32_t ultima = Origen(*tarea.paso.tramo, f.fin - 1);
            vuelo.vivo = vuelo.vivo && vuelo.emisor.Palabra(base + std::min<std::uint64_t>(donde, x.size() - 1),
                                                            posicion, ultima >= posicion ? ultima - posicion + 1 : 1);
        }
        vuelo.Pcm(std::span(x).subspan(i, n));
    }
    return vuelo.vivo;
}

}  // namespace ondalis
