#include "speech/Voces.h"

#include <algorithm>

namespace ondalis {

namespace {

constexpr char kDesconocido[] = "DESCONOCIDO";

// The hexadecimal number that begins the text ("40A;C0A" is 1034); 0 where none does.
std::int32_t LenguaDe(const QString &atributo) {
    std::uint32_t lengua = 0;
    for (const QChar c : atributo.trimmed()) {
        const int cifra = c.unicode() < 128 ? QString(c).toInt(nullptr, 16) : 0;
        const bool esCifra = cifra != 0 || c == QLatin1Char('0');
        if (!esCifra || lengua > 0x07ffffffU) break;
        lengua = lengua * 16 + static_cast<std::uint32_t>(cifra);
    }
    return static_cast<std::int32_t>(lengua);
}

QString SinLlaves(const QString &idModo) {
    QString id = idModo.trimmed();
    if (id.startsWith(QLatin1Char('{'))) id.remove(0, 1);
    if (id.endsWith(QLatin1Char('}'))) id.chop(1);
    return id;
}

QString ODesconocido(const QString &texto) { return texto.isEmpty() ? QString::fromLatin1(kDesconocido) : texto; }

}  // namespace

const HablanteIBM &HablanteDeModo(const QString &idModo) {
    const QString id = SinLlaves(idModo);
    const HablanteIBM *carlos = nullptr;
    for (const HablanteIBM &hablante : HablantesIBM()) {
        if (id.compare(QLatin1String(hablante.idModo), Qt::CaseInsensitive) == 0) return hablante;
        if (carlos == nullptr && QLatin1String(hablante.nombre) == QLatin1String("Carlos")) carlos = &hablante;
    }
    Q_ASSERT(carlos != nullptr);
    return *carlos;
}

void cVoces::ChequeaSAPI5Compatible(const std::function<bool()> &prueba) {
    m_sapi5 = prueba && prueba();
    if (!m_sapi5)
        m_log.Escribe(QStringLiteral("ChequeaSAPI5Compatible: "),
                      QStringLiteral("SAPI5.1 no está correctamente instalado."));
}

void cVoces::RecogeVocesEquipo(const ListaTokens *tokens, bool noSAPI5, const std::function<void()> &bombea) {
    std::vector<RegistroVoz> filas;
    for (const HablanteIBM &hablante : m_hablantes) {
        RegistroVoz &fila = filas.emplace_back();
        fila.Fabricante = QStringLiteral("IBM");
        fila.NombreVoz = QString::fromUtf8(hablante.nombre);
        fila.IdModo = QString::fromLatin1(hablante.idModo).toUpper();
        fila.Lengua = hablante.lengua;
        if (bombea) bombea();
    }
    if (m_sapi5 && !noSAPI5 && tokens != nullptr) {
        std::int16_t numero = 0;
        for (const TokenVoz &token : tokens->Tokens()) {
            RegistroVoz &fila = filas.emplace_back();
            fila.Fabricante = ODesconocido(token.GetAttribute(QStringLiteral("Vendor")));
            fila.NombreVoz = ODesconocido(token.GetAttribute(QStringLiteral("Name")));
            fila.NumeroSAPI5 = numero++;
            fila.Lengua = LenguaDe(token.GetAttribute(QStringLiteral("Language")));
            if (bombea) bombea();
        }
    }
    // Readers never test for an empty catalogue: they find no maker in a row without one.
    if (filas.empty()) filas.emplace_back();
    m_filas = std::move(filas);
}

void cVoces::LeeValoresVoces(ActorSvr &voz) {
    for (RegistroVoz &fila : m_filas) {
        if (fila.Fabricante != QLatin1String("IBM")) continue;
        voz.SetModo(QLatin1Char('{') + fila.IdModo + QLatin1Char('}'));
        fila.TonoDefecto = voz.Tono();
        fila.FluctuacionDefecto = voz.Fluctuacion();
        fila.AsperezaDefecto = voz.Aspereza();
        fila.DiafoniaDefecto = voz.Diafonia();
        fila.TamCabezaDefecto = voz.TamCabeza();
    }
}

const RegistroVoz *cVoces::Busca(const QString &fabricante, const QString &nombre) const {
    const auto fila = std::ranges::find_if(m_filas, [&](const RegistroVoz &candidata) {
        return candidata.Fabricante == fabricante && candidata.NombreVoz == nombre;
    });
    return fila == m_filas.end() ? nullptr : &*fila;
}

QStringList cVoces::Fabricantes() const {
    QStringList fabricantes;
    for (const RegistroVoz &fila : m_filas)
        if (!fila.Fabricante.isEmpty() && !fabricantes.contains(fila.Fabricante)) fabricantes << fila.Fabricante;
    return fabricantes;
}

std::vector<int> cVoces::DeFabricante(const QString &fabricante) const {
    std::vector<int> suyas;
    for (std::size_t i = 0; i < m_filas.size(); ++i)
        if (m_filas[i].Fabricante == fabricante) suyas.push_back(static_cast<int>(i));
    return suyas;
}

const RegistroVoz *cVoces::BuscaNombre(const QString &nombre) const {
    const auto fila = std::ranges::find(m_filas, nombre, &RegistroVoz::NombreVoz);
    return fila == m_filas.end() ? nullptr : &*fila;
}

}  // namespace ondalis
