// eSpeak NG as an engine of the worker: its plain voices, and formant voices made of five values over its languages.
// The library is one a process and is initialised once. Owned by main; its only thread.
#pragma once

#include <optional>

#include "worker/Calibracion.h"
#include "worker/Motor.h"
#include "worker/PiezaTexto.h"
#include "worker/Recorrido.h"
#include "worker/cLenguasEspeak.h"

namespace ondalis {

class cMotorEspeak final : public Motor {
public:
    void Prepara() override;
    std::vector<TramaVoz> Voces() override;
    void Habla(const Locucion &locucion, Emisor &emisor) override;

private:
    struct Vuelo;

    bool Inicia();
    bool EligeVoz(const ParametrosVoz &voz, const EstadoHabla &estado);
    bool CargaVoz(const std::string &texto);
    void PonParametros(const EstadoHabla &estado, bool formantes, int nominal);
    bool DiceTexto(const Locucion &locucion, const Paso &paso, const EstadoHabla &estado, Vuelo &vuelo);
    Ritmo RitmoDePieza(std::u16string_view texto, const Pieza &pieza, bool formantes, Vuelo &vuelo) const;
    bool DicePieza(const Pieza &pieza, bool sigue, Vuelo &vuelo);
    bool Deletrea(const Paso &paso, Vuelo &vuelo);
    bool Silencio(double ms, Vuelo &vuelo);

    std::optional<int> m_hercios;  // -1: the engine cannot start
    cLenguasEspeak m_lenguas;
    std::string m_cargada;  // text of the voice in the engine
    std::string m_idioma;   // language file of the voice chosen
    static Vuelo *s_vuelo;  // the library's callback has no place for an owner
};

}  // namespace ondalis
