// The waiting and recording voice of the "IBM" family: turns a voice, a handful of numbers and a text into one
// annotated text for the ECI operations, which speak it on the sound device or into a WAV file. It has no events. Owned
// by main; one at a time, as there is one ECI voice. Main thread.
#pragma once

#include "settings/cLog.h"
#include "speech/OperacionesECI.h"
#include "speech/VozECI.h"

namespace ondalis {

class cVozECI : public VozECI {
public:
    explicit cVozECI(cLog &log, const OperacionesECI &eci = {});
    ~cVozECI() override;
    cVozECI(const cVozECI &) = delete;
    cVozECI &operator=(const cVozECI &) = delete;

    // The first row of the voices' table whose name occurs in `nombre`, letter for letter; else the language's own
    // annotation, which is empty for an unknown one.
    void SetHablante(const QString &nombre, std::int32_t lengua) override;
    void SetVelocidad(std::int16_t velocidad) override { m_velocidad = velocidad; }
    void SetVolumen(std::int32_t volumen) override { m_volumen = volumen; }
    void SetAvanzados(std::int16_t tono, std::int16_t fluctuacion, std::int16_t aspereza, std::int16_t diafonia,
                      std::int16_t tamCabeza) override;
    // May be called from an event that comes in while a speech is waited for.
    void Cancela() override { m_eci.calla(); }
    bool Habla(const QString &texto, bool sincrono, const QString &destino, bool avanzados) override;
    // An empty file is failure 5, as a buffer without length is.
    bool HablaFichero(const QString &fichero, bool sincrono, const QString &destino, bool avanzados) override;
    // For a file until it is complete on the disk.
    bool EstaHablando() const override { return m_eci.estaHablando() == 1; }
    bool Fallida() override;
    QString UltimoError() const override;

private:
    template <class F>
    bool Procedimiento(const QString &nombre, F &&cuerpo);
    QString Prefijo(bool avanzados) const;
    // Steps of both; false: m_errorTexto tells why.
    bool Destina(const QString &destino, const QString &mensaje);
    bool AddTexto(QString texto, const QString &mensaje);
    bool LeeFichero(const QString &fichero, QString &texto);
    bool Lanza(bool sincrono);
    bool FallaECI(const QString &mensaje);

    cLog &m_log;
    const OperacionesECI m_eci;
    QString m_anotacionHablante;
    std::int16_t m_velocidad = 0;
    std::int32_t m_volumen = 0;
    std::int16_t m_tono = 0;
    std::int16_t m_fluctuacion = 0;
    std::int16_t m_aspereza = 0;
    std::int16_t m_diafonia = 0;
    std::int16_t m_tamCabeza = 0;
    bool m_sinEsperar = false;  // the last speech went into a file without waiting, and wasn't asked about
    QString m_errorTexto;
};

}  // namespace ondalis
