#include "desktop/LineaComandos.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "reader/Arranque.h"
#include "settings/cRegistro.h"

namespace ondalis {

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
