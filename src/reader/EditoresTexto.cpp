#include "reader/EditoresTexto.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "reader/DeslizadorSalto.h"
#include "settings/pagina/CasillaEnlace.h"
#include "settings/pagina/Rotulos.h"

namespace ondalis {

EditoresTexto::EditoresTexto(cOpcEditoresTexto &opciones, Colaboradores c)
    : DialogoOpciones("EditoresTexto", QStringLiteral("Editores de texto"),
                      QStringLiteral("OpcTipoLectura.htm#Editores"), &opciones, std::move(c)),
      m_opciones(opciones) {
    Cuerpo().addWidget(MarcoWord());
    Cuerpo().addStretch();
    connect(m_palabras, &QCheckBox::toggled, this, &EditoresTexto::LocalizaPalabrasWord_Click);
    connect(m_parada, &QCheckBox::toggled, this, &EditoresTexto::LocalizaParadaWord_Click);
    const auto di = [this](int valor) {
        const QString texto = TextoSalto(valor - DeslizadorSalto::Centro);
        m_valorSalto->setText(texto);
        m_salto->setAccessibleDescription(texto);
    };
    connect(m_salto, &QSlider::valueChanged, this, di);
    di(m_salto->value());
    Prepara();
}

QString EditoresTexto::TextoSalto(int palabras) {
    if (palabras == 0) return QStringLiteral("donde se paró");
    const int cuantas = qAbs(palabras);
    return QStringLiteral("%1 %2 %3")
        .arg(QString::number(cuantas), cuantas == 1 ? QStringLiteral("palabra") : QStringLiteral("palabras"),
             palabras < 0 ? QStringLiteral("atrás") : QStringLiteral("adelante"));
}

QGroupBox *EditoresTexto::MarcoWord() {
    auto *marco = new QGroupBox(QStringLiteral("Microsoft Word"));
    marco->setObjectName(QStringLiteral("FrameWord"));
    auto *columna = new QVBoxLayout(marco);
    m_palabras = Casilla("LocalizaPalabrasWord", QStringLiteral("&Localizar cada palabra leída"), true);
    m_parada = Casilla("LocalizaParadaWord", QStringLiteral("Localizar texto al &parar la lectura"));
    m_selecciona = Casilla("SeleccionaWord", QStringLiteral("&Seleccionar palabra al localizar texto"), true);
    for (QCheckBox *una : {m_palabras, m_parada, m_selecciona}) columna->addWidget(una);

    const QString rotulo = QStringLiteral("Localización &relativa en pausas manuales");
    m_salto = new DeslizadorSalto("SliderSalto", SinMarca(rotulo));
    m_etiqSalto = Rotulo(rotulo, m_salto);
    m_etiqSalto->setObjectName(QStringLiteral("EtiqSalto"));
    m_valorSalto = new QLabel;
    m_valorSalto->setObjectName(QStringLiteral("ValorSalto"));
    m_valorSalto->setAlignment(Qt::AlignHCenter);
    columna->addSpacing(columna->spacing());
    columna->addWidget(m_etiqSalto);
    columna->addWidget(m_salto);
    columna->addWidget(m_valorSalto);
    return marco;
}

// Following every word and following the stops exclude each other.
void EditoresTexto::LocalizaPalabrasWord_Click(bool marcada) {
    if (marcada) m_parada->setChecked(false);
    Habilita();
}

void EditoresTexto::LocalizaParadaWord_Click(bool marcada) {
    if (marcada) m_palabras->setChecked(false);
    Habilita();
}

void EditoresTexto::Habilita() {
    m_selecciona->setEnabled(m_palabras->isChecked() || m_parada->isChecked());
    for (QWidget *uno :
         {static_cast<QWidget *>(m_etiqSalto), static_cast<QWidget *>(m_salto), static_cast<QWidget *>(m_valorSalto)})
        uno->setEnabled(m_parada->isChecked());
}

}  // namespace ondalis
