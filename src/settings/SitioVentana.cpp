#include "settings/SitioVentana.h"

#include <algorithm>
#include <cmath>

#include "settings/PosicionVentana.h"

namespace ondalis {

namespace {

constexpr int kMaxPixeles = 32767;  // what a window's edge can be on this window system

QRect Union(std::span<const QRect> monitores) {
    QRect pantalla;
    for (const QRect &uno : monitores) pantalla = pantalla.united(uno);
    return pantalla;
}

int APixeles(float twips) {
    const float pixeles = std::nearbyint(twips / kTwipsPorPixel);
    return static_cast<int>(std::clamp(pixeles, -static_cast<float>(kMaxPixeles), static_cast<float>(kMaxPixeles)));
}

bool EnAlguno(const QPoint &punto, std::span<const QRect> monitores) {
    return std::any_of(monitores.begin(), monitores.end(), [&](const QRect &uno) { return uno.contains(punto); });
}

}  // namespace

SitioVentana::SitioVentana(cRegistro &registro, cLog &log, QString nombre)
    : m_registro(registro), m_log(log), m_nombre(std::move(nombre)) {}

QPoint SitioVentana::LeeLugar(const QSize &ventana, std::span<const QRect> monitores) {
    const QRect pantalla = Union(monitores);
    const auto eje = [this](const char *lado, int total, int propio) {
        const auto twips = static_cast<float>(total * kTwipsPorPixel);
        const auto tamano = static_cast<float>(propio * kTwipsPorPixel);
        const float fresca = PosicionInicial(twips, tamano);
        // What is stored falls under the rule; the fresh place stands as it is.
        const float guardada = Lee(QLatin1String(lado) + m_nombre, std::nanf(""));
        return APixeles(std::isnan(guardada) ? fresca : PosicionVentana(guardada, twips, tamano));
    };
    const QPoint lugar(eje("Left", pantalla.x() + pantalla.width(), ventana.width()),
                       eje("Top", pantalla.y() + pantalla.height(), ventana.height()));
    if (monitores.empty() || EnAlguno(lugar, monitores)) return lugar;
    // A corner of the union that no monitor shows: the fresh place of the first one.
    const QRect &primero = monitores.front();
    return primero.topLeft() +
           QPoint(std::max(0, APixeles(PosicionInicial(primero.width(), ventana.width()) * kTwipsPorPixel)),
                  std::max(0, APixeles(PosicionInicial(primero.height(), ventana.height()) * kTwipsPorPixel)));
}

QSize SitioVentana::LeeTamano(const QSize &diseno) {
    const auto eje = [this](const char *lado, int propio) {
        const int pixeles = APixeles(Lee(QLatin1String(lado) + m_nombre, static_cast<float>(propio * kTwipsPorPixel)));
        return pixeles > 0 ? pixeles : propio;
    };
    return {eje("Width", diseno.width()), eje("Height", diseno.height())};
}

void SitioVentana::GuardaLugar(const QPoint &lugar) {
    Salva(QStringLiteral("Left"), lugar.x());
    Salva(QStringLiteral("Top"), lugar.y());
}

void SitioVentana::GuardaTamano(const QSize &tamano) {
    Salva(QStringLiteral("Width"), tamano.width());
    Salva(QStringLiteral("Height"), tamano.height());
}

float SitioVentana::Lee(const QString &clave, float defecto) {
    const auto texto = m_registro.Busca(QStringLiteral("CU"), Producto::Ruta(), QStringLiteral("Ventana"), clave);
    if (!texto) return defecto;
    bool bien = false;
    const float valor = texto->trimmed().toFloat(&bien);
    if (bien && std::isfinite(valor)) return valor;
    m_log.Escribe(m_nombre + QStringLiteral(".Form_Load: "), Fallo::De(Fallo::TipoNoCoincide), clave);
    return defecto;
}

void SitioVentana::Salva(const QString &clave, int pixeles) {
    m_registro.Salva(QStringLiteral("CU"), Producto::Ruta(), QStringLiteral("Ventana"), clave + m_nombre,
                     QString::number(pixeles * kTwipsPorPixel));
}

}  // namespace ondalis
