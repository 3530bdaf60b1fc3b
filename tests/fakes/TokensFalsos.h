// A list of SAPI 5 tokens that a test writes, and two makers' voices to begin with.
#pragma once

#include <utility>
#include <vector>

#include "speech/SpVoice.h"

namespace ondalis::prueba {

class TokensFalsos : public ListaTokens {
public:
    TokensFalsos() = default;
    explicit TokensFalsos(std::vector<TokenVoz> tokens) : m_tokens(std::move(tokens)) {}
    const std::vector<TokenVoz> &Tokens() const override { return m_tokens; }

    static TokenVoz Token(const char *fabricante, const char *nombre, const char *lengua, const char *motor = "espeak",
                          const char *voz = "") {
        return {QString::fromUtf8(fabricante), QString::fromUtf8(nombre), QString::fromUtf8(lengua), motor, voz};
    }
    // Spanish and English of eSpeak NG, and one English voice of another maker and engine.
    static std::vector<TokenVoz> Tres() {
        return {Token("eSpeak NG", "Spanish", "40A;C0A", "espeak", "es"),
                Token("eSpeak NG", "English", "409;9", "espeak", "en-us"),
                Token("Flite", "kal", "409", "orden:flite", "kal")};
    }

private:
    std::vector<TokenVoz> m_tokens;
};

}  // namespace ondalis::prueba
