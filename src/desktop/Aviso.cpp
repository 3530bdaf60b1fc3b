#include "desktop/Aviso.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QStackedWidget>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include "desktop/ImgMonitor.h"
#include "settings/pagina/AreaPagina.h"
#include "settings/pagina/CasillaEnlace.h"
#include "settings/pagina/Rotulos.h"
#include "settings/pagina/cLista.h"

namespace ondalis {

namespace {

constexpr int kLetrasDeAncho = 72;  // of a page's text

template <class Control>
Control *Nombrado(Control *control, const QString &nombre, const QString &accesible) {
    control->setObjectName(nombre);
    control->setAccessibleName(SinMarca(accesible));
    return control;
}

// Rows of page 4, in the order of cAviso::Comandos; the letter opens the row's first list.
constexpr const char *kRotulosTeclas[cAviso::NumTeclas] = {
    "Combinación de teclas para &detener la lectura",
    "Combinación de teclas para &pausar y reanudar la lectura",
    "Combinación de teclas para &repetir última lectura realizada",
};

}  // namespace

Aviso::Aviso(Colaboradores colaboradores)
    : QDialog(nullptr, Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      c(std::move(colaboradores)),
      m_logica(c.logica) {
    setObjectName(QStringLiteral("Aviso"));
    setWindowTitle(QStringLiteral("Asistente de Ondalis"));
    auto *columna = new QVBoxLayout(this);
    columna->setContentsMargins(16, 16, 16, 12);
    m_paginas = new QStackedWidget;
    columna->addWidget(new AreaPagina(m_paginas, 0), 1);
    CreaPaginaIcono();
    CreaPaginaLectura();
    CreaPaginaVoz();
    CreaPaginaTeclas();
    CreaPaginaFin();
    CreaBotones(*columna);
    connect(m_fabricantes, &QComboBox::currentIndexChanged, this, &Aviso::ComboFabricantes_Click);
    auto *f1 = new QShortcut(QKeySequence(Qt::Key_F1), this);
    connect(f1, &QShortcut::activated, this, &Aviso::Ayuda_Click);
}

QBoxLayout *Aviso::Frame(const QString &titulo, const QString &texto, QString *descripcion) {
    auto *pagina = new QWidget;
    const int numero = m_paginas->addWidget(pagina) + 1;
    const QString hablado = (titulo.isEmpty() ? QString() : titulo + QLatin1Char(' ')) + texto;
    Nombrado(pagina, QStringLiteral("FrameAsist%1").arg(numero),
             QStringLiteral("Página %1 de %2").arg(numero).arg(cAviso::NumPaginas));
    pagina->setAccessibleDescription(hablado);
    if (descripcion) *descripcion = pagina->accessibleName() + QStringLiteral(". ") + hablado;
    auto *columna = new QVBoxLayout(pagina);
    columna->setContentsMargins(0, 0, 0, 0);
    columna->setSpacing(style()->pixelMetric(QStyle::PM_LayoutVerticalSpacing) + 4);
    const auto letrero = [&](const QString &suyo) {
        auto *rotulo = new QLabel(suyo);
        rotulo->setTextFormat(Qt::PlainText);
        rotulo->setWordWrap(true);
        rotulo->setMinimumWidth(rotulo->fontMetrics().averageCharWidth() * kLetrasDeAncho);
        columna->addWidget(rotulo);
        return rotulo;
    };
    if (!titulo.isEmpty()) {
        QLabel *cabecera = letrero(titulo);
        QFont letra = cabecera->font();
        letra.setBold(true);
        cabecera->setFont(letra);
    }
    letrero(texto)->setObjectName(QStringLiteral("Texto%1").arg(numero));
    return columna;
}

// A page is told by the control that takes the focus: nothing else is read out by itself.
void Aviso::PonPrimero(QWidget *control, const QString &descripcion) {
    m_primero[static_cast<std::size_t>(m_paginas->count() - 1)] = control;
    control->setAccessibleDescription(descripcion);
}

// Its text is the one thing on it: it takes the focus, and can be gone through and copied by keyboard.
void Aviso::CreaPaginaIcono() {
    QBoxLayout *columna = Frame({}, QStringLiteral("Ondalis ha creado un icono de notificación con forma de bocadillo "
                                                   "de diálogo en la barra de tareas."));
    auto *texto = m_paginas->widget(0)->findChild<QLabel *>(QStringLiteral("Texto1"));
    texto->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    PonPrimero(texto, m_paginas->widget(0)->accessibleName());
    columna->addStretch();
    columna->addWidget(new ImgMonitor, 0, Qt::AlignHCenter);
    columna->addStretch();
}

void Aviso::CreaPaginaLectura() {
    QString descripcion;
    QBoxLayout *columna =
        Frame(QStringLiteral("¿Cuándo va a leer Ondalis?"),
              QStringLiteral(
                  "Ondalis dispone de un editor propio para convertir el texto a voz. Además puede elegir si desea "
                  "que lea el texto copiado en otras aplicaciones de Windows o incluso el texto que teclea el "
                  "usuario."),
              &descripcion);
    m_portapapeles = Casilla("CheckPortapapeles",
                             QStringLiteral("Quiero que lea el texto C&OPIADO en editores o aplicaciones de Windows"));
    m_teclado = Casilla("CheckTeclado",
                        QStringLiteral("Quiero que lea el texto &TECLEADO en editores o aplicaciones de Windows"));
    columna->addWidget(m_portapapeles);
    columna->addWidget(m_teclado);
    columna->addStretch();
    PonPrimero(m_portapapeles, descripcion);
}

void Aviso::CreaPaginaVoz() {
    QString descripcion;
    QBoxLayout *columna = Frame(
        QStringLiteral("¿Qué voz va a utilizar Ondalis?"),
        QStringLiteral("Además de las voces que incluye la instalación de Ondalis, también puede utilizar otras "
                       "instaladas en su equipo en lengua española o en otros idiomas. En los siguientes desplegables "
                       "puede elegir la voz que desea escuchar cuando Ondalis convierta el texto a voz."),
        &descripcion);
    m_fabricantes = new cLista("ComboFabricantes", QStringLiteral("Fabricante"));
    m_voces = new cLista("ComboVoces", QStringLiteral("Nombre"));
    auto *probar = Boton("Probar", QStringLiteral("&Probar Voz"), &Aviso::Probar_Click);
    auto *tabla = new QGridLayout;
    tabla->setColumnStretch(1, 1);
    tabla->addWidget(Rotulo(QStringLiteral("&Fabricante"), m_fabricantes), 0, 0);
    tabla->addWidget(m_fabricantes, 0, 1);
    tabla->addWidget(Rotulo(QStringLiteral("N&ombre"), m_voces), 1, 0);
    tabla->addWidget(m_voces, 1, 1);
    columna->addLayout(tabla);
    columna->addWidget(probar, 0, Qt::AlignRight);
    setTabOrder(m_voces, probar);
    columna->addStretch();
    PonPrimero(m_fabricantes, descripcion);
}

void Aviso::CreaPaginaTeclas() {
    QString descripcion;
    QBoxLayout *columna =
        Frame({},
              QStringLiteral("Existen varias combinaciones de \"teclas rápidas\" que permiten controlar la lectura de "
                             "Ondalis. Aquí puede definir las tres más utilizadas."),
              &descripcion);
    auto *tabla = new QGridLayout;
    tabla->setColumnStretch(0, 1);
    for (int i = 0; i < cAviso::NumTeclas; ++i) {
        ListasTecla &listas = m_teclas[static_cast<std::size_t>(i)];
        const QString comando = QLatin1String(cAviso::Comandos[static_cast<std::size_t>(i)]);
        const QString rotulo = QString::fromUtf8(kRotulosTeclas[i]);
        listas.modificador =
            new cLista(qPrintable(QStringLiteral("Mod") + comando), SinMarca(rotulo) + QStringLiteral(", modificador"));
        listas.modificador->addItems({QStringLiteral("Control"), QStringLiteral("Alt"), QStringLiteral("Shift")});
        listas.tecla =
            new cLista(qPrintable(QStringLiteral("Tecla") + comando), SinMarca(rotulo) + QStringLiteral(", tecla"));
        for (const FilaTecla &tecla : TablaTeclas())
            listas.tecla->addItem(QLatin1String(tecla.rotulo), tecla.virtualKey);
        QLabel *letrero = Rotulo(rotulo, listas.modificador);
        letrero->setWordWrap(true);  // with a large letter the row is wider than a screen
        tabla->addWidget(letrero, i, 0);
        tabla->addWidget(listas.modificador, i, 1);
        tabla->addWidget(listas.tecla, i, 2);
    }
    columna->addLayout(tabla);
    columna->addStretch();
    PonPrimero(m_teclas.front().modificador, descripcion);
}

void Aviso::CreaPaginaFin() {
    QString descripcion;
    QBoxLayout *columna = Frame(
        {},
        QStringLiteral("Ya ha terminado con los principales pasos para configurar Ondalis. También puede cambiar la "
                       "velocidad de lectura, así como otros parámetros del programa. Para ello, debe abrir la ventana "
                       "de Configuración haciendo doble click en el icono de Ondalis, después de cerrar este "
                       "asistente."),
        &descripcion);
    m_verConfig = Casilla("VerConfig",
                          QStringLiteral("A&brir la ventana de Configuración de Ondalis al finalizar este asistente."));
    columna->addWidget(m_verConfig);
    columna->addStretch();
    PonPrimero(m_verConfig, descripcion);
}

QPushButton *Aviso::Boton(const char *nombre, const QString &rotulo, void (Aviso::*accion)()) {
    auto *boton = Nombrado(new QPushButton(rotulo, this), QLatin1String(nombre), rotulo);
    connect(boton, &QPushButton::clicked, this, accion);
    return boton;
}

void Aviso::CreaBotones(QBoxLayout &columna) {
    m_noMostrar = Casilla("CheckMostrar", QStringLiteral("&No volver a mostrar esta ventana"));
    columna.addWidget(m_noMostrar);
    auto *fila = new QHBoxLayout;
    m_atras = Boton("AsistAtras", QStringLiteral("< &Atrás"), &Aviso::AsistAtras_Click);
    m_siguiente = Boton("AsistSig", QStringLiteral("&Siguiente >"), &Aviso::AsistSig_Click);
    m_siguiente->setDefault(true);
    auto *cancelar = Boton("Cancelar", QStringLiteral("&Cerrar"), &Aviso::Cancelar_Click);
    auto *ayuda = Boton("Ayuda", QStringLiteral("A&yuda"), &Aviso::Ayuda_Click);
    fila->addStretch();
    fila->addWidget(m_atras);
    fila->addWidget(m_siguiente);
    fila->addSpacing(12);
    fila->addWidget(cancelar);
    fila->addWidget(ayuda);
    columna.addLayout(fila);
    QWidget *anterior = m_noMostrar;
    for (QWidget *uno : {static_cast<QWidget *>(m_atras), static_cast<QWidget *>(m_siguiente),
                         static_cast<QWidget *>(cancelar), static_cast<QWidget *>(ayuda)}) {
        setTabOrder(anterior, uno);
        anterior = uno;
    }
}

void Aviso::Init() {
    c.logica.lector.general.Ejecuta(QStringLiteral("Aviso.Init: "), cGeneral::Aviso::Mensaje, [this] {
        if (!isVisible()) {
            m_logica.Empieza();
            MuestraPagina();
            EstableceValores();
            Coloca();
            show();
        }
        raise();
        activateWindow();
        if (c.alFrente) QTimer::singleShot(0, this, [this] { c.alFrente(winId()); });
    });
}

void Aviso::Coloca() {
    ensurePolished();
    AjustaAPantalla(*this);
    move(screen()->availableGeometry().center() - rect().center());
}

void Aviso::EstableceValores() {
    const cAviso::Valores valores = m_logica.Lee();
    m_noMostrar->setChecked(false);
    m_verConfig->setChecked(false);
    m_portapapeles->setChecked(valores.portapapeles);
    m_teclado->setChecked(valores.teclado);
    m_fabricantes->clear();
    m_fabricantes->addItems(c.voces.Fabricantes());
    m_fabricantes->setCurrentIndex(c.voces.Fabricantes().indexOf(valores.fabricante));
    ComboFabricantes_Click();
    for (std::size_t i = 0; i < m_teclas.size(); ++i) {
        m_teclas[i].modificador->setCurrentIndex(valores.teclas[i].modificador);
        m_teclas[i].tecla->setCurrentIndex(m_teclas[i].tecla->findData(valores.teclas[i].virtualKey));
    }
}

void Aviso::ComboFabricantes_Click() {
    m_voces->clear();
    if (m_fabricantes->currentIndex() < 0) return;
    for (const int fila : c.voces.DeFabricante(m_fabricantes->currentText()))
        m_voces->addItem(c.voces.Filas()[static_cast<std::size_t>(fila)].NombreVoz, fila);
    const int guardada = m_voces->findText(m_logica.Lee().voz, Qt::MatchExactly | Qt::MatchCaseSensitive);
    m_voces->setCurrentIndex(std::max(guardada, 0));
}

void Aviso::Probar_Click() { c.prueba.PruebaAsistente(m_fabricantes->currentText(), m_voces->currentText()); }

// The focus goes to the new page, or a screen reader would still be on a button and say nothing of what has changed.
void Aviso::MuestraPagina() {
    const int pagina = m_logica.Pagina() - 1;
    m_paginas->setCurrentIndex(pagina);
    const QString rotulo = m_logica.RotuloSiguiente();
    m_siguiente->setText(QLatin1Char('&') + rotulo);
    m_siguiente->setAccessibleName(rotulo);
    m_primero[static_cast<std::size_t>(pagina)]->setFocus(Qt::OtherFocusReason);
    m_atras->setEnabled(m_logica.HayAtras());
}

void Aviso::AsistSig_Click() {
    if (!m_logica.EnUltima()) {
        m_logica.Siguiente();
        MuestraPagina();
        return;
    }
    const bool configura = m_verConfig->isChecked();
    Termina();
    if (configura) c.logica.form.Opciones_Click();
}

void Aviso::AsistAtras_Click() {
    m_logica.Atras();
    MuestraPagina();
}

void Aviso::Cancelar_Click() { Termina(); }

void Aviso::Ayuda_Click() { c.ayuda.MuestraClave(winId(), m_logica.TemaAyuda()); }

cAviso::Valores Aviso::EnPantalla() const {
    cAviso::Valores valores;
    valores.noMostrar = m_noMostrar->isChecked();
    valores.portapapeles = m_portapapeles->isChecked();
    valores.teclado = m_teclado->isChecked();
    if (m_fabricantes->currentIndex() >= 0) valores.fabricante = m_fabricantes->currentText();
    valores.voz = m_voces->currentText();
    for (std::size_t i = 0; i < m_teclas.size(); ++i)
        valores.teclas[i] = {m_teclas[i].modificador->currentIndex(), m_teclas[i].tecla->currentData().toInt()};
    return valores;
}

// Once for a window that is shown: hiding it may be told of as closing.
void Aviso::Termina() {
    if (!isVisible() || m_guardando) return;
    m_guardando = true;
    m_logica.Guarda(EnPantalla());
    m_guardando = false;
    hide();
}

void Aviso::Descarga() {
    if (!isVisible()) return;
    if (!m_guardando) m_logica.GuardaSinAplicar(EnPantalla());
    hide();
}

void Aviso::reject() { Cancelar_Click(); }

void Aviso::closeEvent(QCloseEvent *evento) {
    Cancelar_Click();
    evento->accept();
}

}  // namespace ondalis
