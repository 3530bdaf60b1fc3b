#include "desktop/LineaComandos.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>
#include <algorithm>

#include "reader/Arranque.h"
#include "settings/cRegistro.h"

namespace ondalis {

namespace {
constexpr int kFuera = 60;  // logical pixels of the screen's width that margins and frame take
}

LineaComandos::LineaComandos() {
    const QStringList textos = TextosLineaComandos();
    setObjectName(QStringLiteral("LineaComandos"));
    setWindowTitle(QLatin1String(Producto::Titulo));
    setWindowFlag(Qt::WindowStaysOnTopHint);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    // A screen reader says it all when the window comes.
    setAccessibleDescription(textos.join(QLatin1Char('\n')));

    auto *columna = new QVBoxLayout(this);
    columna->setContentsMargins(18, 16, 18, 14);
    columna->setSpacing(8);
    for (qsizetype i = 0; i < textos.size(); ++i) {
        auto *linea = new QLabel(textos[i]);
        linea->setObjectName(QStringLiteral("Linea%1").arg(i + 1));
        linea->setAccessibleName(textos[i]);
        linea->setTextFormat(Qt::PlainText);
        // Broken only where the screen has no room for it.
        linea->setMinimumWidth(std::min(linea->sizeHint().width(), screen()->availableSize().width() - kFuera));
        linea->setWordWrap(true);
        linea->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
        linea->setFocusPolicy(Qt::StrongFocus);  // each line can be reached, read and copied without a mouse
        columna->addWidget(linea);
    }
    auto *aceptar = new QPushButton(QStringLiteral("Aceptar"));
    aceptar->setObjectName(QStringLiteral("Aceptar"));
    aceptar->setAccessibleName(aceptar->text());
    aceptar->setDefault(true);
    connect(aceptar, &QPushButton::clicked, this, &QDialog::accept);
    columna->addSpacing(6);
    columna->addWidget(aceptar, 0, Qt::AlignRight);
    aceptar->setFocus();
}

}  // namespace ondalis
