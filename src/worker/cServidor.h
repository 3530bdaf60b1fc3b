// The worker's side of the connection: takes requests, lets the engine speak and sends what it makes. A stop or a new
// request is seen also while the reader takes nothing. Owned by main. Single thread.
#pragma once

#include <deque>
#include <optional>

#include "worker/Motor.h"

namespace ondalis {

class cServidor final : public Emisor {
public:
    // `zocalo` is a connected stream socket; borrowed.
    cServidor(int zocalo, Motor &motor) : m_zocalo(zocalo), m_motor(motor) {}

    // Serves until the reader closes (0) or sends garbage (1).
    int Atiende();

    bool Formato(std::uint32_t hercios) override;
    bool Pcm(const std::int16_t *muestras, std::size_t n) override;
    bool Palabra(std::uint64_t muestra, std::uint32_t posicion, std::uint32_t longitud) override;
    bool Marca(std::uint64_t muestra, std::u16string_view nombre) override;
    void Error(std::string_view texto) override;
    bool Vigente() override;

private:
    struct Frontera {  // one frame of m_salida
        std::size_t fin = 0;
        bool deLocucion = false;
    };

    void Habla();
    void DiceVoces();
    bool Espera(bool bloquea);
    void Lee();
    void Toma(Trama &&trama);
    void Encola(const Trama &trama, bool deLocucion);
    void Envia(const Trama &trama, bool deLocucion);
    bool EnviaDeLocucion(const Trama &trama);
    bool AntesDeMuestras(const Trama &trama);
    void Escribe();
    void OlvidaLoNoEnviado();
    std::size_t Pendiente() const { return m_salida.size() - m_enviados; }

    int m_zocalo;
    Motor &m_motor;
    Descodificador m_entrada;
    std::vector<std::uint8_t> m_salida;
    std::size_t m_enviados = 0;
    bool m_aMedias = false;  // the first frame of m_salida has begun to leave
    std::deque<Frontera> m_fronteras;

    std::optional<Locucion> m_siguiente;
    std::uint64_t m_numero = 0;  // of the utterance under way or last sent
    bool m_parada = true;        // nobody wants utterance m_numero
    bool m_pidenVoces = false;
    bool m_cerrado = false;
    bool m_basura = false;
};

}  // namespace ondalis
