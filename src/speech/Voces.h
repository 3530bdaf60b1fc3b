// The catalogue of voices: built once at start-up, never changed. Owned by main. Main thread.
#pragma once

#include <QString>
#include <QStringList>
#include <cstdint>
#include <functional>
#include <vector>

#include "engine/HablantesIBM.h"
#include "settings/cLog.h"
#include "speech/ActorSvr.h"
#include "speech/SpVoice.h"

namespace ondalis {

struct RegistroVoz {
    QString Fabricante;
    QString NombreVoz;
    QString IdModo;                 // upper case, without braces; empty in SAPI 5 rows
    std::int16_t NumeroSAPI5 = -1;  // position among the tokens; -1 in "IBM" rows
    std::int32_t Lengua = 0;        // LCID
    std::int16_t TonoDefecto = 0;
    std::int16_t FluctuacionDefecto = 0;
    std::int16_t AsperezaDefecto = 0;
    std::int16_t DiafoniaDefecto = 0;
    std::int16_t TamCabezaDefecto = 0;
};

// The speaker of a mode identifier, with or without braces, blind to case; Carlos for an unknown one.
const HablanteIBM &HablanteDeModo(const QString &idModo);

class cVoces {
public:
    // `hablantes`: what the enumeration of the "IBM" modes gives; borrowed.
    explicit cVoces(cLog &log, const std::vector<HablanteIBM> &hablantes = HablantesIBM())
        : m_log(log), m_hablantes(hablantes) {}

    // `prueba`: makes and drops a SAPI 5 voice; false when that fails. Sets SAPI5Compatible.
    void ChequeaSAPI5Compatible(const std::function<bool()> &prueba);
    bool SAPI5Compatible() const { return m_sapi5; }
    // Fills the rows: "IBM" voices first, then the tokens unless `noSAPI5` or SAPI 5 is unusable. `bombea` runs once a
    // row; `tokens` may be null.
    void RecogeVocesEquipo(const ListaTokens *tokens, bool noSAPI5, const std::function<void()> &bombea);
    // Reads the five defaults of each "IBM" row from the control; it stands on its last mode afterwards.
    void LeeValoresVoces(ActorSvr &voz);

    const std::vector<RegistroVoz> &Filas() const { return m_filas; }
    const RegistroVoz *Busca(const QString &fabricante, const QString &nombre) const;  // null: none
    const RegistroVoz *BuscaNombre(const QString &nombre) const;                       // first of that name
    // What the lists of makers and of a maker's voices show: each maker once, in the catalogue's order; positions in
    // Filas. The row of an empty catalogue is no maker's.
    QStringList Fabricantes() const;
    std::vector<int> DeFabricante(const QString &fabricante) const;

private:
    cLog &m_log;
    const std::vector<HablanteIBM> &m_hablantes;
    bool m_sapi5 = false;
    std::vector<RegistroVoz> m_filas{RegistroVoz{}};
};

}  // namespace ondalis
