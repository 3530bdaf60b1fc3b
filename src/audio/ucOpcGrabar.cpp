#include "audio/ucOpcGrabar.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QStyle>

#include "settings/pagina/CasillaEnlace.h"
#include "settings/pagina/EnlaceControles.h"
#include "settings/pagina/Rotulos.h"
#include "settings/pagina/cCajaFichero.h"
#include "settings/pagina/cLista.h"

namespace ondalis {

namespace {

const QString kWav = QStringLiteral("wav");
const QString kMp3 = QStringLiteral("mp3");

// Columns: label, first list, second label or list, second list, rest. The file's row goes across.
constexpr int kColumnas = 5;
constexpr int kMargenGrupo = 8;     // logical pixels
constexpr int kLetrasFichero = 26;  // of a path that are seen at least

QLabel *Etiqueta(const char *nombre, const QString &rotulo, QWidget *companero) {
    QLabel *etiqueta = Rotulo(rotulo, companero);
    etiqueta->setObjectName(QLatin1String(nombre));
    return etiqueta;
}

QRadioButton *Opcion(const char *nombre, const QString &rotulo) {
    auto *opcion = new QRadioButton(rotulo);
    opcion->setObjectName(QLatin1String(nombre));
    opcion->setAccessibleName(SinMarca(rotulo));
    return opcion;
}

cLista *ListaCalidad(const char *nombre, const QString &rotulo, std::span<const EntradaCalidad> entradas, int elegida) {
    auto *lista = new cLista(nombre, rotulo);
    for (const EntradaCalidad &entrada : entradas) lista->addItem(QLatin1String(entrada.texto), entrada.valor);
    SetFormaLista(*lista, FormaLista::Dato);
    lista->setCurrentIndex(elegida);
    return lista;
}

}  // namespace

ucOpcGrabar::ucOpcGrabar(cOpcGrabar &opciones, cDialogoFichero &dialogo)
    : PaginaOpciones("FrameGrabar", &opciones), m_opciones(opciones), m_dialogo(dialogo) {
    auto *columna = new QVBoxLayout(this);
    m_leer = Casilla("CheckLeer", QStringLiteral("Leer texto en &voz alta"), true);
    m_grabar = Casilla("CheckGrabar", QStringLiteral("Gra&bar texto en fichero de audio"));
    columna->addWidget(m_leer);
    columna->addWidget(m_grabar);
    auto *rejilla = new QGridLayout;
    rejilla->setContentsMargins(style()->pixelMetric(QStyle::PM_IndicatorWidth) + kMargenGrupo, 0, 0, 0);
    PonFormato(*rejilla);
    PonFichero(*rejilla);
    PonCalidad(*rejilla);
    rejilla->setColumnStretch(kColumnas - 1, 1);
    columna->addLayout(rejilla);
    columna->addStretch();
    Conecta();
    Habilita();
}

void ucOpcGrabar::PonFormato(QGridLayout &rejilla) {
    m_formato = new cLista("FormatoAudio", QStringLiteral("Formato de audio"));
    m_formato->addItems({QStringLiteral("WAV"), QStringLiteral("MP3")});
    m_tipo = new cLista("TipoGrabacion", QStringLiteral("Tipo de grabación"));
    m_tipo->addItems({QStringLiteral("Síncrono"), QStringLiteral("Asíncrono")});
    m_etiqFormato = Etiqueta("EtiqFormato", QStringLiteral("For&mato"), m_formato);
    m_etiqTipo = Etiqueta("EtiqTipo", QStringLiteral("&Grabación"), m_tipo);
    rejilla.addWidget(m_etiqFormato, 0, 0);
    rejilla.addWidget(m_formato, 0, 1);
    rejilla.addWidget(m_etiqTipo, 0, 2);
    rejilla.addWidget(m_tipo, 0, 3);
}

void ucOpcGrabar::PonFichero(QGridLayout &rejilla) {
    m_fichero = new cCajaFichero("NomFichero", QStringLiteral("Fichero de audio"));
    m_fichero->setMinimumWidth(m_fichero->fontMetrics().averageCharWidth() * kLetrasFichero);
    m_examinar = new QPushButton(QStringLiteral("E&xaminar..."));
    m_examinar->setObjectName(QStringLiteral("Examinar"));
    m_examinar->setAccessibleName(QStringLiteral("Examinar..."));
    m_etiqFichero = Etiqueta("EtiqFichero", QStringLiteral("&Fichero"), m_fichero);
    auto *fila = new QHBoxLayout;
    fila->addWidget(m_fichero, 1);
    fila->addWidget(m_examinar);
    rejilla.addWidget(m_etiqFichero, 1, 0);
    rejilla.addLayout(fila, 1, 1, 1, kColumnas - 1);
    m_anadir = Opcion("OpcionAnadir", QStringLiteral("Aña&dir al fichero"));
    m_sobrescribir = Opcion("OpcionSobrescribir", QStringLiteral("&Sobrescribir el fichero"));
    m_numerar = Opcion("OpcionNumerar", QStringLiteral("&Incluir cada lectura en un fichero distinto (numerados)"));
    int numFila = 2;
    for (QRadioButton *opcion : {m_anadir, m_sobrescribir, m_numerar}) {
        rejilla.addWidget(opcion, numFila++, 0, 1, kColumnas);  // with a large letter they need all the width
        // Tab stops at the chosen one of the three, the arrows go on from there.
        opcion->setFocusPolicy(Qt::ClickFocus);
        connect(opcion, &QRadioButton::toggled, this,
                [opcion](bool elegida) { opcion->setFocusPolicy(elegida ? Qt::StrongFocus : Qt::ClickFocus); });
    }
    m_sobrescribir->setChecked(true);
}

void ucOpcGrabar::PonCalidad(QGridLayout &rejilla) {
    m_kHz = ListaCalidad("CombokHz", QStringLiteral("Calidad en kHz"), TablakHz(), 1);
    m_kbps = ListaCalidad("Combokbps", QStringLiteral("Calidad en kbps"), Tablakbps(), 2);
    m_etiqCalidad = Etiqueta("EtiqCalidad", QStringLiteral("Ca&lidad"), m_kHz);
    QSizePolicy sitio = m_kbps->sizePolicy();
    sitio.setRetainSizeWhenHidden(true);  // nothing moves when it comes and goes
    m_kbps->setSizePolicy(sitio);
    rejilla.addWidget(m_etiqCalidad, 5, 0);
    rejilla.addWidget(m_kHz, 5, 1);
    rejilla.addWidget(m_kbps, 5, 2, 1, 2, Qt::AlignLeft);
}

void ucOpcGrabar::Conecta() {
    // A reading that is neither spoken nor recorded is none.
    connect(m_leer, &QCheckBox::toggled, this, [this](bool lee) {
        if (!lee && !m_grabar->isChecked()) m_grabar->setChecked(true);
    });
    connect(m_grabar, &QCheckBox::toggled, this, [this](bool graba) {
        if (!graba && !m_leer->isChecked()) m_leer->setChecked(true);
        Habilita();
    });
    // Also choosing the format that is chosen already counts.
    connect(m_formato, &QComboBox::currentIndexChanged, this, [this] { FormatoAudio_Click(); });
    connect(m_formato, &QComboBox::activated, this, [this] { FormatoAudio_Click(); });
    connect(m_examinar, &QPushButton::clicked, this, [this] { Examinar_Click(); });
}

bool ucOpcGrabar::EsWAV() const { return m_formato->currentIndex() == 0; }

void ucOpcGrabar::Habilita() {
    const bool graba = m_grabar->isChecked();
    const bool wav = EsWAV();
    for (QWidget *uno :
         std::initializer_list<QWidget *>{m_etiqFormato, m_formato, m_etiqFichero, m_fichero, m_examinar, m_anadir,
                                          m_sobrescribir, m_numerar, m_etiqCalidad, m_kHz, m_kbps})
        uno->setEnabled(graba);
    m_etiqTipo->setEnabled(graba && wav);
    m_tipo->setEnabled(graba && wav);
    if (!wav) m_tipo->setCurrentIndex(0);
    m_kbps->setVisible(!wav);
}

void ucOpcGrabar::FormatoAudio_Click() {
    const QString wav = QLatin1Char('.') + kWav;
    const QString mp3 = QLatin1Char('.') + kMp3;
    if (EsWAV())
        m_fichero->CambiaExtension(mp3, wav);
    else
        m_fichero->CambiaExtension(wav, mp3);
    Habilita();
}

void ucOpcGrabar::Examinar_Click() {
    const QString extension = EsWAV() ? kWav : kMp3;
    const QString patron = QStringLiteral("*.") + extension;
    const QString elegido = m_dialogo.GetFicheroDialogo(
        extension, QStringLiteral("Fichero de audio (%1)").arg(patron) + QChar::Null + patron + QChar::Null);
    if (!elegido.isEmpty()) m_fichero->SetFichero(elegido);
}

}  // namespace ondalis
