// Asserts that a page's controls, as its constructor leaves them, show the design values of its table.
#pragma once

#include <gtest/gtest.h>

#include <QWidget>
#include <initializer_list>

#include "settings/TablaOpciones.h"
#include "settings/pagina/EnlaceControles.h"

namespace ondalis::prueba {

// `pagina` is fresh: EstableceValores hasn't run. `excepto`: rows whose state isn't known at design, such as lists that
// the voices fill; their controls must exist all the same.
inline void CompruebaDiseno(const QWidget &pagina, const TablaOpciones &tabla,
                            std::initializer_list<const char *> excepto = {}) {
    for (const FilaOpcion &fila : tabla.Filas()) {
        const auto controles = pagina.findChildren<QWidget *>(QLatin1String(fila.control));
        ASSERT_EQ(controles.size(), 1) << fila.control;
        EXPECT_FALSE(controles.front()->accessibleName().isEmpty()) << fila.control;
        EXPECT_NE(controles.front()->focusPolicy(), Qt::NoFocus) << fila.control;
        bool conocido = true;
        for (const char *uno : excepto) conocido = conocido && qstrcmp(uno, fila.control) != 0;
        if (!conocido) continue;
        EXPECT_EQ(EstadoControl(*controles.front()).toStdString(), fila.diseno) << fila.control;
    }
}

}  // namespace ondalis::prueba
