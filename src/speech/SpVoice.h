// A SAPI 5 voice: the token chosen, rate, volume, and Speak with the published flags. Owned by main. Main thread.
#pragma once

#include <optional>

#include "settings/Fallo.h"
#include "speech/ControlHabla.h"

namespace ondalis {

// One installed voice with its attributes "Vendor", "Name", "Language" ("40A;C0A"), and where its engine tells them
// "Gender" ("Male", "Female", "Neutral") and "Age" ("Child", "Teen", "Adult", "Senior").
struct TokenVoz {
    QString fabricante;
    QString nombre;
    QString lengua;
    std::string motor;  // engine and voice as the worker knows them
    std::string voz;
    QString genero = {};
    QString edad = {};
    bool operator==(const TokenVoz &) const = default;
    QString GetAttribute(const QString &atributo) const;  // empty for one that it lacks
};

// The tokens of the machine, frozen for the process. platform fills it from the engine worker; tests write it.
class ListaTokens {
public:
    virtual ~ListaTokens() = default;
    virtual const std::vector<TokenVoz> &Tokens() const = 0;
};

class SpVoice : public ControlHabla {
public:
    enum Flag : int { Asincrono = 1, Purga = 2, EsFichero = 4, XML = 8, NoXML = 16, Puntuacion = 64 };

    // Speaks with the first token until another is set.
    SpVoice(CanalVoz &canal, const ListaTokens &tokens, cCola &cola, cEstadoVoz &estado, cLog &log);

    // Tokens that have every required attribute ("Name=X;Language=C0A;Age!=Child"), those with more of the optional
    // ones first, else in their own order. Empty texts give all.
    std::vector<TokenVoz> GetVoices(const QString &requeridos, const QString &opcionales) const;
    void SetVoice(const TokenVoz &token) { m_token = token; }
    const std::optional<TokenVoz> &Voice() const { return m_token; }
    void SetRate(int rate);  // -10 to 10, clamped
    int Rate() const { return m_rate; }
    void SetVolume(int volume);  // 0 to 100, clamped
    int Volume() const { return m_volume; }

    // Every call purges. Without flag 1 it returns when it has been spoken, and it is a notice if flag 2 is there.
    // Speak("", 2) silences, also what a call further out waits for.
    // Without 8, and with 16 whatever else is set, markup is text. Broken markup (flag 8) is the failure 0x80045042; no
    // token at all and flag 4 (the text names a file) are failure 5: nothing is purged and no event comes.
    [[nodiscard]] Fallo Speak(const QString &texto, int flags);
    // Blocks until what is being spoken has been heard or stopped, or `ms` milliseconds have passed; -1: however long
    // it takes. True: nothing is being spoken any more. Events wait as they do in a call without flag 1.
    bool WaitUntilDone(int ms) { return EsperaActual(ms); }
    // The failure of a call without flag 1 that was accepted and has returned: 5, with the reason, where the engine
    // couldn't say the text to its end, or nothing of it. For whoever makes a file or has nothing else to do; a reader
    // goes on.
    [[nodiscard]] Fallo FalloDelMotor() const;
    // The same, and failure 5 also where the engine has skipped a part of the text: a file isn't whole then.
    [[nodiscard]] Fallo FalloDelFichero() const;
    using ControlHabla::Incompleta;
    void Pause() { ControlHabla::Pausa(); }
    void Resume() { ControlHabla::Reanuda(); }
    using ControlHabla::EnPausa;

private:
    // Turns the requirements of the XML's voice tags into identifiers of the engine that speaks.
    void ResuelveVoces(std::vector<Tramo> &tramos) const;
    const TokenVoz *BuscaVoz(const QString &requeridos, const QString &opcionales, const TokenVoz &actual) const;

    const ListaTokens &m_tokens;
    std::optional<TokenVoz> m_token;
    int m_rate = 0;
    int m_volume = 100;
};

}  // namespace ondalis
