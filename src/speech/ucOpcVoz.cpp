#include "speech/ucOpcVoz.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QStyle>

#include "settings/pagina/CasillaEnlace.h"
#include "settings/pagina/EnlaceControles.h"
#include "settings/pagina/Rotulos.h"
#include "settings/pagina/cCajaNumero.h"
#include "settings/pagina/cDeslizador.h"
#include "settings/pagina/cLista.h"

namespace ondalis {

namespace {

constexpr int kSeparacion = 2;  // logical pixels, besides the two gaps

struct FilaAvanzado {
    const char *barra;
    const char *rotulo;
    RangoOpcion rango;
    std::int16_t RegistroVoz::*defecto;
};
// In the order in which an engine takes them.
const std::array<FilaAvanzado, 5> &Avanzados() {
    static const std::array<FilaAvanzado, 5> filas{{
        {"ScrollTono", "&Tono", cOpcVoz::RangoTono(), &RegistroVoz::TonoDefecto},
        {"ScrollFluctuacion", "Fluctuac&ión", cOpcVoz::RangoOtros(), &RegistroVoz::FluctuacionDefecto},
        {"ScrollAspereza", "A&spereza", cOpcVoz::RangoOtros(), &RegistroVoz::AsperezaDefecto},
        {"ScrollDiafonia", "&Diafonía", cOpcVoz::RangoOtros(), &RegistroVoz::DiafoniaDefecto},
        {"ScrollTamCabeza", "Tam. ca&beza", cOpcVoz::RangoOtros(), &RegistroVoz::TamCabezaDefecto},
    }};
    return filas;
}

void PonRango(cDeslizador &barra, const RangoOpcion &rango) {
    barra.SetRango(rango.minimo, rango.maximo, rango.pasoGrande);
    barra.SetValor(rango.defecto);
}

QComboBox *Lista(const char *nombre, const QString &rotulo) {
    auto *lista = new cLista(nombre, rotulo);
    SetFormaLista(*lista, FormaLista::Texto);
    return lista;
}

QLabel *Discreto(const char *nombre, const QString &texto) {
    auto *letrero = new QLabel(texto);
    letrero->setObjectName(QLatin1String(nombre));
    QFont letra = letrero->font();
    letra.setPointSizeF(letra.pointSizeF() * 0.9);
    letrero->setFont(letra);
    return letrero;
}

int AnchoCaja(cCajaNumero &caja, int maximo) {
    caja.setRange(0, maximo);
    return caja.sizeHint().width();
}

// A label in the middle of its field's height.
void PonFila(QGridLayout &tabla, QLabel *rotulo, QWidget *campo) {
    const int fila = tabla.rowCount();
    tabla.addWidget(rotulo, fila, 0, Qt::AlignVCenter);
    tabla.addWidget(campo, fila, 1);
}

// Between what belongs together: the voice, how it speaks, what makes it.
void Separa(QGridLayout &tabla) { tabla.setRowMinimumHeight(tabla.rowCount(), kSeparacion); }

}  // namespace

ucOpcVoz::ucOpcVoz(const Colaboradores &colaboradores)
    : PaginaOpciones("FrameVoces", &colaboradores.opciones), c(colaboradores) {
    auto *tabla = new QGridLayout(this);
    tabla->setColumnStretch(1, 1);
    PonListas(*tabla);
    PonVelocidad(*tabla);
    PonAvanzados(*tabla);
    PonProbar(*tabla);
    tabla->setRowStretch(tabla->rowCount(), 1);
    CargaComboFabricantes();
    AplicaRangos();
    Habilita();
    connect(m_fabricantes, &QComboBox::currentIndexChanged, this, &ucOpcVoz::ComboFabricantes_Click);
    connect(m_voces, &QComboBox::currentIndexChanged, this, &ucOpcVoz::ComboVoces_Click);
    connect(m_avanzados, &QCheckBox::toggled, this, &ucOpcVoz::CheckAvanzados_Click);
    connect(m_probar, &QPushButton::clicked, this, &ucOpcVoz::Probar_Click);
}

void ucOpcVoz::PonListas(QGridLayout &tabla) {
    m_fabricantes = Lista("ComboFabricantes", QStringLiteral("Fabricante"));
    m_voces = Lista("ComboVoces", QStringLiteral("Nombre"));
    PonFila(tabla, Rotulo(QStringLiteral("&Fabricante"), m_fabricantes), m_fabricantes);
    PonFila(tabla, Rotulo(QStringLiteral("N&ombre"), m_voces), m_voces);
    Separa(tabla);
}

void ucOpcVoz::PonVelocidad(QGridLayout &tabla) {
    m_velocidad = new cDeslizador("ScrollVelocidad", "ValorVelocidad", QStringLiteral("Velocidad"));
    m_volumen = new cDeslizador("ScrollVolumen", "ValorVolumen", QStringLiteral("Volumen"));
    PonFila(tabla, Rotulo(QStringLiteral("&Velocidad"), m_velocidad), m_velocidad);
    // Both boxes are as wide as the longest number that either family has.
    const int ancho = AnchoCaja(*m_velocidad->Caja(), cOpcVoz::RangoVelocidad(true).maximo);
    for (cDeslizador *uno : {m_velocidad, m_volumen}) uno->Caja()->setFixedWidth(ancho);
    auto *teclas = new QHBoxLayout;
    teclas->setSpacing(0);
    teclas->addWidget(Discreto("TeclaMenosVel", QStringLiteral("Ctrl+Alt+F9")));
    teclas->addStretch();
    teclas->addWidget(Discreto("TeclaMasVel", QStringLiteral("Ctrl+Alt+F10")));
    teclas->addSpacing(ancho + m_velocidad->layout()->spacing());  // under the bar's end, not under the box
    m_teclas = Discreto("TeclasSuper", QStringLiteral("En este equipo, Super en lugar de Alt"));
    m_teclas->hide();
    auto *bajo = new QVBoxLayout;
    bajo->setSpacing(2);
    bajo->addLayout(teclas);
    bajo->addWidget(m_teclas);
    tabla.addLayout(bajo, tabla.rowCount(), 1);
    PonFila(tabla, Rotulo(QStringLiteral("Vo&lumen"), m_volumen), m_volumen);
    Separa(tabla);
}

void ucOpcVoz::PonAvanzados(QGridLayout &tabla) {
    m_avanzados = Casilla("CheckAvanzados", QStringLiteral("&Utilizar valores avanzados"));
    tabla.addWidget(m_avanzados, tabla.rowCount(), 0, 1, 2, Qt::AlignLeft);
    const int sangria = style()->pixelMetric(QStyle::PM_IndicatorWidth) + 8;
    for (std::size_t i = 0; i < m_barras.size(); ++i) {
        const FilaAvanzado &fila = Avanzados()[i];
        const QString texto = QString::fromUtf8(fila.rotulo);
        m_barras[i] = new cDeslizador(fila.barra, nullptr, SinMarca(texto));
        PonRango(*m_barras[i], fila.rango);
        m_rotulos[i] = Rotulo(texto, m_barras[i]);
        m_rotulos[i]->setIndent(sangria);
        PonFila(tabla, m_rotulos[i], m_barras[i]);
    }
}

void ucOpcVoz::PonProbar(QGridLayout &tabla) {
    m_probar = new QPushButton(QStringLiteral("&Probar Voz"));
    m_probar->setObjectName(QStringLiteral("Probar"));
    m_probar->setAccessibleName(SinMarca(m_probar->text()));
    auto *fila = new QHBoxLayout;
    fila->addStretch();
    fila->addWidget(m_probar);
    tabla.addLayout(fila, tabla.rowCount(), 0, 1, 2);
}

void ucOpcVoz::Ejecuta(const char *procedimiento, const std::function<void()> &cuerpo) {
    c.general.Ejecuta(QStringLiteral("ucOpcVoz.%1: ").arg(QLatin1String(procedimiento)), cGeneral::Aviso::Mensaje,
                      cuerpo);
}

// Without a selection the accepted maker counts: its numbers are on the bars.
bool ucOpcVoz::EsIBM() const {
    return m_fabricantes->currentIndex() < 0 ? c.opciones.EsIBM()
                                             : m_fabricantes->currentText() == QLatin1String("IBM");
}

int ucOpcVoz::ScrollVelocidadValue() const { return m_velocidad->Valor(); }
int ucOpcVoz::ScrollVolumenValue() const { return m_volumen->Valor(); }

// "IBM" and "Carlos" where there are such, else the first of each list.
void ucOpcVoz::CargaComboFabricantes() {
    Ejecuta("CargaComboFabricantes", [this] {
        m_fabricantes->addItems(c.voces.Fabricantes());
        const int ibm = m_fabricantes->findText(QStringLiteral("IBM"), Qt::MatchFixedString | Qt::MatchCaseSensitive);
        if (ibm >= 0) m_fabricantes->setCurrentIndex(ibm);
        CargaVocesFab(QStringLiteral("Carlos"));
    });
}

// Fills the list of voices of the maker on screen and selects `voz`, or the first one.
void ucOpcVoz::CargaVocesFab(const QString &voz) {
    Ejecuta("CargaVocesFab", [this, &voz] {
        const QSignalBlocker mudo(m_voces);
        m_voces->clear();
        if (m_fabricantes->currentIndex() < 0) return;
        for (const int fila : c.voces.DeFabricante(m_fabricantes->currentText()))
            m_voces->addItem(c.voces.Filas()[static_cast<std::size_t>(fila)].NombreVoz, fila);
        PonEstadoControl(*m_voces, voz);
    });
}

void ucOpcVoz::AplicaRangos() {
    const bool ibm = EsIBM();
    if (!ibm) m_avanzados->setChecked(false);
    PonRango(*m_velocidad, cOpcVoz::RangoVelocidad(ibm));
    PonRango(*m_volumen, cOpcVoz::RangoVolumen(ibm));
}

// The maker accepted before brings its voice back; any other begins with its first.
void ucOpcVoz::ComboFabricantes_Click() {
    CargaVocesFab(m_fabricantes->currentText() == c.opciones.FabricanteActivo() ? c.opciones.VozActiva() : QString());
    AplicaRangos();
    Habilita();
}

void ucOpcVoz::ComboVoces_Click() {
    Ejecuta("ComboVoces_Click", [this] {
        if (m_avanzados->isChecked()) PonValoresDeLaVoz();
    });
}

void ucOpcVoz::CheckAvanzados_Click() {
    Ejecuta("CheckAvanzados_Click", [this] {
        if (m_avanzados->isChecked()) PonValoresDeLaVoz();
        Habilita();
    });
}

void ucOpcVoz::PonValoresDeLaVoz() {
    const RegistroVoz *fila = c.voces.Busca(m_fabricantes->currentText(), m_voces->currentText());
    if (fila == nullptr) return;
    for (std::size_t i = 0; i < m_barras.size(); ++i) m_barras[i]->SetValor(fila->*Avanzados()[i].defecto);
}

void ucOpcVoz::Probar_Click() {
    TerminaEdicion();  // pressed by its letter a box may still hold what was typed
    c.prueba.PruebaPagina(m_fabricantes->currentText(), m_voces->currentText(),
                          {.velocidad = ScrollVelocidadValue(),
                           .volumen = ScrollVolumenValue(),
                           .avanzados = m_avanzados->isChecked(),
                           .tono = m_barras[0]->Valor(),
                           .fluctuacion = m_barras[1]->Valor(),
                           .aspereza = m_barras[2]->Valor(),
                           .diafonia = m_barras[3]->Valor(),
                           .tamCabeza = m_barras[4]->Valor()});
}

void ucOpcVoz::SetTags() {
    Ejecuta("SetTags", [this] {
        const QString fabricante = c.opciones.FabricanteActivo();
        const QString voz = c.opciones.VozActiva();
        PaginaOpciones::SetTags();
        if (m_fabricantes->currentIndex() < 0) c.opciones.SetFabricanteActivo(fabricante);
        if (m_voces->currentIndex() < 0) c.opciones.SetVozActiva(voz);
    });
}

void ucOpcVoz::EstableceValores() {
    Ejecuta("EstableceValores", [this] {
        {
            const QSignalBlocker mudo(m_fabricantes);
            m_fabricantes->setCurrentIndex(-1);  // a maker that isn't there keeps no selection
            PonEstadoControl(*m_fabricantes, c.opciones.FabricanteActivo());
        }
        CargaVocesFab(c.opciones.VozActiva());
        if (m_voces->currentText() != c.opciones.VozActiva()) {
            const QSignalBlocker mudo(m_voces);
            m_voces->setCurrentIndex(-1);
        }
        AplicaRangos();
        PaginaOpciones::EstableceValores();
        if (!EsIBM()) m_avanzados->setChecked(false);  // whatever an earlier family has left stored
        MuestraTeclas();
    });
}

// Another voice brings its list, its ranges and its numbers.
void ucOpcVoz::EstableceCambiados() {
    if (AceptadoFuera("ComboFabricantes") || AceptadoFuera("ComboVoces"))
        EstableceValores();
    else
        PaginaOpciones::EstableceCambiados();
}

void ucOpcVoz::EstableceVelocidad() {
    Ejecuta("EstableceVelocidad", [this] {
        if (EsIBM() == c.opciones.EsIBM())
            m_velocidad->SetValor(c.opciones.Tag(QStringLiteral("ScrollVelocidad")).toInt());
    });
}

void ucOpcVoz::MuestraTeclas() {
    const bool otras = c.velocidadConSuper && c.velocidadConSuper();
    m_teclas->setVisible(otras);
    // The window takes its size from the page before the event loop has come to lay it out anew.
    layout()->update();
    layout()->activate();
    m_velocidad->Barra().setAccessibleDescription(
        otras ? QStringLiteral("Teclas rápidas: Super+Ctrl+F9, más despacio; Super+Ctrl+F10, más deprisa")
              : QStringLiteral("Teclas rápidas: Ctrl+Alt+F9, más despacio; Ctrl+Alt+F10, más deprisa"));
}

void ucOpcVoz::Habilita() {
    m_avanzados->setEnabled(EsIBM());
    const bool si = EsIBM() && m_avanzados->isChecked();
    for (std::size_t i = 0; i < m_barras.size(); ++i) {
        m_rotulos[i]->setEnabled(si);
        m_barras[i]->setEnabled(si);
    }
}

}  // namespace ondalis
