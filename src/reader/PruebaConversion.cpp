#include "reader/PruebaConversion.h"

#include <optional>

namespace ondalis {

namespace {

// The icon of an active program, busy for as long as this lives.
class IconoOcupado {
public:
    // A reading that has been sent and doesn't sound yet shows the busy icon too, and ends here.
    explicit IconoOcupado(cFormPrincipal &form)
        : m_form(form), m_icono(form.Campos().Leyendo ? form.IconoReposo() : form.GetIconoBarra()) {
        m_form.SetIconoBarra(QStringLiteral("reloj"));
    }
    ~IconoOcupado() {
        // Meanwhile the program may have been switched off, and has an icon for that.
        if (m_form.ProgramaActivo()) m_form.SetIconoBarra(m_icono);
    }
    IconoOcupado(const IconoOcupado &) = delete;
    IconoOcupado &operator=(const IconoOcupado &) = delete;

private:
    cFormPrincipal &m_form;
    int m_icono;
};

}  // namespace

void PruebaConversion(const ColaboradoresPrincipal &lector, cFormPrincipal &form, const QString &texto) {
    if (texto.isEmpty()) return;
    std::optional<IconoOcupado> ocupado;
    if (form.ProgramaActivo()) {
        if (form.Menu().Detener.Habilitada()) form.Detener_Click();
        ocupado.emplace(form);
    }
    if (const Fallo fallo = lector.motor.HablaAviso(texto)) throw ErrorFallo{fallo};
}

}  // namespace ondalis
