// An engine without sound that raises Start, Word and Stop as the speech controls promise: Start only through the
// queue, Stop inside the call that silences or purges, under the state of the speech that it ends. The test says when a
// word is heard and when the text has been spoken.
#pragma once

#include <algorithm>
#include <optional>

#include "fakes/Diario.h"
#include "settings/cCola.h"
#include "speech/EstadoVoz.h"
#include "speech/MotorVoz.h"

namespace ondalis::prueba {

class MotorFalso : public MotorVoz {
public:
    MotorFalso(ActorSvr &voz, const cOpcVoz &opciones, cCola &cola, cEstadoVoz &estado, Diario &diario)
        : MotorVoz(voz, nullptr, nullptr, opciones),
          m_opciones(opciones),
          m_cola(cola),
          m_estado(estado),
          m_diario(diario) {}

    void SetEventos(EventosVoz eventos) { m_eventos = std::move(eventos); }

    void Selecciona() override { Anota(QStringLiteral("Selecciona")); }
    void FijaVelocidad(int v) override {
        Anota(QStringLiteral("FijaVelocidad(%1)").arg(v));
        velocidad = std::min(v, velocidadMaxima);
    }
    void FijaVolumen(int v) override { Anota(QStringLiteral("FijaVolumen(%1)").arg(v)); }
    void FijaAvanzados() override { Anota(QStringLiteral("FijaAvanzados")); }
    int VelocidadMotor() const override { return velocidad; }
    void CancelaECI() override { Anota(QStringLiteral("CancelaECI")); }

    Fallo Habla(const QString &texto, bool signos) override {
        Anota(QStringLiteral("Habla(%1%2)").arg(texto, signos ? QStringLiteral(",signos") : QString()));
        if (rechazo) return std::exchange(rechazo, Fallo{});
        Purga();
        Acepta(m_estado.valor == cEstadoVoz::Remota ? cEstadoVoz::Remota : cEstadoVoz::Lectura);
        return {};
    }

    // The "IBM" family returns at once; a SAPI 5 notice has been heard when the call returns, and its events come then.
    Fallo HablaAviso(const QString &texto) override {
        Anota(QStringLiteral("HablaAviso(%1)").arg(texto));
        if (rechazo) return std::exchange(rechazo, Fallo{});
        Purga();
        m_estado.valor = cEstadoVoz::Aviso;
        Acepta(cEstadoVoz::Aviso);
        if (!m_opciones.EsIBM()) Termina();
        return {};
    }

    // Spoken whole inside the call, without an event. `dentro` runs meanwhile, under what the wait withholds.
    Fallo HablaFichero(const QString &fichero) override {
        Anota(QStringLiteral("HablaFichero(%1)").arg(fichero));
        if (rechazo) return std::exchange(rechazo, Fallo{});
        const cCola::Retencion retencion(m_cola);
        if (dentro) dentro();
        return {};
    }
    void CancelaEspera() override { Anota(QStringLiteral("CancelaEspera")); }

    void Pausa() override {
        Anota(QStringLiteral("Pausa"));
        m_pausado = true;
    }
    void Reanuda() override {
        Anota(QStringLiteral("Reanuda"));
        m_pausado = false;
    }
    void Detiene() override {
        Anota(QStringLiteral("Detiene"));
        m_pausado = false;
        if (m_actual) Stop();
    }

    // A word event of the present speech; a paused one and a notice have none.
    void Palabra(std::int32_t pos) {
        if (m_actual && !m_pausado && *m_actual != cEstadoVoz::Aviso) m_eventos.alPalabra(pos);
    }
    // The last sample has been heard; the Stop comes through the queue.
    void Termina() {
        m_cola.Pon(cCola::Clase::Motor, [this, turno = m_turno] {
            if (m_actual && turno == m_turno && !m_pausado) Stop();
        });
    }

    bool Hablando() const { return m_actual.has_value(); }
    bool Pausado() const { return m_pausado; }

    Fallo rechazo;  // what the next speech answers, once
    std::function<void()> dentro;
    int velocidad = 0;
    int velocidadMaxima = 1000;  // the engine's own limit

private:
    void Anota(const QString &llamada) { m_diario.Anota(QStringLiteral("motor.") + llamada); }
    void Purga() {
        if (!m_actual) return;
        m_estado.valor = *m_actual;
        Stop();
    }
    void Acepta(std::int32_t rol) {
        m_actual = rol;
        m_pausado = false;
        m_cola.Pon(cCola::Clase::Inicio, [this, turno = ++m_turno] {
            if (m_actual && turno == m_turno) m_eventos.alEmpezar();
        });
    }
    void Stop() {
        m_actual.reset();
        ++m_turno;
        m_eventos.alTerminar();
    }

    const cOpcVoz &m_opciones;
    cCola &m_cola;
    cEstadoVoz &m_estado;
    Diario &m_diario;
    EventosVoz m_eventos;
    std::optional<std::int32_t> m_actual;  // role of the speech whose Stop is owed
    int m_turno = 0;
    bool m_pausado = false;
};

}  // namespace ondalis::prueba
