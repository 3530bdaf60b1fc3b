// Message boxes with scripted answers: each box takes the next answer, or its default button when the script is over.
#pragma once

#include <QString>
#include <deque>
#include <functional>
#include <vector>

#include "settings/Mensajes.h"

namespace ondalis::prueba {

class MensajesGuion : public Mensajes {
public:
    struct Caja {
        QString texto;
        bool pregunta;
        bool defectoSi;
        QString titulo;
    };

    bool Muestra(const QString &texto, bool pregunta, bool defectoSi, const QString &titulo) override {
        cajas.push_back({texto, pregunta, defectoSi, titulo});
        if (alMostrar) alMostrar();
        if (respuestas.empty()) return pregunta ? defectoSi : true;
        const bool respuesta = respuestas.front();
        respuestas.pop_front();
        return respuesta;
    }

    std::vector<Caja> cajas;
    std::deque<bool> respuestas;
    std::function<void()> alMostrar;  // what happens while the box is open
};

}  // namespace ondalis::prueba
