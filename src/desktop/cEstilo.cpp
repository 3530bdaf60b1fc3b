#include "desktop/cEstilo.h"

#include <QApplication>
#include <QGroupBox>
#include <QPainter>
#include <QPushButton>
#include <QStyleOption>
#include <algorithm>

#include "settings/pagina/Colores.h"

namespace ondalis {

namespace {

constexpr int kMargen = 14, kHueco = 10;          // logical pixels round a window's contents, and between controls
constexpr int kAltoMinimo = 30, kAltoMarca = 26;  // of what is pressed or typed into; of a check box and a link
constexpr int kAltoFila = 24;                     // of a list's row, WCAG 2.2, 2.5.8
constexpr int kAireBoton = 12, kAireCaja = 10;    // beside a button's caption; over and under a number, together
constexpr int kAsa = 20;                          // a slider's handle
constexpr int kGrosorFoco = 2;
constexpr double kParteIndicador = 0.8;                         // of the letter's height, what is ticked grows with it
constexpr double kContrasteApagado = 3.0, kParteApagado = 0.5;  // of what is disabled
constexpr double kParteMarco = 0.6;  // how far a frame that only groups goes back into the ground
// From here on a palette is one of those for people who need contrast. Black on the toolkit's light grey has 18.3.
constexpr double kContrasteAlto = 19.0;
constexpr double kContrasteReforzado = 7.0;  // WCAG 2.1, 1.4.6

void PintaMarco(QPainter &pintor, const QRect &sitio, const QColor &color, int grosor = 1, bool redondo = false) {
    const double medio = grosor / 2.0;
    const QRectF marco = QRectF(sitio).adjusted(medio, medio, -medio, -medio);
    pintor.save();
    pintor.setRenderHint(QPainter::Antialiasing);
    pintor.setPen(QPen(color, grosor));
    pintor.setBrush(Qt::NoBrush);
    if (redondo)
        pintor.drawEllipse(marco);
    else
        pintor.drawRoundedRect(marco, 2, 2);
    pintor.restore();
}

// The edge of a control; with the focus, the mark of that.
void PintaBorde(QPainter &pintor, const QStyleOption &opcion, const QRect &sitio, bool conFoco, bool redondo = false) {
    QColor color = cEstilo::ColorBorde(opcion.palette);
    if (!(opcion.state & QStyle::State_Enabled))
        color = Mezcla(color, opcion.palette.color(QPalette::Window), kParteApagado);
    if (conFoco)
        PintaMarco(pintor, sitio, cEstilo::ColorFoco(opcion.palette), kGrosorFoco, redondo);
    else
        PintaMarco(pintor, sitio, color, 1, redondo);
}

// Of what only groups: fainter than a control's edge, but where contrast was asked for.
QColor ColorMarco(const QPalette &paleta) {
    const QColor borde = cEstilo::ColorBorde(paleta);
    return cEstilo::ContrasteAlto(paleta) ? borde : Mezcla(borde, paleta.color(QPalette::Window), kParteMarco);
}

// Below its title, which the toolkit's own style puts over the frame.
void PintaGrupo(QPainter &pintor, const QStyleOption &opcion, const QWidget *control, const QStyle &estilo) {
    const auto *grupo = qobject_cast<const QGroupBox *>(control);
    int alto = 0;
    if (grupo && (grupo->isCheckable() || !grupo->title().isEmpty()))
        alto =
            std::max(estilo.pixelMetric(QStyle::PM_IndicatorHeight, &opcion, control), opcion.fontMetrics.height()) + 3;
    PintaMarco(pintor, opcion.rect.adjusted(0, alto, 0, 0), ColorMarco(opcion.palette));
}

int AltoLetra(const QStyleOption *opcion, const QWidget *control) {
    if (opcion) return opcion->fontMetrics.height();
    return control ? control->fontMetrics().height() : QFontMetrics(QApplication::font()).height();
}

bool EsBoton(const QWidget *control) { return qobject_cast<const QPushButton *>(control) != nullptr; }

}  // namespace

bool cEstilo::ContrasteAlto(const QPalette &paleta) {
    return Contraste(paleta.color(QPalette::Active, QPalette::Window),
                     paleta.color(QPalette::Active, QPalette::WindowText)) >= kContrasteAlto;
}

QColor cEstilo::ColorFoco(const QPalette &paleta) {
    return ColorVisible(paleta.color(QPalette::Highlight), paleta.color(QPalette::Window),
                        paleta.color(QPalette::WindowText), kContrasteForma);
}

QColor cEstilo::ColorBorde(const QPalette &paleta) {
    const QColor fondo = paleta.color(QPalette::Window);
    return ColorVisible(fondo, fondo, paleta.color(QPalette::Active, QPalette::WindowText),
                        ContrasteAlto(paleta) ? kContrasteReforzado : kContrasteForma);
}

// Other styles have edges of their own, made for their desktop.
bool cEstilo::PintaElJuego() const {
    return baseStyle()->name().compare(QLatin1String("fusion"), Qt::CaseInsensitive) == 0;
}

// High-contrast desktops leave the toolkit to darken the letters of what is disabled, black on black, and the links of
// dark ones may be those of light ones.
void cEstilo::polish(QPalette &paleta) {
    QProxyStyle::polish(paleta);
    const bool alto = ContrasteAlto(paleta);
    const QColor fondo = paleta.color(QPalette::Active, QPalette::Window);
    for (const auto papel : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        paleta.setColor(
            QPalette::Disabled, papel,
            ColorVisible(paleta.color(QPalette::Disabled, papel), fondo, paleta.color(QPalette::Active, papel),
                         alto ? kContrasteLetra : kContrasteApagado));
    const double minimo = alto ? kContrasteReforzado : kContrasteLetra;
    for (const auto papel : {QPalette::Link, QPalette::LinkVisited}) {
        QColor enlace = paleta.color(QPalette::Active, papel);
        for (const auto suelo : {QPalette::Window, QPalette::Base})
            enlace = ColorVisible(enlace, paleta.color(QPalette::Active, suelo),
                                  paleta.color(QPalette::Active, QPalette::Text), minimo);
        for (const auto grupo : {QPalette::Active, QPalette::Inactive}) paleta.setColor(grupo, papel, enlace);
    }
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
        case PM_SliderThickness:
        case PM_SliderLength:
        case PM_SliderControlThickness: return PintaElJuego() ? std::max(suyo, kAsa) : suyo;
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return PintaElJuego() ? std::max(suyo, static_cast<int>(AltoLetra(opcion, control) * kParteIndicador))
                                  : suyo;
        default: return suyo;
    }
}

// The same on every desktop: captions alone.
int cEstilo::styleHint(StyleHint cual, const QStyleOption *opcion, const QWidget *control,
                       QStyleHintReturn *mas) const {
    if (cual == SH_DialogButtonBox_ButtonsHaveIcons) return 0;
    return QProxyStyle::styleHint(cual, opcion, control, mas);
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
            return {std::max(suyo.width(), tamano.width() + 2 * kAireBoton), std::max(suyo.height(), kAltoMinimo)};
        case CT_ComboBox:
        case CT_LineEdit: return {suyo.width(), std::max(suyo.height(), kAltoMinimo)};
        case CT_SpinBox:  // its inner box has the height of a whole one already
            return {suyo.width(), std::max(opcion ? opcion->fontMetrics.height() + kAireCaja : 0, kAltoMinimo)};
        case CT_CheckBox:
        case CT_RadioButton: return {suyo.width(), std::max(suyo.height(), kAltoMarca)};
        case CT_Slider:  // its handle isn't cut, and has an edge to be taken by
            if (const auto *barra = qstyleoption_cast<const QStyleOptionSlider *>(opcion);
                barra && barra->orientation == Qt::Horizontal)
                return {suyo.width(), std::max(suyo.height(), kAltoMarca)};
            return suyo;
        case CT_ItemViewItem: return {suyo.width(), std::max(suyo.height(), kAltoFila)};
        case CT_HeaderSection: return {suyo.width(), std::max(suyo.height(), kAltoMarca)};
        default: return suyo;
    }
}

