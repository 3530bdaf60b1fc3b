// The clipboard as the system sees it: the text fetched last, without ever waiting for its owner. platform/x11 fetches
// it asynchronously; tests set it. Main thread.
#pragma once

#include <QString>

namespace ondalis {

class Portapapeles {
public:
    virtual ~Portapapeles() = default;
    // A text is there (an owner that exits keeps the text last fetched; one without text, or clearing, ends it).
    virtual bool HayTexto() const = 0;
    virtual QString Texto() const = 0;  // empty when there is none
    virtual void Vacia() = 0;
};

}  // namespace ondalis
