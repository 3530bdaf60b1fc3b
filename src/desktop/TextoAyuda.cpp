#include "desktop/TextoAyuda.h"

#include <QAccessibleWidget>
#include <QTextBlock>
#include <algorithm>

namespace ondalis {

namespace {

class AccesibleEnlace : public QAccessibleWidget {
public:
    explicit AccesibleEnlace(EnlaceAyuda *enlace) : QAccessibleWidget(enlace, QAccessible::Link) {}

    QAccessible::State state() const override {
        QAccessible::State estado = QAccessibleWidget::state();
        estado.focusable = true;
        estado.linked = true;
        estado.focused = static_cast<const EnlaceAyuda *>(widget())->Enfocado();
        return estado;
    }
};

QAccessibleInterface *Fabrica(const QString &, QObject *objeto) {
    auto *enlace = qobject_cast<EnlaceAyuda *>(objeto);
    return enlace ? new AccesibleEnlace(enlace) : nullptr;
}

}  // namespace

EnlaceAyuda::EnlaceAyuda(const QString &rotulo, int desde, int hasta, QTextBrowser &texto)
    : QWidget(texto.viewport()), m_texto(texto), m_desde(desde), m_hasta(hasta) {
    setAccessibleName(rotulo);
    setFocusPolicy(Qt::NoFocus);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setAttribute(Qt::WA_NoSystemBackground);
}

bool EnlaceAyuda::Enfocado() const {
    const QTextCursor cursor = m_texto.textCursor();
    return m_texto.hasFocus() && cursor.hasSelection() && cursor.selectionStart() == m_desde;
}

void EnlaceAyuda::Coloca() {
    QTextCursor cursor(m_texto.document());
    cursor.setPosition(m_desde);
    const QRect principio = m_texto.cursorRect(cursor);
    cursor.setPosition(m_hasta);
    setGeometry(principio.united(m_texto.cursorRect(cursor)));
}

TextoAyuda::TextoAyuda(QWidget *padre) : QTextBrowser(padre) {
    static const bool instalada = [] {
        QAccessible::installFactory(&Fabrica);
        return true;
    }();
    Q_UNUSED(instalada)
    connect(this, &QTextBrowser::sourceChanged, this, &TextoAyuda::RecogeEnlaces);
}

void TextoAyuda::RecogeEnlaces() {
    for (EnlaceAyuda *uno : m_enlaces) uno->deleteLater();
    m_enlaces.clear();
    QString enlace, rotulo;
    int desde = 0, hasta = 0;
    const auto cierra = [&] {
        if (!rotulo.isEmpty()) m_enlaces.push_back(new EnlaceAyuda(rotulo, desde, hasta, *this));
        enlace.clear();
        rotulo.clear();
    };
    for (QTextBlock bloque = document()->begin(); bloque.isValid(); bloque = bloque.next()) {
        for (auto i = bloque.begin(); !i.atEnd(); ++i) {
            const QTextFragment trozo = i.fragment();
            const QString suyo = trozo.charFormat().anchorHref();
            if (suyo.isEmpty() || suyo != enlace) cierra();
            if (suyo.isEmpty()) continue;
            if (rotulo.isEmpty()) desde = trozo.position();
            enlace = suyo;
            rotulo += trozo.text();
            hasta = trozo.position() + trozo.length();
        }
        cierra();
    }
    for (EnlaceAyuda *uno : m_enlaces) {
        uno->Coloca();
        uno->show();
    }
}

bool TextoAyuda::focusNextPrevChild(bool siguiente) {
    if (!QTextBrowser::focusNextPrevChild(siguiente)) return false;
    const auto suyo = std::ranges::find_if(m_enlaces, &EnlaceAyuda::Enfocado);
    if (suyo == m_enlaces.end()) return true;
    (*suyo)->Coloca();
    QAccessibleEvent foco(*suyo, QAccessible::Focus);
    QAccessible::updateAccessibility(&foco);
    return true;
}

}  // namespace ondalis
