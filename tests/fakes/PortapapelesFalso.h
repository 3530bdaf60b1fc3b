// A clipboard that holds what the test copies.
#pragma once

#include <optional>

#include "fakes/Diario.h"
#include "reader/Portapapeles.h"

namespace ondalis::prueba {

class PortapapelesFalso : public Portapapeles {
public:
    explicit PortapapelesFalso(Diario &diario) : m_diario(diario) {}
    bool HayTexto() const override { return texto.has_value(); }
    QString Texto() const override { return texto.value_or(QString()); }
    void Vacia() override {
        m_diario.Anota(QStringLiteral("portapapeles.Vacia"));
        texto.reset();
    }

    std::optional<QString> texto;  // nothing: no text on it (empty, or a picture)

private:
    Diario &m_diario;
};

}  // namespace ondalis::prueba
