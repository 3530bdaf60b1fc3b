// What keeps a window usable on a small screen or with a large letter: its contents in full size where there is room,
// else scrolled. Main thread.
#pragma once

#include <QRect>
#include <QScrollArea>
#include <vector>

namespace ondalis {

// Contents that want their full size, and at least `altoMinimo` logical pixels of height; smaller they scroll. It takes
// no focus itself: what the keyboard reaches in it scrolls into view.
class AreaPagina : public QScrollArea {
public:
    // Takes `pagina` over.
    AreaPagina(QWidget *pagina, int altoMinimo);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

private:
    int m_altoMinimo;
};

// The window in the full size of its contents, as far as its screen goes; where a side is bounded the other gets room
// for a scroll bar.
void AjustaAPantalla(QWidget &ventana);
// The monitors' places, in logical pixels.
std::vector<QRect> Monitores();

}  // namespace ondalis
