// The icon on the bus as the tray asks for it.
#pragma once

#include "desktop/IconoDelBus.h"

namespace ondalis::prueba {

class IconoDelBusGuion : public IconoDelBus {
public:
    void Muestra(std::vector<ImagenPixeles> unas) override {
        ++veces;
        mostrado = true;
        imagenes = std::move(unas);
    }
    void Cambia(std::vector<ImagenPixeles> unas) override { imagenes = std::move(unas); }
    void Quita() override { mostrado = false; }
    void SetAlPulsar(std::function<void()> aviso) override { alPulsar = std::move(aviso); }
    void SetAlPedirMenu(std::function<void(const QPoint &)> aviso) override { alPedirMenu = std::move(aviso); }
    bool mostrado = false;
    int veces = 0;
    std::vector<ImagenPixeles> imagenes;
    std::function<void()> alPulsar;
    std::function<void(const QPoint &)> alPedirMenu;
};

}  // namespace ondalis::prueba
