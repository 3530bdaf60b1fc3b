#include "keys/cTeclasLeeTeclado.h"

#include <algorithm>

#include "text/Codificacion.h"

namespace ondalis {

namespace {

const QString kFichero = QStringLiteral("codstcd.dat");
constexpr int kCifrasCodigo = 3;

// Decimal digits only; -1 for anything else.
int Cifras(QStringView texto) {
    int numero = 0;
    if (texto.isEmpty()) return -1;
    for (const QChar c : texto) {
        if (c < u'0' || c > u'9') return -1;
        numero = numero * 10 + (c.unicode() - u'0');
    }
    return numero;
}

// A character of Windows-1252 by its code; the null character for a code that the page doesn't have.
QChar DeWindows1252(int codigo) {
    static constexpr char16_t kAltos[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                            0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                            0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                            0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
    if (codigo >= 0x80 && codigo < 0xA0) return QChar(kAltos[codigo - 0x80]);
    return codigo > 0 && codigo <= 0xFF ? QChar(codigo) : QChar();
}

// Whether an accepted text can be walked to its end; the empty one can. Its final character starts no entry.
bool EsEleccion(const QString &tag) {
    const QStringView vista(tag);
    for (qsizetype p = 0; p < vista.size() && (p == 0 || p + 1 < vista.size());) {
        const int n = Cifras(vista.mid(p, 1));
        if (n < 2 || p + n >= vista.size()) return false;
        const QChar clase = vista[p + 1];
        if (clase != u'c' && (clase != u'k' || Cifras(vista.mid(p + 2, n - 1)) < 0)) return false;
        p += n + 1;
    }
    return true;
}

}  // namespace

cTeclasLeeTeclado::cTeclasLeeTeclado(cRegistro &registro, cGeneral &general, QStringList carpetas)
    : m_registro(registro), m_general(general), m_carpetas(std::move(carpetas)) {}

void cTeclasLeeTeclado::Carga(cGeneral::Aviso aviso) {
    if (m_cargada || (m_intentada && aviso == cGeneral::Aviso::SoloLog)) return;
    m_intentada = true;
    CargaTeclas(aviso);
    if (!m_cargada) return;
    SetTags();
    const QString seccion = QStringLiteral("TipoLectura"), nombre = QStringLiteral("TeclasLeeTeclado");
    const QString guardado = m_registro.Lee(QStringLiteral("CU"), Producto::Ruta(), seccion, nombre, m_tag);
    if (EsEleccion(guardado))
        m_tag = guardado;
    else
        m_general.Log().Escribe(QStringLiteral("TeclasLeeTeclado.Form_Load: "), Fallo::De(Fallo::TipoNoCoincide),
                                seccion + QLatin1Char('\\') + nombre);
    EstableceValores();
}

void cTeclasLeeTeclado::CargaTeclas(cGeneral::Aviso aviso) {
    static const QString kProcedimiento = QStringLiteral("TeclasLeeTeclado.CargaTeclas: ");
    m_general.Ejecuta(kProcedimiento, aviso, [this] {
        QString ruta = kFichero;
        for (const QString &carpeta : m_carpetas) {
            ruta = carpeta + QLatin1Char('/') + kFichero;
            if (cGeneral::ExisteFichero(ruta)) break;
        }
        QString texto;
        if (const Fallo fallo = LeeFicheroTexto(ruta, texto)) throw ErrorFallo{fallo};
        QStringList lineas = texto.split(QLatin1Char('\n'));
        if (lineas.constLast().isEmpty()) lineas.removeLast();
        for (qsizetype i = 0; i < lineas.size(); ++i) {
            if (lineas[i].endsWith(QLatin1Char('\r'))) lineas[i].chop(1);
            if (auto fila = LeeLinea(lineas[i]))
                m_filas.push_back(std::move(*fila));
            else
                m_general.Log().Escribe(kProcedimiento,
                                        QStringLiteral("%1: la línea %2 no se entiende").arg(ruta).arg(i + 1));
        }
        m_cargada = true;
    });
}

std::optional<FilaTeclaLectura> cTeclasLeeTeclado::LeeLinea(const QString &linea) {
    const QStringView vista(linea);
    if (vista.isEmpty()) return {};
    FilaTeclaLectura fila;
    qsizetype resto = 1 + kCifrasCodigo;
    if (vista[0] == u'0') {
        const QStringView cifras = vista.mid(1, kCifrasCodigo);
        if (cifras.size() < kCifrasCodigo || Cifras(cifras) < 0) return {};
        fila.clave = QLatin1Char('k') + cifras.toString();
    } else {
        const int n = Cifras(vista.mid(1, 1));
        if (n < 1 || n >= kMaxClave || vista.size() < 2 + n * kCifrasCodigo) return {};
        fila.clave = QStringLiteral("c");
        for (int i = 0; i < n; ++i) {
            const QChar caracter = DeWindows1252(Cifras(vista.mid(2 + i * kCifrasCodigo, kCifrasCodigo)));
            if (caracter.isNull()) return {};
            fila.clave += caracter;
        }
        resto = 2 + n * kCifrasCodigo;
    }
    fila.marcada = vista.mid(resto, 1) == u"1";
    fila.rotulo = vista.mid(std::min(resto + 1, vista.size())).toString();
    return fila;
}

bool cTeclasLeeTeclado::Recorre(const QString &tag,
                                const std::function<bool(QChar clase, const QString &datos)> &visita) {
    qsizetype p = 1;  // counted from 1, as the format is told
    while (p < tag.size()) {
        const int n = Cifras(QStringView(tag).mid(p - 1, 1));
        if (n < 1) return false;  // nothing behind it can be told apart any more
        if (visita(tag[p], tag.mid(p + 1, n - 1))) return true;
        p += n + 1;
    }
    return false;
}

bool cTeclasLeeTeclado::ExistenCharsParaLeer(const QString &texto) {
    return Recorre(Tag(), [&texto](QChar clase, const QString &datos) {
        return clase == u'c' && !datos.isEmpty() && texto.contains(datos, Qt::CaseSensitive);
    });
}

bool cTeclasLeeTeclado::EsTeclaParaLeer(int tecla) {
    return Recorre(Tag(), [tecla](QChar clase, const QString &datos) {
        return clase == u'k' && !datos.isEmpty() && Cifras(datos) == tecla;
    });
}

const std::vector<FilaTeclaLectura> &cTeclasLeeTeclado::ListaTeclas() {
    Carga();
    return m_filas;
}

void cTeclasLeeTeclado::Marca(std::size_t fila, bool marcada) { m_filas.at(fila).marcada = marcada; }

const QString &cTeclasLeeTeclado::Tag() {
    Carga();
    return m_tag;
}

void cTeclasLeeTeclado::SetTags() {
    m_tag.clear();
    for (const FilaTeclaLectura &fila : m_filas)
        if (fila.marcada) m_tag += QString::number(fila.clave.size()) + fila.clave;
}

void cTeclasLeeTeclado::EstableceValores() {
    for (FilaTeclaLectura &fila : m_filas) fila.marcada = false;
    Recorre(m_tag, [this](QChar clase, const QString &datos) {
        const auto fila = std::find_if(m_filas.begin(), m_filas.end(),
                                       [&](const FilaTeclaLectura &una) { return una.clave == clase + datos; });
        if (fila != m_filas.end()) fila->marcada = true;
        return false;
    });
}

void cTeclasLeeTeclado::Acepta() {
    Carga();
    if (!m_cargada) return;
    SetTags();
    m_registro.Salva(QStringLiteral("CU"), Producto::Ruta(), QStringLiteral("TipoLectura"),
                     QStringLiteral("TeclasLeeTeclado"), m_tag);
}

}  // namespace ondalis
