// The waiting engine of the "IBM" family on the sound device: speaks a text file through a channel of its own, with the
// values that the live control has too, and without any event for the session. It makes no files. Owned by main. Main
// thread.
#pragma once

#include "speech/ControlHabla.h"
#include "speech/VozECI.h"

namespace ondalis {

struct HablanteIBM;

class cVozECIEnVivo : public VozECI, private ControlHabla {
public:
    // `canal` is used by nobody else.
    cVozECIEnVivo(CanalVoz &canal, cCola &cola, cLog &log);

    // The first voice whose name occurs in `nombre`; else the first of that language; else Carlos.
    void SetHablante(const QString &nombre, std::int32_t lengua) override;
    void SetVelocidad(std::int16_t velocidad) override { m_velocidad = velocidad; }
    void SetVolumen(std::int32_t volumen) override { m_volumen = volumen; }
    void SetAvanzados(std::int16_t tono, std::int16_t fluctuacion, std::int16_t aspereza, std::int16_t diafonia,
                      std::int16_t tamCabeza) override;
    // May be called from an event that comes in while HablaFichero waits.
    void Cancela() override { Detiene(); }
    // `destino` must be empty. Waiting, nothing of the queue is delivered but windows are painted and the bus is
    // answered. An empty file is failure 5, as a buffer without length is.
    bool HablaFichero(const QString &fichero, bool sincrono, const QString &destino, bool avanzados) override;
    // Waits or not as told; annotations are spoken as they stand.
    bool Habla(const QString &texto, bool sincrono, const QString &destino, bool avanzados) override;
    bool EstaHablando() const override { return EnCurso(); }
    QString UltimoError() const override;

private:
    ParametrosVoz Parametros(bool avanzados) const;

    cEstadoVoz m_suEstado;  // the session's stays out of it
    QString m_errorTexto;
    const HablanteIBM *m_hablante;
    std::int16_t m_velocidad = 0;
    std::int32_t m_volumen = 0;
    std::int16_t m_tono = 0;
    std::int16_t m_fluctuacion = 0;
    std::int16_t m_aspereza = 0;
    std::int16_t m_diafonia = 0;
    std::int16_t m_tamCabeza = 0;
};

}  // namespace ondalis
