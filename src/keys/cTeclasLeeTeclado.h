// The keys and signs that start the reading of typed text: the choices that the file "codstcd.dat" offers, which of
// them are accepted, and the answers that the keyboard's reading asks for. The window shows and changes the rows. Owned
// by main. Main thread.
//
// A line of the file is a choice. A key: "0", its virtual key in three digits, "1" when it is chosen by default or
// another character, the label. A group of characters: any other character, their number in one digit, three digits of
// each one's Windows-1252 code, "1" or another, the label. In the accepted text each chosen row is the length of its
// key text in one digit and that text: "k" and three digits, or "c" and the characters.
#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "settings/cGeneral.h"
#include "settings/cRegistro.h"

namespace ondalis {

struct FilaTeclaLectura {
    QString clave;   // key text
    QString rotulo;  // as the file has it
    bool marcada = false;
};

class cTeclasLeeTeclado {
public:
    static constexpr int kMaxClave = 9;  // the accepted text has one digit for its length

    // `carpetas`: where the file is looked for, in this order.
    cTeclasLeeTeclado(cRegistro &registro, cGeneral &general, QStringList carpetas);
    cTeclasLeeTeclado(const cTeclasLeeTeclado &) = delete;
    cTeclasLeeTeclado &operator=(const cTeclasLeeTeclado &) = delete;

    // Reads file and setting at the first use of any procedure here. Without the file there are no rows, and both
    // answers are false; it is tried again, and the user told, when the window opens.
    void Carga(cGeneral::Aviso aviso = cGeneral::Aviso::SoloLog);

    bool ExistenCharsParaLeer(const QString &texto);
    bool EsTeclaParaLeer(int tecla);

    const std::vector<FilaTeclaLectura> &ListaTeclas();
    void Marca(std::size_t fila, bool marcada);
    const QString &Tag();
    // The checked rows become the accepted choice.
    void SetTags();
    // The accepted choice becomes the rows' state.
    void EstableceValores();
    // SetTags, and stores the choice. Without the file the stored choice stays as it is.
    void Acepta();

    // One line of the file; nothing when it makes no sense or couldn't be accepted. Pure.
    static std::optional<FilaTeclaLectura> LeeLinea(const QString &linea);
    // Calls `visita` with kind and data of each entry of an accepted text until it returns true; that is the result.
    static bool Recorre(const QString &tag, const std::function<bool(QChar clase, const QString &datos)> &visita);

private:
    void CargaTeclas(cGeneral::Aviso aviso);

    cRegistro &m_registro;
    cGeneral &m_general;
    QStringList m_carpetas;
    bool m_intentada = false;
    bool m_cargada = false;
    std::vector<FilaTeclaLectura> m_filas;
    QString m_tag;
};

}  // namespace ondalis
