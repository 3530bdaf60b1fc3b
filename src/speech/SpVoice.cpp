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

// "Name=Value": a language matches when it is one of the token's several; an attribute without "=" must only be there.
bool Cumple(const TokenVoz &token, const QString &condicion) {
    const qsizetype igual = condicion.indexOf(QLatin1Char('='));
    const QString atributo = (igual < 0 ? condicion : condicion.left(igual)).trimmed();
    const QString tiene = token.GetAttribute(atributo);
    if (igual < 0) return !tiene.isEmpty();
    const QString pedido = condicion.mid(igual + 1).trimmed();
    if (atributo.compare(QLatin1String("Language"), Qt::CaseInsensitive) != 0)
        return tiene.compare(pedido, Qt::CaseInsensitive) == 0;
    const QStringList lenguas = tiene.split(QLatin1Char(';'), Qt::SkipEmptyParts);
    return std::ranges::any_of(lenguas, [&pedido](const QString &lengua) {
        return lengua.trimmed().compare(pedido, Qt::CaseInsensitive) == 0;
    });
}

qsizetype Cumplidas(const TokenVoz &token, const QStringList &condiciones) {
    return std::ranges::count_if(condiciones, [&token](const QString &condicion) { return Cumple(token, condicion); });
}

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
// requirement and as many wishes as can be had. Among equals the one that speaks stays, then comes one of its language.
const TokenVoz *SpVoice::BuscaVoz(const QString &requeridos, const QString &opcionales) const {
    const QStringList requisitos = Condiciones(requeridos);
    const QStringList deseos = Condiciones(opcionales);
    const TokenVoz *mejor = nullptr;
    qsizetype mejores = -1;
    for (const TokenVoz &token : m_tokens.Tokens()) {
        if (token.motor != m_token->motor || Cumplidas(token, requisitos) != requisitos.size()) continue;
        const qsizetype deseados = Cumplidas(token, deseos);
        if (requisitos.isEmpty() && deseados == 0) continue;
        const qsizetype puntos = deseados * 4 + (token == *m_token ? 2 : 0) + (token.lengua == m_token->lengua ? 1 : 0);
        if (puntos <= mejores) continue;
        mejor = &token;
        mejores = puntos;
    }
    return mejor;
}

void SpVoice::ResuelveVoces(std::vector<Tramo> &tramos) const {
    std::map<std::u16string, const TokenVoz *> halladas;
    const auto busca = [this, &halladas](const std::u16string &texto) -> const TokenVoz * {
        const auto ya = halladas.find(texto);
        if (ya != halladas.end()) return ya->second;
        if (halladas.size() >= kMaxVocesDeTexto) return nullptr;
        const QString pedida = QString::fromStdU16String(texto);
        const qsizetype corte = pedida.indexOf(QChar(kSeparaDeseos));
        const TokenVoz *token = corte < 0 ? BuscaVoz(pedida, {}) : BuscaVoz(pedida.left(corte), pedida.mid(corte + 1));
        return halladas.emplace(texto, token).first->second;
    };
    std::erase_if(tramos, [&busca](Tramo &tramo) {
        if (tramo.tipo != TipoTramo::Voz || tramo.texto.empty()) return false;
        const TokenVoz *token = busca(tramo.texto);
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
