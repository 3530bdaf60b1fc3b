#include "desktop/cRemoto.h"

namespace ondalis {

cRemoto::cRemoto(cFormPrincipal &form, cCola &cola, const cEstadoVoz &estado, cConexionBus &bus)
    : m_form(form),
      m_servicio(
          bus, [&form](const QString &comando, std::int16_t &cancel) { return form.Form_LinkExecute(comando, cancel); },
          form.DDELink()),
      m_controles(
          form.Menu(), cola, [&form](const QString &tecla) { form.tecla_HotKeyPulsada(tecla); },
          // A remote text isn't kept by the session; the title of another one would be wrong.
          [&form, &estado] { return estado.valor == cEstadoVoz::Remota ? QString() : form.Campos().TextoLectura; }),
      m_mpris(bus, m_controles) {
    form.AlCambiarDDELink([this](const QString &texto) { m_servicio.SetDDELink(texto); });
    form.AlTerminarRemota([this](std::uint32_t numero) { m_servicio.Termina(numero); });
}

cRemoto::~cRemoto() {
    m_form.AlCambiarDDELink({});
    m_form.AlTerminarRemota({});
}

}  // namespace ondalis
