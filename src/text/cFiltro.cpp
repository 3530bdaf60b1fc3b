#include "text/cFiltro.h"

#include <algorithm>
#include <array>
#include <exception>
#include <vector>

#include "libs/ondalis_dicc.h"
#include "text/cIndiceClaves.h"

namespace ondalis {

namespace {

constexpr QChar kBlanco(u' ');
constexpr std::array<char16_t, 11> kSignos = {u',', u'.', u';', u':', u'¿', u'?', u'¡', u'!', u'(', u')', u'"'};

// Entries that feed each other can make a text grow without end, and signs make it six times as long; what is longer is
// no text to be read.
constexpr qsizetype kMaxTexto = 32 * 1024 * 1024;

QString Espaciado(char16_t signo) { return QStringLiteral("   ") + QChar(signo) + QStringLiteral("  "); }

bool EsSigno(QChar c) { return std::find(kSignos.begin(), kSignos.end(), c.unicode()) != kSignos.end(); }

QString SinBlancos(QStringView texto) {
    while (!texto.isEmpty() && texto.front() == kBlanco) texto = texto.mid(1);
    while (!texto.isEmpty() && texto.back() == kBlanco) texto.chop(1);
    return texto.toString();
}

// Where `clave`, not empty, stands next in `texto` from `desde` on; -1: nowhere. Looks for its first and its last
// character a block at a time, which compilers turn into vector instructions: a pass over a long text without a hit
// costs a tenth of QString's own search.
qsizetype Busca(QStringView texto, QStringView clave, qsizetype desde) {
    constexpr qsizetype kBloque = 64;
    const char16_t *const letras = texto.utf16();
    const char16_t primera = clave.front().unicode(), ultima = clave.back().unicode();
    const qsizetype salto = clave.size() - 1, sitios = texto.size() - salto;  // places where it could begin
    const auto coincide = [&](qsizetype i) {
        return letras[i] == primera && letras[i + salto] == ultima && texto.mid(i, clave.size()) == clave;
    };
    qsizetype i = desde;
    while (i < sitios) {
        const qsizetype fin = std::min(i + kBloque, sitios);
        if (fin - i == kBloque) {
            std::uint16_t candidatos = 0;  // of the characters' own width, for the compiler's sake
            const char16_t *const a = letras + i, *const b = a + salto;
            for (qsizetype k = 0; k < kBloque; ++k)
                candidatos = static_cast<std::uint16_t>(candidatos | ((a[k] == primera) & (b[k] == ultima)));
            if (!candidatos) {
                i = fin;
                continue;
            }
        }
        for (; i < fin; ++i)
            if (coincide(i)) return i;
    }
    return -1;
}

struct Zona {
    qsizetype desde, hasta;
};

// Replaces every occurrence of `clave`, from the first character on, and tells where the new text holds replacements.
std::vector<Zona> Sustituye(QString &texto, const QString &clave, const QString &por) {
    std::vector<qsizetype> sitios;
    for (qsizetype i = Busca(texto, clave, 0); i >= 0; i = Busca(texto, clave, i + clave.size())) sitios.push_back(i);
    if (sitios.empty()) return {};
    const qsizetype larga = texto.size() + static_cast<qsizetype>(sitios.size()) * (por.size() - clave.size());
    if (larga > kMaxTexto && larga > texto.size()) throw ErrorFallo{Fallo::De(Fallo::SinMemoria)};

    QString nuevo;
    nuevo.reserve(larga);
    std::vector<Zona> zonas;
    zonas.reserve(sitios.size());
    qsizetype hecho = 0;
    for (const qsizetype sitio : sitios) {
        nuevo += QStringView(texto).mid(hecho, sitio - hecho);
        zonas.push_back({nuevo.size(), nuevo.size() + por.size()});
        nuevo += por;
        hecho = sitio + clave.size();
    }
    nuevo += QStringView(texto).mid(hecho);
    texto = std::move(nuevo);
    return zonas;
}

// Runs a procedure's body: an error ends it there and leaves one line in the log.
template <class F>
void Protege(cLog &log, const char *procedimiento, F &&cuerpo) {
    Fallo fallo;
    try {
        cuerpo();
    } catch (const ErrorFallo &error) {
        fallo = error.fallo;
    } catch (const std::bad_alloc &) {
        fallo = Fallo::De(Fallo::SinMemoria);
    } catch (const std::exception &error) {
        fallo = Fallo::De(Fallo::LlamadaNoValida, QString::fromUtf8(error.what()));
    }
    if (fallo) log.Escribe(QStringLiteral("cFiltro.%1: ").arg(QLatin1String(procedimiento)), fallo);
}

}  // namespace

// The table as the filter needs it. It stays true as long as the table's version does.
struct cFiltro::Indice {
    explicit Indice(std::vector<QString> suyas, std::vector<QString> aQue, std::uint64_t deVersion)
        : claves(std::move(suyas)), conversiones(std::move(aQue)), indice(claves), version(deVersion) {}

    static std::unique_ptr<Indice> DeLaTabla();
    std::vector<Zona> Vecindad(const std::vector<Zona> &zonas, qsizetype longitud) const;

