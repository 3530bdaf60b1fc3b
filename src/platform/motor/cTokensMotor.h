// The tokens of the machine, asked of an engine worker once. The question is put in the background as soon as this
// exists, so that the start of the program doesn't wait for it. Owned by main. Tokens: main thread.
#pragma once

#include <chrono>
#include <future>

#include "engine/LanzadorMotor.h"
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

private:
    mutable std::future<std::vector<TokenVoz>> m_respuesta;
    mutable std::vector<TokenVoz> m_tokens;
};

}  // namespace ondalis
