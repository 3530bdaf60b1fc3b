#include "desktop/cEstilo.h"

#include <QPainter>
#include <QStyleOption>
#include <algorithm>

#include "settings/pagina/Colores.h"

namespace ondalis {

namespace {

constexpr int kMargen = 14, kHueco = 10;          // logical pixels round a window's contents, and between controls
constexpr int kAltoMinimo = 30, kAltoMarca = 26;  // of what is pressed or typed into; of a check box and a link
constexpr int kGrosorFoco = 2;
constexpr double kContrasteApagado = 2.2, kParteApagado = 0.7;  // of what is disabled
constexpr double kContrasteLiso = 1.1;  // below it a field can't be told from the window that it lies on

void PintaBorde(QPainter &pintor, const QStyleOption &opcion, const QRect &sitio, bool redondo) {
    const bool vale = opcion.state & QStyle::State_Enabled;
    QColor color = cEstilo::ColorBorde(opcion.palette);
    if (!vale) color = Mezcla(opcion.palette.color(QPalette::Window), color, kParteApagado);
    pintor.save();
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.setPen(QPen(color, 1));
    pintor.setBrush(Qt::NoBrush);
    const QRectF marco = QRectF(sitio).adjusted(0.5, 0.5, -0.5, -0.5);
    if (redondo)
        pintor.drawEllipse(marco);
    else
        pintor.drawRoundedRect(marco, 2, 2);
    pintor.restore();
}

}  // namespace

QColor cEstilo::ColorFoco(const QPalette &paleta) {
    return ColorVisible(paleta.color(QPalette::Highlight), paleta.color(QPalette::Window),
                        paleta.color(QPalette::WindowText), kContrasteForma);
}

QColor cEstilo::ColorBorde(const QPalette &paleta) {
    const QColor fondo = paleta.color(QPalette::Window);
    return ColorVisible(fondo, fondo, paleta.color(QPalette::WindowText), kContrasteForma);
}

// Other styles have edges of their own, made for their desktop.
bool cEstilo::PintaElJuego() const {
    return baseStyle()->name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0;
}

// High-contrast desktops leave the toolkit to darken the letters of what is disabled: black on black.
void cEstilo::polish(QPalette &paleta) {
    QProxyStyle::polish(paleta);
    const QColor fondo = paleta.color(QPalette::Active, QPalette::Window);
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        paleta.setColor(QPalette::Disabled, papel,
                        ColorVisible(paleta.color(QPalette::Disabled, papel), fondo,
                                     paleta.color(QPalette::Active, papel), kContrasteApagado));
}

int cEstilo::pixelMetric(PixelMetric cual, const QStyleOption *opcion, const QWidget *control) const {
    const int suyo = QProxyStyle::pixelMetric(cual, opcion, control);
    switch (cual) {
        case PM_LayoutLeftMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutBottomMargin: return std::max(suyo, kMargen);
        case PM_LayoutHorizontalSpacing:
        case PM_LayoutVerticalSpacing: return suyo < 0 ? suyo : std::max(suyo, kHueco);
        default: return suyo;
    }
}

QSize cEstilo::sizeFromContents(ContentsType cual, const QStyleOption *opcion, const QSize &tamano,
                                const QWidget *control) const {
    const QSize suyo = QProxyStyle::sizeFromContents(cual, opcion, tamano, control);
    switch (cual) {
        case CT_PushButton:
            // A link stands in a row with check boxes.
            if (const auto *boton = qstyleoption_cast<const QStyleOptionButton *>(opcion);
                boton && (boton->features & QStyleOptionButton::Flat))
                return {suyo.width(), std::max(tamano.height() + 4, kAltoMarca)};
            [[fallthrough]];
        case CT_ComboBox:
        case CT_LineEdit:
        case CT_SpinBox: return {suyo.width(), std::max(suyo.height(), kAltoMinimo)};
        case CT_CheckBox:
        case CT_RadioButton: return {suyo.width(), std::max(suyo.height(), kAltoMarca)};
        default: return suyo;
    }
}

// The focus is seen whether the mouse or the keyboard brought it.
void cEstilo::drawPrimitive(PrimitiveElement cual, const QStyleOption *opcion, QPainter *pintor,
                            const QWidget *control) const {
    if (cual == PE_FrameFocusRect) {
        pintor->save();
        pintor->setRenderHint(QPainter::Antialiasing);
        pintor->setPen(QPen(ColorFoco(opcion->palette), kGrosorFoco));
        pintor->setBrush(Qt::NoBrush);
        pintor->drawRoundedRect(QRectF(opcion->rect).adjusted(1, 1, -1, -1), 2, 2);
        pintor->restore();
        return;
    }
    QProxyStyle::drawPrimitive(cual, opcion, pintor, control);
    if (!PintaElJuego()) return;
    const bool conFoco = opcion->state & State_HasFocus;
    if (cual == PE_IndicatorCheckBox || cual == PE_IndicatorRadioButton)
        PintaBorde(*pintor, *opcion, opcion->rect, cual == PE_IndicatorRadioButton);
    else if ((cual == PE_FrameLineEdit || cual == PE_PanelButtonCommand) && !conFoco)
        PintaBorde(*pintor, *opcion, opcion->rect, false);
    else if ((cual == PE_Frame || cual == PE_FrameGroupBox) &&
             Contraste(opcion->palette.color(QPalette::Base), opcion->palette.color(QPalette::Window)) < kContrasteLiso)
        PintaBorde(*pintor, *opcion, opcion->rect, false);
}

void cEstilo::drawComplexControl(ComplexControl cual, const QStyleOptionComplex *opcion, QPainter *pintor,
                                 const QWidget *control) const {
    QProxyStyle::drawComplexControl(cual, opcion, pintor, control);
    if (!PintaElJuego()) return;
    const bool conFoco = opcion->state & State_HasFocus;
    if (cual == CC_Slider)
        PintaBorde(*pintor, *opcion, subControlRect(CC_Slider, opcion, SC_SliderHandle, control), false);
    else if ((cual == CC_ComboBox || cual == CC_SpinBox) && !conFoco)
        PintaBorde(*pintor, *opcion, opcion->rect, false);
}

}  // namespace ondalis
