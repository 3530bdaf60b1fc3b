#include "worker/Signos.h"

#include <algorithm>
#include <array>

namespace ondalis {

namespace {

struct Fila {
    char32_t signo;
    std::array<std::u32string_view, 6> nombres;  // in the order of LenguaSignos, without Ninguna
};

constexpr std::array kFilas{
    Fila{U',', {U"coma", U"comma", U"comma", U"virgule", U"Komma", U"virgola"}},
    Fila{U'.', {U"punto", U"full stop", U"period", U"point", U"Punkt", U"punto"}},
    Fila{U';', {U"punto y coma", U"semicolon", U"semicolon", U"point virgule", U"Semikolon", U"punto e virgola"}},
    Fila{U':', {U"dos puntos", U"colon", U"colon", U"deux points", U"Doppelpunkt", U"due punti"}},
    Fila{U'¿',
         {U"abre interrogación", U"inverted question mark", U"inverted question mark", U"point d'interrogation inversé",
          U"umgekehrtes Fragezeichen", U"punto interrogativo rovesciato"}},
    Fila{U'?',
         {U"cierra interrogación", U"question mark", U"question mark", U"point d'interrogation", U"Fragezeichen",
          U"punto interrogativo"}},
    Fila{U'¡',
         {U"abre exclamación", U"inverted exclamation mark", U"inverted exclamation mark",
          U"point d'exclamation inversé", U"umgekehrtes Ausrufezeichen", U"punto esclamativo rovesciato"}},
    Fila{U'!',
         {U"cierra exclamación", U"exclamation mark", U"exclamation point", U"point d'exclamation", U"Ausrufezeichen",
          U"punto esclamativo"}},
    Fila{U'(',
         {U"abre paréntesis", U"left bracket", U"left parenthesis", U"parenthèse ouvrante", U"Klammer auf",
          U"parentesi aperta"}},
    Fila{U')',
         {U"cierra paréntesis", U"right bracket", U"right parenthesis", U"parenthèse fermante", U"Klammer zu",
          U"parentesi chiusa"}},
    Fila{U'"', {U"comillas", U"quote", U"quote", U"guillemet", U"Anführungszeichen", U"virgolette"}},
    Fila{U'«',
         {U"abre comillas", U"open quote", U"open quote", U"guillemet ouvrant", U"Anführungszeichen auf",
          U"virgolette aperte"}},
    Fila{U'»',
         {U"cierra comillas", U"close quote", U"close quote", U"guillemet fermant", U"Anführungszeichen zu",
          U"virgolette chiuse"}},
    Fila{U'“',
         {U"abre comillas", U"open quote", U"open quote", U"guillemet ouvrant", U"Anführungszeichen auf",
          U"virgolette aperte"}},
    Fila{U'”',
         {U"cierra comillas", U"close quote", U"close quote", U"guillemet fermant", U"Anführungszeichen zu",
          U"virgolette chiuse"}},
    Fila{U'[',
         {U"abre corchete", U"left square bracket", U"left bracket", U"crochet ouvrant", U"eckige Klammer auf",
          U"parentesi quadra aperta"}},
    Fila{U']',
         {U"cierra corchete", U"right square bracket", U"right bracket", U"crochet fermant", U"eckige Klammer zu",
          U"parentesi quadra chiusa"}},
    Fila{U'{',
         {U"abre llave", U"left brace", U"left brace", U"accolade ouvrante", U"geschweifte Klammer auf",
          U"parentesi graffa aperta"}},
    Fila{U'}',
         {U"cierra llave", U"right brace", U"right brace", U"accolade fermante", U"geschweifte Klammer zu",
          U"parentesi graffa chiusa"}},
    Fila{U'…',
         {U"puntos suspensivos", U"ellipsis", U"ellipsis", U"points de suspension", U"Auslassungspunkte",
          U"puntini di sospensione"}},
    Fila{U'—', {U"raya", U"em dash", U"em dash", U"tiret long", U"Geviertstrich", U"lineetta"}},
    Fila{U'–', {U"semirraya", U"en dash", U"en dash", U"tiret", U"Gedankenstrich", U"trattino medio"}},
    Fila{U'-', {U"guion", U"dash", U"dash", U"tiret", U"Bindestrich", U"trattino"}},
    Fila{U'_', {U"guion bajo", U"underscore", U"underscore", U"tiret bas", U"Unterstrich", U"trattino basso"}},
    Fila{U'/', {U"barra", U"slash", U"slash", U"barre oblique", U"Schrägstrich", U"barra"}},
    Fila{U'\\',
         {U"barra invertida", U"backslash", U"backslash", U"barre oblique inversée", U"Rückstrich",
          U"barra rovesciata"}},
    Fila{U'\'', {U"apóstrofo", U"apostrophe", U"apostrophe", U"apostrophe", U"Apostroph", U"apostrofo"}},
};

}  // namespace

LenguaSignos LenguaDeSignos(std::string_view idiomaMotor) {
    const std::string_view lengua = idiomaMotor.substr(idiomaMotor.find_last_of('/') + 1);
    if (lengua == "es" || lengua.starts_with("es-")) return LenguaSignos::Espanol;
    if (lengua == "en-US") return LenguaSignos::InglesAmericano;
    if (lengua == "en" || lengua.starts_with("en-")) return LenguaSignos::InglesBritanico;
    if (lengua == "fr" || lengua.starts_with("fr-")) return LenguaSignos::Frances;
    if (lengua == "de" || lengua.starts_with("de-")) return LenguaSignos::Aleman;
    if (lengua == "it" || lengua.starts_with("it-")) return LenguaSignos::Italiano;
    return LenguaSignos::Ninguna;
}

std::u32string_view NombreDeSigno(char32_t signo, LenguaSignos lengua) {
    if (lengua == LenguaSignos::Ninguna) return {};
    const auto fila =
        std::find_if(kFilas.begin(), kFilas.end(), [signo](const Fila &una) { return una.signo == signo; });
    return fila == kFilas.end() ? std::u32string_view{} : fila->nombres[static_cast<std::size_t>(lengua) - 1];
}

bool EsSignoDelFiltro(char32_t signo) {
    return std::u32string_view(U",.;:¿?¡!()\"").find(signo) != std::u32string_view::npos;
}

}  // namespace ondalis
