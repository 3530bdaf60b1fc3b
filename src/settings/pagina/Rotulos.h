// Captions that carry the mark "&" of the letter that leads to their control with Alt. To the eye it is an underline;
// it is no part of what a control is called. Letters are unique on a page together with its window's buttons: there A,
// C, Y and E are taken. Main thread.
#pragma once

#include <QLabel>
#include <QString>

namespace ondalis {

// The caption as it is read: without its marks.
QString SinMarca(QString rotulo);
// A label beside `de`, whose letter gives that the focus; of a group of controls, the one that takes it for them.
// Without a parent: a layout gives it one.
QLabel *Rotulo(const QString &texto, QWidget *de);

}  // namespace ondalis
