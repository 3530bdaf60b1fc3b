// Makes one audio file of a text or a text file through the engine family in use: GrabaEnFichero. Owned by main; must
// die before its collaborators. Main thread.
//
// A recording that doesn't wait is finished, that is given its final name, when the engine has fallen silent: a timer
// asks every 100 ms. To another file system it is copied by a thread of its own meanwhile. Whatever silences the engine
// before cuts the recording short; the part there is gets its name.
#pragma once

#include <QString>
#include <atomic>
#include <cstdint>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <optional>

#include "audio/VozEnFichero.h"
#include "audio/cOpcGrabar.h"
#include "audio/cTemporalAudio.h"
#include "reader/Puertos.h"
#include "settings/Temporizador.h"
#include "settings/cCola.h"
#include "settings/cGeneral.h"
#include "speech/VozECI.h"
#include "speech/cOpcVoz.h"

namespace ondalis {

struct ColaboradoresGrabadora {
    cGeneral &general;
    const cOpcGrabar &grabar;
    const cOpcVoz &voz;
    VozECI &eci;
    cTemporalAudio &temporal;
    Temporizador &timer;                                               // used by nobody else
    std::function<std::unique_ptr<VozEnFichero>()> creaVozSAPI5 = {};  // empty, or giving null: there is none
    cCola *cola = nullptr;              // paints while a copy to another disk is waited for; null: nothing is painted
    ConversorMp3 *conversor = nullptr;  // null: no MP3
};

class cGrabadora : public Grabadora {
public:
    explicit cGrabadora(const ColaboradoresGrabadora &colaboradores);
    ~cGrabadora() override;  // finishes what is under way
    cGrabadora(const cGrabadora &) = delete;
    cGrabadora &operator=(const cGrabadora &) = delete;

    // As the port says. A call that comes in while a message of another recording is open waits for that one's end.
    void GrabaEnFichero(const QString &texto, const QString &ficheroTexto,
                        const OpcionesGrabacion *opciones = nullptr) override;

    // Number for the next file of that name: one more than the regular files of its folder that match it with anything
    // in the number's place, blind to case. Throws ErrorFallo 6 where that doesn't fit 16 bits.
    std::int16_t GetSiguienteNumeroFichAudio(const QString &nombreFichero) const;
    // On acceptance of the configuration: with numbering on, counts anew.
    void EstableceNroFichero() override;
    std::int16_t NroFichero() const { return m_nroFichero; }  // next one to use; 0: not yet worked out

    // Cuts a recording short that doesn't wait and finishes it. Whoever else gives the engine of the "IBM" family a
    // speech that doesn't wait calls it before. Harmless without one.
    void TerminaPendiente();
    // Cuts short whatever is being recorded, also while a caller further out waits for it. Harmless otherwise.
    void Cancela();

private:
    struct Peticion {
        QString texto;
        QString ficheroTexto;
        std::optional<OpcionesGrabacion> opciones;
    };
    // How a recording will be finished.
    struct Encargo {
        QString destino;
        int hercios = 0;
        int kbps = 0;
        bool wav = true;
        bool ibm = true;
        bool conserva = false;  // the temporary, after a conversion
    };

    void Graba(const Peticion &peticion);
    Encargo Prepara(const Peticion &peticion) const;
    bool Despeja(const Peticion &peticion, Encargo &encargo);
    bool BorraDestino(const QString &destino);
    bool BorraTemporal();
    bool Anade(const Peticion &peticion) const;
    bool ProduceIBM(const Peticion &peticion);  // true: the engine goes on by itself
    void CuentaFalloECI(bool conMensaje);
    void CuentaFallo(const QString &error, bool conMensaje);
    void ProduceSAPI5(const Peticion &peticion, int hercios);
    Fallo Dicta(const Peticion &peticion);
    void Remata(const Encargo &encargo);
    void RemataMp3(const Encargo &encargo);
    void Sondea();
    void RemataDeFondo();
    void EmpiezaCopia(const QString &destino);
    void AcabaCopia();  // waits for it; throws its failure

    ColaboradoresGrabadora c;
    std::int16_t m_nroFichero = 0;
    std::unique_ptr<VozEnFichero> m_vozSAPI5;  // null before the first use
    std::optional<Encargo> m_pendiente;        // what the engine goes on with
    std::deque<Peticion> m_enEspera;
    QString m_enCamino;          // its final name, until it has it; else empty
    std::future<Fallo> m_copia;  // of the temporary to another file system, under way
    std::atomic<bool> m_copiada = false;
    bool m_grabando = false;
    bool m_muere = false;  // nobody is shown a message any more
    bool m_cancelada = false;
};

}  // namespace ondalis
