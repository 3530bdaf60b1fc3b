#include "settings/pagina/DialogoOpciones.h"

#include <QHBoxLayout>
#include <QHideEvent>
#include <QPushButton>
#include <QShortcut>
#include <QShowEvent>
#include <QTimer>

#include "settings/pagina/AreaPagina.h"
#include "settings/pagina/EnlaceControles.h"
#include "settings/pagina/Rotulos.h"

namespace ondalis {

namespace {
constexpr int kAirePie = 8;       // logical pixels above the buttons, besides the gap
constexpr int kAnchoMarco = 110;  // of a window's frame beside its title: icon and buttons
}  // namespace

DialogoOpciones::DialogoOpciones(const char *nombre, const QString &titulo, const QString &tema,
                                 TablaOpciones *opciones, Colaboradores colaboradores)
    // On top before the first show: later it would make another window.
    : QDialog(colaboradores.duena, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                       Qt::WindowCloseButtonHint | Qt::WindowStaysOnTopHint),
      c(std::move(colaboradores)),
      m_sitio(c.registro, c.log, QLatin1String(nombre)),
      m_tema(tema),
      m_opciones(opciones) {
    setObjectName(QLatin1String(nombre));
    setWindowTitle(titulo);
    setModal(true);
    auto *contenido = new QWidget;
    m_cuerpo = new QVBoxLayout(contenido);
    m_cuerpo->setContentsMargins(0, 0, 0, 0);
    auto *pie = new QHBoxLayout;
    pie->addStretch();
    m_aceptar = Boton("Aceptar", QStringLiteral("&Aceptar"), [this] { Aceptar_Click(); });
    m_aceptar->setDefault(true);
    m_cancelar = Boton("Cancelar", QStringLiteral("&Cancelar"), [this] { reject(); });
    m_ayuda = Boton("Ayuda", QStringLiteral("A&yuda"), [this] { Ayuda_Click(); });
    for (QPushButton *uno : {m_aceptar, m_cancelar, m_ayuda}) pie->addWidget(uno);
    auto *todo = new QVBoxLayout(this);
    auto *area = new AreaPagina(contenido, 0);
    area->setMinimumWidth(fontMetrics().horizontalAdvance(titulo) + kAnchoMarco);
    todo->addWidget(area, 1);
    todo->addSpacing(kAirePie);
    todo->addLayout(pie);
    auto *atajo = new QShortcut(QKeySequence(Qt::Key_F1), this);
    connect(atajo, &QShortcut::activated, this, [this] { Ayuda_Click(); });
}

QPushButton *DialogoOpciones::Boton(const char *nombre, const QString &rotulo, const std::function<void()> &accion) {
    auto *boton = new QPushButton(rotulo, this);
    boton->setObjectName(QLatin1String(nombre));
    boton->setAccessibleName(SinMarca(rotulo));
    connect(boton, &QPushButton::clicked, this, accion);
    return boton;
}

void DialogoOpciones::Prepara() {
    QWidget *contenido = m_cuerpo->parentWidget();
    QWidget *ultimo = nullptr;
    for (QWidget *uno = nextInFocusChain(); uno != this; uno = uno->nextInFocusChain())
        if (contenido->isAncestorOf(uno)) ultimo = uno;
    for (QPushButton *boton : {m_aceptar, m_cancelar, m_ayuda}) {
        if (ultimo) setTabOrder(ultimo, boton);
        ultimo = boton;
    }
    EstableceValores();
}

void DialogoOpciones::Init() {
    if (!isVisible()) {
        EstableceValores();
        AjustaAPantalla(*this);
        Coloca();
        show();
    }
    TraeAlFrente();
}

// Later on it stands where it stood; a window manager that is told nothing might place it anew.
void DialogoOpciones::Coloca() {
    move(m_colocada ? pos() : m_sitio.LeeLugar(size(), Monitores()));
    m_colocada = true;
}

void DialogoOpciones::TraeAlFrente() {
    raise();
    activateWindow();
    if (c.alFrente) QTimer::singleShot(0, this, [this] { c.alFrente(winId()); });
}

void DialogoOpciones::SetTags() {
    if (m_opciones) TomaTags(*this, *m_opciones);
}

void DialogoOpciones::EstableceValores() {
    if (m_opciones) MuestraTags(*this, *m_opciones);
    Habilita();
}

void DialogoOpciones::Aceptar_Click() {
    TerminaEdicionDe(*this);
    if (!PuedeAceptar()) return;
    SetTags();
    Salva();
    accept();
}

void DialogoOpciones::Ayuda_Click() {
    if (c.ayuda) c.ayuda(winId(), m_tema);
}

// The first control, not the default button: a screen reader says what there is to be chosen.
void DialogoOpciones::showEvent(QShowEvent *evento) {
    QDialog::showEvent(evento);
    if (evento->spontaneous()) return;
    for (QWidget *uno = nextInFocusChain(); uno != this; uno = uno->nextInFocusChain()) {
        if (!m_cuerpo->parentWidget()->isAncestorOf(uno)) continue;
        if (!(uno->focusPolicy() & Qt::TabFocus) || !uno->isEnabled() || !uno->isVisibleTo(this)) continue;
        uno->setFocus(Qt::TabFocusReason);
        return;
    }
}

// Kept when it goes, not only at the program's end: a program that is killed has its place all the same.
void DialogoOpciones::hideEvent(QHideEvent *evento) {
    QDialog::hideEvent(evento);
    if (!evento->spontaneous()) m_sitio.GuardaLugar(pos());
}

}  // namespace ondalis
