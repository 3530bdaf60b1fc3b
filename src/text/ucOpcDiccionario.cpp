#include "text/ucOpcDiccionario.h"

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include "settings/pagina/Rotulos.h"
#include "text/cModeloDiccionario.h"

namespace ondalis {

namespace {

const QString kObjeto = QStringLiteral("ucOpcDiccionario");

// Entering it selects its whole text, with the mouse too.
class CajaEntera : public QLineEdit {
public:
    // `intro` says whether it has taken the key; else the window gets it.
    explicit CajaEntera(std::function<bool()> intro) : m_intro(std::move(intro)) {}

protected:
    void keyPressEvent(QKeyEvent *evento) override {
        if ((evento->key() != Qt::Key_Return && evento->key() != Qt::Key_Enter) || !m_intro())
            QLineEdit::keyPressEvent(evento);
    }
    void focusInEvent(QFocusEvent *evento) override {
        QLineEdit::focusInEvent(evento);
        m_recienEntrada = evento->reason() == Qt::MouseFocusReason;
        // Back from another window the box is as it was left.
        if (evento->reason() != Qt::ActiveWindowFocusReason && evento->reason() != Qt::PopupFocusReason) selectAll();
    }
    void mouseReleaseEvent(QMouseEvent *evento) override {
        QLineEdit::mouseReleaseEvent(evento);
        if (m_recienEntrada && !hasSelectedText()) selectAll();
        m_recienEntrada = false;
    }

private:
    std::function<bool()> m_intro;
    bool m_recienEntrada = false;
};

// The toolkit gives the first row the keyboard without selecting it, and the first arrow would pass it by.
class ListaEntradas : public QTreeView {
protected:
    void keyPressEvent(QKeyEvent *evento) override {
        const bool flecha =
            evento->key() == Qt::Key_Down || evento->key() == Qt::Key_Up || evento->key() == Qt::Key_Home;
        if (flecha && currentIndex().isValid() && !selectionModel()->hasSelection())
            setCurrentIndex(currentIndex());
        else
            QTreeView::keyPressEvent(evento);
    }
    void resizeEvent(QResizeEvent *evento) override {
        QTreeView::resizeEvent(evento);
        if (m_repartida || viewport()->width() <= 0) return;
        header()->resizeSection(cModeloDiccionario::Texto, viewport()->width() * 2 / 5);
        m_repartida = isVisible();
    }

private:
    bool m_repartida = false;  // from then on the columns are the user's
};

}  // namespace

ucOpcDiccionario::ucOpcDiccionario(cOpcDiccionario &diccionario, cGeneral &general,
                                   std::function<void(const QString &)> probar)
    : PaginaOpciones("FrameDiccionario", nullptr),
      m_diccionario(diccionario),
      m_general(general),
      m_probar(std::move(probar)) {
    auto *columna = new QVBoxLayout(this);
    m_lista = CreaLista();
    columna->addWidget(m_lista, 1);
    auto *cajas = new QHBoxLayout;
    auto *deClave = new QVBoxLayout, *deConversion = new QVBoxLayout;
    for (QVBoxLayout *una : {deClave, deConversion}) una->setSpacing(2);
    m_clave = CreaCaja("TxtClave", QStringLiteral("&Texto"), *deClave);
    m_conversion = CreaCaja("TxtConversion", QStringLiteral("Co&nversión"), *deConversion);
    cajas->addLayout(deClave, 2);
    cajas->addLayout(deConversion, 3);
    columna->addLayout(cajas);
    auto *botones = new QHBoxLayout;
    m_actualizar = CreaBoton("Actualizar", QStringLiteral("Actualizar &Lista"), &ucOpcDiccionario::Actualizar_Click);
    m_suprimir = CreaBoton("Suprimir", QStringLiteral("&Suprimir"), &ucOpcDiccionario::Suprimir_Click);
    m_probarBoton = CreaBoton("Probar", QStringLiteral("&Probar"), &ucOpcDiccionario::Probar_Click);
    for (QPushButton *uno : {m_actualizar, m_suprimir, m_probarBoton}) botones->addWidget(uno);
    botones->addStretch();
    columna->addLayout(botones);

    connect(m_clave, &QLineEdit::textChanged, this, [this] { m_actualizar->setEnabled(true); });
    connect(m_conversion, &QLineEdit::textChanged, this, [this] { TxtConversion_Change(); });
    Deshabilita({m_actualizar, m_suprimir, m_probarBoton}, nullptr);
}

QTreeView *ucOpcDiccionario::CreaLista() {
    constexpr int kFilasALaVista = 5;
    m_modelo = new cModeloDiccionario(m_filas, this);
    auto *lista = new ListaEntradas;
    lista->setObjectName(QStringLiteral("ListaDiccionario"));
    lista->setAccessibleName(QStringLiteral("Entradas del diccionario"));
    lista->setModel(m_modelo);
    lista->setRootIsDecorated(false);
    lista->setUniformRowHeights(true);  // without it each of thousands of rows is measured
    lista->setAllColumnsShowFocus(true);
    lista->setSelectionBehavior(QAbstractItemView::SelectRows);
    lista->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lista->setTabKeyNavigation(false);
    lista->setItemsExpandable(false);
    lista->header()->setStretchLastSection(true);  // "Conversión" follows the page's width
    lista->header()->setSectionsMovable(false);
    lista->header()->setFocusPolicy(Qt::NoFocus);
    lista->setMinimumHeight(lista->fontMetrics().lineSpacing() * (kFilasALaVista + 2));
    connect(lista->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            [this](const QItemSelection &elegida) {
                if (!elegida.isEmpty()) ListaDiccionario_ItemClick(elegida.indexes().front());
            });
    // A click on the selected row brings its texts back.
    connect(lista, &QTreeView::clicked, this, &ucOpcDiccionario::ListaDiccionario_ItemClick);
    return lista;
}

QLineEdit *ucOpcDiccionario::CreaCaja(const char *nombre, const QString &rotulo, QBoxLayout &columna) {
    auto *caja = new CajaEntera([this] { return EnterEnCaja(); });
    caja->setObjectName(QLatin1String(nombre));
    caja->setAccessibleName(SinMarca(rotulo));
    columna.addWidget(Rotulo(rotulo, caja));
    columna.addWidget(caja);
    return caja;
}

QPushButton *ucOpcDiccionario::CreaBoton(const char *nombre, const QString &rotulo,
                                         void (ucOpcDiccionario::*accion)()) {
    auto *boton = new QPushButton(rotulo);
    boton->setObjectName(QLatin1String(nombre));
    boton->setAccessibleName(SinMarca(rotulo));
    connect(boton, &QPushButton::clicked, this, accion);
    return boton;
}

void ucOpcDiccionario::Deshabilita(std::initializer_list<QPushButton *> botones, QWidget *sigue) {
    for (QPushButton *uno : botones)
        if (uno->hasFocus() && sigue) sigue->setFocus(Qt::TabFocusReason);
    for (QPushButton *uno : botones) uno->setEnabled(false);
}

void ucOpcDiccionario::EstableceValores() {
    m_clave->clear();
    m_conversion->clear();
    Deshabilita({m_actualizar, m_suprimir, m_probarBoton}, m_lista);
    m_modelo->Rehace([this] { m_diccionario.CargaLista(m_filas); });  // nothing is selected any more
    m_lista->scrollToTop();
}

int ucOpcDiccionario::FilaTecleada() const {
    return m_filas.Busca(cListaDiccionario::ClaveFila(cListaDiccionario::Normaliza(m_clave->text())));
}

void ucOpcDiccionario::ListaDiccionario_ItemClick(const QModelIndex &indice) {
    m_general.Ejecuta(kObjeto + QStringLiteral(".ListaDiccionario_ItemClick: "), cGeneral::Aviso::Mensaje, [&] {
        const cListaDiccionario::Fila fila = m_filas[indice.row()];
        m_clave->setText(fila.clave);
        m_conversion->setText(fila.conversion);
        m_actualizar->setEnabled(false);
        m_suprimir->setEnabled(true);
        m_probarBoton->setEnabled(m_probar != nullptr);
    });
}

void ucOpcDiccionario::TxtConversion_Change() {
    m_actualizar->setEnabled(true);
    m_probarBoton->setEnabled(m_probar && !m_conversion->text().isEmpty());
}

// What has been typed goes into the list instead of being lost by accepting the window.
bool ucOpcDiccionario::EnterEnCaja() {
    if (!m_actualizar->isEnabled() || (m_clave->text().isEmpty() && m_conversion->text().isEmpty())) return false;
    m_actualizar->click();
    return true;
}

void ucOpcDiccionario::Actualizar_Click() {
    m_general.Ejecuta(kObjeto + QStringLiteral(".Actualizar_Click: "), cGeneral::Aviso::Mensaje, [this] {
        const QString clave = cListaDiccionario::Normaliza(m_clave->text());
        const QString conversion = cListaDiccionario::Normaliza(m_conversion->text());
        if (clave.isEmpty() || conversion.isEmpty()) {
            m_general.VMsg(QStringLiteral("Debe teclear un texto y su conversión correspondiente"));
            return;
        }
        // Longer texts would be gone with the next loading.
        if (!cOpcDiccionario::EsEntrada(clave, conversion)) throw ErrorFallo{Fallo::De(Fallo::Desbordamiento)};
        int fila = FilaTecleada();
        if (fila >= 0)
            m_modelo->PonConversion(fila, conversion);
        else
            fila = m_modelo->Anade(clave, conversion);
        m_lista->scrollTo(m_modelo->index(fila, cModeloDiccionario::Texto));
        Deshabilita({m_actualizar}, m_clave);
    });
}

void ucOpcDiccionario::Suprimir_Click() {
    m_general.Ejecuta(kObjeto + QStringLiteral(".Suprimir_Click: "), cGeneral::Aviso::Mensaje, [this] {
        const int fila = FilaTecleada();
        if (fila >= 0) m_modelo->Quita(fila);
        m_clave->clear();
        m_conversion->clear();
        Deshabilita({m_actualizar, m_suprimir, m_probarBoton}, m_lista);
    });
}

void ucOpcDiccionario::Probar_Click() {
    m_general.Ejecuta(kObjeto + QStringLiteral(".Probar_Click: "), cGeneral::Aviso::Mensaje, [this] {
        const QString texto = m_conversion->text();
        if (!texto.isEmpty()) m_probar(texto);
    });
}

}  // namespace ondalis
