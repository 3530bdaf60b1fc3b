// The line of a batch job in two spellings: in capitals, in which options are looked for and texts are spoken, and as
// it was written, which names of files are taken from. Both always have the same length. A value; no thread of its own.
#pragma once

#include <QString>
#include <optional>

namespace ondalis {

class cLineaLote {
public:
    // `orden`: the command line without the program's name. Naming an existing file, as it stands but for its quotes,
    // it is the line of that file; else it is taken without -clear, -debug and -nosapi5. Nothing: nothing is left then,
    // the line asks for no batch job.
    static std::optional<cLineaLote> De(const QString &orden);

    // cGeneral::GetParam on this line; the value as it was written.
    bool Valor(const QString &opcion, QString *valor = nullptr) const;
    // Deletes each "-" + `opcion` + one blank + `valor`, blind to case.
    void Quita(const QString &opcion, const QString &valor);
    // What is spoken when the line is a text.
    const QString &Hablada() const { return m_mayusculas; }

    // Capitals by code points that need as many units as the small letter: "ß" stays.
    static QString Mayusculas(const QString &texto);

private:
    explicit cLineaLote(const QString &texto) : m_escrita(texto), m_mayusculas(Mayusculas(texto)) {}
    void Suprime(const QString &enMayusculas);

    QString m_escrita;
    QString m_mayusculas;
};

}  // namespace ondalis
