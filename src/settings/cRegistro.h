// The only door to the settings: sections and keys of text values, blind to case, in INI files of the user and the
// system, and the start-with-the-system entry. Owned by main. Main thread. No operation raises; each logs its own
// trouble.
#pragma once

#include <QString>
#include <QVariant>
#include <memory>
#include <optional>

#include "settings/cLog.h"

class QSettings;

namespace ondalis {

// Company and title: they make the route of every setting ("Ferrano\Ondalis") and the titles of messages.
struct Producto {
    static constexpr const char *Empresa = "Ferrano";
    static constexpr const char *Titulo = "Ondalis";
    static QString Ruta() { return QStringLiteral("Ferrano\\Ondalis"); }
};

class cRegistro {
public:
    // `carpetaAutoarranque`: the user's autostart folder. The stores themselves follow QSettings' INI paths, user and
    // system.
    cRegistro(cLog &log, QString carpetaAutoarranque);
    ~cRegistro();

    // `raiz` "CU" is the user's store, anything else the system's. True only if the value is safely stored.
    bool Salva(const QString &raiz, const QString &ruta, const QString &seccion, const QString &nombre,
               const QString &valor);
    // The stored text without NULs; `defecto` as text when the value is absent. Booleans turn into True and False.
    QString Lee(const QString &raiz, const QString &ruta, const QString &seccion, const QString &nombre,
                const QVariant &defecto = {});
    // Without `seccion` the whole route, with it the section, with `nombre` too the one value. False when there was
    // none.
    bool Borra(const QString &raiz, const QString &ruta, const std::optional<QString> &seccion = {},
               const std::optional<QString> &nombre = {});

    void SalvaAutoarranque(const QString &nombre, const QString &comando);
    bool BorraAutoarranque(const QString &nombre);
    bool GetAutoarranque(const QString &nombre);

    // The inverse of how booleans are written: True and False, also 1, 0, -1, blind to case; anything else is nothing.
    static std::optional<bool> ABooleano(const QString &texto);
    static QString DeBooleano(bool valor);

private:
    QSettings &Almacen(const QString &raiz, const QString &ruta);

    cLog &m_log;
    QString m_carpetaAutoarranque;
    struct Almacenes;
    std::unique_ptr<Almacenes> m_almacenes;
};

}  // namespace ondalis
