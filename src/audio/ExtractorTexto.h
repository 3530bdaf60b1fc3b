// Makes a plain text file of a document, so that engines and editor can work on any file. Main thread.
#pragma once

#include <QString>

#include "settings/Fallo.h"
#include "settings/cGeneral.h"

namespace ondalis {

class ExtractorTexto {
public:
    virtual ~ExtractorTexto() = default;
    // `texto` gets the path of a plain text: `fichero` itself, or "~temp.txt" in its folder when it had to be
    // converted. A failure is logged under "ConvierteAFichTexto: ", and shown with `muestraError`; `texto` is `fichero`
    // then.
    [[nodiscard]] virtual Fallo ConvierteAFichTexto(const QString &fichero, bool muestraError, QString &texto) = 0;
};

// Takes plain text alone: a document of another kind, by its ending or because its bytes can't be text, is a failure.
// What isn't there is passed on as it stands: who reads it finds out.
class ExtractorTextoLlano : public ExtractorTexto {
public:
    explicit ExtractorTextoLlano(cGeneral &general) : m_general(general) {}
    Fallo ConvierteAFichTexto(const QString &fichero, bool muestraError, QString &texto) override;

private:
    cGeneral &m_general;
};

}  // namespace ondalis
