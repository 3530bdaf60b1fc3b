// The property test below the session.
#pragma once

#include <gtest/gtest.h>

#include <QCoreApplication>

#include "Azar.h"
#include "ControlDePrueba.h"

namespace ondalis::prueba {

// Any call at any moment, also from inside the handlers: only the control's own promises are checked.
class Salvaje {
public:
    explicit Salvaje(std::uint32_t semilla) : m_azar(semilla) {
        EventosVoz eventos;
        eventos.alEmpezar = [this] { OyeStart(); };
        eventos.alTerminar = [this] { OyeStop(); };
        eventos.alPalabra = [this](std::int32_t pos) { OyeWord(pos); };
        m_control.SetEventos(eventos);
        m_banco.canal.alHablar = [this] { Acepta(); };
    }

    void Paso() {
        Opera(m_azar.Hasta(kOperaciones));
        ++m_pasos;
    }

    void Reposa() {
        m_quieto = true;
        while (m_control.EnCurso() && !testing::Test::HasFailure()) {
            m_control.Reanuda();
            m_pausado = false;
            if (!m_finDicho) Fin();  // one that was said and held back must not get lost
            Entrega();
        }
        Entrega();
        m_quieto = false;
        EXPECT_EQ(m_paradas, m_aceptadas) << "pasos: " << m_pasos;
        EXPECT_FALSE(m_abierta);
    }

    int Aceptadas() const { return m_aceptadas; }
    int Palabras() const { return m_palabras; }
    int EnManejadores() const { return m_enManejadores; }

private:
    static constexpr int kOperaciones = 20;
    static constexpr std::int32_t kTardia = 1000;  // a position that no word of a living utterance has
    enum class Llamada { Ninguna, Acepta, Detiene, Entrega };

    // What the running call may raise, for as long as it lives.
    class Marco {
    public:
        Marco(Salvaje &dueno, Llamada llamada) : m_dueno(dueno), m_anterior(dueno.m_llamada) {
            m_dueno.m_llamada = llamada;
        }
        ~Marco() { m_dueno.m_llamada = m_anterior; }
        Marco(const Marco &) = delete;
        Marco &operator=(const Marco &) = delete;

    private:
        Salvaje &m_dueno;
        Llamada m_anterior;
    };

    void Opera(int cual) {
        CanalGuionado &canal = m_banco.canal;
        switch (cual) {
            case 0:
            case 1: Habla(ControlDePrueba::Modo::Lectura); break;
            case 2: Habla(ControlDePrueba::Modo::Aviso); break;
            case 3: Habla(ControlDePrueba::Modo::AvisoEsperando); break;
            case 4: {
                const Marco marco(*this, Llamada::Detiene);
                m_estadoAntes = m_banco.estado.valor;
                m_pausado = false;
                m_control.Detiene();
                break;
            }
            case 5:
                m_pausado = m_abierta;
                m_control.Pausa();
                break;
            case 6:
                m_pausado = false;
                m_control.Reanuda();
                break;
            case 7: m_banco.estado.valor = m_azar.Hasta(5); break;
            case 8:
            case 9:
            case 10:
            case 11:
            case 12: canal.Palabra(static_cast<std::uint32_t>(m_azar.Hasta(40))); break;
            case 13: Fin(); break;
            case 14:  // late news of an earlier utterance
                if (m_azar.Uno(2))
                    canal.Palabra(kTardia, canal.Numero() - 1);
                else
                    canal.Fin(canal.Numero() - 1);
                break;
            case 15: m_banco.cola.Pon(cCola::Clase::Tecla, [this] { EnManejador(); }); break;
            default: Entrega(); break;
        }
    }

    void Habla(ControlDePrueba::Modo modo) {
        const Marco marco(*this, Llamada::Acepta);
        m_modo = modo;
        m_pausado = false;
        m_control.Acepta({}, ControlDePrueba::TextoDePrueba(), modo);
        if (modo != ControlDePrueba::Modo::Lectura) {
            EXPECT_EQ(m_banco.estado.valor, cEstadoVoz::Aviso);
        }
    }

