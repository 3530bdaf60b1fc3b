// Where a window that keeps its place opens, in twips. Pure; each axis on its own.
#pragma once

namespace ondalis {

// Twips of a fresh window's edge: near the bottom right corner.
inline float PosicionInicial(float pantalla, float ventana) { return pantalla - 1.2f * ventana; }

// Where a stored edge goes: beyond the screen to the fresh place, a negative one to 0. The fresh place itself is
// negative for a window larger than the screen allows, and stays so when it replaces one beyond the screen.
inline float PosicionVentana(float guardada, float pantalla, float ventana) {
    if (guardada > pantalla) return PosicionInicial(pantalla, ventana);
    return guardada < 0 ? 0 : guardada;
}

}  // namespace ondalis
