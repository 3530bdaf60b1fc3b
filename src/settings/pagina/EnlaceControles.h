// How a control's state is written as the text of an accepted value (a tag), and shown from one. A control belongs to
// the row of its page's table that bears its objectName. Main thread.
#pragma once

#include <QString>

class QComboBox;
class QWidget;

namespace ondalis {

class TablaOpciones;

// What the tag of a list holds: the position of the selected entry, the number kept beside it, or its text.
enum class FormaLista { Posicion, Dato, Texto };

// Without this call a list's tag is its position.
void SetFormaLista(QComboBox &lista, FormaLista forma);

// Check boxes, radio buttons: "1" and "0"; lists: by their form, "-1" or the empty text without a selection; sliders,
// scroll bars and number boxes: the number; text boxes: the text. Any other class is a programmer's mistake.
QString EstadoControl(const QWidget &control);
// The reverse. A list without the wanted entry keeps its selection; a number outside the range goes to its limit.
void PonEstadoControl(QWidget &control, const QString &tag);

// The whole table, in its order. Rows without a control in `ventana` keep their tags.
void TomaTags(const QWidget &ventana, TablaOpciones &opciones);
void MuestraTags(QWidget &ventana, const TablaOpciones &opciones);
// A number box that hasn't lost the focus still holds what was typed: it takes its final value.
void TerminaEdicionDe(QWidget &ventana);

}  // namespace ondalis
