// The batch job's one owner: engines, messages and signals of a process without windows. The sound server is spoken to
// only when something is to be heard, and a worker runs only for the family in use. Made by main behind the
// QCoreApplication. Main thread.
#pragma once

#include <memory>
#include <optional>

#include "audio/cTemporalAudio.h"
#include "desktop/cCanalPerezoso.h"
#include "engine/Reloj.h"
#include "engine/cLanzadorProceso.h"
#include "libs/ondalis_eci_servicio.h"
#include "platform/audio/cSalidaPulse.h"
#include "platform/motor/cTokensMotor.h"
#include "platform/sistema/cMensajesAparte.h"
#include "platform/sistema/cPrioridadUnix.h"
#include "platform/sistema/cSenales.h"
#include "reader/cLote.h"
#include "speech/Voces.h"
#include "speech/cVozECI.h"
#include "speech/cVozSAPI5Lote.h"

namespace ondalis {

// "~temp.wav" in the caller's current folder.
class cTemporalLote : public TemporalLote {
public:
    cTemporalLote(cLog &log, QStringList bases) : m_temporal(log, QStringLiteral("~temp.wav"), std::move(bases)) {}
    bool Prepara() override { return m_temporal.Borra() && !m_temporal.Prepara(false); }
    QString Ruta() const override { return m_temporal.Ruta(); }
    Fallo Nombra(const QString &destino) override { return m_temporal.Nombra(destino); }
    void Borra() override { m_temporal.Borra(); }

private:
    cTemporalAudio m_temporal;
};

class cAplicacionLote {
public:
    explicit cAplicacionLote(cLog &log);

    // False when the line asks for no batch job. Returns when the job is over.
    bool EjecutaLineaComandos(const QString &linea) { return m_lote.EjecutaLineaComandos(linea); }
    bool Interrumpida() const { return m_lote.Interrumpido(); }

private:
    std::unique_ptr<CanalVoz> CreaCanalVivo();
    std::unique_ptr<CanalVoz> CreaCanalFichero();
    PlazosMotor Plazos() const { return m_tokens ? m_tokens->Plazos() : PlazosMotor{}; }
    VozECI &CreaVozECI();
    bool ChequeaSAPI5Compatible();
    VozSAPI5Lote &CreaVozSAPI5();
    bool HaySonido();
    void Interrumpe();
    cServidorPulse &Servidor();

    cLog &m_log;
    cCola m_cola;
    cRelojMonotono m_reloj;
    cMensajesAparte m_mensajes;
    cPrioridadUnix m_prioridad;
    cGeneral m_general;
    cRegistro m_registro;
    ExtractorTextoLlano m_extractor;
    cTemporalLote m_temporal;
    cLanzadorProceso m_lanzador;
    cLanzadorProceso m_lanzadorFichero;  // its worker gives way to everybody else
    std::optional<cTokensMotor> m_tokens;
    cVoces m_voces;

    std::optional<cServidorPulse> m_servidor;
    std::optional<cSalidaPulse> m_salidaViva;
    cCanalPerezoso m_canalVivo;
    cSalidaFichero m_salidaFichero;
    SpFileStream m_flujo;
    cCanalPerezoso m_canalFichero;
    std::optional<cServicioECI> m_servicioECI;
    std::optional<cVozECI> m_vozECI;
    std::optional<cVozSAPI5Lote> m_vozSAPI5;

    cLote m_lote;
    cSenales m_senales;
};

}  // namespace ondalis
