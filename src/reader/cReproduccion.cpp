#include "reader/cReproduccion.h"

#include <initializer_list>

namespace ondalis {

namespace {

constexpr qsizetype kMaxTitulo = 60;       // characters
constexpr qsizetype kMaxBuscado = 10'000;  // of a long text no more is looked at

std::initializer_list<EntradaMenu MenuIcono::*> Observadas() {
    static constexpr std::initializer_list<EntradaMenu MenuIcono::*> entradas = {
        &MenuIcono::PausaReanudar, &MenuIcono::Detener, &MenuIcono::RepetirLectura, &MenuIcono::AvanzarPalabras,
        &MenuIcono::RetrocederPalabras};
    return entradas;
}

}  // namespace

cReproduccion::cReproduccion(MenuIcono &menu, cCola &cola, std::function<void(const QString &)> pulsa,
                             std::function<QString()> texto)
    : m_menu(menu), m_cola(cola), m_pulsa(std::move(pulsa)), m_texto(std::move(texto)) {
    for (const auto entrada : Observadas())
        (m_menu.*entrada).Observa(this, [this] {
            if (m_aviso) m_aviso();
        });
}

cReproduccion::~cReproduccion() {
    for (const auto entrada : Observadas()) (m_menu.*entrada).DejaDeObservar(this);
}

cReproduccion::Estado cReproduccion::GetEstado() const {
    if (!m_menu.Detener.Habilitada()) return Estado::Parada;
    return m_menu.PausaReanudar.Rotulo().startsWith(QLatin1String("Reanudar")) ? Estado::EnPausa : Estado::Sonando;
}

QString cReproduccion::Titulo() const {
    if (GetEstado() == Estado::Parada && !m_menu.RepetirLectura.Habilitada()) return {};
    QString texto = m_texto ? m_texto().left(kMaxBuscado).simplified() : QString();
    if (texto.size() <= kMaxTitulo) return texto;
    qsizetype corte = texto.lastIndexOf(QLatin1Char(' '), kMaxTitulo - 1);
    if (corte < 1) corte = texto.at(kMaxTitulo - 2).isHighSurrogate() ? kMaxTitulo - 2 : kMaxTitulo - 1;
    return texto.left(corte) + QStringLiteral("…");
}

bool cReproduccion::PuedeReproducir() const {
    return m_menu.PausaReanudar.Habilitada() || m_menu.RepetirLectura.Habilitada();
}

bool cReproduccion::PuedePausar() const { return m_menu.PausaReanudar.Habilitada(); }

void cReproduccion::Ordena(std::function<const char *()> tecla) {
    m_cola.Pon(cCola::Clase::Tecla, [this, tecla = std::move(tecla)] {
        if (const char *nombre = tecla()) m_pulsa(QLatin1String(nombre));
    });
}

void cReproduccion::Reproduce() {
    Ordena([this]() -> const char * {
        if (GetEstado() == Estado::EnPausa) return "Pausa";
        return GetEstado() == Estado::Parada && m_menu.RepetirLectura.Habilitada() ? "Repetir" : nullptr;
    });
}

void cReproduccion::Pausa() {
    Ordena([this] { return GetEstado() == Estado::Sonando ? "Pausa" : nullptr; });
}

void cReproduccion::ReproduceOPausa() {
    Ordena([this]() -> const char * {
        if (GetEstado() != Estado::Parada) return "Pausa";
        return m_menu.RepetirLectura.Habilitada() ? "Repetir" : nullptr;
    });
}

void cReproduccion::Detiene() {
    Ordena([this] { return GetEstado() != Estado::Parada ? "Detener" : nullptr; });
}

void cReproduccion::Avanza() {
    Ordena([this] { return PuedeAvanzar() ? "Avanzar" : nullptr; });
}

void cReproduccion::Retrocede() {
    Ordena([this] { return PuedeRetroceder() ? "Retroceder" : nullptr; });
}

}  // namespace ondalis
