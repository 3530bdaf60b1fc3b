// Random sequences of orders, deaths, hangs, garbage, pauses and server losses against the contract of events.
#include <gtest/gtest.h>

#include <random>

#include "BancoBomba.h"

namespace ondalis {
namespace {

using namespace std::chrono_literals;

// A worker that speaks properly: a word a token, 700 samples each, a bit at each turn, from `desde` on.
class MotorCorriente {
public:
    void Atiende(MotorGuion &motor, std::mt19937 &azar) {
        if (auto peticion = motor.Peticion()) {
            m_locucion = *peticion;
            m_sigue = m_locucion.desde;
            m_muestra = 0;
            m_formato = false;
            m_acabado = false;
        }
        if (m_acabado || m_locucion.numero == 0 || !motor.Empuja()) return;
        const std::u16string &texto = m_locucion.tramos.empty() ? std::u16string() : m_locucion.tramos[0].texto;
        for (int palabras = static_cast<int>(azar() % 4); palabras >= 0; --palabras) {
            const std::size_t inicio = texto.find_first_not_of(u" .", m_sigue);
            if (inicio == texto.npos) {
                motor.Manda(TramaFin{m_locucion.numero});
                m_acabado = true;
                return;
            }
            const std::size_t fin = std::min(texto.find_first_of(u" .", inicio), texto.size());
            if (!m_formato) motor.Manda(TramaFormato{m_locucion.numero, BancoBomba::kHz});
            m_formato = true;
            motor.Manda(TramaPalabra{m_locucion.numero, m_muestra, static_cast<std::uint32_t>(inicio),
                                     static_cast<std::uint32_t>(fin - inicio)});
            motor.MandaPcm(m_locucion.numero, 700);
            m_muestra += 700;
            m_sigue = static_cast<std::uint32_t>(fin);
        }
    }

private:
    Locucion m_locucion;
    std::uint32_t m_sigue = 0;
    std::uint64_t m_muestra = 0;
    bool m_formato = false;
    bool m_acabado = true;
};

// What may come, kept beside the pump.
class Contrato {
public:
    void Habla(std::uint64_t numero) { m_numero = numero, m_pausa = false, m_ultima = -1; }
    void Detiene() { m_numero = 0, m_pausa = false; }
    void Pausa(bool enPausa) { m_pausa = m_numero != 0 && enPausa; }
    std::uint64_t Numero() const { return m_numero; }

    void Toma(const EventoMotor &evento) {
        ASSERT_FALSE(m_pausa) << "an event while paused";
        if (evento.tipo == EventoMotor::Tipo::Aviso) return;
        ASSERT_NE(m_numero, 0u) << "an event that nobody owes";
        ASSERT_EQ(evento.numero, m_numero);
        if (evento.tipo == EventoMotor::Tipo::Palabra) {
            ASSERT_GT(static_cast<std::int64_t>(evento.posicion), m_ultima) << "a word went back";
            m_ultima = evento.posicion;
            ++palabras;
        } else if (evento.tipo == EventoMotor::Tipo::Fin) {
            m_numero = 0;
            ++fines;
        }
    }

    int fines = 0;
    int palabras = 0;

private:
    std::uint64_t m_numero = 0;
    bool m_pausa = false;
    std::int64_t m_ultima = -1;
};

struct Azar : BancoBomba {
    explicit Azar(unsigned semilla) : azar(semilla) {}

    void Recoge() {
        for (const EventoMotor &evento : std::exchange(eventos, {})) contrato.Toma(evento);
    }
    void Trabaja() {
        if (!lanzador.motores.empty() && !colgado) {
            if (&Motor() != conocido) corriente = {}, conocido = &Motor();
            corriente.Atiende(Motor(), azar);
        }
    }
    void Opera() {
        switch (azar() % 22) {
            case 0: {
                std::u16string texto;
                for (unsigned i = azar() % 30; i > 0; --i) texto += azar() % 5 ? u"palabra " : u"fin. ";
                contrato.Habla(++numero);
                bomba.Habla(LocucionDe(numero, texto));
                ++habladas;
                break;
            }
            case 1: contrato.Detiene(), bomba.Detiene(); break;
            case 2: contrato.Pausa(true), bomba.Pausa(true); break;
            case 3:
            case 4: contrato.Pausa(false), bomba.Pausa(false); break;
            case 5:
                if (!lanzador.motores.empty()) Motor().Muere();
                break;
            case 6: colgado = true; break;
            case 7:
                if (!lanzador.motores.empty()) Motor().MandaBytes({1, 0, 0, 0, 0xee});
                break;
            case 8: salida.CaeServidor(); break;
            case 9: salida.VuelveServidor(); break;
            case 10: lanzador.puede = azar() % 4 != 0; break;
            case 11: Avanza(std::chrono::milliseconds(azar() % 2500)), colgado = false; break;
            case 12:
            case 13:
            case 14: Avanza(std::chrono::milliseconds(azar() % 200)); break;
            case 15:
            case 16: Suena(azar() % 3000); break;
            default: Trabaja();
        }
        Paso();
    }
    // Everything works again: what is owed must come.
    void Remata() {
        contrato.Pausa(false), bomba.Pausa(false);
        lanzador.puede = true, colgado = false;
        salida.VuelveServidor();
        for (int i = 0; i < 3000 && contrato.Numero() != 0; ++i) {
            Avanza(10ms);
            Trabaja();
            Suena(220);
            Recoge();
        }
    }

    std::mt19937 azar;
    Contrato contrato;
    MotorCorriente corriente;
    MotorGuion *conocido = nullptr;
    bool colgado = false;
    std::uint64_t numero = 0;
    int habladas = 0;
};

class AlAzar : public testing::TestWithParam<unsigned> {};

TEST_P(AlAzar, ExactlyOneEndForEachUtteranceThatIsNotReplacedAndNothingElse) {
    Azar a(GetParam());
    for (int i = 0; i < 2500 && !testing::Test::HasFatalFailure(); ++i) {
        a.Opera();
        a.Recoge();
        if (i % 50 == 49) {
            a.Remata();
            ASSERT_EQ(a.contrato.Numero(), 0u) << "mute after operation " << i;
            ASSERT_EQ(a.bomba.Numero(), 0u);
            ASSERT_LE(a.bomba.Reproductor().Guardadas(), 4u * BancoBomba::kHz + 65536);
        }
    }
    EXPECT_GT(a.contrato.fines, 20);
    EXPECT_GT(a.contrato.palabras, 100);
    EXPECT_GT(a.habladas, 50);
}

INSTANTIATE_TEST_SUITE_P(cBomba, AlAzar, testing::Values(1u, 22u, 333u, 4444u));

}  // namespace
}  // namespace ondalis
