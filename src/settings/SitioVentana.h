// Place and size of a window that keeps them, in the section "Ventana" of the user's store, in twips: read at load,
// written when the window closes. Logic only: the window says where it is. Main thread.
#pragma once

#include <QRect>
#include <QSize>
#include <QString>
#include <span>

#include "settings/cRegistro.h"

namespace ondalis {

inline constexpr int kTwipsPorPixel = 15;  // logical pixels

class SitioVentana {
public:
    // `nombre`: as in the keys, "Lupa" for LeftLupa.
    SitioVentana(cRegistro &registro, cLog &log, QString nombre);

    // Where the window opens, in logical pixels; `diseno` is its size at design. `monitores`: the screen is their
    // union, and a window whose top left corner would be on none of them goes to the fresh place.
    QPoint LeeLugar(const QSize &ventana, std::span<const QRect> monitores);
    // The stored size; what is absent or makes no sense is that of `diseno`.
    QSize LeeTamano(const QSize &diseno);

    void GuardaLugar(const QPoint &lugar);
    void GuardaTamano(const QSize &tamano);

private:
    float Lee(const QString &clave, float defecto);
    void Salva(const QString &clave, int pixeles);

    cRegistro &m_registro;
    cLog &m_log;
    QString m_nombre;
};

}  // namespace ondalis
