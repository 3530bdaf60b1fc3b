// A real output as a test scripts it: whether there is a server, how much room it has, how much was heard.
#pragma once

#include <algorithm>
#include <vector>

#include "engine/SalidaAudio.h"

namespace ondalis {

class SalidaGuion final : public SalidaAudio {
public:
    void SetDespertador(std::function<void()> despierta) override { m_despierta = std::move(despierta); }
    bool Abre(int hz) override {
        ++aperturas;
        if (!servidor) return false;
        m_viva = true;
        this->hz = hz;
        Vacia();
        return true;
    }
    bool Viva() const override { return m_viva; }
    std::size_t Escribe(const std::int16_t *muestras, std::size_t n) override {
        if (!m_viva) return 0;
        n = std::min(n, sitio - std::min<std::size_t>(sitio, m_escritas - m_oidas));
        cola.insert(cola.end(), muestras, muestras + n);
        m_escritas += n;
        reposando = reposando && n == 0;
        return n;
    }
    void Completa() override { completada = m_viva; }
    std::uint64_t Oidas() override { return m_oidas; }
    void Pausa(bool enPausa) override {
        if (m_viva) pausada = enPausa;
    }
    void Vacia() override {
        ++vaciados;
        cola.clear();
        m_escritas = m_oidas = 0;
        pausada = completada = false;
    }
    void Reposa() override { reposando = true; }

    // The device plays `n` samples, or what there is. Heard samples are kept in `sonado` over every flush.
    void Suena(std::size_t n) {
        if (!m_viva || pausada) return;
        n = std::min(n, cola.size());
        sonado.insert(sonado.end(), cola.begin(), cola.begin() + static_cast<std::ptrdiff_t>(n));
        cola.erase(cola.begin(), cola.begin() + static_cast<std::ptrdiff_t>(n));
        m_oidas += n;
    }
    void CaeServidor() {
        servidor = m_viva = false;
        Despierta();
    }
    void VuelveServidor() {
        servidor = true;
        Despierta();
    }
    void Despierta() {
        if (m_despierta) m_despierta();
    }

    bool servidor = true;
    std::size_t sitio = 2205;
    std::vector<std::int16_t> cola;
    std::vector<std::int16_t> sonado;
    int hz = 0;
    int aperturas = 0;
    int vaciados = 0;
    bool pausada = false;
    bool completada = false;
    bool reposando = false;

private:
    std::function<void()> m_despierta;
    bool m_viva = false;
    std::uint64_t m_escritas = 0;
    std::uint64_t m_oidas = 0;
};

}  // namespace ondalis
