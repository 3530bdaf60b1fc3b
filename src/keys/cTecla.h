// Hot keys of the whole desktop and the main loop that waits for them. Owned by main. Main thread.
#pragma once

#include <QString>
#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "keys/TeclasSistema.h"
#include "settings/cCola.h"
#include "settings/cLog.h"

namespace ondalis {

struct RegistroTecla {
    std::uint32_t Modificadores = 0;  // mask: 1 Alt, 2 Control, 4 Shift
    std::int16_t CodigoTecla = 0;     // virtual key
    QString NombreTecla;              // command, or "BORRADO"
};

class cTecla {
public:
    static constexpr int PrimerIdentificador = 49153;  // row i is registered as i + this

    cTecla(TeclasSistema &teclas, cCola &cola, cLog &log);
    ~cTecla();  // releases every key still held
    cTecla(const cTecla &) = delete;
    cTecla &operator=(const cTecla &) = delete;

    // Any nonzero handle; until then every other operation does nothing.
    void Init(std::uintptr_t ventana);
    void AddTecla(std::int32_t modificador, std::int16_t tecla, const QString &nombre);
    bool Registrada(std::int32_t modificador, std::int16_t tecla, const QString &nombre) const;
    void BorraTecla(const QString &nombre);
    // The main loop: returns after Termina, or when a handler of HotKeyPulsada has let an error out (logged).
    void EsperaTeclas();
    void Termina();

    // HotKeyPulsada(Nombre): raised through the queue, one at a time.
    void SetHotKeyPulsada(std::function<void(const QString &)> manejador) { m_manejador = std::move(manejador); }
    // Commands that a held key repeats (speed, advance, retreat): at most one press waits. All others act once a press.
    void SetRepetible(std::function<bool(const QString &)> repetible) { m_repetible = std::move(repetible); }

    // Mask of a modifier code: -1 none, 0 Control, 1 Alt, 2 Shift, 4 Control and Alt, any other none.
    static std::uint32_t Mascara(std::int32_t modificador);
    const std::vector<RegistroTecla> &Teclas() const { return m_teclas; }  // the last row is always spare

private:
    void Pulsada(int identificador, bool repetida);
    void Entrega(int fila);
    void Abandona(const Fallo &fallo);

    TeclasSistema &m_sistema;
    cCola &m_cola;
    cLog &m_log;
    std::uintptr_t m_ventana = 0;
    bool m_esperando = false;
    std::vector<RegistroTecla> m_teclas{1};
    std::vector<int> m_enEspera;                            // rows of presses that wait in the queue
    std::shared_ptr<int> m_vivo = std::make_shared<int>();  // a press may be delivered after our end
    std::function<void(const QString &)> m_manejador;
    std::function<bool(const QString &)> m_repetible;
};

}  // namespace ondalis