// The focus is seen whether the mouse, the keyboard or the program brought it.
void cEstilo::drawPrimitive(PrimitiveElement cual, const QStyleOption *opcion, QPainter *pintor,
                            const QWidget *control) const {
    const bool juego = PintaElJuego();
    if (cual == PE_FrameFocusRect) {
        if (!juego || !EsBoton(control))  // buttons show it at their edge
            PintaMarco(*pintor, opcion->rect, ColorFoco(opcion->palette), kGrosorFoco);
        return;
    }
    if (juego && cual == PE_FrameGroupBox) return PintaGrupo(*pintor, *opcion, control, *this);
    QProxyStyle::drawPrimitive(cual, opcion, pintor, control);
    if (!juego) return;
    const bool conFoco = opcion->state & State_HasFocus;
    switch (cual) {
        case PE_IndicatorCheckBox:
        case PE_IndicatorRadioButton:
            PintaBorde(*pintor, *opcion, opcion->rect, false, cual == PE_IndicatorRadioButton);
            break;
        case PE_FrameLineEdit: PintaBorde(*pintor, *opcion, opcion->rect, conFoco); break;
        case PE_PanelButtonCommand: PintaBorde(*pintor, *opcion, opcion->rect, conFoco && EsBoton(control)); break;
        case PE_PanelMenu:
        case PE_FrameMenu:
        case PE_Frame: PintaMarco(*pintor, opcion->rect, ColorMarco(opcion->palette)); break;
        default: break;
    }
}

