#include "keys/cTecla.h"

#include <QCoreApplication>
#include <algorithm>
#include <exception>

namespace ondalis {

namespace {
const QString kBorrado = QStringLiteral("BORRADO");
}

cTecla::cTecla(TeclasSistema &teclas, cCola &cola, cLog &log) : m_sistema(teclas), m_cola(cola), m_log(log) {
    m_sistema.SetPulsada([this](int identificador, bool repetida) { Pulsada(identificador, repetida); });
}

cTecla::~cTecla() {
    m_sistema.SetPulsada({});
    for (std::size_t i = 0; i + 1 < m_teclas.size(); ++i)
        if (m_teclas[i].NombreTecla != kBorrado) m_sistema.Libera(static_cast<int>(i) + PrimerIdentificador);
}

std::uint32_t cTecla::Mascara(std::int32_t modificador) {
    switch (modificador) {
        case 0: return 2;
        case 1: return 1;
        case 2: return 4;
        case 4: return 3;
        default: return 0;
    }
}

void cTecla::Init(std::uintptr_t ventana) { m_ventana = ventana; }

void cTecla::AddTecla(std::int32_t modificador, std::int16_t tecla, const QString &nombre) {
    if (m_ventana == 0) return;
    const int identificador = static_cast<int>(m_teclas.size()) - 1 + PrimerIdentificador;
    m_teclas.back() = {Mascara(modificador), tecla, nombre};
    // One that another program holds stays in the table and fires when that one lets go; the user isn't told.
    if (!m_sistema.Registra(identificador, m_teclas.back().Modificadores, tecla))
        m_log.Escribe(QStringLiteral("cTecla.AddTecla: "),
                      QStringLiteral("La combinación de %1 no está libre; se toma cuando lo esté").arg(nombre));
    m_teclas.emplace_back();
}

bool cTecla::Registrada(std::int32_t modificador, std::int16_t tecla, const QString &nombre) const {
    if (m_ventana == 0) return false;
    return std::any_of(m_teclas.begin(), m_teclas.end(), [&](const RegistroTecla &fila) {
        return fila.Modificadores == Mascara(modificador) && fila.CodigoTecla == tecla && fila.NombreTecla == nombre;
    });
}

void cTecla::BorraTecla(const QString &nombre) {
    if (m_ventana == 0) return;
    for (std::size_t i = 0; i + 1 < m_teclas.size(); ++i) {
        if (m_teclas[i].NombreTecla != nombre) continue;
        m_teclas[i].NombreTecla = kBorrado;
        m_sistema.Libera(static_cast<int>(i) + PrimerIdentificador);
        return;
    }
}

void cTecla::EsperaTeclas() {
    if (m_ventana == 0) return;
    m_esperando = true;
    while (m_esperando) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

void cTecla::Termina() {
    m_esperando = false;
    m_cola.Despierta();
}

void cTecla::Pulsada(int identificador, bool repetida) {
    const int i = identificador - PrimerIdentificador;
    if (i < 0 || i + 1 >= static_cast<int>(m_teclas.size())) return;
    if (repetida) {
        const bool espera = std::find(m_enEspera.begin(), m_enEspera.end(), i) != m_enEspera.end();
        if (espera || !m_repetible || !m_repetible(m_teclas[static_cast<std::size_t>(i)].NombreTecla)) return;
    }
    m_enEspera.push_back(i);
    m_cola.Pon(cCola::Clase::Tecla, [this, i, vivo = std::weak_ptr<int>(m_vivo)] {
        if (!vivo.expired()) Entrega(i);
    });
}

void cTecla::Entrega(int fila) {
    const auto sitio = std::find(m_enEspera.begin(), m_enEspera.end(), fila);
    if (sitio != m_enEspera.end()) m_enEspera.erase(sitio);
    // A copy: the handler may change the table, and with it this row's name.
    const QString nombre = m_teclas[static_cast<std::size_t>(fila)].NombreTecla;
    if (nombre == kBorrado || !m_manejador) return;
    try {
        m_manejador(nombre);
    } catch (const ErrorFallo &error) {
        Abandona(error.fallo);
    } catch (const std::exception &error) {
        Abandona({Fallo::LlamadaNoValida, QString::fromUtf8(error.what()), 0});
    }
}

// No handler lets an error out; after one that does, the loop ends.
void cTecla::Abandona(const Fallo &fallo) {
    m_log.Escribe(QStringLiteral("cTecla.EsperaTeclas: "), fallo, QString::number(fallo.linea));
    Termina();
}

}  // namespace ondalis
