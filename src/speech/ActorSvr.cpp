#include "speech/ActorSvr.h"

#include <algorithm>

#include "engine/Dialectos.h"
#include "speech/Voces.h"

namespace ondalis {

namespace {

// The control's own state before anyone has set it. No voice of ours has that name.
constexpr char kTextoInicial[] = "No tengo nada que decir.";
constexpr char kVozInicial[] = "Kincaid";

// Linear in the amplitude: each step of 1000 is one 65th of full scale, as the scroll bar's user expects.
double Ganancia(std::int32_t volumen) { return std::clamp(volumen, 0, 65000) / 65000.0; }

}  // namespace

ActorSvr::ActorSvr(CanalVoz &canal, cCola &cola, cEstadoVoz &estado, cLog &log)
    : ControlHabla(canal, cola, estado, log), m_texto(QLatin1String(kTextoInicial)) {
    SetModo(QLatin1String(kVozInicial));
}

void ActorSvr::SetModo(const QString &idModo) {
    m_hablante = &HablanteDeModo(idModo);
    m_tono = m_hablante->tono;
    m_fluctuacion = m_hablante->fluctuacion;
    m_aspereza = m_hablante->aspereza;
    m_diafonia = m_hablante->diafonia;
    m_tamCabeza = m_hablante->tamCabeza;
}

void ActorSvr::Habla(bool aviso) {
    ParametrosVoz voz;
    voz.motor = m_hablante->motor;
    voz.voz = m_hablante->idioma;
    voz.formantes = true;
    voz.velocidad = std::clamp<int>(m_velocidad, 70, 450);
    voz.ganancia = Ganancia(m_volumen);
    voz.tono = std::clamp<int>(m_tono, 40, 422);
    voz.fluctuacion = std::clamp<int>(m_fluctuacion, 0, 100);
    voz.aspereza = std::clamp<int>(m_aspereza, 0, 100);
    voz.diafonia = std::clamp<int>(m_diafonia, 0, 100);
    voz.tamCabeza = std::clamp<int>(m_tamCabeza, 0, 100);
    Acepta(voz, AnalizaBarra(m_texto.toStdU16String()), aviso ? Modo::Aviso : Modo::Lectura);
}

}  // namespace ondalis
