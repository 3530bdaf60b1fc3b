// Colours that can be told from their ground, whatever the palette. The formula is that of WCAG 2.1. Pure.
#pragma once

#include <QColor>

namespace ondalis {

inline constexpr double kContrasteLetra = 4.5;  // WCAG 2.1, 1.4.3: text
inline constexpr double kContrasteForma = 3.0;  // WCAG 2.1, 1.4.11: edges of controls, the focus

// 1 for equal colours to 21 for black on white.
double Contraste(const QColor &uno, const QColor &otro);
// `parte` 0: the first; 1: the second.
QColor Mezcla(const QColor &uno, const QColor &otro, double parte);
// `color`, drawn towards `letra` as little as gives it `minimo` on `fondo`; `letra` where nothing less does.
QColor ColorVisible(const QColor &color, const QColor &fondo, const QColor &letra, double minimo);

}  // namespace ondalis
