#include "speech/cOpcVoz.h"

#include <cmath>

#include "settings/Catalogo.h"

namespace ondalis {

namespace {

// The two lists are empty until the catalogue fills them. Speed and volume hold the scroll bar's number; the settings
// hold the engine's.
constexpr FilaOpcion kFilas[] = {
    FilaDe("ComboFabricantes", "Voz", "FabricanteActivo", ""),
    FilaDe("ComboVoces", "Voz", "VozActiva", ""),
    FilaDe("ScrollVelocidad", "Voz", "Velocidad"),
    FilaDe("ScrollVolumen", "Voz", "Volumen", "65"),
    FilaDe("CheckAvanzados", "Voz", "ValoresAvanzados"),
    FilaDe("ScrollTono", "Voz", "Tono"),
    FilaDe("ScrollFluctuacion", "Voz", "Fluctuacion"),
    FilaDe("ScrollAspereza", "Voz", "Aspereza"),
    FilaDe("ScrollDiafonia", "Voz", "Diafonia"),
    FilaDe("ScrollTamCabeza", "Voz", "TamCabeza"),
};

constexpr const char *kAvanzados[] = {"ScrollTono", "ScrollFluctuacion", "ScrollAspereza", "ScrollDiafonia",
                                      "ScrollTamCabeza"};

RangoOpcion RangoAvanzado(const char *control) {
    return qstrcmp(control, "ScrollTono") == 0 ? cOpcVoz::RangoTono() : cOpcVoz::RangoOtros();
}

constexpr int kMilesIBM = 1000;  // the engine's volume for one step of the "IBM" scroll bar
constexpr int kCeroSAPI5 = 10;   // the scroll bar's number for the speed 0 of SAPI 5

}  // namespace

cOpcVoz::cOpcVoz(cRegistro &registro, cLog &log, const cVoces &voces, bool haySAPI5)
    : TablaOpciones(kFilas, registro, log, QStringLiteral("ucOpcVoz")), m_voces(voces) {
    SeleccionaInicial();
    Carga(haySAPI5);
    SetTagsAvanzados();
}

void cOpcVoz::SeleccionaInicial() {
    const QString ibm = QStringLiteral("IBM");
    const QString carlos = QStringLiteral("Carlos");
    for (const RegistroVoz &fila : m_voces.Filas())
        if (fila.Fabricante == ibm) SetFabricanteActivo(ibm);
    if (m_voces.Busca(ibm, carlos) != nullptr) SetVozActiva(carlos);
}

// False: what is stored is the name of no maker; the initial one stays. "IBM" is one also without its voices.
bool cOpcVoz::CargaFabricante(bool haySAPI5) {
    const auto fabricante = LeeFila(Fila("ComboFabricantes"));
    if (!fabricante) return true;
    if (haySAPI5 && *fabricante != QLatin1String("IBM") && !m_voces.Fabricantes().contains(*fabricante)) {
        AnotaSinSentido(Fila("ComboFabricantes"));
        return false;
    }
    SetFabricanteActivo(*fabricante);
    return true;
}

void cOpcVoz::Carga(bool haySAPI5) {
    const bool disparate = !CargaFabricante(haySAPI5);
    if (!EsIBM() && !haySAPI5) {
        SetFabricanteActivo(QStringLiteral("IBM"));
        return;
    }
    const auto voz = LeeFila(Fila("ComboVoces"));
    if (voz && (!disparate || m_voces.Busca(FabricanteActivo(), *voz))) SetVozActiva(*voz);
    AplicaRangos();
    if (const auto velocidad = LeeFila(Fila("ScrollVelocidad")); velocidad && !SetVelocidad(velocidad->toInt()))
        AnotaSinSentido(Fila("ScrollVelocidad"));
    if (const auto volumen = LeeFila(Fila("ScrollVolumen")); volumen && !SetVolumen(volumen->toInt()))
        AnotaSinSentido(Fila("ScrollVolumen"));
    if (const auto avanzados = LeeFila(Fila("CheckAvanzados"))) SetValoresAvanzados(*avanzados == QLatin1String("1"));
    if (!ValoresAvanzados()) return;
    for (const char *control : kAvanzados) {
        const RangoOpcion rango = RangoAvanzado(control);
        if (const auto valor = LeeEntero(Fila(control), rango.minimo, rango.maximo)) SetEntero(control, *valor);
    }
}

void cOpcVoz::AplicaRangos() {
    SetEntero("ScrollVelocidad", RangoVelocidad(EsIBM()).defecto);
    SetEntero("ScrollVolumen", RangoVolumen(EsIBM()).defecto);
    if (!EsIBM()) SetValoresAvanzados(false);
}

RangoOpcion cOpcVoz::RangoVelocidad(bool ibm) { return ibm ? RangoOpcion{70, 450, 170, 5} : RangoOpcion{0, 20, 10, 5}; }

RangoOpcion cOpcVoz::RangoVolumen(bool ibm) { return ibm ? RangoOpcion{1, 65, 65, 3} : RangoOpcion{0, 100, 100, 3}; }

QString cOpcVoz::GuidActiva() const {
    const RegistroVoz *fila = m_voces.BuscaNombre(VozActiva());
    return fila == nullptr ? QString() : QLatin1Char('{') + fila->IdModo + QLatin1Char('}');
}

std::int16_t cOpcVoz::NumeroVoz() const {
    const RegistroVoz *fila = m_voces.Busca(FabricanteActivo(), VozActiva());
    return fila == nullptr ? std::int16_t{0} : fila->NumeroSAPI5;
}

std::int32_t cOpcVoz::LenguaVoz() const {
    const RegistroVoz *fila = m_voces.BuscaNombre(VozActiva());
    return fila == nullptr ? 0 : fila->Lengua;
}

std::int16_t cOpcVoz::Velocidad() const {
    return static_cast<std::int16_t>(Entero("ScrollVelocidad") - (EsIBM() ? 0 : kCeroSAPI5));
}

bool cOpcVoz::SetVelocidad(int velocidad) {
    const int cero = EsIBM() ? 0 : kCeroSAPI5;
    const RangoOpcion rango = RangoVelocidad(EsIBM());
    if (velocidad < rango.minimo - cero || velocidad > rango.maximo - cero) return false;
    SetEntero("ScrollVelocidad", velocidad + cero);
    return true;
}

std::int32_t cOpcVoz::Volumen() const { return Entero("ScrollVolumen") * (EsIBM() ? kMilesIBM : 1); }

bool cOpcVoz::SetVolumen(int volumen) {
    const RangoOpcion rango = RangoVolumen(EsIBM());
    // Half to even, as the system rounds everywhere.
    const int valor = EsIBM() ? static_cast<int>(std::nearbyint(volumen / double{kMilesIBM})) : volumen;
    if (valor < rango.minimo || valor > rango.maximo) return false;
    SetEntero("ScrollVolumen", valor);
    return true;
}

bool cOpcVoz::CambiaVoz(const QString &fabricante, const QString &voz) {
    if (fabricante == FabricanteActivo() && voz == VozActiva()) return false;
    const bool otroFabricante = fabricante != FabricanteActivo();
    SetFabricanteActivo(fabricante);
    SetVozActiva(voz);
    if (otroFabricante) AplicaRangos();
    TomaValoresDeLaVoz();
    return true;
}

void cOpcVoz::SetTagsAvanzados() {
    if (!ValoresAvanzados()) TomaValoresDeLaVoz();
}

void cOpcVoz::TomaValoresDeLaVoz() {
    if (!EsIBM()) return;
    const RegistroVoz *fila = m_voces.Busca(FabricanteActivo(), VozActiva());
    // In the place of a voice that isn't there Carlos speaks, and as himself.
    if (fila == nullptr) fila = m_voces.Busca(FabricanteActivo(), QStringLiteral("Carlos"));
    if (fila == nullptr) return;
    SetEntero("ScrollTono", fila->TonoDefecto);
    SetEntero("ScrollFluctuacion", fila->FluctuacionDefecto);
    SetEntero("ScrollAspereza", fila->AsperezaDefecto);
    SetEntero("ScrollDiafonia", fila->DiafoniaDefecto);
    SetEntero("ScrollTamCabeza", fila->TamCabezaDefecto);
}

void cOpcVoz::GuardaValores() {
    SetTagsAvanzados();
    SalvaFila(Fila("ComboFabricantes"), FabricanteActivo());
    SalvaFila(Fila("ComboVoces"), VozActiva());
    SalvaFila(Fila("ScrollVelocidad"), QString::number(Velocidad()));
    SalvaFila(Fila("ScrollVolumen"), QString::number(Volumen()));
    SalvaFila(Fila("CheckAvanzados"), Tag(QStringLiteral("CheckAvanzados")));
    if (!ValoresAvanzados()) return;
    for (const char *control : kAvanzados) SalvaFila(Fila(control), Tag(QLatin1String(control)));
}

void cOpcVoz::SalvaVelocidad(int velocidad) { SalvaFila(Fila("ScrollVelocidad"), QString::number(velocidad)); }

}  // namespace ondalis
