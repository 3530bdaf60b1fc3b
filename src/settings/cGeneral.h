// Small services that everything leans on: messages, command-line parameters, file services, text fields, version text,
// and the one helper that runs a procedure's body and deals with its failure. Stateless but for what it was given;
// owned by main. Main thread.
#pragma once

#include <QChar>
#include <QString>
#include <functional>
#include <optional>

#include "settings/Fallo.h"
#include "settings/Mensajes.h"
#include "settings/cLog.h"

namespace ondalis {

// The process's priority; platform implements it.
class PrioridadProceso {
public:
    virtual ~PrioridadProceso() = default;
    virtual bool SetClase(bool alta) = 0;  // of the process
    virtual bool SetHilo(bool alta) = 0;   // of the calling thread
};

class cGeneral {
public:
    cGeneral(cLog &log, Mensajes &mensajes, PrioridadProceso &prioridad);

    // "-" + `parametro` stands in `linea`, blind to case; `valor` gets what follows it up to the next "-", trimmed.
    static bool GetParam(const QString &linea, const QString &parametro, QString *valor = nullptr);
    void SetPrioridadAlta(bool alta);
    // Every message of the system. Empty `titulo`: the program's title.
    bool VMsg(const QString &texto, bool pregunta = false, bool defectoSi = false, const QString &titulo = {});
    static QString DirectorioWindowsTemp();           // ends with "/"
    static bool ExisteFichero(const QString &ruta);   // a regular file, links followed
    static QString GetRutaFich(const QString &ruta);  // up to and including the last "/", else empty
    static bool BorraFichero(const QString &ruta);    // true when it is gone or wasn't there
    // Gives the regular file `de` the name `a`, also on another file system; never takes the place of what has that
    // name (58). 53: no such file. 76: no such folder. 70: not allowed. 61: the disk is full. 75: anything else. Where
    // it fails `de` stands as it was and nothing partial stands under `a`. Any thread.
    [[nodiscard]] static Fallo Nombra(const QString &de, const QString &a);
    static QString GetCampo(const QString &cadena, int campo, const QString &separador);  // counted from 1
    static int NroSeparadores(const QString &cadena, const QString &separador);
    static QString MiVersion(const QString &separador);  // "1.0.00" for ".": revision with two digits
    static QString VBError(const Fallo &fallo);          // description (number)

    enum class Aviso { SoloLog, Mensaje };
    // Runs a procedure's body at its border: what `cuerpo` throws (ErrorFallo, any other exception) is logged under
    // `procedimiento` ("cFormPrincipal.Aceptar_Click: ") with the line as extra text and, with Aviso::Mensaje, shown.
    // True when nothing was thrown.
    bool Ejecuta(const QString &procedimiento, Aviso aviso, const std::function<void()> &cuerpo);

    cLog &Log() { return m_log; }

private:
    cLog &m_log;
    Mensajes &m_mensajes;
    PrioridadProceso &m_prioridad;
};

}  // namespace ondalis