void cEstilo::drawControl(ControlElement cual, const QStyleOption *opcion, QPainter *pintor,
                          const QWidget *control) const {
    QProxyStyle::drawControl(cual, opcion, pintor, control);
    // A link has no edge that could show its focus.
    const auto *boton = qstyleoption_cast<const QStyleOptionButton *>(opcion);
    if (cual == CE_PushButton && PintaElJuego() && boton && (boton->features & QStyleOptionButton::Flat) &&
        (boton->state & State_HasFocus))
        PintaMarco(*pintor, opcion->rect, ColorFoco(opcion->palette), kGrosorFoco);
    const auto *entrada = qstyleoption_cast<const QStyleOptionMenuItem *>(opcion);
    if (cual == CE_MenuItem && PintaElJuego() && entrada && entrada->menuItemType == QStyleOptionMenuItem::Separator &&
        entrada->text.isEmpty()) {
        const int y = opcion->rect.center().y();
        pintor->save();
        pintor->setPen(ColorMarco(opcion->palette));
        pintor->drawLine(opcion->rect.left() + kHueco, y, opcion->rect.right() - kHueco, y);
        pintor->restore();
    }
}

void cEstilo::drawComplexControl(ComplexControl cual, const QStyleOptionComplex *opcion, QPainter *pintor,
                                 const QWidget *control) const {
    QProxyStyle::drawComplexControl(cual, opcion, pintor, control);
    if (!PintaElJuego()) return;
    const bool conFoco = opcion->state & State_HasFocus;
    if (cual == CC_Slider) {
        const QRect asa = subControlRect(CC_Slider, opcion, SC_SliderHandle, control);
        const QRect surco = subControlRect(CC_Slider, opcion, SC_SliderGroove, control);
        pintor->save();
        pintor->setClipRegion(QRegion(opcion->rect) - asa);
        PintaBorde(*pintor, *opcion, surco, false);
        pintor->restore();
        PintaBorde(*pintor, *opcion, asa, conFoco);
    } else if (cual == CC_ComboBox || cual == CC_SpinBox) {
        PintaBorde(*pintor, *opcion, opcion->rect, conFoco);
    }
}

}  // namespace ondalis
