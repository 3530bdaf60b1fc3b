#include "libs/cInstanciaECI.h"

#include <cerrno>
#include <utility>

#include "engine/Dialectos.h"
#include "engine/HablantesIBM.h"
#include "engine/Protocolo.h"
#include "libs/ondalis_eci_texto.h"

namespace ondalis {

namespace {

constexpr int kHercios = 11025;                                        // the ECI engine's rate
constexpr std::size_t kMaxPendiente = std::size_t{128} * 1024 * 1024;  // UTF-16 units

// In a range of their own: the reader's other voices count from 1.
std::uint64_t NumeroNuevo() {
    static std::atomic<std::uint64_t> g_ultimo{std::uint64_t{1} << 63};
    return ++g_ultimo;
}

// What speaks before any annotation: Carlos at 170 words a minute, full volume.
ParametrosVoz VozDePartida() {
    ParametrosVoz voz;
    for (const HablanteIBM &hablante : HablantesIBM()) {
        if (std::string_view(hablante.nombre) != "Carlos") continue;
        voz.motor = hablante.motor;
        voz.voz = hablante.idioma;
        voz.tono = hablante.tono;
        voz.fluctuacion = hablante.fluctuacion;
        voz.aspereza = hablante.aspereza;
        voz.diafonia = hablante.diafonia;
        voz.tamCabeza = hablante.tamCabeza;
    }
    voz.formantes = true;
    voz.velocidad = 170;
    voz.ganancia = 1;
    return voz;
}

std::string Motivo(int error) {
    switch (error) {
        case EINVAL: return "Ya existe y no es un fichero WAV de 11025 Hz, 16 bits y mono";
        case EFBIG: return "El fichero está lleno";
        case ENOSPC:
        case EDQUOT: return "Disco lleno";
        case ENOENT:
        case ENOTDIR: return "No existe la carpeta";
        case EACCES:
        case EPERM: return "Permiso denegado";
        case EROFS: return "El disco es de sólo lectura";
        case EISDIR: return "Es una carpeta";
        case ELOOP: return "Es un enlace";
        case ENAMETOOLONG: return "El nombre es demasiado largo";
        default: return "Error " + std::to_string(error) + " del sistema de ficheros";
    }
}

}  // namespace

cInstanciaECI::cInstanciaECI(const ServicioECI &servicio) : m_servicio(servicio) {
    if (m_servicio.vivo) m_servicio.vivo->SetOyente(this);
}

cInstanciaECI::~cInstanciaECI() {
    Calla();
    if (m_servicio.vivo) m_servicio.vivo->SetOyente(nullptr);
    m_canalFichero.reset();
}

void cInstanciaECI::Restaura() {
    m_pendiente.clear();
    if (!m_ruta.empty()) CierraDestino();
}

// A destination that nothing was spoken into.
void cInstanciaECI::CierraDestino() {
    m_ruta.clear();
    if (const int error = m_salida.Cierra()) Falla(Motivo(error));
}

bool cInstanciaECI::SetDestino(const char *ruta) {
    if (ruta == nullptr || *ruta == '\0') return Falla("Falta el nombre del fichero");
    // The file under way belongs to a speech that isn't over.
    if (EstaHablando()) return Falla("La voz está ocupada");
    if (const int error = m_salida.Destina(ruta, kHercios, cFicheroWav::Modo::Anade)) {
        m_ruta.clear();
        return Falla(Motivo(error));
    }
    m_ruta = ruta;
    return true;
}

bool cInstanciaECI::AddTexto(std::string_view bytes) {
    // A byte gives one unit at most.
    if (bytes.size() > kMaxPendiente - m_pendiente.size()) return Falla("El texto es demasiado largo");
    if (AcabaEnAnotacion(m_pendiente)) m_pendiente += u' ';
    m_pendiente += TextoDeECI(bytes);
    return true;
}

bool cInstanciaECI::Habla(bool espera) {
    if (EstaHablando()) return Falla("La voz está ocupada");
    Locucion locucion;
    locucion.numero = NumeroNuevo();
    locucion.voz = VozDePartida();
    locucion.tramos = AnalizaComilla(SinLenguaMalEscrita(std::exchange(m_pendiente, {})));
    if (TamanoDeHabla(locucion) > kMaxTrama) return Falla("El texto es demasiado largo");
    CanalVoz *canal = m_ruta.empty() ? m_servicio.vivo : CanalDeFichero();
    if (canal == nullptr) return Falla("No hay ningún motor de voz");
    const std::uint64_t numero = locucion.numero;
    {
        const std::lock_guard guarda(m_cerrojo);
        m_rutaEnCurso = std::exchange(m_ruta, {});
        m_numero = numero;
    }
    canal->Habla(std::move(locucion));
    if (!espera || !m_servicio.espera) return true;
    m_servicio.espera([this, numero] { return m_numero != numero; });
    const std::lock_guard guarda(m_cerrojo);
    return m_fallida != numero;
}

CanalVoz *cInstanciaECI::CanalDeFichero() {
    if (!m_canalFichero && m_servicio.creaCanalFichero) {
        m_canalFichero = m_servicio.creaCanalFichero(m_salida);
        if (m_canalFichero) m_canalFichero->SetOyente(this);
    }
    return m_canalFichero.get();
}

void cInstanciaECI::Calla() {
    m_pendiente.clear();
    bool enFichero = false;
    {
        const std::lock_guard guarda(m_cerrojo);
        if (m_numero == 0) return;
        m_numero = 0;
        enFichero = !std::exchange(m_rutaEnCurso, {}).empty();
    }
    if (enFichero)
        CortaFichero();
    else
        m_servicio.vivo->Detiene();
    if (m_servicio.despierta) m_servicio.despierta();
}

// A channel takes its orders when it comes to them; until then its samples could reach the file opened next. Only its
// end is sure to be the end of them.
void cInstanciaECI::CortaFichero() {
    m_canalFichero.reset();
    if (const int error = m_salida.Cierra()) Falla(Motivo(error));
}

bool cInstanciaECI::Falla(std::string texto) {
    const std::lock_guard guarda(m_cerrojo);
    m_error = std::move(texto);
    return false;
}

std::string cInstanciaECI::UltimoError() const {
    const std::lock_guard guarda(m_cerrojo);
    return m_error;
}

void cInstanciaECI::EventoDeMotor(const EventoMotor &evento) {
    if (evento.tipo == EventoMotor::Tipo::Aviso) {
        if (m_servicio.avisa) m_servicio.avisa(evento.texto);
        return;
    }
    const bool fin = evento.tipo == EventoMotor::Tipo::Fin;
    std::u16string aviso;
    {
        const std::lock_guard guarda(m_cerrojo);
        if (evento.numero != m_numero) return;
        // A book isn't spoken to its end onto a full disk.
        const bool fallo = !m_rutaEnCurso.empty() && m_salida.Error() != 0;
        if (!fin && !fallo) return;
        if (fallo && !fin) m_canalFichero->Detiene();
        if (!m_rutaEnCurso.empty() && !CompletaFichero()) aviso = TextoDeECI(m_error);
        m_numero = 0;
    }
    if (!aviso.empty() && m_servicio.avisa) m_servicio.avisa(aviso);
    if (m_servicio.despierta) m_servicio.despierta();
}

// Under m_cerrojo, with the utterance under way.
bool cInstanciaECI::CompletaFichero() {
    const std::string ruta = std::exchange(m_rutaEnCurso, {});
    const int error = m_salida.Cierra();
    if (error == 0) return true;
    m_fallida = m_numero;
    m_error = Motivo(error);
    return false;
}

}  // namespace ondalis