    // The channel takes an utterance: this is the moment of acceptance.
    void Acepta() {
        EXPECT_FALSE(m_abierta) << "accepted before the Stop of the one before";
        m_abierta = true;
        m_empezada = false;
        ++m_aceptadas;
        m_ultima = -1;
        m_finDicho = false;
        m_pausado = false;
        m_aviso = m_modo != ControlDePrueba::Modo::Lectura;
        m_rol = m_aviso ? 1 : m_banco.estado.valor == 4 ? 4 : 0;
        if (m_modo == ControlDePrueba::Modo::AvisoEsperando) Fin();  // else the call would wait
    }

    void Fin() {
        m_finDicho = true;
        m_banco.canal.Fin();
    }
    void Entrega() {
        const Marco marco(*this, Llamada::Entrega);
        if (m_azar.Uno(4))
            QCoreApplication::sendPostedEvents(&m_banco.cola);
        else
            m_banco.cola.DejaCorrer();
    }

    void OyeStart() {
        EXPECT_EQ(m_llamada, Llamada::Entrega) << "Start inside a call";
        EXPECT_TRUE(m_abierta && !m_empezada);
        m_empezada = true;
        EnManejador();
    }
    void OyeWord(std::int32_t pos) {
        EXPECT_TRUE(m_abierta && m_empezada);
        EXPECT_FALSE(m_aviso);
        EXPECT_FALSE(m_banco.canal.enPausa || m_pausado);
        EXPECT_NE(pos, kTardia);
        EXPECT_GE(pos, m_ultima);
        m_ultima = pos;
        ++m_palabras;
        EnManejador();
    }
    void OyeStop() {
        EXPECT_TRUE(m_abierta) << "a Stop too many";
        EXPECT_FALSE(m_banco.canal.enPausa);
        if (m_llamada == Llamada::Entrega) {
            EXPECT_FALSE(m_pausado);
            EXPECT_TRUE(m_empezada) << "an end before its Start";
            EXPECT_TRUE(m_finDicho) << "an end that the engine hasn't said";
        }
        if (m_llamada == Llamada::Acepta) {
            EXPECT_EQ(m_banco.estado.valor, m_rol);
        }
        if (m_llamada == Llamada::Detiene) {
            EXPECT_EQ(m_banco.estado.valor, m_estadoAntes);
        }
        m_abierta = false;
        ++m_paradas;
        const ControlDePrueba::Modo modo = m_modo;
        EnManejador();
        m_modo = modo;  // the call that purges goes on
    }

    void EnManejador() {
        if (m_quieto || m_hondura > 2 || !m_azar.Uno(3)) return;
        ++m_hondura;
        ++m_enManejadores;
        for (int i = m_azar.Hasta(3); i >= 0; --i) Opera(m_azar.Hasta(kOperaciones));
        --m_hondura;
    }

    Azar m_azar;
    Banco m_banco;
    ControlDePrueba m_control{m_banco.canal, m_banco.cola, m_banco.estado, m_banco.registro.Log()};
    Llamada m_llamada = Llamada::Ninguna;
    ControlDePrueba::Modo m_modo = ControlDePrueba::Modo::Lectura;
    std::int32_t m_estadoAntes = 0;
    std::int32_t m_rol = 0;
    std::int32_t m_ultima = -1;
    bool m_abierta = false;
    bool m_empezada = false;
    bool m_aviso = false;
    bool m_finDicho = false;
    bool m_pausado = false;
    bool m_quieto = false;
    int m_hondura = 0;
    int m_pasos = 0;
    int m_aceptadas = 0;
    int m_paradas = 0;
    int m_palabras = 0;
    int m_enManejadores = 0;
};

}  // namespace ondalis::prueba
