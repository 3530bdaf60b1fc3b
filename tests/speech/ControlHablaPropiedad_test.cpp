// The invariant of the events' contract over long random sequences: exactly one Stop for each accepted call, in order,
// nothing while paused, and a session on top of it that always comes to rest. Seeds are fixed and shown on failure.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <random>

#include "ControlDePrueba.h"
#include "fakes/TokensFalsos.h"

namespace ondalis::prueba {
namespace {

// Random numbers that are the same with every library.
class Azar {
public:
    explicit Azar(std::uint32_t semilla) : m_motor(semilla) {}
    int Hasta(int n) { return static_cast<int>(m_motor() % static_cast<std::uint32_t>(n)); }
    bool Uno(int de) { return Hasta(de) == 0; }

private:
    std::mt19937 m_motor;
};

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

// The session as far as the events move it, on one family: `espera` notices wait for their end (SAPI 5) or not ("IBM").
// Commands are handlers of the queue, as keys and bus calls are on the desktop.
class Sesion {
public:
    Sesion(std::uint32_t semilla, bool espera) : m_azar(semilla), m_espera(espera) {
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

class SemillasTest : public testing::TestWithParam<std::uint32_t> {};

TEST_P(SemillasTest, ExactlyOneStopForEachAcceptedCallWhateverIsCalledFromWherever) {
    SCOPED_TRACE("semilla " + std::to_string(GetParam()));
    Salvaje salvaje(GetParam());
    for (int paso = 0; paso < 100'000 && !HasFailure(); ++paso) {
        SCOPED_TRACE("paso " + std::to_string(paso));
        salvaje.Paso();
        if (paso % 97 == 96) salvaje.Reposa();
    }
    salvaje.Reposa();
    // The sequences reach what they are meant to reach.
    EXPECT_GT(salvaje.Aceptadas(), 10'000);
    EXPECT_GT(salvaje.Palabras(), 2'000);
    EXPECT_GT(salvaje.EnManejadores(), 5'000);
}

TEST_P(SemillasTest, TheSessionAlwaysComesToRestInBothFamilies) {
    for (const bool espera : {false, true}) {
        SCOPED_TRACE("semilla " + std::to_string(GetParam()) + (espera ? " SAPI 5" : " IBM"));
        Sesion sesion(GetParam(), espera);
        for (int paso = 0; paso < 100'000 && !HasFailure(); ++paso) {
            SCOPED_TRACE("paso " + std::to_string(paso));
            sesion.Paso();
            if (paso % 97 == 96) sesion.Reposa();
        }
        sesion.Reposa();
        EXPECT_EQ(sesion.Anunciadas(), sesion.Remotas());
        EXPECT_GT(sesion.Remotas(), 1'000);
        EXPECT_GT(sesion.Avances(), 500);
        EXPECT_GT(sesion.Pausas(), 200);
        EXPECT_GT(sesion.Avisos(), 500);
    }
}

// The SAPI 5 control with its own ways of being called: refused markup and the empty text that silences among them.
TEST_P(SemillasTest, ARefusedSpeechRaisesNothingAndEachAcceptedOneExactlyOneStop) {
    Azar azar(GetParam());
    Banco banco;
    const TokensFalsos tokens(TokensFalsos::Tres());
    SpVoice voz(banco.canal, tokens, banco.cola, banco.estado, banco.registro.Log());
    std::size_t paradas = 0, rechazadas = 0;
    EventosVoz eventos;
    eventos.alTerminar = [&paradas] { ++paradas; };
    voz.SetEventos(eventos);
    for (int paso = 0; paso < 100'000 && !HasFailure(); ++paso) {
        SCOPED_TRACE("semilla " + std::to_string(GetParam()) + " paso " + std::to_string(paso));
        const std::size_t aceptadas = banco.canal.locuciones.size();
        const std::size_t antes = paradas;
        banco.canal.alHablar = nullptr;
        switch (azar.Hasta(9)) {
            case 0: EXPECT_FALSE(voz.Speak(QStringLiteral("AT&T <b>"), azar.Uno(2) ? 11 : 75)); break;
            case 1: EXPECT_FALSE(voz.Speak(QString(), 11)); break;
            case 2:
                EXPECT_TRUE(voz.Speak(QStringLiteral("<rate speed='x'>"), 11));
                EXPECT_EQ(banco.canal.locuciones.size(), aceptadas);
                EXPECT_EQ(paradas, antes);
                ++rechazadas;
                break;
            case 3:
                banco.canal.alHablar = [&banco] { banco.canal.Fin(); };
                EXPECT_FALSE(voz.Speak(QStringLiteral("aviso"), 2));
                break;
            case 4:
                EXPECT_FALSE(voz.Speak(QString(), 2));
                EXPECT_EQ(banco.canal.locuciones.size(), aceptadas);
                EXPECT_EQ(paradas, banco.canal.locuciones.size());  // silence: none is owed any more
                break;
            case 5: voz.Pause(); break;
            case 6: voz.Resume(); break;
            case 7: banco.canal.Fin(); break;
            default: banco.cola.DejaCorrer(); break;
        }
        EXPECT_GE(banco.canal.locuciones.size(), paradas);
        EXPECT_LE(banco.canal.locuciones.size(), paradas + 1);
    }
    EXPECT_GT(banco.canal.locuciones.size(), 20'000u);
    EXPECT_GT(rechazadas, 5'000u);
}

INSTANTIATE_TEST_SUITE_P(ControlHabla, SemillasTest, testing::Values(1u, 20'011u, 987'654'321u));

}  // namespace
}  // namespace ondalis::prueba
