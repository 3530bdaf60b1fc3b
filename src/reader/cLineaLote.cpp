#include "reader/cLineaLote.h"

#include <QStringBuilder>

#include "settings/cGeneral.h"

namespace ondalis {

std::optional<cLineaLote> cLineaLote::De(const QString &orden) {
    if (cGeneral::ExisteFichero(QString(orden).remove(QLatin1Char('"'))))
        return cLineaLote(QStringLiteral("-FILETXT ") + orden);
    cLineaLote linea(orden);
    for (const char *opcion : {"-CLEAR", "-DEBUG", "-NOSAPI5"}) linea.Suprime(QString::fromLatin1(opcion));
    const QString resto = linea.m_escrita.trimmed();
    if (resto.isEmpty()) return std::nullopt;
    return cLineaLote(resto);
}

bool cLineaLote::Valor(const QString &opcion, QString *valor) const {
    return cGeneral::GetParam(m_escrita, opcion, valor);
}

void cLineaLote::Quita(const QString &opcion, const QString &valor) {
    Suprime(Mayusculas(QLatin1Char('-') % opcion % QLatin1Char(' ') % valor));
}

void cLineaLote::Suprime(const QString &enMayusculas) {
    for (qsizetype sitio = 0; (sitio = m_mayusculas.indexOf(enMayusculas, sitio)) >= 0;) {
        m_mayusculas.remove(sitio, enMayusculas.size());
        m_escrita.remove(sitio, enMayusculas.size());
    }
}

QString cLineaLote::Mayusculas(const QString &texto) {
    QString mayusculas;
    mayusculas.reserve(texto.size());
    for (qsizetype i = 0; i < texto.size(); ++i) {
        const QChar letra = texto[i];
        if (!letra.isHighSurrogate() || i + 1 == texto.size() || !texto[i + 1].isLowSurrogate()) {
            mayusculas += letra.toUpper();
            continue;
        }
        const char32_t punto = QChar::surrogateToUcs4(letra, texto[++i]);
        const char32_t mayuscula = QChar::toUpper(punto);
        mayusculas += QChar::fromUcs4(QChar::requiresSurrogates(mayuscula) ? mayuscula : punto);
    }
    return mayusculas;
}

}  // namespace ondalis
