// Opens with the desktop's default application, by xdg-open. What is started is free of us: a session of its own, none
// of our descriptors, and it outlives the reader. Owned by main. Main thread.
#pragma once

#include <sys/types.h>

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <memory>
#include <string>
#include <vector>

#include "desktop/cMenuAyuda.h"

namespace ondalis {

class cAbridorXdg : public AbridorEscritorio {
public:
    static constexpr int kPlazoMs = 2000;  // a failure later than this isn't ours to tell

    // `programa`: found along PATH.
    explicit cAbridorXdg(std::string programa = "xdg-open", int plazoMs = kPlazoMs);
    ~cAbridorXdg() override;
    cAbridorXdg(const cAbridorXdg &) = delete;
    cAbridorXdg &operator=(const cAbridorXdg &) = delete;

    void Abre(const QString &objeto, std::function<void(bool)> alSaber) override;

private:
    struct Encargo;
    pid_t Lanza(const QByteArray &objeto);
    void Avisa(std::function<void(bool)> alSaber, bool bien);
    void Acaba(Encargo &encargo);

    std::string m_programa;
    int m_plazoMs;
    QObject m_contexto;
    std::vector<std::unique_ptr<Encargo>> m_encargos;
};

}  // namespace ondalis
