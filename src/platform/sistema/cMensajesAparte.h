// Message boxes of a process that has no window system of its own: each is shown by another process, which gets the
// text on its standard input and tells the answer by its exit code. Where there is no desktop, or the other process
// can't show a box, the text goes to standard error and the answer is No. Owned by main. Main thread.
#pragma once

#include <QString>
#include <functional>

#include "settings/Mensajes.h"

class QProcess;

namespace ondalis {

class cMensajesAparte : public Mensajes {
public:
    // What the other process is told: this first argument, the kind of box, the title. No text for people begins so.
    static constexpr const char *Argumento = "--ondalis-caja";
    static constexpr const char *Aviso = "aviso";
    static constexpr const char *PreguntaSi = "pregunta-si";  // Sí is the default button
    static constexpr const char *PreguntaNo = "pregunta-no";
    static constexpr int CodigoSi = 10;  // Sí or Aceptar; unlike what a program ends with that fails
    static constexpr int CodigoNo = 11;

    // `programa`: absolute path. `hayPantalla`: a box can be shown.
    cMensajesAparte(QString programa, std::function<bool()> hayPantalla);

    bool Muestra(const QString &texto, bool pregunta, bool defectoSi, const QString &titulo) override;
    // Closes the open box as if answered with No; later ones are not shown. From an event that comes in meanwhile.
    void Cierra();

private:
    int Pregunta(const QString &texto, const char *clase, const QString &titulo);

    QString m_programa;
    std::function<bool()> m_hayPantalla;
    QProcess *m_proceso = nullptr;
    bool m_cerrado = false;
};

}  // namespace ondalis
