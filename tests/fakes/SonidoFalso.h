// Sounds that are only remembered by name.
#pragma once

#include <QStringList>
#include <functional>
#include <vector>

#include "desktop/cSonido.h"

namespace ondalis::prueba {

// A sink that plays nothing; the sample ends at once, when the test says so, or never.
class SalidaSonidoFalsa : public SalidaSonido {
public:
    bool Reproduce(const QByteArray &wav, std::function<void()> alTerminar) override {
        muestras.push_back(wav);
        if (!hayServidor) return false;
        if (terminaAlMomento)
            alTerminar();
        else
            pendiente = std::move(alTerminar);
        return true;
    }

    std::vector<QByteArray> muestras;
    bool hayServidor = true;
    bool terminaAlMomento = true;
    std::function<void()> pendiente;
};

class SonidoFalso : public cSonido {
public:
    explicit SonidoFalso(cCola &cola) : cSonido(m_salida, cola) {}
    void Reproduce(const QString &nombre) override { nombres << nombre; }

    QStringList nombres;

private:
    inline static SalidaSonidoFalsa m_salida;
};

}  // namespace ondalis::prueba
