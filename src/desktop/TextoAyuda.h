// The help's text. Tab goes through its links, and a screen reader is told of each: the toolkit shows it the text as a
// whole and leaves unsaid which link the keyboard has come to. Main thread.
#pragma once

#include <QTextBrowser>
#include <vector>

namespace ondalis {

// Where a link stands, for a screen reader alone: nothing is painted, and it takes neither the mouse nor the keyboard.
// It counts as focused while the text has the keyboard and its link is chosen there.
class EnlaceAyuda : public QWidget {
    Q_OBJECT
public:
    // `desde`, `hasta`: the link's place in the text, in characters.
    EnlaceAyuda(const QString &rotulo, int desde, int hasta, QTextBrowser &texto);
    bool Enfocado() const;
    int Desde() const { return m_desde; }
    // Puts it where its link is at present.
    void Coloca();

private:
    QTextBrowser &m_texto;
    int m_desde, m_hasta;
};

class TextoAyuda : public QTextBrowser {
    Q_OBJECT
public:
    explicit TextoAyuda(QWidget *padre);

    // Those of the present page, in its order.
    const std::vector<EnlaceAyuda *> &Enlaces() const { return m_enlaces; }

protected:
    bool focusNextPrevChild(bool siguiente) override;

private:
    void RecogeEnlaces();

    std::vector<EnlaceAyuda *> m_enlaces;  // children of the viewport
};

}  // namespace ondalis
