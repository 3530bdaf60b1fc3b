// What a virtual key is on an X keyboard: pure tables and searches over a copy of the server's keyboard mapping. Values
// without identity; no connection.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace ondalis {

// Bits of an X key state.
struct BitsX {
    static constexpr std::uint16_t Mayus = 1, Bloqueo = 2, Control = 4, Mod1 = 8, Mod2 = 16, Mod4 = 64;
};

// A key to grab.
struct CodigoX {
    std::uint8_t codigo = 0;
    bool soloSinBloqNum = false;  // the key is meant only while NumLock is off
    bool operator==(const CodigoX &) const = default;
};

// Keysyms that stand for a virtual key, in the order of preference of their tables.
struct SimbolosTecla {
    std::vector<std::uint32_t> siempre;
    std::vector<std::uint32_t> sinBloqNum;  // keypad keys that are this key only while NumLock is off
    std::vector<std::uint8_t> reserva;      // key codes to take when the mapping has none of the keysyms
};
SimbolosTecla SimbolosDe(int virtualKey);  // empty for a key that has no like here
// The virtual key of a keysym, also of keys that can't be hot keys; 0 for one without like.
int VirtualKeyDe(std::uint32_t simbolo);

// The server's keyboard mapping: `porTecla` keysyms for each key code from `primero` on.
struct MapaTeclado {
    std::uint8_t primero = 8;
    std::uint8_t porTecla = 0;
    std::vector<std::uint32_t> simbolos;
    std::uint16_t bitAlt = BitsX::Mod1;
    std::uint16_t bitBloqNum = BitsX::Mod2;
    std::uint16_t bitSuper = BitsX::Mod4;
    bool operator==(const MapaTeclado &) const = default;

    // Finds the bits of Alt, NumLock and Super from the eight rows of the modifier mapping.
    void FijaModificadores(std::span<const std::uint8_t> codigos, int porModificador);
    // All key codes of a virtual key. A digit is the key that has it on any level, as the digit row of French does.
    std::vector<CodigoX> CodigosDe(int virtualKey) const;
    // The key switches virtual terminals when Control and Alt are held: the server keeps it for itself.
    bool CambiaTerminal(std::uint8_t codigo) const;
    // State bits of the mask 1 Alt, 2 Control, 4 Shift.
    std::uint16_t Bits(std::uint32_t modificadores) const;
    // Bits that count when a press is compared: all but the locks.
    std::uint16_t BitsQueCuentan() const { return static_cast<std::uint16_t>(0xff & ~(BitsX::Bloqueo | bitBloqNum)); }
    // The combinations of locks under which the key is to be grabbed.
    std::vector<std::uint16_t> VariantesDeBloqueo(const CodigoX &codigo) const;

private:
    std::span<const std::uint32_t> De(std::size_t indice) const;
};

}  // namespace ondalis
