// Accepted values of the page "Voces": maker, voice, speed, volume and the five advanced values, in the engine's terms.
// Main thread.
#pragma once

#include "settings/TablaOpciones.h"
#include "speech/Voces.h"

namespace ondalis {

// Range of a scroll bar.
struct RangoOpcion {
    int minimo, maximo, defecto, pasoGrande;
};

class cOpcVoz : public TablaOpciones {
public:
    // `haySAPI5`: the SAPI 5 voice object exists. Reads the stored values; ends with SetTagsAvanzados.
    cOpcVoz(cRegistro &registro, cLog &log, const cVoces &voces, bool haySAPI5);

    QString FabricanteActivo() const { return Tag(QStringLiteral("ComboFabricantes")); }
    void SetFabricanteActivo(const QString &fabricante) { SetTag(QStringLiteral("ComboFabricantes"), fabricante); }
    bool EsIBM() const { return FabricanteActivo() == QLatin1String("IBM"); }
    // The text that marks a position for the family's engine.
    QString Marca() const { return EsIBM() ? QStringLiteral("\\Mrk=1\\") : QStringLiteral("<BOOKMARK mark='1'/>"); }
    QString VozActiva() const { return Tag(QStringLiteral("ComboVoces")); }
    void SetVozActiva(const QString &voz) { SetTag(QStringLiteral("ComboVoces"), voz); }
    QString GuidActiva() const;        // "{" + IdModo + "}" of the first row of that name, else empty
    std::int16_t NumeroVoz() const;    // NumeroSAPI5 of the first row equal in name and maker, else 0
    std::int32_t LenguaVoz() const;    // LCID of the first row of that name, else 0
    std::int16_t Velocidad() const;    // "IBM" 70 to 450 words a minute; others -10 to 10
    bool SetVelocidad(int velocidad);  // false: refused, outside the range
    std::int32_t Volumen() const;      // "IBM" 1000 to 65000; others 0 to 100
    bool SetVolumen(int volumen);      // false: refused, outside the range; "IBM" rounds to thousands
    bool ValoresAvanzados() const { return Booleano("CheckAvanzados"); }
    void SetValoresAvanzados(bool valor) { SetBooleano("CheckAvanzados", valor); }
    std::int16_t Tono() const { return static_cast<std::int16_t>(Entero("ScrollTono")); }
    std::int16_t Fluctuacion() const { return static_cast<std::int16_t>(Entero("ScrollFluctuacion")); }
    std::int16_t Aspereza() const { return static_cast<std::int16_t>(Entero("ScrollAspereza")); }
    std::int16_t Diafonia() const { return static_cast<std::int16_t>(Entero("ScrollDiafonia")); }
    std::int16_t TamCabeza() const { return static_cast<std::int16_t>(Entero("ScrollTamCabeza")); }

    // A choice that is accepted outside the page: what depends on the maker and on the voice follows, as it does on the
    // page. Another maker takes speed and volume to its family's defaults and the advanced values off where there are
    // none; another voice brings its own five values. False when this pair is the accepted one already.
    bool CambiaVoz(const QString &fabricante, const QString &voz);
    // With the advanced values off and an "IBM" voice, the five tags take that voice's defaults; those of Carlos, who
    // speaks in its place, where the catalogue hasn't got it.
    void SetTagsAvanzados();
    void GuardaValores();
    // Stores one speed at once, as the hot keys do.
    void SalvaVelocidad(int velocidad);

    static RangoOpcion RangoVelocidad(bool ibm);  // scroll bar's numbers: SAPI 5 0 to 20
    static RangoOpcion RangoVolumen(bool ibm);    // scroll bar's numbers: "IBM" 1 to 65
    static RangoOpcion RangoTono() { return {40, 422, 230, 15}; }
    static RangoOpcion RangoOtros() { return {0, 100, 50, 15}; }

private:
    // What the lists show before any stored value: "IBM" and "Carlos" where the catalogue has them.
    void SeleccionaInicial();
    bool CargaFabricante(bool haySAPI5);
    void Carga(bool haySAPI5);
    // The five tags take the defaults of the "IBM" voice.
    void TomaValoresDeLaVoz();
    // The family's ranges: speed and volume at its defaults; advanced values off for families without them.
    void AplicaRangos();

    const cVoces &m_voces;
};

}  // namespace ondalis
