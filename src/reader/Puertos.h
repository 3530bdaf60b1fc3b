// What the session asks of parts that stand outside it: links to foreground applications, the recorder, the editor's
// window, the tray icon, the other windows. Each is implemented by its own subsystem or by the plain stand-in named
// here. Main thread.
#pragma once

#include <QString>
#include <cstdint>
#include <functional>

#include "settings/cLog.h"

namespace ondalis {

// The word processor in the foreground.
class EnlaceWord {
public:
    virtual ~EnlaceWord() = default;
    virtual bool EnPrimerPlano() = 0;
    virtual bool SeleccionaTexto() = 0;
    virtual void LocalizaTexto(const QString &texto, bool marca, int salto, const QString &palabra) = 0;
    virtual bool Conecta() = 0;
    virtual void LocalizaPalabra(const QString &texto, bool marca, bool wrap) = 0;
    virtual void Desconecta() = 0;
};

// The browser in the foreground.
class EnlaceExplorer {
public:
    virtual ~EnlaceExplorer() = default;
    virtual bool EnPrimerPlano() = 0;
    virtual bool SeleccionaTexto() = 0;
};

// Without an adapter no link is ever in the foreground.
class SinEnlaceWord : public EnlaceWord {
public:
    bool EnPrimerPlano() override { return false; }
    bool SeleccionaTexto() override { return false; }
    void LocalizaTexto(const QString &, bool, int, const QString &) override {}
    bool Conecta() override { return false; }
    void LocalizaPalabra(const QString &, bool, bool) override {}
    void Desconecta() override {}
};

class SinEnlaceExplorer : public EnlaceExplorer {
public:
    bool EnPrimerPlano() override { return false; }
    bool SeleccionaTexto() override { return false; }
};

// The desktop's foreground window.
class VentanaEnFoco {
public:
    virtual ~VentanaEnFoco() = default;
    virtual bool EsConsola() = 0;
    // Names the window as long as it exists; 0: none has the focus. A round trip to the window system.
    virtual std::uint32_t Ventana() = 0;
};

// Where and how the editor records, instead of the page's values.
struct OpcionesGrabacion {
    QString NombreFichero;
    int CalidadkHz = 11025;  // hertz
    bool GrabaEnWAV = true;  // else MP3
    int Calidadkbps = 24;    // kbit/s, MP3 only
};

// Makes a reading's audio file (GrabaEnFichero).
class Grabadora {
public:
    virtual ~Grabadora() = default;
    // Records `texto`, or the plain text file `ficheroTexto` where that isn't empty. `opciones` null: by the page's
    // values. Failures are shown and logged inside.
    virtual void GrabaEnFichero(const QString &texto, const QString &ficheroTexto,
                                const OpcionesGrabacion *opciones = nullptr) = 0;
    // Works out anew which number the next numbered file gets, from the page's accepted target.
    virtual void EstableceNroFichero() {}
};

// The editor's window as the session drives it during a reading of type 3.
class VentanaEditor {
public:
    virtual ~VentanaEditor() = default;
    virtual void LocalizaPalabra(int posicion) = 0;  // 0-based
    virtual void HabilitaBoton(const QString &boton,
                               bool habilitado) = 0;  // "leer", "grabar", "etiqueta", "pausar", "detener"
    // Captions of the toolbar button "pausar" and of the menu entry LePausar; an empty one stays as it is.
    virtual void RotulaPausa(const QString &enBoton, const QString &enMenu) = 0;
};

// The picture in the notification area.
class cIconoBarra {
public:
    static constexpr int NumImagenes = 11;
    virtual ~cIconoBarra() = default;
    virtual void SetImagen(int numero) = 0;  // 1 to NumImagenes
};

// Windows of the program that commands open.
class Ventanas {
public:
    virtual ~Ventanas() = default;
    virtual void Opciones() = 0;
    virtual void AbrirEditor() = 0;
    virtual void Aviso() {}    // the assistant of the first start
    virtual void Salir() = 0;  // unloads the main window
    // The magnifier; each harmless where it has been done already.
    virtual void MuestraLupa() {}
    virtual void DescargaLupa() {}
    // Closes every open window but the main one, modal ones too. Without windows there is nothing to close.
    virtual void DescargaFormularios() {}
};

// Without windows the wish to see one leaves a line in the log. `salir` ends the program.
class SinVentanas : public Ventanas {
public:
    SinVentanas(cLog &log, std::function<void()> salir) : m_log(log), m_salir(std::move(salir)) {}
    void Opciones() override;
    void AbrirEditor() override;
    void Salir() override;

private:
    cLog &m_log;
    std::function<void()> m_salir;
};

}  // namespace ondalis
