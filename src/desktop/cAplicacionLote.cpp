#include "desktop/cAplicacionLote.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QTimer>

#include "desktop/Rutas.h"
#include "engine/cCanalMotor.h"
#include "platform/x11/HayPantalla.h"

namespace ondalis {

namespace {

constexpr int kEsperaSonidoMs = 5000;  // a sound server that is starting with the session gets so long

}  // namespace

cAplicacionLote::cAplicacionLote(cLog &log)
    : m_log(log),
      m_mensajes(rutas::Ejecutable(), HayPantalla),
      m_general(log, m_mensajes, m_prioridad),
      m_registro(log, rutas::CarpetaAutoarranque()),
      m_extractor(m_general),
      m_temporal(log, {rutas::CarpetaEstado(), QDir::tempPath()}),
      m_lanzador(rutas::ProgramaMotor(rutas::CarpetaEjecutable()).toStdString()),
      m_lanzadorFichero(rutas::ProgramaMotor(rutas::CarpetaEjecutable()).toStdString(), {"--nice", "10"}),
      m_voces(log),
      m_canalVivo([this] { return CreaCanalVivo(); }),
      m_flujo(m_salidaFichero),
      m_canalFichero([this] { return CreaCanalFichero(); }),
      m_lote({.general = m_general,
              .registro = m_registro,
              .extractor = m_extractor,
              .temporal = m_temporal,
              .vozECI = [this]() -> VozECI & { return CreaVozECI(); },
              .chequeaSAPI5Compatible = [this] { return ChequeaSAPI5Compatible(); },
              .vozSAPI5 = [this]() -> VozSAPI5Lote & { return CreaVozSAPI5(); },
              .haySonido = [this] { return HaySonido(); }}),
      m_senales([this] { Interrumpe(); }) {}

cServidorPulse &cAplicacionLote::Servidor() { return m_servidor ? *m_servidor : m_servidor.emplace(Producto::Titulo); }

std::unique_ptr<CanalVoz> cAplicacionLote::CreaCanalVivo() {
    return std::make_unique<cCanalMotor>(m_lanzador, m_salidaViva.emplace(Servidor(), Producto::Titulo), m_reloj,
                                         Plazos());
}

std::unique_ptr<CanalVoz> cAplicacionLote::CreaCanalFichero() {
    return std::make_unique<cCanalMotor>(m_lanzadorFichero, m_salidaFichero, m_reloj, Plazos().SinPrisa());
}

VozECI &cAplicacionLote::CreaVozECI() {
    m_servicioECI.emplace(
        ServicioECI{.vivo = &m_canalVivo,
                    .fichero = &m_canalFichero,
                    .salida = &m_salidaFichero,
                    .espera = [this](const std::function<bool()> &listo) { m_cola.EsperaBloqueando(listo, -1); },
                    .despierta = [this] { m_cola.Despierta(); },
                    .avisa =
                        [this](const std::u16string &texto) {
                            m_log.Escribe(QStringLiteral("cVozECI: "), QString::fromStdU16String(texto));
                        }});
    return m_vozECI.emplace(m_log);
}

bool cAplicacionLote::ChequeaSAPI5Compatible() {
    m_tokens.emplace(m_lanzador);
    m_voces.ChequeaSAPI5Compatible([this] { return !m_tokens->Tokens().empty(); });
    for (const QString &queja : m_tokens->Quejas()) m_log.Escribe(QStringLiteral("ChequeaSAPI5Compatible: "), queja);
    return m_voces.SAPI5Compatible();
}

VozSAPI5Lote &cAplicacionLote::CreaVozSAPI5() {
    return m_vozSAPI5.emplace(m_canalVivo, m_canalFichero, m_flujo, *m_tokens, m_cola, m_log);
}

bool cAplicacionLote::HaySonido() {
    const QDeadlineTimer plazo(kEsperaSonidoMs);
    constexpr std::chrono::milliseconds kVuelta(20);
    while (!m_lote.Interrumpido()) {
        if (Servidor().EsperaConexion(kVuelta) && !Servidor().Dispositivos().empty()) return true;
        if (plazo.hasExpired()) return false;
        QTimer::singleShot(kVuelta, &m_cola, [] {});
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return false;
}

void cAplicacionLote::Interrumpe() {
    m_mensajes.Cierra();
    m_lote.Interrumpe();
}

}  // namespace ondalis
