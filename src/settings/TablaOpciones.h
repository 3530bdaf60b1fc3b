// The accepted values of one options page: a table of rows {control, section, key, form, design value} and the text
// ("tag") that each control holds as accepted. The page's widgets bind to the rows by objectName. Main thread.
#pragma once

#include <QString>
#include <map>
#include <optional>
#include <span>

#include "settings/cRegistro.h"

namespace ondalis {

// How a value is stored: True and False; whole number; text; a boolean as "1" and "0"; single-precision number.
enum class FormaOpcion { Booleano, Entero, Texto, BooleanoComoCifra, Decimal };

struct FilaOpcion {
    const char *control;
    const char *seccion;
    const char *clave;  // null: not stored
    FormaOpcion forma;
    const char *diseno;  // tag at design: "1" and "0" for check boxes
};

class TablaOpciones {
public:
    TablaOpciones(std::span<const FilaOpcion> filas, cRegistro &registro, cLog &log, QString objeto);
    virtual ~TablaOpciones() = default;
    TablaOpciones(const TablaOpciones &) = delete;
    TablaOpciones &operator=(const TablaOpciones &) = delete;

    // Accepted text of a control; an unknown control is a programmer's mistake.
    const QString &Tag(const QString &control) const;
    void SetTag(const QString &control, const QString &valor);
    std::span<const FilaOpcion> Filas() const { return m_filas; }

protected:
    bool Booleano(const char *control) const { return Tag(QLatin1String(control)) == QLatin1String("1"); }
    void SetBooleano(const char *control, bool valor);
    int Entero(const char *control) const;
    void SetEntero(const char *control, int valor);

    // Row of a control; an unknown control is a programmer's mistake.
    const FilaOpcion &Fila(const char *control) const;
    // Stored text of the row as a tag ("1" and "0" for both forms of boolean), or nothing when absent or senseless (the
    // latter is logged).
    std::optional<QString> LeeFila(const FilaOpcion &fila);
    // The same for a whole number; outside the limits it is senseless too.
    std::optional<int> LeeEntero(const FilaOpcion &fila, int minimo, int maximo);
    // The log line of a stored value that makes no sense; its text isn't told.
    void AnotaSinSentido(const FilaOpcion &fila);
    // Stores `valor`, a tag, in the row's form. False when it could not be stored.
    bool SalvaFila(const FilaOpcion &fila, const QString &valor);
    // The plain loading and saving of a page all of whose rows are simple: design values, then the stored ones.
    void CargaFilas();
    void SalvaFilas();

    cRegistro &m_registro;
    cLog &m_log;

private:
    std::span<const FilaOpcion> m_filas;
    QString m_objeto;
    std::map<QString, QString> m_tags;
};

}  // namespace ondalis
