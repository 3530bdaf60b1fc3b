#include "settings/ucOpcTipoLectura.h"

#include <QCheckBox>
#include <QLabel>
#include <QStyle>
#include <QVBoxLayout>

#include "settings/pagina/CasillaEnlace.h"
#include "settings/pagina/Rotulos.h"
#include "settings/pagina/cCajaNumero.h"

namespace ondalis {

namespace {

// A row that depends on the check box above it.
QHBoxLayout *Sangrada(QVBoxLayout &columna, const QWidget &de) {
    auto *fila = new QHBoxLayout;
    fila->setContentsMargins(de.style()->pixelMetric(QStyle::PM_IndicatorWidth) + 8, 0, 0, 0);
    columna.addLayout(fila);
    return fila;
}

}  // namespace

ucOpcTipoLectura::ucOpcTipoLectura(cOpcTipoLectura &opciones, Enlaces enlaces)
    : PaginaOpciones("FrameTipoLectura", &opciones), m_opciones(opciones), m_enlaces(std::move(enlaces)) {
    auto *columna = new QVBoxLayout(this);
    PonPortapapeles(*columna);
    PonTeclado(*columna);
    columna->addStretch();
    for (QCheckBox *mando : {m_portapapeles, m_editores, m_leeTeclado})
        connect(mando, &QCheckBox::toggled, this, [this] { Habilita(); });
    if (m_enlaces.editoresTexto) connect(m_linkEditores, &cEnlace::clicked, this, m_enlaces.editoresTexto);
    if (m_enlaces.teclasLeeTeclado) connect(m_linkLeeConTeclas, &cEnlace::clicked, this, m_enlaces.teclasLeeTeclado);
    Habilita();
}

void ucOpcTipoLectura::PonPortapapeles(QVBoxLayout &columna) {
    m_portapapeles =
        Casilla("CheckPortapapeles", QStringLiteral("Leer cualquier texto copiado al &Portapapeles"), true);
    columna.addWidget(m_portapapeles);
    QHBoxLayout *mini = Sangrada(columna, *this);
    m_miniTexto = Casilla("CheckMiniTexto", QStringLiteral("&No leer texto inferior a"), true);
    m_valorMiniTexto = new cCajaNumero("ValorMiniTexto", QStringLiteral("No leer texto inferior a, caracteres"));
    m_valorMiniTexto->setRange(0, cOpcTipoLectura::MaxMiniTexto);
    m_valorMiniTexto->setValue(15);
    m_etiqueta = Rotulo(QStringLiteral("carac&teres"), m_valorMiniTexto);
    m_etiqueta->setObjectName(QStringLiteral("Etiqueta"));
    for (QWidget *uno : {static_cast<QWidget *>(m_miniTexto), static_cast<QWidget *>(m_valorMiniTexto),
                         static_cast<QWidget *>(m_etiqueta)})
        mini->addWidget(uno);
    mini->addStretch();

    const CasillaConEnlace editores = PonCasillaConEnlace(
        *Sangrada(columna, *this), "CheckEditores", "LinkEditores", QStringLiteral("&Identificar e&ditores de texto"),
        QStringLiteral("Elegir qué se hace con los editores de texto"), true);
    m_editores = editores.casilla;
    m_linkEditores = editores.enlace;

    QHBoxLayout *pausas = Sangrada(columna, *this);
    pausas->setSpacing(style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing));
    const QString rotulo = QStringLiteral("Pausar/Reanudar la lectura automáticamente");
    m_pausas = Casilla("CheckPausas", rotulo, true);
    m_pausas->setText(QString());
    m_pausas->setEnabled(false);  // it only says what always is so
    m_linkPausas = new QLabel(rotulo);
    m_linkPausas->setObjectName(QStringLiteral("LinkPausas"));
    pausas->addWidget(m_pausas);
    pausas->addWidget(m_linkPausas);
    pausas->addStretch();
}

void ucOpcTipoLectura::PonTeclado(QVBoxLayout &columna) {
    m_leeTeclado = Casilla("CheckLeeTeclado", QStringLiteral("&Leer el texto tecleado en cualquier aplicación"));
    columna.addWidget(m_leeTeclado);
    // Heard with the box that it is about, and seen under it.
    const QString aviso = QStringLiteral(
        "Las contraseñas no se leen, salvo en programas que no dicen qué campos tienen, como las ventanas de "
        "terminal.");
    m_leeTeclado->setAccessibleDescription(aviso);
    auto *letrero = new QLabel(aviso);
    letrero->setObjectName(QStringLiteral("AvisoContrasenas"));
    letrero->setWordWrap(true);
    Sangrada(columna, *this)->addWidget(letrero, 1);
    m_leeCambioApp = Casilla("CheckLeeCambioApp", QStringLiteral("Leer texto tecleado al cam&biar de aplicación"));
    Sangrada(columna, *this)->addWidget(m_leeCambioApp);
    QHBoxLayout *teclas = Sangrada(columna, *this);
    m_linkLeeConTeclas = new cEnlace("LinkLeeConTeclas", QStringLiteral("Tecla&s que inician la lectura"));
    teclas->addWidget(m_linkLeeConTeclas);
    teclas->addStretch();
}

void ucOpcTipoLectura::Habilita() {
    const bool portapapeles = m_portapapeles->isChecked();
    m_miniTexto->setEnabled(portapapeles);
    m_valorMiniTexto->setEnabled(portapapeles);
    m_etiqueta->setEnabled(portapapeles);
    m_editores->setEnabled(portapapeles);
    m_linkPausas->setEnabled(portapapeles);
    m_linkEditores->setEnabled(portapapeles && m_editores->isChecked() && m_enlaces.editoresTexto);
    const bool teclado = m_leeTeclado->isChecked();
    m_leeCambioApp->setEnabled(teclado);
    m_linkLeeConTeclas->setEnabled(teclado && m_enlaces.teclasLeeTeclado);
}

}  // namespace ondalis
