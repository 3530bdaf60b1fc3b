#include "settings/pagina/EnlaceControles.h"

#include <QAbstractButton>
#include <QAbstractSlider>
#include <QComboBox>
#include <QLineEdit>
#include <QSpinBox>
#include <QVariant>

#include "settings/TablaOpciones.h"

namespace ondalis {

namespace {

constexpr const char *kForma = "FormaLista";

FormaLista Forma(const QComboBox &lista) { return static_cast<FormaLista>(lista.property(kForma).toInt()); }

QString EstadoLista(const QComboBox &lista) {
    switch (Forma(lista)) {
        case FormaLista::Texto: return lista.currentText();
        case FormaLista::Dato: return lista.currentIndex() < 0 ? QString() : lista.currentData().toString();
        case FormaLista::Posicion: break;
    }
    return QString::number(lista.currentIndex());
}

void PonEstadoLista(QComboBox &lista, const QString &tag) {
    int posicion = -1;
    switch (Forma(lista)) {
        case FormaLista::Texto: posicion = lista.findText(tag, Qt::MatchExactly | Qt::MatchCaseSensitive); break;
        case FormaLista::Dato: posicion = lista.findData(tag.toInt()); break;
        case FormaLista::Posicion: posicion = tag.toInt(); break;
    }
    if (posicion >= 0 && posicion < lista.count()) lista.setCurrentIndex(posicion);
}

}  // namespace

void SetFormaLista(QComboBox &lista, FormaLista forma) { lista.setProperty(kForma, static_cast<int>(forma)); }

QString EstadoControl(const QWidget &control) {
    if (const auto *boton = qobject_cast<const QAbstractButton *>(&control))
        return boton->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
    if (const auto *lista = qobject_cast<const QComboBox *>(&control)) return EstadoLista(*lista);
    if (const auto *barra = qobject_cast<const QAbstractSlider *>(&control)) return QString::number(barra->value());
    if (const auto *caja = qobject_cast<const QSpinBox *>(&control)) return QString::number(caja->value());
    if (const auto *texto = qobject_cast<const QLineEdit *>(&control)) return texto->text();
    Q_ASSERT_X(false, "EstadoControl", control.metaObject()->className());
    return {};
}

void PonEstadoControl(QWidget &control, const QString &tag) {
    if (auto *boton = qobject_cast<QAbstractButton *>(&control))
        boton->setChecked(tag == QLatin1String("1"));
    else if (auto *lista = qobject_cast<QComboBox *>(&control))
        PonEstadoLista(*lista, tag);
    else if (auto *barra = qobject_cast<QAbstractSlider *>(&control))
        barra->setValue(tag.toInt());
    else if (auto *caja = qobject_cast<QSpinBox *>(&control))
        caja->setValue(tag.toInt());
    else if (auto *texto = qobject_cast<QLineEdit *>(&control))
        texto->setText(tag);
    else
        Q_ASSERT_X(false, "PonEstadoControl", control.metaObject()->className());
}

void TomaTags(const QWidget &ventana, TablaOpciones &opciones) {
    for (const FilaOpcion &fila : opciones.Filas())
        if (const auto *control = ventana.findChild<QWidget *>(QLatin1String(fila.control)))
            opciones.SetTag(QLatin1String(fila.control), EstadoControl(*control));
}

void MuestraTags(QWidget &ventana, const TablaOpciones &opciones) {
    for (const FilaOpcion &fila : opciones.Filas())
        if (auto *control = ventana.findChild<QWidget *>(QLatin1String(fila.control)))
            PonEstadoControl(*control, opciones.Tag(QLatin1String(fila.control)));
}

void TerminaEdicionDe(QWidget &ventana) {
    for (QAbstractSpinBox *caja : ventana.findChildren<QAbstractSpinBox *>()) caja->interpretText();
}

}  // namespace ondalis
