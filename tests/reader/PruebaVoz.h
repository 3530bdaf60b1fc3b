// The test of a voice over both real speech controls, each on a channel of its own, beside the controller over fakes.
#pragma once

#include "fakes/CanalGuionado.h"
#include "reader/PruebaLector.h"
#include "reader/cPruebaVoz.h"

namespace ondalis::prueba {

class PunteroDiario : public PunteroPantalla {
public:
    explicit PunteroDiario(Diario &diario) : m_diario(diario) {}
    int Puntero() const override { return m_puntero; }
    void SetPuntero(int puntero) override {
        m_diario.Anota(QStringLiteral("puntero.%1").arg(puntero));
        m_puntero = puntero;
    }

private:
    Diario &m_diario;
    int m_puntero = 0;
};

class BancoVoz : public PruebaLector {
protected:
    BancoVoz() {
        vozIBM.SetEventos(principal.Eventos());
        sapi5.SetEventos(principal.Eventos());
        voces.LeeValoresVoces(vozIBM);
        opcVoz.SetTagsAvanzados();
        canalIBM.alHablar = [this] { Anota("IBM"); };
        canalSAPI5.alHablar = [this] {
            Anota("SAPI5");
            canalSAPI5.Fin();  // at once: the call waits for it
        };
        Arranca();
    }
    void Anota(const char *motor) {
        diario.Anota(QStringLiteral("habla.%1.%2").arg(QLatin1String(motor)).arg(Estado()));
    }
    const RegistroVoz &Voz(const char *nombre) { return *voces.BuscaNombre(QString::fromUtf8(nombre)); }
    std::string Texto(const CanalGuionado &suyo) { return QString::fromStdU16String(suyo.Texto()).toStdString(); }

    CanalGuionado canalIBM, canalSAPI5;
    ActorSvr vozIBM{canalIBM, cola, estado, log};
    SpVoice sapi5{canalSAPI5, tokens, cola, estado, log};
    PunteroDiario puntero{diario};
    ColaboradoresPrincipal lector = Colaboradores(motor);
    cPruebaVoz prueba{
        {.lector = lector, .form = principal, .puntero = puntero, .voces = voces, .voz = vozIBM, .sapi5 = &sapi5}};
};

}  // namespace ondalis::prueba
