#include "speech/SpVoice.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "engine/Dialectos.h"

namespace ondalis {

namespace {

constexpr double kVelocidadMedia = 170;  // words a minute of rate 0

// Different requirements of one text that are looked up: a text made to ask for more mustn't hold the call up.
constexpr std::size_t kMaxVocesDeTexto = 200;

// Ten steps are a factor of three, as the interface publishes it: 57 to 510, and no two steps are the same.
int PalabrasPorMinuto(int rate) { return static_cast<int>(std::lround(kVelocidadMedia * std::pow(3.0, rate / 10.0))); }

bool EsDelAtributo(const TokenVoz &token, const QString &atributo, const QString &pedido) {
    const QString tiene = token.GetAttribute(atributo);
    if (atributo.compare(QLatin1String("Language"), Qt::CaseInsensitive) != 0)
        return tiene.compare(pedido, Qt::CaseInsensitive) == 0;
    const QStringList lenguas = tiene.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    return std::ranges::any_of(lenguas, [&pedido](const QString &lengua) {
        return lengua.trimmed().compare(pedido, Qt::CaseInsensitive) == 0;
    });
}

// "Name=Value", "Name!=Value", or an attribute that must only be there; a language is one of the token's several.
bool Cumple(const TokenVoz &token, const QString &condicion) {
    const qsizetype igual = condicion.indexOf(QLatin1Char('='));
    if (igual < 0) return !token.GetAttribute(condicion.trimmed()).isEmpty();
    const bool niega = igual > 0 && condicion[igual - 1] == QLatin1Char('!');
    const QString atributo = condicion.left(niega ? igual - 1 : igual).trimmed();
    return EsDelAtributo(token, atributo, condicion.mid(igual + 1).trimmed()) != niega;
}

qsizetype Cumplidas(const TokenVoz &token, const QStringList &condiciones) {
    return std::ranges::count_if(condiciones, [&token](const QString &condicion) { return Cumple(token, condicion); });
}

bool Coinciden(const QString &una, const QString &otra) {
    return !una.isEmpty() && una.compare(otra, Qt::CaseInsensitive) == 0;
}

// What a voice that is asked for owes to the one that speaks: itself first, then its language, its gender, its age.
int Parecido(const TokenVoz &una, const TokenVoz &otra) {
    return (una == otra ? 8 : 0) + (Coinciden(una.lengua, otra.lengua) ? 4 : 0) +
           (Coinciden(una.genero, otra.genero) ? 2 : 0) + (Coinciden(una.edad, otra.edad) ? 1 : 0);
}
constexpr qsizetype kMasQueParecido = 16;

QStringList Condiciones(const QString &texto) { return texto.split(QLatin1Char(';'), Qt::SkipEmptyParts); }

}  // namespace

QString TokenVoz::GetAttribute(const QString &atributo) const {
    if (atributo.compare(QLatin1String("Vendor"), Qt::CaseInsensitive) == 0) return fabricante;
    if (atributo.compare(QLatin1String("Name"), Qt::CaseInsensitive) == 0) return nombre;
    if (atributo.compare(QLatin1String("Language"), Qt::CaseInsensitive) == 0) return lengua;
    if (atributo.compare(QLatin1String("Gender"), Qt::CaseInsensitive) == 0) return genero;
    if (atributo.compare(QLatin1String("Age"), Qt::CaseInsensitive) == 0) return edad;
    return {};
}

SpVoice::SpVoice(CanalVoz &canal, const ListaTokens &tokens, cCola &cola, cEstadoVoz &estado, cLog &log)
    : ControlHabla(canal, cola, estado, log), m_tokens(tokens) {
    if (!tokens.Tokens().empty()) m_token = tokens.Tokens().front();
}

std::vector<TokenVoz> SpVoice::GetVoices(const QString &requeridos, const QString &opcionales) const {
    const QStringList requisitos = Condiciones(requeridos);
    const QStringList deseos = Condiciones(opcionales);
    std::vector<TokenVoz> hallados;
    for (const TokenVoz &token : m_tokens.Tokens())
        if (Cumplidas(token, requisitos) == requisitos.size()) hallados.push_back(token);
    std::ranges::stable_sort(hallados, std::ranges::greater{},
                             [&deseos](const TokenVoz &token) { return Cumplidas(token, deseos); });
    return hallados;
}

void SpVoice::SetRate(int rate) { m_rate = std::clamp(rate, -10, 10); }

void SpVoice::SetVolume(int volume) { m_volume = std::clamp(volume, 0, 100); }

// The voice that a tag asks for: of the engine that speaks (no other can take over in mid-utterance), with every
// requirement and as many wishes as can be had; among equals the one most like `actual`, which speaks there.
const TokenVoz *SpVoice::BuscaVoz(const QString &requeridos, const QString &opcionales, const TokenVoz &actual) const {
    const QStringList requisitos = Condiciones(requeridos);
    const QStringList deseos = Condiciones(opcionales);
    const TokenVoz *mejor = nullptr;
    qsizetype mejores = -1;
    for (const TokenVoz &token : m_tokens.Tokens()) {
        if (token.motor != m_token->motor || Cumplidas(token, requisitos) != requisitos.size()) continue;
        const qsizetype deseados = Cumplidas(token, deseos);
        if (requisitos.isEmpty() && deseados == 0) continue;
        const qsizetype puntos = deseados * kMasQueParecido + Parecido(token, actual);
        if (puntos <= mejores) continue;
        mejor = &token;
        mejores = puntos;
    }
    return mejor;
}

void SpVoice::ResuelveVoces(std::vector<Tramo> &tramos) const {
    using Peticion = std::pair<const TokenVoz *, std::u16string>;  // who speaks there, and what is asked for
    std::map<Peticion, const TokenVoz *> halladas;
    const auto busca = [this, &halladas](const Peticion &peticion) -> const TokenVoz * {
        const auto ya = halladas.find(peticion);
        if (ya != halladas.end()) return ya->second;
        if (halladas.size() >= kMaxVocesDeTexto) return nullptr;
        const QString pedida = QString::fromStdU16String(peticion.second);
        const qsizetype corte = pedida.indexOf(QChar(kSeparaDeseos));
        const TokenVoz *token = BuscaVoz(pedida.left(corte), corte < 0 ? QString() : pedida.mid(corte + 1),
                                         peticion.first != nullptr ? *peticion.first : *m_token);
        return halladas.emplace(peticion, token).first->second;
    };
    // Tags that are open, with their voices: the end of an inner one asks again for what the outer one asked for, and
    // means the voice that it got.
    using Abierta = std::pair<std::u16string, const TokenVoz *>;
    std::vector<Abierta> abiertas;
    std::erase_if(tramos, [&](Tramo &tramo) {
        if (tramo.tipo != TipoTramo::Voz) return false;
        if (tramo.texto.empty()) {
            abiertas.clear();
            return false;
        }
        const auto misma = std::ranges::find(abiertas, tramo.texto, &Abierta::first);
        const TokenVoz *token = nullptr;
        if (misma != abiertas.end()) {
            token = misma->second;
            abiertas.erase(misma + 1, abiertas.end());
        } else {
            token = busca({abiertas.empty() ? nullptr : abiertas.back().second, tramo.texto});
            if (token != nullptr && abiertas.size() < kMaxVocesDeTexto) abiertas.emplace_back(tramo.texto, token);
        }
        if (token == nullptr) return true;  // no such voice in the engine that speaks: the voice stays
        tramo.texto = QString::fromStdString(token->voz).toStdU16String();
        return false;
    });
}

Fallo SpVoice::FalloDelMotor() const {
    const QString apuro = Apuro();
    return apuro.isEmpty() ? Fallo{} : Fallo::De(Fallo::LlamadaNoValida, apuro);
}

Fallo SpVoice::FalloDelFichero() const {
    if (Fallo fallo = FalloDelMotor()) return fallo;
    return Incompleta() ? Fallo::De(Fallo::LlamadaNoValida, QString::fromUtf16(kFaltaTexto)) : Fallo{};
}

Fallo SpVoice::Speak(const QString &texto, int flags) {
    const bool espera = (flags & Asincrono) == 0;
    if (texto.isEmpty() && espera && (flags & Purga) != 0) {
        ControlHabla::Detiene();
        return {};
    }
    if (!m_token || (flags & EsFichero) != 0) return Fallo::De(Fallo::LlamadaNoValida);

    const std::u16string fuente = texto.toStdU16String();
    std::vector<Tramo> tramos;
    if ((flags & (XML | NoXML)) == XML) {
        auto marcados = AnalizaXml(fuente);
        if (!marcados) return Fallo::De(Fallo::SintaxisDeEtiquetas);
        tramos = std::move(*marcados);
        ResuelveVoces(tramos);
    } else {
        tramos = TextoLlano(fuente);
    }
    if ((flags & Puntuacion) != 0) {
        Tramo signos;
        signos.tipo = TipoTramo::Puntuacion;
        signos.valor = 1;
        tramos.insert(tramos.begin(), signos);
    }
    ParametrosVoz voz;
    voz.motor = m_token->motor;
    voz.voz = m_token->voz;
    voz.velocidad = PalabrasPorMinuto(m_rate);
    voz.ganancia = m_volume / 100.0;
    Acepta(voz, std::move(tramos),
           !espera                ? Modo::Lectura
           : (flags & Purga) != 0 ? Modo::AvisoEsperando
                                  : Modo::LecturaEsperando);
    return {};
}

}  // namespace ondalis
