#include "desktop/Principal.h"

#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QShortcut>
#include <QStackedLayout>
#include <QVBoxLayout>

#include "desktop/ListaOpciones.h"
#include "settings/pagina/AreaPagina.h"
#include "settings/pagina/PaginaOpciones.h"
#include "settings/pagina/Rotulos.h"

namespace ondalis {

namespace {

constexpr int kAltoPagina = 3105 / kTwipsPorPixel;  // logical pixels, at least
constexpr int kIconoEmpresa = 22;
// Its contents begin level with the list's first label and end above the last button; the rest is for the focus' mark.
constexpr QMargins kMargenesPagina{12, 4, 2, 2};
constexpr int kAirePie = 4;  // logical pixels above the buttons, besides the gap

PaginaOpciones *PaginaDe(QWidget *area) {
    auto *suya = qobject_cast<QScrollArea *>(area);
    return suya ? dynamic_cast<PaginaOpciones *>(suya->widget()) : nullptr;
}

}  // namespace

Principal::Principal(cRegistro &registro, cLog &log, Acciones acciones)
    : QDialog(nullptr, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                           Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint),
      m_acciones(std::move(acciones)),
      m_sitio(registro, log, QStringLiteral("Principal")) {
    setObjectName(QStringLiteral("Principal"));
    setWindowTitle(QStringLiteral("Configuración Ondalis"));
    m_esperaSitio.setSingleShot(true);
    m_esperaSitio.setInterval(kEsperaSitioMs);
    connect(&m_esperaSitio, &QTimer::timeout, this, &Principal::GuardaSitio);

    m_lista = new ListaOpciones(this);
    // A stacked widget of the toolkit's would be announced each time that the focus enters it.
    m_paginas = new QWidget(this);
    m_pila = new QStackedLayout(m_paginas);
    m_aceptar = Boton("Aceptar", QStringLiteral("&Aceptar"), m_acciones.aceptar);
    m_aceptar->setDefault(true);
    m_cancelar = Boton("Cancelar", QStringLiteral("&Cancelar"), m_acciones.cancelar);
    m_ayuda = Boton("Ayuda", QStringLiteral("A&yuda"), [this] { Ayuda_Click(); });
    m_nomEmpresa =
        Boton("NomEmpresa", QString(QLatin1String(Producto::Empresa)).insert(1, QLatin1Char('&')), m_acciones.pagWeb);
    m_nomEmpresa->setFlat(true);
    m_nomEmpresa->setIcon(QApplication::windowIcon());
    m_nomEmpresa->setIconSize({kIconoEmpresa, kIconoEmpresa});
    m_nomEmpresa->setToolTip(QStringLiteral("Visitar web"));
    m_nomEmpresa->setAccessibleName(QStringLiteral("Visitar web"));

    auto *cuerpo = new QHBoxLayout;
    cuerpo->addWidget(m_lista);
    cuerpo->addWidget(m_paginas, 1);
    auto *pie = new QHBoxLayout;
    pie->addWidget(m_nomEmpresa);
    pie->addStretch();
    for (QPushButton *uno : {m_aceptar, m_cancelar, m_ayuda}) pie->addWidget(uno);
    auto *todo = new QVBoxLayout(this);
    todo->addLayout(cuerpo, 1);
    todo->addSpacing(kAirePie);
    todo->addLayout(pie);

    connect(m_lista, &ListaOpciones::Elegida, this, [this](Pagina cual) {
        const auto *nombre = cListaOpciones::Fila(cListaOpciones::Indice(cual)).control;
        if (auto *pagina = findChild<QWidget *>(QLatin1String(nombre)))
            m_pila->setCurrentWidget(pagina->parentWidget()->parentWidget());  // viewport, area
    });
    Atajo(QKeySequence(Qt::CTRL | Qt::Key_Tab), [this] { PasaPagina(1); });
    Atajo(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab), [this] { PasaPagina(-1); });
    Atajo(QKeySequence(Qt::CTRL | Qt::Key_PageDown), [this] { PasaPagina(1); });
    Atajo(QKeySequence(Qt::CTRL | Qt::Key_PageUp), [this] { PasaPagina(-1); });
    Atajo(QKeySequence(Qt::Key_F1), [this] { Ayuda_Click(); });
    OrdenaTabulacion();
}

