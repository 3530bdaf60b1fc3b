// The file in which an audio file is made before it gets its final name: "~temp.wav" in the current folder. It is made
// exclusively and held locked as long as this object has it, so that of two programs in one folder each has its own.
// What stands there under that name and isn't ours (a file, a link, a folder, a FIFO), or a folder that can't be
// written, sends it to a private folder under the same name. Only what this object made is ever deleted. Owned by main.
// Main thread.
#pragma once

#include <QString>
#include <QStringList>

#include "settings/Fallo.h"
#include "settings/cLog.h"

namespace ondalis {

class cTemporalAudio {
public:
    // `bases`: folders in which a private one may be made, the first that takes it; made themselves where absent.
    cTemporalAudio(cLog &log, QString nombre, QStringList bases);
    // What is there stays; a private folder goes when it is empty.
    ~cTemporalAudio();
    cTemporalAudio(const cTemporalAudio &) = delete;
    cTemporalAudio &operator=(const cTemporalAudio &) = delete;

    // No file of ours is there any more; true when that is so. What another one left under the name is no obstacle.
    bool Borra();
    // Borra where no sound has been written into it: it is empty or the header of a WAV file alone.
    void BorraVacio();
    // The path to write to: the file that is ours, else a new empty one. `adopta`: a file that an earlier run left,
    // with nobody holding it, is taken on too, to be added to; it is never emptied or deleted. Failure 70, 75 or 61:
    // not even a private folder takes it.
    [[nodiscard]] Fallo Prepara(bool adopta);
    // Its path, relative to the current folder where it lies there; `nombre` before the first Prepara.
    const QString &Ruta() const { return m_ruta; }
    // The final name lies on another file system: to give it takes a copy.
    bool EnOtroDisco(const QString &destino) const;
    // Somebody else has given our file its final name.
    void Entregado() { Suelta(); }
    // As cGeneral::Nombra; it isn't ours afterwards. 53: there is none.
    [[nodiscard]] Fallo Nombra(const QString &destino);

private:
    bool Nuestro() const;  // the file under our path is the one that we hold
    void Suelta();
    int Crea(const QString &ruta);
    bool Adopta(const QString &ruta);
    int CreaEnPrivada();
    int HazPrivada();
    void AvisaPrivada(int motivo);

    cLog &m_log;
    QString m_nombre;
    QStringList m_bases;
    QString m_privada;  // empty: none made
    QString m_ruta;
    int m_descriptor = -1;  // holds the lock
    bool m_adoptado = false;
    bool m_avisado = false;
};

}  // namespace ondalis
