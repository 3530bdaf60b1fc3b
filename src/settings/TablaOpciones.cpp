#include "settings/TablaOpciones.h"

#include <cmath>
#include <limits>

namespace ondalis {

namespace {
// As many digits as a single-precision number is written with.
constexpr int kCifrasDecimal = std::numeric_limits<float>::digits10 + 1;
}  // namespace

TablaOpciones::TablaOpciones(std::span<const FilaOpcion> filas, cRegistro &registro, cLog &log, QString objeto)
    : m_registro(registro), m_log(log), m_filas(filas), m_objeto(std::move(objeto)) {
    for (const FilaOpcion &fila : m_filas) m_tags[QString::fromLatin1(fila.control)] = QString::fromLatin1(fila.diseno);
}

const QString &TablaOpciones::Tag(const QString &control) const {
    const auto sitio = m_tags.find(control);
    Q_ASSERT_X(sitio != m_tags.end(), "TablaOpciones::Tag", qPrintable(control));
    static const QString kNinguno;
    return sitio != m_tags.end() ? sitio->second : kNinguno;
}

void TablaOpciones::SetTag(const QString &control, const QString &valor) {
    const auto sitio = m_tags.find(control);
    Q_ASSERT_X(sitio != m_tags.end(), "TablaOpciones::SetTag", qPrintable(control));
    if (sitio != m_tags.end()) sitio->second = valor;
}

const FilaOpcion &TablaOpciones::Fila(const char *control) const {
    for (const FilaOpcion &fila : m_filas)
        if (qstrcmp(fila.control, control) == 0) return fila;
    Q_ASSERT_X(false, "TablaOpciones::Fila", control);
    return m_filas.front();
}

void TablaOpciones::SetBooleano(const char *control, bool valor) {
    SetTag(QLatin1String(control), valor ? QStringLiteral("1") : QStringLiteral("0"));
}

int TablaOpciones::Entero(const char *control) const { return Tag(QLatin1String(control)).toInt(); }

void TablaOpciones::SetEntero(const char *control, int valor) {
    SetTag(QLatin1String(control), QString::number(valor));
}

void TablaOpciones::AnotaSinSentido(const FilaOpcion &fila) {
    m_log.Escribe(m_objeto + QStringLiteral(".UserControl_ReadProperties: "), Fallo::De(Fallo::TipoNoCoincide),
                  QStringLiteral("%1\\%2").arg(QLatin1String(fila.seccion), QLatin1String(fila.clave)));
}

std::optional<QString> TablaOpciones::LeeFila(const FilaOpcion &fila) {
    if (!fila.clave) return std::nullopt;
    const auto texto = m_registro.Busca(QStringLiteral("CU"), Producto::Ruta(), QLatin1String(fila.seccion),
                                        QLatin1String(fila.clave));
    if (!texto) return std::nullopt;
    bool bien = true;
    QString valor = *texto;
    switch (fila.forma) {
        case FormaOpcion::Booleano:
        case FormaOpcion::BooleanoComoCifra: {
            const auto booleano = cRegistro::ABooleano(*texto);
            bien = booleano.has_value();
            valor = booleano.value_or(false) ? QStringLiteral("1") : QStringLiteral("0");
            break;
        }
        case FormaOpcion::Entero: valor = QString::number(texto->trimmed().toInt(&bien)); break;
        case FormaOpcion::Decimal: {
            const float numero = texto->trimmed().toFloat(&bien);
            bien = bien && std::isfinite(numero);
            valor = QString::number(static_cast<double>(numero), 'g', kCifrasDecimal);
            break;
        }
        case FormaOpcion::Texto: break;
    }
    if (bien) return valor;
    AnotaSinSentido(fila);
    return std::nullopt;
}

std::optional<int> TablaOpciones::LeeEntero(const FilaOpcion &fila, int minimo, int maximo) {
    const auto texto = LeeFila(fila);
    if (!texto) return std::nullopt;
    const int valor = texto->toInt();
    if (valor >= minimo && valor <= maximo) return valor;
    AnotaSinSentido(fila);
    return std::nullopt;
}

bool TablaOpciones::SalvaFila(const FilaOpcion &fila, const QString &valor) {
    if (!fila.clave) return true;
    const QString texto =
        fila.forma == FormaOpcion::Booleano ? cRegistro::DeBooleano(valor == QLatin1String("1")) : valor;
    return m_registro.Salva(QStringLiteral("CU"), Producto::Ruta(), QLatin1String(fila.seccion),
                            QLatin1String(fila.clave), texto);
}

void TablaOpciones::CargaFilas() {
    for (const FilaOpcion &fila : m_filas)
        if (const auto valor = LeeFila(fila)) SetTag(QLatin1String(fila.control), *valor);
}

void TablaOpciones::SalvaFilas() {
    for (const FilaOpcion &fila : m_filas) SalvaFila(fila, Tag(QLatin1String(fila.control)));
}

}  // namespace ondalis
