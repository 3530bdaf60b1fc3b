#include "desktop/VentanaMenu.h"

#include <QAction>
#include <QCloseEvent>
#include <QFrame>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "settings/cRegistro.h"
#include "settings/pagina/AreaPagina.h"

namespace ondalis {

namespace {
constexpr int kAncho = 360;  // logical pixels, at least
}

VentanaMenu::VentanaMenu(QMenu &menu) {
    setObjectName(QStringLiteral("VentanaMenu"));
    setWindowTitle(QLatin1String(Producto::Titulo));
    setAttribute(Qt::WA_ShowWithoutActivating);  // what the user types meanwhile goes where it went
    const QString motivo =
        QStringLiteral("Este escritorio no tiene área de notificación. Aquí está el menú de Ondalis.");
    setAccessibleDescription(motivo);

    auto *todo = new QWidget;
    auto *columna = new QVBoxLayout(todo);
    columna->setContentsMargins(16, 14, 16, 16);
    columna->setSpacing(4);
    auto *texto = new QLabel(motivo);
    texto->setObjectName(QStringLiteral("Motivo"));
    texto->setWordWrap(true);
    columna->addWidget(texto);
    columna->addSpacing(6);
    for (QAction *accion : menu.actions()) {
        if (accion->isSeparator())
            columna->addSpacing(8);
        else
            Anade(*columna, *accion);
    }
    columna->addStretch();
    todo->setMinimumWidth(kAncho);
    auto *ventana = new QVBoxLayout(this);
    ventana->setContentsMargins(0, 0, 0, 0);
    ventana->addWidget(new AreaPagina(todo, 0));
    if (auto *primero = findChild<QPushButton *>()) primero->setFocus();
}

void VentanaMenu::Anade(QVBoxLayout &columna, QAction &accion) {
    auto *boton = new QPushButton;
    boton->setObjectName(accion.objectName());
    boton->setAutoDefault(true);  // Enter presses it, as it does in the menu
    boton->setStyleSheet(QStringLiteral("text-align: left; padding: 6px 10px;"));
    if (accion.menu())
        boton->setMenu(accion.menu());
    else
        connect(boton, &QPushButton::clicked, &accion, &QAction::trigger);
    const auto refleja = [boton, &accion] {
        boton->setText(accion.text());
        boton->setAccessibleName(QString(accion.text()).replace(QLatin1String("&&"), QLatin1String("&")));
        boton->setEnabled(accion.isEnabled());
    };
    refleja();
    connect(&accion, &QAction::changed, boton, refleja);
    columna.addWidget(boton);
}

void VentanaMenu::showEvent(QShowEvent *evento) {
    if (!evento->spontaneous() && !m_mostrada) AjustaAPantalla(*this);
    m_mostrada = true;
    QWidget::showEvent(evento);
}

void VentanaMenu::closeEvent(QCloseEvent *evento) {
    evento->ignore();
    showMinimized();
}

}  // namespace ondalis