    std::vector<QString> claves, conversiones;
    cIndiceClaves indice;
    std::uint64_t version;
};

std::unique_ptr<cFiltro::Indice> cFiltro::Indice::DeLaTabla() {
    std::vector<QString> claves, conversiones;
    std::array<char, ONDALIS_DICC_TAM> clave{}, conversion{};
    // What stands behind the text's end is zeros, and no NUL belongs to a text.
    const auto texto = [](const auto &bytes) {
        return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(qstrnlen(bytes.data(), bytes.size())));
    };
    PrimeraPosicionDicc();
    while (GetPosicionDicc(clave.data(), conversion.data()) == 1) {
        claves.push_back(texto(clave));
        conversiones.push_back(texto(conversion));
        clave.fill(0);
        conversion.fill(0);
        SigPosicionDicc();
    }
    return std::make_unique<Indice>(std::move(claves), std::move(conversiones), VersionDicc());
}

// Where a key can stand that touches one of `zonas`: them and the longest key less one on either side, joined.
std::vector<Zona> cFiltro::Indice::Vecindad(const std::vector<Zona> &zonas, qsizetype longitud) const {
    const qsizetype margen = indice.LongitudMaxima() - 1;
    std::vector<Zona> juntas;
    for (const Zona &zona : zonas) {
        const Zona ancha{std::max<qsizetype>(0, zona.desde - margen), std::min(longitud, zona.hasta + margen)};
        if (!juntas.empty() && ancha.desde <= juntas.back().hasta)
            juntas.back().hasta = ancha.hasta;
        else
            juntas.push_back(ancha);
    }
    return juntas;
}

cFiltro::cFiltro(cLog &log) : m_log(log) {}
cFiltro::~cFiltro() = default;

const cFiltro::Indice &cFiltro::Diccionario() {
    if (!m_indice || m_indice->version != VersionDicc()) m_indice = Indice::DeLaTabla();
    return *m_indice;
}

void cFiltro::TrataSignosPuntuacion(QString &texto) {
    Protege(m_log, "TrataSignosPuntuacion", [&] {
        // No spaced form holds another sign, so one walk gives what one replacement a sign would.
        const qsizetype larga = texto.size() + 5 * std::count_if(texto.cbegin(), texto.cend(), EsSigno);
        if (larga > kMaxTexto && larga > texto.size()) throw ErrorFallo{Fallo::De(Fallo::SinMemoria)};
        QString nuevo;
        nuevo.reserve(larga);
        for (const QChar c : std::as_const(texto)) {
            if (EsSigno(c))
                nuevo += Espaciado(c.unicode());
            else
                nuevo += c;
        }
        texto = std::move(nuevo);
    });
}

// `marcas` holds, at every step, at least the keys that occur in the text as it then is: at first those of the whole
// text; a replacement can bring forth others only where it touches new text, and there it is searched again. A key
// that an earlier replacement destroyed keeps its mark, and its pass finds nothing.
void cFiltro::TrataConversionesDiccionario(QString &texto) {
    Protege(m_log, "TrataConversionesDiccionario", [&] {
        const Indice &diccionario = Diccionario();
        std::vector<char> marcas(diccionario.claves.size(), 0);
        diccionario.indice.Marca(texto, marcas);
        for (std::size_t i = 0; i < marcas.size(); ++i) {
            if (!marcas[i]) continue;
            const auto zonas = Sustituye(texto, diccionario.claves[i], kBlanco + diccionario.conversiones[i]);
            for (const Zona &zona : diccionario.Vecindad(zonas, texto.size()))
                diccionario.indice.Marca(QStringView(texto).mid(zona.desde, zona.hasta - zona.desde), marcas);
        }
    });
}

void cFiltro::Deshace(QString &texto, const QString &marcador, bool signos) {
    if (!marcador.isEmpty() && !m_marca.isEmpty()) texto.replace(m_marca, marcador);
    if (signos)
        for (const char16_t signo : kSignos) texto.replace(Espaciado(signo), QString(QChar(signo)));
    const QString cincoBlancos(5, kBlanco);
    // Nothing but an entry's own replacement can bring five blanks into a text that has none.
    if (texto.contains(cincoBlancos)) {
        const Indice &diccionario = Diccionario();
        for (std::size_t i = 0; i < diccionario.claves.size(); ++i)
            texto.replace(cincoBlancos + diccionario.conversiones[i], diccionario.claves[i]);
    }
    texto.replace(QLatin1Char('"'), QStringLiteral("\"\""));
}

QString cFiltro::Leido2Copiado(const QString &leido, const QString &marcador, bool signos) {
    QString texto = leido;
    Protege(m_log, "Leido2Copiado", [&] { Deshace(texto, marcador, signos); });
    return texto;
}

QString cFiltro::PalabraLeido2Copiado(const QString &leido, const QString &marcador, bool signos) {
    QString palabra;
    Protege(m_log, "PalabraLeido2Copiado", [&] {
        const QString texto = Leido2Copiado(leido, marcador, signos);
        const qsizetype hastaBlanco = texto.indexOf(kBlanco) + 1;  // 0 without a blank
        palabra = SinBlancos(QStringView(texto).left(hastaBlanco));
        if (palabra.isEmpty()) palabra = leido;
    });
    return palabra;
}

}  // namespace ondalis