QPushButton *Principal::Boton(const char *nombre, const QString &rotulo, const std::function<void()> &accion) {
    auto *boton = new QPushButton(rotulo, this);
    boton->setObjectName(QLatin1String(nombre));
    boton->setAccessibleName(SinMarca(rotulo));
    connect(boton, &QPushButton::clicked, this, accion);
    return boton;
}

void Principal::Atajo(const QKeySequence &tecla, const std::function<void()> &accion) {
    auto *atajo = new QShortcut(tecla, this);
    connect(atajo, &QShortcut::activated, this, accion);
}

void Principal::PonPagina(Pagina cual, PaginaOpciones *pagina) {
    Q_ASSERT(pagina->objectName() == QLatin1String(cListaOpciones::Fila(cListaOpciones::Indice(cual)).control));
    pagina->layout()->setContentsMargins(kMargenesPagina);
    m_pila->addWidget(new AreaPagina(pagina, kAltoPagina));
    m_lista->Anade(cual);
    // "General" is selected at first; without it, whatever page came first.
    if (cual == Pagina::General || m_pila->count() == 1) m_lista->Elige(cual);
    OrdenaTabulacion();
}

PaginaOpciones *Principal::PaginaVisible() const { return PaginaDe(m_pila->currentWidget()); }

// What is added to a window comes behind everything else: list, pages and buttons are put in order anew.
void Principal::OrdenaTabulacion() {
    QWidget *ultimo = m_lista;
    for (QWidget *uno = m_lista->nextInFocusChain(); uno != m_lista; uno = uno->nextInFocusChain())
        if (m_paginas->isAncestorOf(uno)) ultimo = uno;
    for (QPushButton *boton : {m_aceptar, m_cancelar, m_ayuda, m_nomEmpresa}) {
        setTabOrder(ultimo, boton);
        ultimo = boton;
    }
}

// The list takes the focus: a screen reader says the name of the new page, and the one left is no longer there.
void Principal::PasaPagina(int sentido) {
    m_lista->setFocus();
    m_lista->Pasa(sentido);
}

void Principal::Ayuda_Click() {
    const QString tema = m_lista->Estado().TemaAyuda();
    if (!tema.isEmpty()) m_acciones.ayuda(winId(), tema);
}

bool Principal::HayModal() const { return QApplication::activeModalWidget() != nullptr; }

void Principal::Muestra() {
    AjustaAPantalla(*this);
    Coloca();
    m_lista->setFocus();
    show();
    TraeAlFrente();
}

// Later on the window stands where it stood; a window manager that is told nothing might place it anew.
void Principal::Coloca() {
    if (m_colocada)
        move(pos());
    else
        move(m_sitio.LeeLugar(size(), Monitores()));
    m_colocada = true;
}

void Principal::TraeAlFrente() {
    if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
    if (m_acciones.alFrente) QTimer::singleShot(0, this, [this] { m_acciones.alFrente(winId()); });
}

void Principal::Oculta() {
    if (m_esperaSitio.isActive()) GuardaSitio();
    // What a page has opened closes with it.
    for (QDialog *suyo : findChildren<QDialog *>())
        if (suyo->isVisible()) suyo->reject();
    hide();
}

void Principal::EnfocaAceptar() {
    m_aceptar->setFocus();
    QCoreApplication::processEvents();
}

void Principal::reject() { m_acciones.cancelar(); }

// By hand, from the window's menu: only the configuration is dismissed, the program stays.
void Principal::closeEvent(QCloseEvent *evento) {
    m_acciones.cancelar();
    evento->accept();
}

void Principal::moveEvent(QMoveEvent *evento) {
    QDialog::moveEvent(evento);
    if (isVisible() && !isMinimized()) m_esperaSitio.start();
}

void Principal::resizeEvent(QResizeEvent *evento) {
    QDialog::resizeEvent(evento);
    if (isVisible() && !isMinimized()) m_esperaSitio.start();
}

void Principal::GuardaSitio() {
    m_esperaSitio.stop();
    m_sitio.GuardaLugar(pos());
}

}  // namespace ondalis
