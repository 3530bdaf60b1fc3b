// The one way to choose a file, source or target: GetFicheroDialogo. Main thread; the call returns when the dialog has
// been answered.
#pragma once

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

namespace ondalis {

// One line of the dialog's filter list.
struct FiltroFichero {
    QString texto;         // as shown
    QStringList patrones;  // matched blind to case; empty: every file
};

struct PeticionFichero {
    QString titulo;
    QString extension;  // appended to a name typed without one; empty: none
    std::vector<FiltroFichero> filtros;
    bool carpetaDebeExistir = false;
};

// The desktop's file dialog. ui implements it: any name may be typed, it never asks about overwriting and never changes
// the current folder.
class DialogoFichero {
public:
    virtual ~DialogoFichero() = default;
    // Path chosen, or nothing when the dialog was cancelled.
    virtual std::optional<QString> Elige(const PeticionFichero &peticion) = 0;
};

class cDialogoFichero {
public:
    explicit cDialogoFichero(DialogoFichero &dialogo) : m_dialogo(dialogo) {}

    // `filtro`: pairs of text and patterns joined with NUL, patterns of one pair with ";". `extension` "*" allows a
    // folder that doesn't exist. The path trimmed, or the empty text when cancelled.
    QString GetFicheroDialogo(const QString &extension, const QString &filtro);

    // The filter split into its lines; "*.*" and "*" stand for every file.
    static std::vector<FiltroFichero> Filtros(const QString &filtro);

private:
    DialogoFichero &m_dialogo;
};

}  // namespace ondalis
