// State of one menu entry: bare caption in the tag, shown caption, enabled. The system reads its own state back from
// here; a widget only mirrors it. Main thread.
#pragma once

#include <QString>
#include <functional>
#include <utility>
#include <vector>

namespace ondalis {

class EntradaMenu {
public:
    EntradaMenu() = default;
    explicit EntradaMenu(QString rotulo, bool habilitada = true)
        : m_rotulo(std::move(rotulo)), m_habilitada(habilitada) {}

    const QString &Rotulo() const { return m_rotulo; }
    const QString &Etiqueta() const { return m_etiqueta; }
    bool Habilitada() const { return m_habilitada; }

    void SetRotulo(const QString &rotulo) { Cambia(m_rotulo, rotulo); }
    void SetEtiqueta(const QString &etiqueta) { Cambia(m_etiqueta, etiqueta); }
    void SetHabilitada(bool habilitada) { Cambia(m_habilitada, habilitada); }

    // Called after each change of value; one mirror an entry, which is called first, and any number of observers. None
    // of them may add or remove one from inside its call.
    void AlCambiar(std::function<void()> aviso) { m_aviso = std::move(aviso); }
    // `quien` is only compared; a second observer of the same replaces the first.
    void Observa(const void *quien, std::function<void()> aviso) {
        DejaDeObservar(quien);
        m_observadores.emplace_back(quien, std::move(aviso));
    }
    void DejaDeObservar(const void *quien) {
        std::erase_if(m_observadores, [quien](const auto &observador) { return observador.first == quien; });
    }

private:
    template <class T>
    void Cambia(T &campo, const T &valor) {
        if (campo == valor) return;
        campo = valor;
        if (m_aviso) m_aviso();
        for (const auto &observador : m_observadores) observador.second();
    }

    QString m_rotulo;
    QString m_etiqueta;
    bool m_habilitada = true;
    std::function<void()> m_aviso;
    std::vector<std::pair<const void *, std::function<void()>>> m_observadores;
};

}  // namespace ondalis
