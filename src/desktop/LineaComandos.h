// The window of the option -help: how the program is started. Shown modally by main. Main thread.
#pragma once

#include <QDialog>

namespace ondalis {

class LineaComandos : public QDialog {
public:
    LineaComandos();
};

}  // namespace ondalis
