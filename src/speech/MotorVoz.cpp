#include "speech/MotorVoz.h"

#include "text/Codificacion.h"

namespace ondalis {

namespace {

// Flags of a live reading by SAPI 5: asynchronous, purging, with XML; and the same with the signs spoken.
constexpr int kLectura = SpVoice::Asincrono | SpVoice::Purga | SpVoice::XML;
constexpr int kLecturaConSignos = kLectura | SpVoice::Puntuacion;

}  // namespace

MotorVoz::MotorVoz(ActorSvr &voz, SpVoice *sapi5, VozECI *eci, const cOpcVoz &opciones)
    : m_voz(voz), m_sapi5(sapi5), m_eci(eci), m_opciones(opciones) {}

void MotorVoz::Selecciona() {
    if (m_opciones.EsIBM()) {
        m_voz.SetModo(m_opciones.GuidActiva());
        if (m_eci != nullptr) m_eci->SetHablante(m_opciones.VozActiva(), m_opciones.LenguaVoz());
        return;
    }
    if (m_sapi5 == nullptr) return;
    const std::vector<TokenVoz> tokens = m_sapi5->GetVoices({}, {});
    const auto numero = static_cast<std::size_t>(m_opciones.NumeroVoz());
    if (numero < tokens.size()) m_sapi5->SetVoice(tokens[numero]);
}

void MotorVoz::FijaVelocidad(int velocidad) {
    if (m_opciones.EsIBM()) {
        m_voz.SetVelocidad(static_cast<std::int16_t>(velocidad));
        if (m_eci != nullptr) m_eci->SetVelocidad(static_cast<std::int16_t>(velocidad));
    } else if (m_sapi5 != nullptr) {
        m_sapi5->SetRate(velocidad);
    }
}

void MotorVoz::FijaVolumen(int volumen) {
    if (m_opciones.EsIBM()) {
        m_voz.SetVolumen(volumen);
        if (m_eci != nullptr) m_eci->SetVolumen(volumen);
    } else if (m_sapi5 != nullptr) {
        m_sapi5->SetVolume(volumen);
    }
}

void MotorVoz::FijaAvanzados() {
    if (!m_opciones.EsIBM()) return;
    m_voz.SetTono(m_opciones.Tono());
    m_voz.SetFluctuacion(m_opciones.Fluctuacion());
    m_voz.SetAspereza(m_opciones.Aspereza());
    m_voz.SetDiafonia(m_opciones.Diafonia());
    m_voz.SetTamCabeza(m_opciones.TamCabeza());
    if (m_eci != nullptr)
        m_eci->SetAvanzados(m_opciones.Tono(), m_opciones.Fluctuacion(), m_opciones.Aspereza(), m_opciones.Diafonia(),
                            m_opciones.TamCabeza());
}

void MotorVoz::AplicaConfiguracion() {
    Selecciona();
    FijaVelocidad(m_opciones.Velocidad());
    FijaVolumen(m_opciones.Volumen());
    FijaAvanzados();
}

int MotorVoz::VelocidadMotor() const {
    if (m_opciones.EsIBM() || m_sapi5 == nullptr) return m_voz.Velocidad();
    return m_sapi5->Rate();
}

// Each control knows of its own speech only: whoever speaks with one or silences it means whatever sounds.
void MotorVoz::CallaLaOtra() {
    if (!m_opciones.EsIBM())
        m_voz.Detiene();
    else if (m_sapi5 != nullptr)
        static_cast<void>(m_sapi5->Speak({}, SpVoice::Purga));
}

Fallo MotorVoz::Habla(const QString &texto, bool signos) {
    CallaLaOtra();
    if (m_opciones.EsIBM()) {
        m_voz.SetTexto(texto);
        m_voz.Habla();
        return {};
    }
    if (m_sapi5 == nullptr) return Fallo::De(Fallo::LlamadaNoValida);
    return m_sapi5->Speak(texto, signos ? kLecturaConSignos : kLectura);
}

Fallo MotorVoz::HablaAviso(const QString &texto) {
    if (m_opciones.EsIBM()) {
        m_voz.SetTexto(texto);
        m_voz.Habla(true);
        return {};
    }
    if (m_sapi5 == nullptr) return Fallo::De(Fallo::LlamadaNoValida);
    return m_sapi5->Speak(texto, SpVoice::Purga);
}

Fallo MotorVoz::HablaFichero(const QString &fichero) {
    if (m_opciones.EsIBM()) {
        if (m_eci == nullptr) return Fallo::De(Fallo::LlamadaNoValida);
        if (m_eci->HablaFichero(fichero, true, QString(), false)) return {};
        return Fallo::De(Fallo::LlamadaNoValida, m_eci->UltimoError());
    }
    if (m_sapi5 == nullptr) return Fallo::De(Fallo::LlamadaNoValida);
    QString texto;
    if (Fallo fallo = LeeFicheroTexto(fichero, texto)) return fallo;
    return m_sapi5->Speak(texto, SpVoice::XML);
}

void MotorVoz::Pausa() {
    if (m_opciones.EsIBM())
        m_voz.Pausa();
    else if (m_sapi5 != nullptr)
        m_sapi5->Pause();
}

void MotorVoz::Reanuda() {
    if (m_opciones.EsIBM())
        m_voz.Reanuda();
    else if (m_sapi5 != nullptr)
        m_sapi5->Resume();
}

// A paused engine is resumed before it is stopped, so that none is left with a paused queue; the resume takes effect
// only when the running handler ends, and by then the stop has cancelled it.
void MotorVoz::Detiene() {
    CallaLaOtra();
    if (m_opciones.EsIBM()) {
        if (m_voz.EnPausa()) m_voz.Reanuda();
        m_voz.Detiene();
    } else if (m_sapi5 != nullptr) {
        if (m_sapi5->EnPausa()) m_sapi5->Resume();
        // Silencing raises nothing of its own and can't be refused.
        static_cast<void>(m_sapi5->Speak({}, SpVoice::Purga));
    }
}

void MotorVoz::CancelaECI() {
    if (m_eci != nullptr) m_eci->Cancela();
}

void MotorVoz::CancelaEspera() {
    CancelaECI();
    if (m_sapi5 != nullptr) static_cast<void>(m_sapi5->Speak({}, SpVoice::Purga));
}

}  // namespace ondalis
