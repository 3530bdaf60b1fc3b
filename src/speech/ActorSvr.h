// The live speech control of the "IBM" family. Its operations are those of the original's dispatch members, whose
// numbers the comments give. Owned by main. Main thread.
#pragma once

#include "speech/ControlHabla.h"

namespace ondalis {

struct HablanteIBM;

class ActorSvr : public ControlHabla {
public:
    ActorSvr(CanalVoz &canal, cCola &cola, cEstadoVoz &estado, cLog &log);

    void SetTexto(const QString &texto) { m_texto = texto; }  // 5
    const QString &Texto() const { return m_texto; }
    void SetModo(const QString &idModo);  // 7: "{" + IdModo + "}"; sets the voice's own five values; unknown: Carlos
    void SetVelocidad(std::int16_t v) { m_velocidad = v; }  // 14: words a minute, 70 to 450
    std::int16_t Velocidad() const { return m_velocidad; }
    void SetTono(std::int16_t v) { m_tono = v; }  // 15: hertz, 40 to 422
    std::int16_t Tono() const { return m_tono; }
    void SetVolumen(std::int32_t v) { m_volumen = v; }      // 16: 1000 to 65000
    void SetTamCabeza(std::int16_t v) { m_tamCabeza = v; }  // 17: 0 to 100, as are the next three
    std::int16_t TamCabeza() const { return m_tamCabeza; }
    void SetFluctuacion(std::int16_t v) { m_fluctuacion = v; }  // 18
    std::int16_t Fluctuacion() const { return m_fluctuacion; }
    void SetDiafonia(std::int16_t v) { m_diafonia = v; }  // 19
    std::int16_t Diafonia() const { return m_diafonia; }
    void SetAspereza(std::int16_t v) { m_aspereza = v; }  // 20
    std::int16_t Aspereza() const { return m_aspereza; }

    // 23: speaks the text; returns at once. `aviso`: a notice or a voice test, whose role is 1.
    void Habla(bool aviso = false);
    using ControlHabla::Detiene;  // 26
    using ControlHabla::EnPausa;
    using ControlHabla::Pausa;    // 24
    using ControlHabla::Reanuda;  // 25

private:
    QString m_texto;
    const HablanteIBM *m_hablante;
    std::int16_t m_velocidad = 170;
    std::int16_t m_tono = 0;
    std::int32_t m_volumen = 65000;
    std::int16_t m_tamCabeza = 0;
    std::int16_t m_fluctuacion = 0;
    std::int16_t m_diafonia = 0;
    std::int16_t m_aspereza = 0;
};

}  // namespace ondalis
