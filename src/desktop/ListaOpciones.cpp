#include "desktop/ListaOpciones.h"

#include <QAccessible>
#include <QFocusEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>
#include <QStyledItemDelegate>
#include <QTimer>

#include "settings/SitioVentana.h"

namespace ondalis {

namespace {

constexpr int kIndice = Qt::UserRole;                 // of the label, as the state counts
constexpr int kAncho = 1590 / kTwipsPorPixel;         // at least
constexpr int kAltoMarca = 4, kHueco = 8, kAire = 6;  // logical pixels; the last one over and under a label
constexpr int kFondoClaro = 128, kTextoOscuro = 128;

// Blue is in the high byte.
QColor DeDecimal(int color) { return QColor(color & 0xFF, (color >> 8) & 0xFF, (color >> 16) & 0xFF); }

class Pintor : public QStyledItemDelegate {
public:
    explicit Pintor(ListaOpciones &lista) : QStyledItemDelegate(&lista), m_lista(lista) {}

    // The selected one is bold: all get the room for it.
    QSize sizeHint(const QStyleOptionViewItem &opcion, const QModelIndex &cual) const override {
        const QFontMetrics letra(Negrita(opcion.font));
        return {letra.horizontalAdvance(cual.data().toString()) + 2 * kHueco + kAltoMarca,
                letra.height() + 2 * kAire + kAltoMarca};
    }

    void paint(QPainter *pintor, const QStyleOptionViewItem &opcion, const QModelIndex &cual) const override {
        const int indice = cual.data(kIndice).toInt();
        const auto marca = m_lista.Estado().MarcaOpc(indice);
        const QRect sitio = opcion.rect;
        pintor->save();
        pintor->fillRect(sitio, opcion.palette.base());
        pintor->fillRect(sitio.adjusted(kHueco / 2, sitio.height() - kAltoMarca, -kHueco / 2, 0), m_lista.Color(marca));
        pintor->setFont(marca == cListaOpciones::Marca::Elegida ? Negrita(opcion.font) : opcion.font);
        pintor->setPen(m_lista.Color(m_lista.Estado().OpcMain(indice)));
        pintor->drawText(sitio.adjusted(kHueco, 0, -kHueco, -kAltoMarca), Qt::AlignVCenter | Qt::AlignLeft,
                         cual.data().toString());
        if (opcion.state & QStyle::State_HasFocus) {
            QStyleOptionFocusRect foco;
            foco.QStyleOption::operator=(opcion);
            foco.rect = sitio.adjusted(0, 0, 0, -kAltoMarca - 1);
            m_lista.style()->drawPrimitive(QStyle::PE_FrameFocusRect, &foco, pintor, &m_lista);
        }
        pintor->restore();
    }

private:
    static QFont Negrita(QFont letra) {
        letra.setBold(true);
        return letra;
    }
    ListaOpciones &m_lista;
};

}  // namespace

ListaOpciones::ListaOpciones(QWidget *padre) : QListWidget(padre) {
    setObjectName(QStringLiteral("OpcMain"));
    setAccessibleName(QStringLiteral("Opciones"));
    setItemDelegate(new Pintor(*this));
    setMouseTracking(true);
    setSpacing(2);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(this, &QListWidget::currentRowChanged, this, &ListaOpciones::OpcMain_Click);
}

void ListaOpciones::Anade(Pagina pagina) {
    const auto paginaDe = [this](int fila) { return cListaOpciones::Fila(item(fila)->data(kIndice).toInt()).pagina; };
    int fila = 0;
    while (fila < count() && paginaDe(fila) < pagina) ++fila;
    if (fila < count() && paginaDe(fila) == pagina) return;
    const int indice = cListaOpciones::Indice(pagina);
    auto *rotulo = new QListWidgetItem(QString::fromUtf8(cListaOpciones::Fila(indice).rotulo));
    rotulo->setData(kIndice, indice);
    {
        const QSignalBlocker callada(this);  // a list gives its first entry the cursor by itself
        insertItem(fila, rotulo);
    }
    updateGeometry();
}

bool ListaOpciones::Elige(Pagina pagina) {
    const int indice = cListaOpciones::Indice(pagina);
    for (int fila = 0; fila < count(); ++fila) {
        if (item(fila)->data(kIndice).toInt() != indice) continue;
        if (fila == currentRow())
            OpcMain_Click(fila);
        else
            setCurrentRow(fila);
        return true;
    }
    return false;
}

void ListaOpciones::Pasa(int sentido) {
    if (count() > 0) setCurrentRow((currentRow() + sentido + count()) % count());
}

void ListaOpciones::OpcMain_Click(int fila) {
    if (fila < 0) return;
    const int indice = item(fila)->data(kIndice).toInt();
    m_estado.OpcMain_Click(indice);
    viewport()->update();
    emit Elegida(cListaOpciones::Fila(indice).pagina);
}

bool ListaOpciones::viewportEvent(QEvent *evento) {
    if (evento->type() == QEvent::MouseMove) {
        const QListWidgetItem *rotulo = itemAt(static_cast<QMouseEvent *>(evento)->position().toPoint());
        if (rotulo)
            m_estado.OpcMain_MouseMove(rotulo->data(kIndice).toInt());
        else
            m_estado.ImgFondo_MouseMove();
        viewport()->update();
    } else if (evento->type() == QEvent::Leave) {
        m_estado.ImgFondo_MouseMove();
        viewport()->update();
    }
    return QListWidget::viewportEvent(evento);
}

// The toolkit tells a screen reader of the list only, behind this event: which page is selected would stay unsaid.
void ListaOpciones::focusInEvent(QFocusEvent *evento) {
    QListWidget::focusInEvent(evento);
    if (!QAccessible::isActive()) return;
    QTimer::singleShot(0, this, [this] {
        if (!hasFocus() || currentRow() < 0) return;
        QAccessibleEvent foco(this, QAccessible::Focus);
        foco.setChild(currentRow());
        QAccessible::updateAccessibility(&foco);
    });
}

void ListaOpciones::changeEvent(QEvent *evento) {
    QListWidget::changeEvent(evento);
    if (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange) updateGeometry();
}

// The given colours are made for dark letters on white.
bool ListaOpciones::ColoresPropios() const {
    return palette().base().color().lightness() >= kFondoClaro && palette().text().color().lightness() < kTextoOscuro;
}

QColor ListaOpciones::Color(cListaOpciones::Marca marca) const {
    if (marca == cListaOpciones::Marca::Reposo) return palette().base().color();
    if (ColoresPropios()) return DeDecimal(static_cast<int>(marca));
    return marca == cListaOpciones::Marca::Elegida ? palette().highlight().color() : palette().text().color();
}

QColor ListaOpciones::Color(cListaOpciones::Texto texto) const {
    return ColoresPropios() ? DeDecimal(static_cast<int>(texto)) : palette().text().color();
}

QSize ListaOpciones::sizeHint() const {
    const int marco = 2 * frameWidth();
    int alto = marco;
    for (int fila = 0; fila < count(); ++fila) alto += sizeHintForRow(fila) + 2 * spacing();
    return {std::max(kAncho, sizeHintForColumn(0) + 2 * spacing() + marco), alto};
}

}  // namespace ondalis
