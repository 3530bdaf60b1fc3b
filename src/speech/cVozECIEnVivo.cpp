#include "speech/cVozECIEnVivo.h"

#include <algorithm>

#include "engine/Dialectos.h"
#include "settings/cGeneral.h"
#include "speech/Voces.h"
#include "text/Codificacion.h"

namespace ondalis {

// The control only keeps a reference to its state, which is made after it: no operation runs before both are there.
cVozECIEnVivo::cVozECIEnVivo(CanalVoz &canal, cCola &cola, cLog &log)
    : ControlHabla(canal, cola, m_suEstado, log), m_hablante(&HablanteDeModo(QString())) {}

void cVozECIEnVivo::SetHablante(const QString &nombre, std::int32_t lengua) {
    const auto &todos = HablantesIBM();
    auto fila = std::ranges::find_if(
        todos, [&nombre](const HablanteIBM &hablante) { return nombre.contains(QString::fromUtf8(hablante.nombre)); });
    if (fila == todos.end()) fila = std::ranges::find(todos, lengua, &HablanteIBM::lengua);
    m_hablante = fila != todos.end() ? &*fila : &HablanteDeModo(QString());
}

void cVozECIEnVivo::SetAvanzados(std::int16_t tono, std::int16_t fluctuacion, std::int16_t aspereza,
                                 std::int16_t diafonia, std::int16_t tamCabeza) {
    m_tono = tono;
    m_fluctuacion = fluctuacion;
    m_aspereza = aspereza;
    m_diafonia = diafonia;
    m_tamCabeza = tamCabeza;
}

ParametrosVoz cVozECIEnVivo::Parametros(bool avanzados) const {
    const auto porcentaje = [avanzados](std::int16_t puesto, std::int16_t propio) {
        return std::clamp<int>(avanzados ? puesto : propio, 0, 100);
    };
    ParametrosVoz voz;
    voz.motor = m_hablante->motor;
    voz.voz = m_hablante->idioma;
    voz.formantes = true;
    voz.velocidad = std::clamp<int>(m_velocidad, 70, 450);
    voz.ganancia = std::clamp(m_volumen, 0, 65000) / 65000.0;
    voz.tono = std::clamp<int>(avanzados ? m_tono : m_hablante->tono, 40, 422);
    voz.fluctuacion = porcentaje(m_fluctuacion, m_hablante->fluctuacion);
    voz.aspereza = porcentaje(m_aspereza, m_hablante->aspereza);
    voz.diafonia = porcentaje(m_diafonia, m_hablante->diafonia);
    voz.tamCabeza = porcentaje(m_tamCabeza, m_hablante->tamCabeza);
    return voz;
}

bool cVozECIEnVivo::HablaFichero(const QString &fichero, bool sincrono, const QString &destino, bool avanzados) {
    m_errorTexto.clear();
    Cancela();
    QString texto;
    Fallo fallo;
    if (!destino.isEmpty())
        fallo = Fallo::De(Fallo::LlamadaNoValida, QStringLiteral("Error al establecer el fichero de audio ") + destino);
    else if (Fallo lectura = LeeFicheroTexto(fichero, texto))
        fallo = std::move(lectura);
    else if (texto.isEmpty())
        fallo = Fallo::De(Fallo::LlamadaNoValida);
    if (fallo) {
        m_errorTexto = cGeneral::VBError(fallo);
        Log().Escribe(QStringLiteral("cVozECI.HablaFichero: "), m_errorTexto);
        return false;
    }
    Acepta(Parametros(avanzados), TextoLlano(texto.toStdU16String()),
           sincrono ? Modo::LecturaEsperando : Modo::Lectura);
    return true;
}

bool cVozECIEnVivo::Habla(const QString &texto, bool sincrono, const QString &destino, bool avanzados) {
    m_errorTexto.clear();
    Cancela();
    if (!destino.isEmpty()) {
        m_errorTexto = QStringLiteral("Error al establecer el fichero de grabación ") + destino;
        Log().Escribe(QStringLiteral("cVozECI.Habla: "), m_errorTexto);
        return false;
    }
    Acepta(Parametros(avanzados), TextoLlano(texto.toStdU16String()),
           sincrono ? Modo::LecturaEsperando : Modo::Lectura);
    return true;
}

QString cVozECIEnVivo::UltimoError() const { return QStringLiteral("cVozECI: ") + m_errorTexto; }

}  // namespace ondalis
