#include "desktop/cSonido.h"

#include <QFile>
#include <QtEndian>
#include <memory>
#include <mutex>

namespace ondalis {

namespace {

constexpr int kMargenMs = 200;  // beyond the sample's own length

// Milliseconds of a WAV file; 0 if it isn't one.
int DuracionMs(const QByteArray &wav) {
    if (!wav.startsWith("RIFF") || wav.mid(8, 4) != "WAVE") return 0;
    quint32 bytesPorSegundo = 0;
    // Chunks: four letters, length, content padded to an even length.
    for (qsizetype sitio = 12; sitio + 8 <= wav.size();) {
        const QByteArray tipo = wav.mid(sitio, 4);
        const qsizetype largo = qFromLittleEndian<quint32>(wav.constData() + sitio + 4);
        const qsizetype hay = qMin(largo, wav.size() - sitio - 8);
        if (tipo == "fmt " && hay >= 16) bytesPorSegundo = qFromLittleEndian<quint32>(wav.constData() + sitio + 16);
        if (tipo == "data" && bytesPorSegundo > 0) return static_cast<int>(hay * 1000 / bytesPorSegundo);
        sitio += 8 + largo + largo % 2;
    }
    return 0;
}

// What the player's thread and the waiting call share. The player may report after the call has given up, or after the
// queue's end.
struct Espera {
    std::mutex cerrojo;
    bool terminado = false;
    cCola *cola = nullptr;  // null: nobody waits any more
};

}  // namespace

QByteArray cSonido::Recurso(const QString &nombre) {
    QFile fichero(QStringLiteral(":/sonidos/%1.wav").arg(nombre));
    return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray();
}

void cSonido::Reproduce(const QString &nombre) { Toca(Recurso(nombre)); }

void cSonido::Toca(const QByteArray &wav) {
    if (wav.isEmpty()) return;
    const auto espera = std::make_shared<Espera>();
    espera->cola = &m_cola;
    const bool suena = m_salida.Reproduce(wav, [espera] {
        const std::lock_guard cerrojo(espera->cerrojo);
        espera->terminado = true;
        if (espera->cola) espera->cola->Despierta();
    });
    if (suena)
        m_cola.EsperaBloqueando(
            [&] {
                const std::lock_guard cerrojo(espera->cerrojo);
                return espera->terminado;
            },
            DuracionMs(wav) + kMargenMs);
    const std::lock_guard cerrojo(espera->cerrojo);
    espera->cola = nullptr;
}

}  // namespace ondalis
