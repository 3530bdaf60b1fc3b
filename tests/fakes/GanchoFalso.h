// The hook that the test types on.
#pragma once

#include <QList>

#include "fakes/Diario.h"
#include "keys/GanchoTeclado.h"

namespace ondalis::prueba {

class GanchoFalso : public GanchoTeclado {
public:
    explicit GanchoFalso(Diario &diario) : m_diario(diario) {}
    void IniciaHook() override {
        m_diario.Anota(QStringLiteral("gancho.si"));
        oye = true;
    }
    void TerminaHook() override {
        m_diario.Anota(QStringLiteral("gancho.no"));
        oye = false;
    }
    void SetTecleada(std::function<void(const TeclaEscrita &)> tecleada) override { m_tecleada = std::move(tecleada); }

    // A press while the hook is on; nothing else.
    void Pulsa(int virtualKey, const QString &texto = {}, int mayusculas = 0) {
        if (oye) m_tecleada({virtualKey, mayusculas, texto});
    }
    // Types letters and signs; a line end is the key Enter.
    void Teclea(const QString &texto) {
        const auto letras = texto.toUcs4();
        for (const char32_t c : letras) {
            const int tecla = c == U'\n' ? 13 : c == U' ' ? 32 : c == U'\t' ? 9 : 0;
            const char32_t caracter = c == U'\n' ? U'\r' : c;
            Pulsa(tecla, QString::fromUcs4(&caracter, 1));
        }
    }
    bool oye = false;

private:
    Diario &m_diario;
    std::function<void(const TeclaEscrita &)> m_tecleada;
};

}  // namespace ondalis::prueba
