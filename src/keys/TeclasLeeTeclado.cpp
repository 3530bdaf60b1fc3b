#include "keys/TeclasLeeTeclado.h"

#include <QListWidget>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace ondalis {

namespace {

// As tall as its rows, within limits; on a small screen it is the list that scrolls, not what is round it.
class ListaTeclas : public QListWidget {
public:
    QSize sizeHint() const override {
        constexpr int kAncho = 280, kMenosFilas = 8, kMasFilas = 14;  // the first in logical pixels
        const int alto = std::max(sizeHintForRow(0), fontMetrics().height());
        const int ancho = sizeHintForColumn(0) + style()->pixelMetric(QStyle::PM_ScrollBarExtent);
        return {std::max(ancho, kAncho), std::clamp(count(), kMenosFilas, kMasFilas) * alto + 2 * frameWidth()};
    }
};

}  // namespace

TeclasLeeTeclado::TeclasLeeTeclado(cTeclasLeeTeclado &teclas, Colaboradores c)
    : DialogoOpciones("TeclasLeeTeclado", QStringLiteral("Teclas que inician la lectura"),
                      QStringLiteral("OpcTipoLectura.htm#TeclasInicio"), nullptr, std::move(c)),
      m_teclas(teclas),
      m_lista(new ListaTeclas) {
    m_lista->setObjectName(QStringLiteral("ListaTeclas"));
    m_lista->setAccessibleName(windowTitle());
    Cuerpo().addWidget(m_lista, 1);
    Prepara();
}

void TeclasLeeTeclado::Init() {
    if (isVisible()) return DialogoOpciones::Init();
    m_teclas.Carga(cGeneral::Aviso::Mensaje);
    DialogoOpciones::Init();
    exec();
}

void TeclasLeeTeclado::EstableceValores() {
    m_teclas.EstableceValores();
    m_lista->clear();
    for (const FilaTeclaLectura &fila : m_teclas.ListaTeclas()) {
        auto *uno = new QListWidgetItem(fila.rotulo, m_lista);
        uno->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable);
        uno->setCheckState(fila.marcada ? Qt::Checked : Qt::Unchecked);
    }
    m_lista->setCurrentRow(0);
}

// Accepting makes them the choice.
void TeclasLeeTeclado::SetTags() {
    for (int i = 0; i < m_lista->count(); ++i)
        m_teclas.Marca(static_cast<std::size_t>(i), m_lista->item(i)->checkState() == Qt::Checked);
}

void TeclasLeeTeclado::done(int resultado) {
    if (resultado != Accepted) m_teclas.EstableceValores();
    DialogoOpciones::done(resultado);
}

}  // namespace ondalis
