#include "text/cListaDiccionario.h"

#include <QLocale>
#include <algorithm>

#include "settings/Fallo.h"

namespace ondalis {

namespace {

// Without a language of its own the desktop gets that of the program's texts.
QLocale LocaleDeOrden() {
    const QLocale sistema = QLocale::system().collation();
    return sistema.language() == QLocale::C ? QLocale(QLocale::Spanish) : sistema;
}

}  // namespace

cListaDiccionario::cListaDiccionario() : m_cotejo(LocaleDeOrden()) { m_cotejo.setCaseSensitivity(Qt::CaseInsensitive); }

QString cListaDiccionario::Normaliza(const QString &texto) {
    return QString::fromUtf8(texto.toUtf8()).remove(QChar::Null);
}

void cListaDiccionario::Vacia() {
    m_filas.clear();
    m_claves.clear();
}

void cListaDiccionario::Apunta(const QString &clave) {
    const QString claveFila = ClaveFila(clave);
    if (m_claves.contains(claveFila)) throw ErrorFallo{Fallo::De(Fallo::ClaveYaAsociada)};
    m_claves.insert(claveFila);
}

void cListaDiccionario::Carga(const std::function<bool(QString &, QString &)> &siguiente) {
    Vacia();
    QString clave, conversion;
    try {
        while (siguiente(clave, conversion)) {
            Apunta(clave);
            m_filas.push_back({{clave, conversion}, m_cotejo.sortKey(clave)});
        }
    } catch (const ErrorFallo &) {
        if (m_ordenada) Ordena();
        throw;
    }
    Ordena();
}

int cListaDiccionario::Busca(const QString &claveFila) const {
    if (!m_claves.contains(claveFila)) return -1;
    const QStringView clave = QStringView(claveFila).mid(1);
    auto desde = m_filas.begin();
    if (m_ordenada)
        desde = std::lower_bound(m_filas.begin(), m_filas.end(), m_cotejo.sortKey(clave.toString()),
                                 [](const Guardada &una, const QCollatorSortKey &otra) { return una.orden < otra; });
    const auto sitio =
        std::find_if(desde, m_filas.end(), [clave](const Guardada &una) { return una.fila.clave == clave; });
    return static_cast<int>(sitio - m_filas.begin());
}

int cListaDiccionario::Sitio(const QString &clave) const {
    if (!m_ordenada) return Cuantas();
    const auto sitio =
        std::upper_bound(m_filas.begin(), m_filas.end(), m_cotejo.sortKey(clave),
                         [](const QCollatorSortKey &una, const Guardada &otra) { return una < otra.orden; });
    return static_cast<int>(sitio - m_filas.begin());
}

int cListaDiccionario::Anade(const QString &clave, const QString &conversion) {
    const int sitio = Sitio(clave);
    Apunta(clave);
    m_filas.insert(m_filas.begin() + sitio, {{clave, conversion}, m_cotejo.sortKey(clave)});
    return sitio;
}

void cListaDiccionario::PonConversion(int fila, const QString &conversion) {
    m_filas[static_cast<std::size_t>(fila)].fila.conversion = conversion;
}

void cListaDiccionario::Quita(int fila) {
    m_claves.remove(ClaveFila((*this)[fila].clave));
    m_filas.erase(m_filas.begin() + fila);
}

void cListaDiccionario::Ordena() {
    std::stable_sort(m_filas.begin(), m_filas.end(),
                     [](const Guardada &una, const Guardada &otra) { return una.orden < otra.orden; });
    m_ordenada = true;
}

}  // namespace ondalis
