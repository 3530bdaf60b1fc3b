#include "keys/TeclasLeeTeclado.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QVBoxLayout>

namespace ondalis {

namespace {
constexpr int kAnchoLista = 240, kAltoLista = 220;  // logical pixels, at least
}

TeclasLeeTeclado::TeclasLeeTeclado(cTeclasLeeTeclado &teclas, cRegistro &registro, cLog &log,
                                   std::function<void(std::uintptr_t, const QString &)> ayuda, QWidget *dueno)
    : QDialog(dueno, Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint |
                         Qt::WindowStaysOnTopHint),
      m_teclas(teclas),
      m_sitio(registro, log, QStringLiteral("TeclasLeeTeclado")) {
    setObjectName(QStringLiteral("TeclasLeeTeclado"));
    setWindowTitle(QStringLiteral("Teclas que inician la lectura"));
    setModal(true);
    m_lista = new QListWidget(this);
    m_lista->setObjectName(QStringLiteral("ListaTeclas"));
    m_lista->setAccessibleName(windowTitle());
    m_lista->setMinimumSize(kAnchoLista, kAltoLista);

    auto *columna = new QVBoxLayout(this);
    columna->addWidget(m_lista, 1);
    auto *pie = new QHBoxLayout;
    columna->addLayout(pie);
    pie->addStretch();
    const auto boton = [this, pie](const char *nombre, const QString &rotulo, const std::function<void()> &accion) {
        auto *uno = new QPushButton(rotulo, this);
        uno->setObjectName(QLatin1String(nombre));
        uno->setAccessibleName(rotulo);
        uno->setAutoDefault(false);
        connect(uno, &QPushButton::clicked, this, accion);
        pie->addWidget(uno);
        return uno;
    };
    const auto tema = [this, ayuda = std::move(ayuda)] {
        if (ayuda) ayuda(winId(), QStringLiteral("OpcTipoLectura.htm#TeclasInicio"));
    };
    boton("Aceptar", QStringLiteral("Aceptar"), [this] { accept(); })->setDefault(true);
    boton("Cancelar", QStringLiteral("Cancelar"), [this] { reject(); });
    boton("Ayuda", QStringLiteral("Ayuda"), tema);
    connect(new QShortcut(QKeySequence(QKeySequence::HelpContents), this), &QShortcut::activated, this, tema);
}

void TeclasLeeTeclado::Init() {
    m_teclas.Carga(cGeneral::Aviso::Mensaje);
    m_teclas.EstableceValores();
    Rellena();
    Coloca();
    m_lista->setFocus();
    exec();
}

void TeclasLeeTeclado::Rellena() {
    m_lista->clear();
    for (const FilaTeclaLectura &fila : m_teclas.ListaTeclas()) {
        auto *uno = new QListWidgetItem(fila.rotulo, m_lista);
        uno->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        uno->setCheckState(fila.marcada ? Qt::Checked : Qt::Unchecked);
    }
    m_lista->setCurrentRow(0);
}

void TeclasLeeTeclado::Coloca() {
    adjustSize();
    if (m_colocada) return;
    m_colocada = true;
    std::vector<QRect> monitores;
    for (const QScreen *uno : QGuiApplication::screens()) monitores.push_back(uno->geometry());
    move(m_sitio.LeeLugar(size(), monitores));
}

void TeclasLeeTeclado::Marcas() {
    for (int i = 0; i < m_lista->count(); ++i)
        m_teclas.Marca(static_cast<std::size_t>(i), m_lista->item(i)->checkState() == Qt::Checked);
}

void TeclasLeeTeclado::done(int resultado) {
    if (resultado == Accepted) {
        Marcas();
        m_teclas.Acepta();
    } else {
        m_teclas.EstableceValores();
    }
    if (isVisible()) m_sitio.GuardaLugar(pos());
    QDialog::done(resultado);
}

}  // namespace ondalis
