#include "desktop/VentanaAyuda.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QResource>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <QVBoxLayout>

#include "desktop/TextoAyuda.h"
#include "settings/pagina/Rotulos.h"

namespace ondalis {

namespace {
const QString kRaiz = QStringLiteral("/libroayuda");  // where the help file is hung up among the resources
const QString kPaginas = QStringLiteral("qrc:/libroayuda/");
constexpr QSize kTamano{760, 560}, kHolgura{20, 60};  // the second: for the frame and the desktop's panels
constexpr int kMargen = 14, kAumento = 2;             // points above the desktop's own letter

// Below a window that stays on top its help could not be read.
Qt::WindowFlags Banderas(const QWidget *duena) {
    const bool encima = duena && (duena->window()->windowFlags() & Qt::WindowStaysOnTopHint);
    return encima ? Qt::Window | Qt::WindowStaysOnTopHint : Qt::WindowFlags(Qt::Window);
}
}  // namespace

VentanaAyuda::VentanaAyuda(QWidget *duena) : QWidget(duena, Banderas(duena)) {
    setObjectName(QStringLiteral("VentanaAyuda"));
    setAttribute(Qt::WA_DeleteOnClose);
    resize(kTamano.boundedTo(screen()->availableSize() - kHolgura));
    m_texto = new TextoAyuda(this);
    m_texto->setObjectName(QStringLiteral("TextoAyuda"));
    m_texto->setAccessibleName(QStringLiteral("Texto de la ayuda"));
    m_texto->setTextInteractionFlags(Qt::TextBrowserInteraction | Qt::TextSelectableByKeyboard);
    m_texto->setOpenLinks(true);
    m_texto->document()->setDocumentMargin(kMargen);
    m_texto->zoomIn(kAumento);
    for (const auto &[tecla, puntos] : {std::pair("Ctrl++", 1), std::pair("Ctrl+-", -1)}) {
        auto *atajo = new QShortcut(QKeySequence(QLatin1String(tecla)), this);
        connect(atajo, &QShortcut::activated, m_texto, [this, n = puntos] { m_texto->zoomIn(n); });
    }
    auto *inicio = Boton("Indice", QStringLiteral("Í&ndice"), QStringLiteral("Alt+Home"));
    m_atras = Boton("Atras", QStringLiteral("&Atrás"), QStringLiteral("Alt+Left"));
    m_adelante = Boton("Adelante", QStringLiteral("A&delante"), QStringLiteral("Alt+Right"));
    auto *cerrar = Boton("Cerrar", QStringLiteral("&Cerrar"), QStringLiteral("Esc"));
    m_atras->setEnabled(false);
    m_adelante->setEnabled(false);
    connect(inicio, &QPushButton::clicked, this, [this] { VeA(QString()); });
    connect(m_atras, &QPushButton::clicked, m_texto, &QTextBrowser::backward);
    connect(m_adelante, &QPushButton::clicked, m_texto, &QTextBrowser::forward);
    connect(cerrar, &QPushButton::clicked, this, &QWidget::close);
    connect(m_texto, &QTextBrowser::backwardAvailable, m_atras, &QWidget::setEnabled);
    connect(m_texto, &QTextBrowser::forwardAvailable, m_adelante, &QWidget::setEnabled);
    connect(m_texto, &QTextBrowser::sourceChanged, this, [this] { MuestraTitulo(); });

    auto *botones = new QHBoxLayout;
    for (QPushButton *uno : {inicio, m_atras, m_adelante}) botones->addWidget(uno);
    botones->addStretch();
    botones->addWidget(cerrar);
    auto *todo = new QVBoxLayout(this);
    todo->addLayout(botones);
    todo->addWidget(m_texto);
    m_texto->setFocus();
}

QPushButton *VentanaAyuda::Boton(const char *nombre, const QString &rotulo, const QString &tecla) {
    auto *boton = new QPushButton(rotulo, this);
    boton->setObjectName(QLatin1String(nombre));
    boton->setAccessibleName(SinMarca(rotulo));
    boton->setToolTip(tecla == QLatin1String("Esc") ? tecla : QKeySequence(tecla).toString(QKeySequence::NativeText));
    boton->setAutoDefault(true);
    if (tecla != QLatin1String("Esc")) {
        auto *atajo = new QShortcut(QKeySequence(tecla), this);
        connect(atajo, &QShortcut::activated, boton, &QPushButton::click);
    }
    return boton;
}

void VentanaAyuda::keyPressEvent(QKeyEvent *evento) {
    if (evento->key() == Qt::Key_Escape) {
        close();
        return;
    }
    QWidget::keyPressEvent(evento);
}

bool VentanaAyuda::VeA(const QString &tema) {
    const QString pagina = tema.isEmpty() ? QLatin1String(Inicio) : tema;
    const QString fichero = pagina.section(QLatin1Char('#'), 0, 0);
    if (!QResource(kRaiz + QLatin1Char('/') + fichero).isValid()) return false;
    m_texto->setSource(QUrl(kPaginas + pagina));
    // The cursor goes where the eye is taken: a screen reader begins to read there.
    const QString ancla = pagina.section(QLatin1Char('#'), 1);
    if (ancla.isEmpty()) m_texto->moveCursor(QTextCursor::Start);
    m_texto->setFocus();
    return true;
}

QString VentanaAyuda::Tema() const { return m_texto->source().toString().mid(kPaginas.size()); }

void VentanaAyuda::MuestraTitulo() {
    const QString titulo = m_texto->documentTitle();
    setWindowTitle(titulo.isEmpty() ? QStringLiteral("Ayuda de Ondalis")
                                    : titulo + QStringLiteral(" - Ayuda de Ondalis"));
}

cVisorAyuda::~cVisorAyuda() {
    Cierra();
    if (!m_registrado.isEmpty()) QResource::unregisterResource(m_registrado, kRaiz);
}

void cVisorAyuda::Cierra() {
    delete m_ventana;
    m_ventana.clear();  // it is empty by now, but the static analyser doesn't know
}

Fallo cVisorAyuda::Muestra(const QString &fichero, std::uintptr_t ventana, const QString &tema) {
    if (m_registrado != fichero) {
        Cierra();
        if (!m_registrado.isEmpty()) QResource::unregisterResource(m_registrado, kRaiz);
        m_registrado.clear();
        if (!QResource::registerResource(fichero, kRaiz)) return Fallo::De(Fallo::ErrorDeAcceso);
        m_registrado = fichero;
    }
    // A modal dialog lets nothing be used but its own windows.
    QWidget *duena = QApplication::activeModalWidget();
    if (!duena && ventana != 0) duena = QWidget::find(static_cast<WId>(ventana));
    if (m_ventana && m_ventana->parentWidget() != duena) Cierra();
    if (!m_ventana) m_ventana = new VentanaAyuda(duena);
    if (!m_ventana->VeA(tema)) {
        if (!m_ventana->isVisible()) Cierra();
        return Fallo::De(Fallo::FicheroNoEncontrado);
    }
    m_ventana->showNormal();
    m_ventana->raise();
    m_ventana->activateWindow();
    if (m_alFrente) QTimer::singleShot(0, m_ventana, [this] { m_alFrente(m_ventana->winId()); });
    return {};
}

}  // namespace ondalis
