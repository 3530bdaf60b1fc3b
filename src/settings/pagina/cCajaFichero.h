// The box for a file's name. It refuses `\:*?"<>|` where they are typed, with a beep, and drops them from what is
// pasted or dragged in; "/" separates folders. A name that the program puts there is shown as it is. Entering the box
// selects all of it. Main thread.
#pragma once

#include <QLineEdit>

namespace ondalis {

class cCajaFichero : public QLineEdit {
    Q_OBJECT
public:
    // `nombre`: the control's name, `rotulo`: what a screen reader calls it.
    cCajaFichero(const char *nombre, const QString &rotulo, QWidget *padre = nullptr);

    // Replaces the text; the caret goes to its end.
    void SetFichero(const QString &ruta);
    // Where the name ends in the extension `de`, blind to case, it gets `a` instead (both with their dot). The caret
    // goes to the end in any case.
    void CambiaExtension(const QString &de, const QString &a);

    static bool Rechazado(QChar c);

protected:
    void keyPressEvent(QKeyEvent *evento) override;
    void focusInEvent(QFocusEvent *evento) override;
    void mousePressEvent(QMouseEvent *evento) override;

private:
    void LimpiaLoNuevo(const QString &texto);

    QString m_anterior;  // the text before the present edit
    bool m_entraConRaton = false;
};

}  // namespace ondalis
