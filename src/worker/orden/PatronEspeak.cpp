// The pattern's program: eSpeak NG with its phonemes' times, which its words' events don't always agree with.
#include <espeak-ng/speak_lib.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "engine/Protocolo.h"
#include "worker/Calibracion.h"
#include "worker/cLenguasEspeak.h"
#include "worker/orden/Patron.h"

namespace ondalis {

namespace {

constexpr int kMsBloque = 200;
constexpr int kConSeparador = ' ' << 8;  // of espeak_TextToPhonemes: the engine's own names, parted by blanks

bool EscribeTodo(const std::vector<std::uint8_t> &bytes) {
    for (std::size_t i = 0; i < bytes.size();) {
        const ssize_t n = write(STDOUT_FILENO, bytes.data() + i, bytes.size() - i);
        if (n <= 0) return false;
        i += static_cast<std::size_t>(n);
    }
    return true;
}

bool Da(const Trama &trama) {
    std::vector<std::uint8_t> bytes;
    Codifica(trama, bytes);
    return EscribeTodo(bytes);
}

int Devolucion(short *muestras, int n, espeak_EVENT *eventos) {
    bool bien = true;
    for (; eventos && eventos->type != espeakEVENT_LIST_TERMINATED; eventos++) {
        const auto muestra = static_cast<std::uint64_t>(std::max(eventos->sample, 0));
        if (eventos->type == espeakEVENT_WORD && eventos->text_position > 0)
            bien = bien && Da(TramaPalabra{kTramasFrase, muestra, static_cast<std::uint32_t>(eventos->text_position),
                                           static_cast<std::uint32_t>(std::max(eventos->length, 0))});
        if (eventos->type == espeakEVENT_PHONEME) {
            const char *nombre = eventos->id.string;
            bien = bien &&
                   Da(TramaMarca{kTramasFrase, muestra, {nombre, nombre + strnlen(nombre, sizeof eventos->id.string)}});
        }
    }
    for (; bien && muestras && n > 0;) {
        const auto ahora = std::min(static_cast<std::size_t>(n), kMaxMuestrasPcm);
        bien = Da(TramaPcm{kTramasFrase, {muestras, muestras + ahora}});
        muestras += ahora;
        n -= static_cast<int>(ahora);
    }
    return bien ? 0 : 1;
}

std::u16string Fonemas(const std::string &palabra) {
    std::string nombres;
    for (const void *resto = palabra.c_str(); resto;) {
        const char *trozo = espeak_TextToPhonemes(&resto, espeakCHARS_UTF8, kConSeparador);
        nombres += std::string(trozo ? trozo : "") + ' ';
    }
    return {nombres.begin(), nombres.end()};
}

}  // namespace

int DicePatron(std::string_view idioma, int palabrasMinuto) {
    std::string todo;
    std::array<char, 4096> bloque;
    for (ssize_t n = 0; (n = read(STDIN_FILENO, bloque.data(), bloque.size())) > 0;)
        todo.append(bloque.data(), static_cast<std::size_t>(n));
    std::istringstream lineas(todo);
    std::string frase;
    std::getline(lineas, frase);

    // The library (1.51) asks for the sound server even where it is only to give samples.
    setenv("PULSE_SERVER", "unix:/dev/null", 1);
    const int hercios = espeak_Initialize(AUDIO_OUTPUT_SYNCHRONOUS, kMsBloque, nullptr,
                                          espeakINITIALIZE_DONT_EXIT | espeakINITIALIZE_PHONEME_EVENTS);
    if (hercios <= 0) return 1;
    const char *datos = nullptr;
    espeak_Info(&datos);
    cLenguasEspeak lenguas;
    lenguas.SetDatos(datos ? datos : "");
    const auto identificador = lenguas.DeIdioma(idioma);
    if (!identificador || espeak_SetVoiceByName(identificador->c_str()) != EE_OK) return 1;
    espeak_SetParameter(espeakRATE, RitmoDe(palabrasMinuto, *identificador).nominal, 0);
    espeak_SetSynthCallback(Devolucion);
    if (!Da(TramaFormato{kTramasFrase, static_cast<std::uint32_t>(hercios)})) return 1;
    if (espeak_Synth(frase.c_str(), frase.size() + 1, 0, POS_CHARACTER, 0, espeakCHARS_UTF8 | espeakENDPAUSE, nullptr,
                     nullptr) != EE_OK)
        return 1;
    for (std::string palabra; std::getline(lineas, palabra);)
        if (!Da(TramaMarca{kTramasPalabras, 0, Fonemas(palabra)})) return 1;
    return Da(TramaFin{kTramasFrase}) ? 0 : 1;
}

}  // namespace ondalis
