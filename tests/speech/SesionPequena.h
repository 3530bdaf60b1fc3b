// The property test with a session on top.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "Azar.h"
#include "ControlDePrueba.h"

namespace ondalis::prueba {

// The session as far as the events move it, on one family: `espera` notices wait for their end (SAPI 5) or not ("IBM").
// Commands are handlers of the queue, as keys and bus calls are on the desktop.
class SesionPequena {
public:
    SesionPequena(std::uint32_t semilla, bool espera) : m_azar(semilla), m_espera(espera) {
        EventosVoz eventos;
        eventos.alEmpezar = [this] { Voz_StartSpeaking(); };
        eventos.alTerminar = [this] {
            ++m_paradas;
            Voz_StopSpeaking();
        };
        eventos.alPalabra = [this](std::int32_t pos) {
            EXPECT_FALSE(m_banco.canal.enPausa);
            m_posPalabra = pos;
        };
        m_control.SetEventos(eventos);
    }

    void Paso() {
        switch (m_azar.Hasta(12)) {
            case 0: Orden([this] { Lee(); }); break;
            case 1: Orden([this] { Avisa(); }); break;
            case 2: Orden([this] { Detener_Click(); }); break;
            case 3:
            case 4: Orden([this] { PausaReanudar_Click(); }); break;
            case 5: Orden([this] { AvanzarPalabras_Click(); }); break;
            case 6: Orden([this] { Remota(); }); break;
            case 7:
            case 8:
            case 9:
                if (m_banco.canal.sonando && !m_banco.canal.enPausa)
                    m_banco.canal.Palabra(m_siguiente += static_cast<std::uint32_t>(1 + m_azar.Hasta(5)));
                break;
            case 10:  // the end, or a death that leaves nothing to say
                if (m_banco.canal.sonando && !m_banco.canal.enPausa) m_banco.canal.Fin();
                break;
            default: m_banco.cola.DejaCorrer(); break;
        }
    }

    void Reposa() {
        m_banco.cola.DejaCorrer();
        if (m_enPausa) Orden([this] { PausaReanudaLectura(); });
        m_banco.cola.DejaCorrer();
        EXPECT_FALSE(m_banco.canal.enPausa) << "the engine stays paused";
        if (m_banco.canal.sonando) m_banco.canal.Fin();
        m_banco.cola.DejaCorrer();
        QCoreApplication::sendPostedEvents(&m_banco.cola);
        EXPECT_FALSE(m_leyendo) << (m_detener ? "stays Speaking" : "stays Sent");
        EXPECT_FALSE(m_detener);
        EXPECT_FALSE(m_enPausa);
        EXPECT_EQ(m_banco.estado.valor, cEstadoVoz::Lectura);
        EXPECT_EQ(m_posPalabra, 0);
        EXPECT_EQ(static_cast<std::size_t>(m_paradas), m_banco.canal.locuciones.size());
    }

    int Remotas() const { return m_remotas; }
    int Anunciadas() const { return m_anunciadas; }
    int Avances() const { return m_avances; }
    int Pausas() const { return m_pausas; }
    int Avisos() const { return m_avisos; }

private:
    void Orden(std::function<void()> accion) {
        m_banco.cola.Pon(m_azar.Uno(2) ? cCola::Clase::Tecla : cCola::Clase::Orden, std::move(accion));
    }

    void Voz_StartSpeaking() {
        if (m_banco.estado.valor == cEstadoVoz::Aviso) return;
        if (m_banco.estado.valor == cEstadoVoz::Reinicio) {
            m_banco.estado.valor = cEstadoVoz::Lectura;
            return;
        }
        m_leyendo = true;
        m_enPausa = false;
        m_detener = true;
    }
    void Voz_StopSpeaking() {
        if (m_banco.estado.valor == cEstadoVoz::Aviso) {
            m_banco.estado.valor = cEstadoVoz::Lectura;
            return;
        }
        if (m_banco.estado.valor == cEstadoVoz::Reinicio) return;
        m_posPalabra = 0;
        m_leyendo = m_enPausa = false;
        if (!m_detener) return;
        if (m_banco.estado.valor == cEstadoVoz::Remota) {
            m_banco.estado.valor = cEstadoVoz::Lectura;
            ++m_anunciadas;
        }
        if (m_espera) m_control.Reanuda();
        m_detener = false;
    }

    void Habla(ControlDePrueba::Modo modo) {
        m_siguiente = 0;
        m_banco.canal.alHablar = [this, modo] {
            if (modo == ControlDePrueba::Modo::AvisoEsperando) m_banco.canal.Fin();
        };
        m_control.Acepta({}, ControlDePrueba::TextoDePrueba(), modo);
    }
    void Lee() {
        Habla(ControlDePrueba::Modo::Lectura);
        m_leyendo = true;
        m_enPausa = false;
    }
    void Avisa() {
        if (m_banco.estado.valor != cEstadoVoz::Lectura) return;
        ++m_avisos;
        m_banco.estado.valor = cEstadoVoz::Aviso;
        Habla(m_espera ? ControlDePrueba::Modo::AvisoEsperando : ControlDePrueba::Modo::Aviso);
    }
    void Detiene() {
        if (m_control.EnPausa()) m_control.Reanuda();
        m_control.Detiene();
    }
    void Detener_Click() {
        if (m_enPausa) {
            m_control.Reanuda();
            m_banco.cola.DejaCorrer();
        }
        Detiene();
        Voz_StopSpeaking();
    }
    void PausaReanudar_Click() {
        if (m_posPalabra != 0) PausaReanudaLectura();
    }
    void PausaReanudaLectura() {
        if (!m_leyendo) {
            m_leyendo = true;
            m_enPausa = false;
            m_control.Reanuda();
        } else {
            ++m_pausas;
            m_leyendo = false;
            // What the engine said before the pause reached it.
            if (m_banco.canal.sonando && m_azar.Uno(3)) m_banco.canal.Palabra(++m_siguiente);
            if (m_banco.canal.sonando && m_azar.Uno(6)) m_banco.canal.Fin();
            m_control.Pausa();
            m_enPausa = true;
        }
    }
    void AvanzarPalabras_Click() {
        if (!m_detener || m_banco.estado.valor != cEstadoVoz::Lectura) return;
        ++m_avances;
        if (m_enPausa) PausaReanudaLectura();
        m_banco.estado.valor = cEstadoVoz::Reinicio;
        Detiene();
        m_posPalabra = 0;
        if (m_azar.Uno(4)) {  // off the end of the text
            m_banco.estado.valor = cEstadoVoz::Lectura;
            Voz_StopSpeaking();
        } else {
            Habla(ControlDePrueba::Modo::Lectura);
        }
    }
    void Remota() {
        Detener_Click();
        m_banco.estado.valor = cEstadoVoz::Remota;
        ++m_remotas;
        Habla(ControlDePrueba::Modo::Lectura);
    }

    Azar m_azar;
    bool m_espera;
    Banco m_banco;
    ControlDePrueba m_control{m_banco.canal, m_banco.cola, m_banco.estado, m_banco.registro.Log()};
    bool m_leyendo = false;
    bool m_enPausa = false;
    bool m_detener = false;  // the menu entry is enabled
    std::int32_t m_posPalabra = 0;
    std::uint32_t m_siguiente = 0;
    int m_paradas = 0;
    int m_remotas = 0;
    int m_anunciadas = 0;
    int m_avances = 0;
    int m_pausas = 0;
    int m_avisos = 0;
};

}  // namespace ondalis::prueba
