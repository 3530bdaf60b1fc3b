// The only door to the settings: sections and keys of text values, blind to case, in INI files of the user and the
// system, and the start-with-the-system entry. Owned by main. Main thread. No operation raises; each logs its own
// trouble.
#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <memory>
#include <optional>

#include "settings/cLog.h"

class QSettings;

namespace ondalis {

// Company, title and version; the first two make the route of every setting ("Ferrano\Ondalis") and the titles of
// messages.
struct Producto {
    static constexpr const char *Empresa = "Ferrano";
    static constexpr const char *Titulo = "Ondalis";
    static constexpr const char *Comentarios = "1.0 Libre";  // the edition
    static constexpr int VersionMayor = 1;
    static constexpr int VersionMenor = 0;
    static constexpr int Revision = 0;
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
    // The stored text without NULs, or nothing when the value is absent or can't be text.
    std::optional<QString> Busca(const QString &raiz, const QString &ruta, const QString &seccion,
                                 const QString &nombre);
    // Without `seccion` the route, with it the section, with `nombre` too the one value. False when there was none, or
    // when it isn't gone; a route or section that holds further sections is refused, not walked.
    bool Borra(const QString &raiz, const QString &ruta, const std::optional<QString> &seccion = {},
               const std::optional<QString> &nombre = {});

    // `comando` as a desktop entry's Exec has it: ComandoAutoarranque makes it.
    void SalvaAutoarranque(const QString &nombre, const QString &comando);
    bool BorraAutoarranque(const QString &nombre);
    // An entry that is hidden, switched off by the desktop, or without a command counts as absent.
    bool GetAutoarranque(const QString &nombre);
    // Executable and arguments quoted for SalvaAutoarranque.
    static QString ComandoAutoarranque(const QStringList &argumentos);

    // The inverse of how booleans are written: True and False, also 1, 0, -1, blind to case; anything else is nothing.
    static std::optional<bool> ABooleano(const QString &texto);
    static QString DeBooleano(bool valor);
    // How a default of any simple type turns into text.
    static QString ATexto(const QVariant &valor);

private:
    QSettings &Almacen(const QString &raiz, const QString &ruta);
    bool Guarda(const QString &raiz, const QString &ruta, const QString &procedimiento);
    bool CandadoLibre(const QString &fichero, const QString &procedimiento);
    void Revisa(const QString &fichero);
    void Aparta(const QString &fichero, const QString &procedimiento);
    void ApartaSiEstaDanado(QSettings &almacen, const QString &procedimiento);
    QString FicheroAutoarranque(const QString &nombre) const;

    cLog &m_log;
    QString m_carpetaAutoarranque;
    struct Almacenes;
    std::unique_ptr<Almacenes> m_almacenes;
};

}  // namespace ondalis
