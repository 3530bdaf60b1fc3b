// The tokens of the machine, asked of an engine worker once. The question is put in the background as soon as this
// exists, so that the start of the program doesn't wait for it. Owned by main. Tokens: main thread.
#pragma once

#include <QStringList>
#include <chrono>
#include <future>

#include "engine/cBomba.h"
#include "speech/SpVoice.h"

namespace ondalis {

class cTokensMotor : public ListaTokens {
public:
    // `lanzador` must outlive the answer. A worker that doesn't answer within `limite` has no voices.
    explicit cTokensMotor(LanzadorMotor &lanzador, std::chrono::milliseconds limite = std::chrono::milliseconds(2000));
    // True from when Tokens doesn't have to wait.
    bool Listos() const;
    // Waits for the answer the first time.
    const std::vector<TokenVoz> &Tokens() const override;
    // The limits for a live channel: each engine's own to its first answer, where it tells one. Waits as Tokens does.
    PlazosMotor Plazos() const;
    // What kept a voice out of the list, one line each. Waits as Tokens does.
    QStringList Quejas() const;

private:
    struct Respuesta {
        std::vector<TokenVoz> tokens;
        PlazosMotor plazos;
        QStringList quejas;
    };
    static Respuesta Pregunta(LanzadorMotor &lanzador, std::chrono::milliseconds limite);
    const Respuesta &LaRespuesta() const;

    mutable std::future<Respuesta> m_enCamino;
    mutable Respuesta m_respuesta;
};

}  // namespace ondalis
