// The waiting and recording engine as a diary of what it was told.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "speech/VozECI.h"

namespace ondalis::prueba {

class VozECIFalsa : public VozECI {
public:
    void SetHablante(const QString &nombre, std::int32_t lengua) override {
        ordenes.push_back("hablante " + nombre.toStdString() + " " + std::to_string(lengua));
    }
    void SetVelocidad(std::int16_t velocidad) override { ordenes.push_back("velocidad " + std::to_string(velocidad)); }
    void SetVolumen(std::int32_t volumen) override { ordenes.push_back("volumen " + std::to_string(volumen)); }
    void SetAvanzados(std::int16_t tono, std::int16_t fluctuacion, std::int16_t aspereza, std::int16_t diafonia,
                      std::int16_t tamCabeza) override {
        std::string orden = "avanzados";
        for (const int valor : {+tono, +fluctuacion, +aspereza, +diafonia, +tamCabeza})
            orden += " " + std::to_string(valor);
        ordenes.push_back(orden);
    }
    void Cancela() override { ordenes.push_back("cancela"); }
    bool HablaFichero(const QString &fichero, bool sincrono, const QString &destino, bool avanzados) override {
        ordenes.push_back("fichero " + fichero.toStdString() + (sincrono ? " espera" : "") + " <" +
                          destino.toStdString() + ">" + (avanzados ? " avanzados" : ""));
        return error.isEmpty();
    }
    bool Habla(const QString &texto, bool sincrono, const QString &destino, bool avanzados) override {
        ordenes.push_back("habla " + texto.toStdString() + (sincrono ? " espera" : "") + " <" + destino.toStdString() +
                          ">" + (avanzados ? " avanzados" : ""));
        hablando = error.isEmpty() && !sincrono;
        return error.isEmpty();
    }
    bool EstaHablando() const override { return hablando; }
    bool Fallida() override { return !hablando && std::exchange(fallaAlFinal, false); }
    QString UltimoError() const override { return QStringLiteral("cVozECI: ") + error; }

    bool hablando = false;
    bool fallaAlFinal = false;  // the speech that doesn't wait turns out to have failed
    QString error;              // what the next speech of a file leaves

    std::vector<std::string> ordenes;
};

}  // namespace ondalis::prueba
