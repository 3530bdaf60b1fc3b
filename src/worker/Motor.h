// What an engine of the worker is, and where its sound goes. One engine a program instance; everything runs on the
// program's only thread. No Qt.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/Protocolo.h"

namespace ondalis {

// Takes what an engine makes of the utterance under way, in the order of time. Each call may wait until the reader
// takes what was sent before, and sees a stop meanwhile; a word or a mark leaves with the samples or the end behind it.
// False: nobody wants the rest, and the engine returns at once.
class Emisor {
public:
    virtual ~Emisor() = default;

    // Before the first samples; again with the same rate: the engine is at work on what takes long.
    virtual bool Formato(std::uint32_t hercios) = 0;
    virtual bool Pcm(const std::int16_t *muestras, std::size_t n) = 0;
    // `muestra` counts from the utterance's first sample; told before the samples that hold it.
    virtual bool Palabra(std::uint64_t muestra, std::uint32_t posicion, std::uint32_t longitud) = 0;
    virtual bool Marca(std::uint64_t muestra, std::u16string_view nombre) = 0;
    virtual void Error(std::string_view texto) = 0;
    virtual bool Vigente() = 0;  // for stretches of work without samples
};

class Motor {
public:
    virtual ~Motor() = default;

    // Done while nothing is asked yet: what would delay the first sample. Harmless when repeated.
    virtual void Prepara() = 0;
    virtual std::vector<TramaVoz> Voces() = 0;
    // What kept a voice out of the list given last, for the reader's log.
    virtual std::vector<std::string> Quejas() const { return {}; }
    // Speaks the whole utterance. Returns when it is said, refused (after Error) or not wanted any more.
    virtual void Habla(const Locucion &locucion, Emisor &emisor) = 0;
};

// What this program is linked with. `zocalo` is the connection, which only a misbehaving test engine uses.
std::unique_ptr<Motor> CreaMotor(int zocalo);

}  // namespace ondalis
