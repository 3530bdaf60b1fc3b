#include "keys/ucOpcTeclasRap.h"

#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <algorithm>

#include "keys/EstableceTeclas.h"
#include "settings/pagina/CasillaEnlace.h"
#include "settings/pagina/EnlaceControles.h"
#include "settings/pagina/Rotulos.h"
#include "settings/pagina/cDeslizador.h"
#include "settings/pagina/cLista.h"

namespace ondalis {

namespace {

constexpr int kPalabras = 10;
constexpr int kPasoGrande = 5;

}  // namespace

ucOpcTeclasRap::ucOpcTeclasRap(cOpcTeclasRap &opciones, cTecla &tecla, cGeneral &general)
    : PaginaOpciones("FrameTeclasRap", &opciones), m_opciones(opciones), m_tecla(tecla), m_general(general) {
    const Orden ordenes[] = {
        {"Activar", QStringLiteral("Act&ivar / Desactivar")}, {"Pausa", QStringLiteral("&Pausa / Reanudar")},
        {"Detener", QStringLiteral("&Detener lectura")},      {"Repetir", QStringLiteral("&Repetir última lectura")},
        {"Avanzar", QStringLiteral("A&vanzar palabras")},     {"Retroceder", QStringLiteral("Re&troceder palabras")},
    };
    auto *columna = new QVBoxLayout(this);
    m_arriba = new QGridLayout;
    columna->addLayout(m_arriba);
    for (int i = 0; i < 4; ++i) PonOrden(*m_arriba, ordenes[i]);

    m_frameAvRe = new QGroupBox;
    m_frameAvRe->setObjectName(QStringLiteral("FrameAvRe"));
    m_frameAvRe->setAccessibleName(QStringLiteral("Avanzar y retroceder"));
    columna->addWidget(m_frameAvRe);
    m_dentro = new QGridLayout(m_frameAvRe);
    PonAvRe(*m_dentro, ordenes[4], ordenes[5]);

    columna->addWidget(Casilla("CheckAvisos", QStringLiteral("Avi&sar al pulsar teclas sin efecto"), true));
    columna->addStretch();
    for (QGridLayout *rejilla : {m_arriba, m_dentro}) rejilla->setColumnStretch(2, 1);
    Alinea();
}

// One row: what the key does, modifier, key. Both lists show the design value, which is the table's.
void ucOpcTeclasRap::PonOrden(QGridLayout &rejilla, const Orden &orden) {
    const QString nombre = QLatin1String(orden.nombre);
    const QString rotulo = SinMarca(orden.rotulo);
    auto *modificador =
        new cLista(qPrintable(QStringLiteral("Mod") + nombre), QStringLiteral("Modificador de ") + rotulo);
    modificador->addItems({QStringLiteral("Control"), QStringLiteral("Alt"), QStringLiteral("Shift")});
    auto *tecla = new cLista(qPrintable(QStringLiteral("Tecla") + nombre), QStringLiteral("Tecla de ") + rotulo);
    for (const FilaTecla &fila : TablaTeclas()) tecla->addItem(QLatin1String(fila.rotulo));
    for (cLista *lista : {modificador, tecla}) {
        for (const FilaOpcion &fila : m_opciones.Filas())
            if (lista->objectName() == QLatin1String(fila.control))
                PonEstadoControl(*lista, QLatin1String(fila.diseno));
        connect(lista, &QComboBox::activated, this, [this, nombre] { Orden_Click(nombre); });
    }
    QLabel *etiqueta = Rotulo(orden.rotulo, modificador);
    m_etiquetas.push_back(etiqueta);
    const int fila = rejilla.rowCount();
    rejilla.addWidget(etiqueta, fila, 0);
    rejilla.addWidget(modificador, fila, 1);
    rejilla.addWidget(tecla, fila, 2);
    // On the accessibility bus a list's name is its chosen entry; what tells lists apart is their label, and this one's
    // is out of sight.
    auto *oculta = new QLabel(tecla->accessibleName(), tecla->parentWidget());
    oculta->setBuddy(tecla);
    oculta->hide();
}

void ucOpcTeclasRap::PonPalabras(QGridLayout &rejilla, const QString &rotulo, cDeslizador *palabras) {
    palabras->SetRango(cOpcTeclasRap::MinPalabras, cOpcTeclasRap::MaxPalabras, kPasoGrande);
    palabras->SetValor(kPalabras);
    QLabel *etiqueta = Rotulo(rotulo, palabras);
    m_etiquetas.push_back(etiqueta);
    const int fila = rejilla.rowCount();
    rejilla.addWidget(etiqueta, fila, 0);
    rejilla.addWidget(palabras, fila, 1, 1, 2);
}

void ucOpcTeclasRap::PonAvRe(QGridLayout &rejilla, const Orden &avanzar, const Orden &retroceder) {
    PonOrden(rejilla, avanzar);
    PonPalabras(rejilla, QStringLiteral("&Nº de palabras"),
                new cDeslizador("SaltoAvanzar", "ValorAvanzar", QStringLiteral("Nº de palabras al avanzar")));
    PonOrden(rejilla, retroceder);
    PonPalabras(rejilla, QStringLiteral("Nº de pa&labras"),
                new cDeslizador("SaltoRetroceder", "ValorRetroceder", QStringLiteral("Nº de palabras al retroceder")));
}

// The rows inside the box stand under those outside it.
void ucOpcTeclasRap::Alinea() {
    int ancho = 0;
    for (const QLabel *etiqueta : m_etiquetas) ancho = std::max(ancho, etiqueta->sizeHint().width());
    const QMargins marco = m_frameAvRe->contentsMargins() + m_dentro->contentsMargins();
    m_arriba->setContentsMargins(marco.left(), 0, marco.right(), 0);
    for (QGridLayout *rejilla : {m_arriba, m_dentro}) rejilla->setColumnMinimumWidth(0, ancho);
}

void ucOpcTeclasRap::changeEvent(QEvent *evento) {
    PaginaOpciones::changeEvent(evento);
    if (m_dentro && (evento->type() == QEvent::FontChange || evento->type() == QEvent::StyleChange)) Alinea();
}

cLista *ucOpcTeclasRap::Lista(const char *clase, const QString &nombre) const {
    return findChild<cLista *>(QLatin1String(clase) + nombre);
}

bool ucOpcTeclasRap::TeclaAsignada(const QString &nombre, int posModificador, int posTecla) const {
    if (posModificador == -1 || posTecla == -1) return false;
    for (const QString otro : ComandosConfigurables())
        if (otro != nombre && Lista("Mod", otro)->currentIndex() == posModificador &&
            Lista("Tecla", otro)->currentIndex() == posTecla)
            return true;
    return false;
}

void ucOpcTeclasRap::Orden_Click(const QString &nombre) {
    cLista *const modificador = Lista("Mod", nombre);
    cLista *const tecla = Lista("Tecla", nombre);
    if (!TeclaAsignada(nombre, modificador->currentIndex(), tecla->currentIndex())) return;
    m_general.VMsg(QStringLiteral("La combinación \"%1 + %2\" ya está asignada.")
                       .arg(modificador->currentText(), tecla->currentText()));
    for (cLista *lista : {modificador, tecla}) PonEstadoControl(*lista, m_opciones.Tag(lista->objectName()));
}

void ucOpcTeclasRap::Salva() {
    EstableceTeclasRapidas(m_tecla, m_opciones);
    m_opciones.GuardaValores();
}

}  // namespace ondalis
