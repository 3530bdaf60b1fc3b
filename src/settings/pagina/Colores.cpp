#include "settings/pagina/Colores.h"

#include <algorithm>
#include <cmath>

namespace ondalis {

namespace {

constexpr int kPasos = 10;

double Luminancia(const QColor &color) {
    const auto lineal = [](double parte) {
        return parte <= 0.04045 ? parte / 12.92 : std::pow((parte + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * lineal(color.redF()) + 0.7152 * lineal(color.greenF()) + 0.0722 * lineal(color.blueF());
}

}  // namespace

double Contraste(const QColor &uno, const QColor &otro) {
    const double a = Luminancia(uno), b = Luminancia(otro);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

QColor Mezcla(const QColor &uno, const QColor &otro, double parte) {
    const auto canal = [parte](int a, int b) { return static_cast<int>(std::lround(a * (1 - parte) + b * parte)); };
    return {canal(uno.red(), otro.red()), canal(uno.green(), otro.green()), canal(uno.blue(), otro.blue())};
}

QColor ColorVisible(const QColor &color, const QColor &fondo, const QColor &letra, double minimo) {
    for (int paso = 0; paso < kPasos; ++paso) {
        const QColor mezclado = Mezcla(color, letra, static_cast<double>(paso) / kPasos);
        if (Contraste(mezclado, fondo) >= minimo) return mezclado;
    }
    return letra;
}

}  // namespace ondalis
