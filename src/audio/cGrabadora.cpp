#include "audio/cGrabadora.h"

#include <QDir>
#include <QFileInfo>
#include <QStringList>
#include <limits>
#include <utility>

#include "speech/SpVoice.h"
#include "text/cBloquesTexto.h"

namespace ondalis {

namespace {

constexpr int kSondeoMs = 100;
constexpr int kHerciosIBM = 11025;  // of every file that the engine of the "IBM" family makes
constexpr int kSinRemuestreo = -1;

const QString kProcedimiento = QStringLiteral("cFormPrincipal.GrabaEnFichero: ");

QString Extension(bool wav) { return wav ? QStringLiteral(".wav") : QStringLiteral(".mp3"); }

// The path with its file's own name in small letters and `puesto` before each `extension` in it; folders stay.
QString ConDelante(const QString &fichero, const QString &extension, const QString &puesto) {
    const QString carpeta = cGeneral::GetRutaFich(fichero);
    return carpeta + fichero.mid(carpeta.size()).toLower().replace(extension, puesto + extension);
}

// The pieces stand in `nombre` in their order, the first at its beginning, the last at its end, anything in between.
bool Concuerda(const QString &nombre, const QStringList &trozos) {
    if (trozos.size() == 1) return nombre == trozos.first();
    if (!nombre.startsWith(trozos.first()) || !nombre.endsWith(trozos.last())) return false;
    qsizetype desde = trozos.first().size();
    const qsizetype hasta = nombre.size() - trozos.last().size();
    for (const QString &trozo : trozos.mid(1, trozos.size() - 2)) {
        const qsizetype sitio = nombre.indexOf(trozo, desde);
        if (sitio < 0) return false;
        desde = sitio + trozo.size();
    }
    return desde <= hasta;
}

void Exige(const Fallo &fallo) {
    if (fallo) throw ErrorFallo{fallo};
}

std::int16_t De16(qsizetype numero) {
    if (numero > std::numeric_limits<std::int16_t>::max()) throw ErrorFallo{Fallo::De(Fallo::Desbordamiento)};
    return static_cast<std::int16_t>(numero);
}

}  // namespace

cGrabadora::cGrabadora(const ColaboradoresGrabadora &colaboradores) : c(colaboradores) {
    c.timer.SetIntervalo(kSondeoMs);
    c.timer.SetManejador([this] { Sondea(); });
}

cGrabadora::~cGrabadora() {
    m_muere = true;
    TerminaPendiente();
    c.timer.SetEnabled(false);
    c.timer.SetManejador({});
}

std::int16_t cGrabadora::GetSiguienteNumeroFichAudio(const QString &nombreFichero) const {
    const QString carpeta = cGeneral::GetRutaFich(nombreFichero);
    const QString extension = Extension(c.grabar.GrabaEnWAV());
    const QString nombre = nombreFichero.mid(carpeta.size()).toLower();
    // Any character may stand in a name here, "*" and "?" too: only what takes the number's place matches others.
    QStringList trozos;
    qsizetype desde = 0;
    for (qsizetype sitio = nombre.indexOf(extension); sitio >= 0; sitio = nombre.indexOf(extension, sitio + 1)) {
        trozos << nombre.mid(desde, sitio - desde).toCaseFolded();
        desde = sitio;
    }
    trozos << nombre.mid(desde).toCaseFolded();
    qsizetype siguiente = 1;
    const QDir dir(carpeta.isEmpty() ? QStringLiteral(".") : carpeta);
    // The file of what is under way is as good as there: its number must not be given twice.
    if (!m_enCamino.isEmpty() && cGeneral::GetRutaFich(m_enCamino) == carpeta && !cGeneral::ExisteFichero(m_enCamino) &&
        Concuerda(m_enCamino.mid(carpeta.size()).toCaseFolded(), trozos))
        ++siguiente;
    for (const QFileInfo &hallado : dir.entryInfoList(QDir::Files | QDir::Hidden))
        if (hallado.isFile() && Concuerda(hallado.fileName().toCaseFolded(), trozos)) ++siguiente;
    return De16(siguiente);
}

void cGrabadora::EstableceNroFichero() {
    if (!c.grabar.NumerarFich()) return;
    c.general.Ejecuta(QStringLiteral("cFormPrincipal.GetSiguienteNumeroFichAudio: "), cGeneral::Aviso::SoloLog,
                      [this] { m_nroFichero = GetSiguienteNumeroFichAudio(c.grabar.NombreFichero()); });
}

void cGrabadora::GrabaEnFichero(const QString &texto, const QString &ficheroTexto, const OpcionesGrabacion *opciones) {
    m_enEspera.push_back(
        {texto, ficheroTexto, opciones != nullptr ? std::optional(*opciones) : std::optional<OpcionesGrabacion>()});
    if (m_grabando) return;
    m_grabando = true;
    while (!m_enEspera.empty()) {
        const Peticion peticion = std::move(m_enEspera.front());
        m_enEspera.pop_front();
        m_cancelada = false;
        c.general.Ejecuta(kProcedimiento, peticion.opciones ? cGeneral::Aviso::Mensaje : cGeneral::Aviso::SoloLog,
                          [this, &peticion] { Graba(peticion); });
    }
    m_grabando = false;
}

void cGrabadora::Graba(const Peticion &peticion) {
    TerminaPendiente();
    Encargo encargo = Prepara(peticion);
    // Before anything is deleted for a file that can't be made.
    if (!encargo.wav && c.conversor == nullptr) {
        const QString mensaje = QStringLiteral("La grabación en MP3 no está disponible en esta versión.");
        c.general.Log().Escribe(kProcedimiento, mensaje);
        c.general.VMsg(mensaje);
        return;
    }
    if (!Despeja(peticion, encargo)) return;
    Exige(c.temporal.Prepara(encargo.ibm && Anade(peticion)));
    bool sigue = false;
    if (encargo.ibm)
        sigue = ProduceIBM(peticion);
    else
        ProduceSAPI5(peticion, encargo.hercios);
    if (!sigue) return Remata(encargo);
    m_pendiente = encargo;
    m_enCamino = encargo.destino;
    c.timer.SetEnabled(true);
}

cGrabadora::Encargo cGrabadora::Prepara(const Peticion &peticion) const {
    Encargo encargo;
    encargo.ibm = c.voz.EsIBM();
    if (const auto &opciones = peticion.opciones) {
        encargo.destino = opciones->NombreFichero;
        encargo.hercios = opciones->CalidadkHz;
        encargo.wav = opciones->GrabaEnWAV;
        encargo.kbps = opciones->Calidadkbps;
    } else {
        encargo.destino = c.grabar.NombreFichero();
        encargo.hercios = c.grabar.CalidadkHz();
        encargo.wav = c.grabar.GrabaEnWAV();
        encargo.kbps = c.grabar.Calidadkbps();
        encargo.conserva = c.grabar.AnadirFich();
    }
    return encargo;
}

// What is recorded now comes behind what was recorded before.
bool cGrabadora::Anade(const Peticion &peticion) const {
    return !peticion.opciones && !c.grabar.NumerarFich() && !c.grabar.SobrescribirFich();
}

bool cGrabadora::Despeja(const Peticion &peticion, Encargo &encargo) {
    if (peticion.opciones || !c.grabar.NumerarFich())
        return Anade(peticion) || (BorraDestino(encargo.destino) && BorraTemporal());
    if (m_nroFichero == 0) m_nroFichero = GetSiguienteNumeroFichAudio(encargo.destino);
    encargo.destino = ConDelante(encargo.destino, Extension(encargo.wav), QString::number(m_nroFichero));
    if (!BorraDestino(encargo.destino) || !BorraTemporal()) return false;
    m_nroFichero = De16(m_nroFichero + 1);
    return true;
}

bool cGrabadora::BorraDestino(const QString &destino) {
    if (cGeneral::BorraFichero(destino)) return true;
    c.general.VMsg(QStringLiteral("Imposible sobrescribir el fichero ") + destino);
    return false;
}

bool cGrabadora::BorraTemporal() {
    if (c.temporal.Borra()) return true;
    c.general.VMsg(QStringLiteral("Imposible sobrescribir el fichero temporal"));
    return false;
}

bool cGrabadora::ProduceIBM(const Peticion &peticion) {
    const bool deFichero = !peticion.ficheroTexto.isEmpty();
    const bool sincrono = deFichero || peticion.opciones || c.grabar.GrabaSincrono();
    const QString &ruta = c.temporal.Ruta();
    if (deFichero ? c.eci.HablaFichero(peticion.ficheroTexto, true, ruta, true)
                  : c.eci.Habla(peticion.texto, sincrono, ruta, true))
        return !sincrono;
    CuentaFalloECI(true);
    c.temporal.BorraVacio();
    return false;
}

void cGrabadora::CuentaFalloECI(bool conMensaje) {
    // Its text is as long as the engine's buffer, whatever it tells.
    CuentaFallo(c.eci.UltimoError().section(QChar(u'\0'), 0, 0), conMensaje);
}

void cGrabadora::CuentaFallo(const QString &error, bool conMensaje) {
    c.general.Log().Escribe(kProcedimiento, error);
    if (conMensaje) c.general.VMsg(error);
}

void cGrabadora::ProduceSAPI5(const Peticion &peticion, int hercios) {
    if (!m_vozSAPI5 && c.creaVozSAPI5) m_vozSAPI5 = c.creaVozSAPI5();
    if (!m_vozSAPI5) Exige(Fallo::De(Fallo::LlamadaNoValida));
    m_vozSAPI5->SetFormato(FormatoSAPI5(hercios));
    Exige(m_vozSAPI5->Abre(c.temporal.Ruta()));
    Fallo fallo = m_vozSAPI5->SetVoz(c.voz.NumeroVoz());
    if (!fallo) {
        m_vozSAPI5->SetVelocidad(c.voz.Velocidad());
        m_vozSAPI5->SetVolumen(c.voz.Volumen());
        fallo = Dicta(peticion);
    }
    // Also behind a failure: what there is gets its true header.
    const Fallo alCerrar = m_vozSAPI5->Cierra();
    if (!fallo) fallo = alCerrar;
    if (fallo) c.temporal.BorraVacio();
    Exige(fallo);
    // The rest is worth its file, as with the other family.
    if (!m_cancelada && m_vozSAPI5->Incompleta()) CuentaFallo(QString::fromUtf16(kFaltaTexto), true);
}

Fallo cGrabadora::Dicta(const Peticion &peticion) {
    if (peticion.ficheroTexto.isEmpty()) {
        if (Fallo fallo = m_vozSAPI5->Habla(peticion.texto, SpVoice::Purga | SpVoice::XML)) return fallo;
    } else {
        cBloquesTexto bloques;
        if (Fallo fallo = bloques.Abre(peticion.ficheroTexto)) return fallo;
        QString bloque;
        while (!m_cancelada && bloques.Siguiente(bloque))
            if (Fallo fallo = m_vozSAPI5->Habla(bloque, 0)) return fallo;
        if (bloques.Error()) return bloques.Error();
    }
    m_vozSAPI5->EsperaFinal();
    return {};
}

void cGrabadora::Remata(const Encargo &encargo) {
    if (!encargo.wav) return RemataMp3(encargo);
    if (!c.temporal.EnOtroDisco(encargo.destino)) return Exige(c.temporal.Nombra(encargo.destino));
    EmpiezaCopia(encargo.destino);
    AcabaCopia();
}

void cGrabadora::RemataMp3(const Encargo &encargo) {
    if (!cGeneral::ExisteFichero(c.temporal.Ruta())) Exige(Fallo::De(Fallo::FicheroNoEncontrado));
    const int entrada = encargo.ibm ? kHerciosIBM : encargo.hercios;
    const int remuestreo = encargo.ibm ? encargo.hercios : kSinRemuestreo;
    // After a failed conversion the temporary has the only copy of the sound.
    if (!c.conversor->Convierte(c.temporal.Ruta(), encargo.destino, entrada, encargo.kbps, remuestreo)) return;
    if (!encargo.conserva) c.temporal.Borra();
}

// A slow medium takes its time for an hour of sound.
void cGrabadora::EmpiezaCopia(const QString &destino) {
    m_copiada = false;
    m_copia = std::async(std::launch::async, [this, de = c.temporal.Ruta(), destino] {
        Fallo fallo = cGeneral::Nombra(de, destino);
        m_copiada = true;
        if (c.cola != nullptr) c.cola->Despierta();
        return fallo;
    });
}

void cGrabadora::AcabaCopia() {
    std::future<Fallo> copia = std::move(m_copia);
    if (c.cola != nullptr) c.cola->EsperaBloqueando([this] { return m_copiada.load(); }, -1);
    Exige(copia.get());
    c.temporal.Entregado();
}

void cGrabadora::Sondea() {
    if (m_copia.valid() ? m_copiada.load() : !c.eci.EstaHablando()) RemataDeFondo();
}

void cGrabadora::RemataDeFondo() {
    if (m_pendiente && m_pendiente->wav && c.temporal.EnOtroDisco(m_pendiente->destino) && !m_copia.valid()) {
        EmpiezaCopia(m_pendiente->destino);
        m_pendiente.reset();
        if (c.eci.Fallida()) CuentaFalloECI(true);
    } else {
        TerminaPendiente();
    }
}

void cGrabadora::TerminaPendiente() {
    if (!m_pendiente && !m_copia.valid()) return;
    c.timer.SetEnabled(false);
    m_enCamino.clear();
    bool fallida = false;
    c.general.Ejecuta(kProcedimiento, cGeneral::Aviso::SoloLog, [this, &fallida] {
        if (m_copia.valid()) return AcabaCopia();
        const Encargo encargo = *std::exchange(m_pendiente, std::nullopt);
        if (c.eci.EstaHablando()) c.eci.Cancela();
        fallida = c.eci.Fallida();
        if (fallida) c.temporal.BorraVacio();
        Remata(encargo);
    });
    // Behind all the rest: while the message is open another recording may begin.
    if (fallida) CuentaFalloECI(!m_muere);
}

void cGrabadora::Cancela() {
    m_enEspera.clear();
    if (m_grabando) {
        m_cancelada = true;
        if (m_vozSAPI5) m_vozSAPI5->Cancela();
        c.eci.Cancela();
    }
    TerminaPendiente();
}

}  // namespace ondalis
