#include "libs/cInstanciaECI.h"

#include <cerrno>
#include <utility>

#include "engine/Dialectos.h"
#include "engine/HablantesIBM.h"
#include "engine/Protocolo.h"
#include "engine/Utf8.h"
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
    m_servicio.vivo->SetOyente(this);
    m_servicio.fichero->SetOyente(this);
}

cInstanciaECI::~cInstanciaECI() {
    Calla();
    m_servicio.vivo->SetOyente(nullptr);
    m_servicio.fichero->SetOyente(nullptr);
}

void cInstanciaECI::Restaura() {
    m_pendiente.clear();
    if (m_conDestino) CierraDestino();
}

// A destination that nothing was spoken into.
void cInstanciaECI::CierraDestino() {
    m_conDestino = false;
    if (const int error = m_servicio.salida->Cierra()) Falla(Motivo(error));
}

bool cInstanciaECI::SetDestino(const char *ruta) {
    if (ruta == nullptr || *ruta == '\0') return Falla("Falta el nombre del fichero");
    // The file under way belongs to a speech that isn't over.
    if (EstaHablando()) return Falla("La voz está ocupada");
    const int error = m_servicio.salida->Destina(ruta, kHercios, cFicheroWav::Modo::Anade);
    m_conDestino = error == 0;
    return m_conDestino || Falla(Motivo(error));
}

bool cInstanciaECI::AddTexto(std::string_view bytes) {
    // A byte gives one unit at most.
    if (bytes.size() + m_pendiente.size() >= kMaxPendiente) return Falla("El texto es demasiado largo");
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
    CanalVoz &canal = *(m_conDestino ? m_servicio.fichero : m_servicio.vivo);
    const std::uint64_t numero = locucion.numero;
    {
        const std::lock_guard guarda(m_cerrojo);
        m_enFichero = std::exchange(m_conDestino, false);
        m_numero = numero;
        m_perdida = false;
        m_error.clear();
    }
    canal.Habla(std::move(locucion));
    if (!espera) return true;
    m_servicio.espera([this, numero] { return m_numero != numero; });
    const std::lock_guard guarda(m_cerrojo);
    return m_fallida != numero;
}

void cInstanciaECI::Calla() {
    m_pendiente.clear();
    bool enFichero = false;
    {
        const std::lock_guard guarda(m_cerrojo);
        if (m_numero == 0) return;
        m_numero = 0;
        enFichero = std::exchange(m_enFichero, false);
    }
    (enFichero ? m_servicio.fichero : m_servicio.vivo)->Detiene();
    // Not under the lock: it waits until the channel has let go of the file.
    if (const int error = enFichero ? m_servicio.salida->Cierra() : 0) Falla(Motivo(error));
    m_servicio.despierta();
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
        if (evento.perdida) {
            const std::lock_guard guarda(m_cerrojo);
            m_perdida = m_perdida || (m_enFichero && evento.numero == m_numero);
        }
        m_servicio.avisa(evento.texto);
        return;
    }
    const bool fin = evento.tipo == EventoMotor::Tipo::Fin;
    std::u16string aviso;
    {
        const std::lock_guard guarda(m_cerrojo);
        if (evento.numero != m_numero) return;
        // A book isn't spoken to its end onto a full disk.
        const bool fallo = m_enFichero && m_servicio.salida->Error() != 0;
        if (!fin && !fallo) return;
        if (fallo && !fin) m_servicio.fichero->Detiene();
        if (m_enFichero && !CompletaFichero()) {
            aviso = TextoDeECI(m_error);
        } else if (fin && (m_perdida || !evento.texto.empty())) {  // the channel has logged it
            m_fallida = m_numero;
            m_error = EnUtf8(evento.texto.empty() ? std::u16string(kFaltaTexto) : evento.texto);
        }
        m_numero = 0;
    }
    if (!aviso.empty()) m_servicio.avisa(aviso);
    m_servicio.despierta();
}

// Under m_cerrojo, with the utterance under way.
bool cInstanciaECI::CompletaFichero() {
    m_enFichero = false;
    const int error = m_servicio.salida->Cierra();
    if (error == 0) return true;
    m_fallida = m_numero;
    m_error = Motivo(error);
    return false;
}

}  // namespace ondalis
