// The looks that all windows share, on top of the desktop's style: room between the controls, targets large enough for
// an unsure hand, a focus that is seen in every palette, and, where the toolkit's own style paints, edges of controls
// that stand out from the ground also on dark and high-contrast desktops. Owned by the application. Main thread.
#pragma once

#include <QProxyStyle>

namespace ondalis {

class cEstilo : public QProxyStyle {
    Q_OBJECT
public:
    // On top of the style that the desktop asks for.
    cEstilo() = default;

    // Whether the palette is one for people who need contrast: then edges and links have the stronger contrast too.
    static bool ContrasteAlto(const QPalette &paleta);
    // Colour of the focus' frame and of a control's edge; both stand out from the window's ground.
    static QColor ColorFoco(const QPalette &paleta);
    static QColor ColorBorde(const QPalette &paleta);

    using QProxyStyle::polish;
    // What is disabled can still be read, and so can links.
    void polish(QPalette &paleta) override;
    int pixelMetric(PixelMetric cual, const QStyleOption *opcion, const QWidget *control) const override;
    int styleHint(StyleHint cual, const QStyleOption *opcion, const QWidget *control,
                  QStyleHintReturn *mas) const override;
    QSize sizeFromContents(ContentsType cual, const QStyleOption *opcion, const QSize &tamano,
                           const QWidget *control) const override;
    void drawPrimitive(PrimitiveElement cual, const QStyleOption *opcion, QPainter *pintor,
                       const QWidget *control) const override;
    void drawControl(ControlElement cual, const QStyleOption *opcion, QPainter *pintor,
                     const QWidget *control) const override;
    void drawComplexControl(ComplexControl cual, const QStyleOptionComplex *opcion, QPainter *pintor,
                            const QWidget *control) const override;

private:
    bool PintaElJuego() const;
};

}  // namespace ondalis
