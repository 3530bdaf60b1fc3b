// The controller behind the main window: the one reading that can exist, its navigation, its two own sources, the tray
// icon's number, the active state, the hot-key commands. All its collaborators are handed to it; it owns none. Main
// thread.
//
// The sources follow the reasons to change: _sesion (the reading and its events), _navegacion (stop, pause, repeat,
// moves), _portapapeles (the tick and the clipboard), _teclado (the typing buffer and its reading), _word (foreground
// documents and their tracking), _teclas (hot-key commands), _remoto (commands of other programs), _icono (icon, menu,
// active state), _arranque (start and end).
#pragma once

#include <QString>
#include <cstdint>
#include <deque>
#include <functional>
#include <span>

#include "audio/ExtractorTexto.h"
#include "audio/cOpcGrabar.h"
#include "desktop/cSonido.h"
#include "desktop/cTxtLengua.h"
#include "keys/GanchoTeclado.h"
#include "keys/cOpcTeclasRap.h"
#include "keys/cTecla.h"
#include "keys/cTeclasLeeTeclado.h"
#include "reader/MenuIcono.h"
#include "reader/Portapapeles.h"
#include "reader/Puertos.h"
#include "reader/cOpcEditoresTexto.h"
#include "settings/Temporizador.h"
#include "settings/cGeneral.h"
#include "settings/cOpcGeneral.h"
#include "settings/cOpcSonidosAviso.h"
#include "settings/cOpcTipoLectura.h"
#include "speech/MotorVoz.h"
#include "speech/cOpcVoz.h"
#include "text/cFiltro.h"

namespace ondalis {

struct ColaboradoresPrincipal {
    cLog &log;
    cGeneral &general;
    cCola &cola;
    cOpcGeneral &opcGeneral;
    cOpcVoz &opcVoz;
    cOpcTipoLectura &opcTipoLectura;
    cOpcGrabar &opcGrabar;
    cOpcTeclasRap &opcTeclasRap;
    cOpcSonidosAviso &sonidosAviso;
    cOpcEditoresTexto &editoresTexto;
    cEstadoVoz &estadoVoz;
    MotorVoz &motor;
    cFiltro &filtro;
    cTxtLengua &txtLengua;
    cSonido &sonido;
    cTecla &tecla;
    Temporizador &timerLectura;
    Portapapeles &portapapeles;
    EnlaceWord &enlaceWord;
    EnlaceExplorer &enlaceExplorer;
    VentanaEnFoco &ventanaEnFoco;
    GanchoTeclado &gancho;
    cTeclasLeeTeclado &teclasLeeTeclado;
    Grabadora &grabadora;
    cIconoBarra &iconoBarra;
    Ventanas &ventanas;
    VentanaEditor *editor = nullptr;  // null: no editor window exists
    // Reads each voice's own values from the speech control into the catalogue, once, in Form_Load; may be empty.
    std::function<void()> leeValoresVoces = {};
    ExtractorTexto *extractor = nullptr;  // null: every file is taken for a plain text
};

class cFormPrincipal {
public:
    // Takes the events of the timer and of the hot keys; those of the speech controls are connected with Eventos().
    explicit cFormPrincipal(const ColaboradoresPrincipal &c);
    cFormPrincipal(const cFormPrincipal &) = delete;
    cFormPrincipal &operator=(const cFormPrincipal &) = delete;
    // The three engine handlers, for SetEventos of each speech control; valid as long as this object lives.
    EventosVoz Eventos();

    // Start-up and end. Form_Load leaves the reader ready but deaf; Init registers the keys and switches the timer on.
    void Form_Load();
    void Init();
    void Form_Unload();

    bool ProgramaActivo() const;
    // Events of the engine in use.
    void Voz_StartSpeaking();
    void Voz_StopSpeaking();
    void Voz_WordPosition(std::int32_t pos);

    // Menu entries.
    void Detener_Click();
    void PausaReanudar_Click();
    void RepetirLectura_Click();
    void AvanzarPalabras_Click();
    void RetrocederPalabras_Click();
    void ActivarDesactivar_Click();
    void Opciones_Click();
    void AbrirEditor_Click();
    void Salir_Click();
    void PausaReanudaLectura(bool sinSalto, bool reinicia);

    // Called when a hot key has changed the accepted speed; empty: nobody shows it.
    void AlCambiarVelocidad(std::function<void()> aviso) { m_alCambiarVelocidad = std::move(aviso); }

    void TimerLectura_Timer();
    // A press that the hook has told: the two handlers, then the buffer as a box of several lines would take it. The
    // caret always stands at its end, for nobody sees it: backspace takes the last character, with Control the last
    // word; arrows, Delete and all other combinations change nothing. What Ctrl+V pastes isn't typed: the clipboard's
    // reading has it.
    void TextoWindows_Tecleada(const TeclaEscrita &tecla);
    // `virtualKey` starts the reading of what has been typed, if it is one of the chosen keys.
    void TextoWindows_KeyDown(int virtualKey);
    // Puts 0 into `caracter` when it must not enter: white space never opens the buffer.
    void TextoWindows_KeyPress(char32_t &caracter);
    // Starts and ends the hearing of typed keys.
    void SetHook(bool encendido);
    void tecla_HotKeyPulsada(const QString &nombre);

    // `icono`: number 1 to 11, or one of the keys "activoblanco1", "activorojo1", "inactivo", "reloj", "pausado".
    void SetIconoBarra(int icono);
    void SetIconoBarra(const QString &icono);
    int GetIconoBarra() const { return m_numIcono; }
    int IconoReposo() const;  // 1, or 5 with recording on
    // The captions of the reading's entries with the names of the accepted hot keys; their first words stay or become
    // those of an accepted configuration.
    void RotulaMenuLectura();

    MenuIcono &Menu() { return m_menu; }
    // A command of another program: "SPEAK " and a text, or "FILETXT " and a path. Judged at once: `cancel` -1 means
    // refused (unknown, too many waiting, or the program ends), 0 that it waits for its turn in the queue. Returns the
    // command's number, 0 for a refused one. No box and no speech before it has returned.
    std::uint32_t Form_LinkExecute(const QString &comando, std::int16_t &cancel);
    // Called once for each accepted command: when its speech has ended, or when it has none.
    void AlTerminarRemota(std::function<void(std::uint32_t)> aviso) { m_alTerminarRemota = std::move(aviso); }
    // The program ends: no command is accepted or carried out any more, and the file being spoken falls silent. May be
    // called while the main thread waits for that file.
    void CierraRemoto();
    // Text of the item that remote clients watch; "StopSpeaking" at the end of a remote speech. Each assignment is
    // told, also of the same text: two ends in a row are two ends.
    const QString &DDELink() const { return m_ddeLink; }
    void SetDDELink(const QString &texto);
    void AlCambiarDDELink(std::function<void(const QString &)> aviso) { m_alCambiarDDELink = std::move(aviso); }

    // Fields of the reading, for the sources outside this class and for tests.
    struct Lectura {
        QString TextoLectura;          // filtered text; stays after the end
        QString TextoCopiado;          // clipboard text last accepted
        std::int32_t TipoLectura = 0;  // 0 none yet, 1 clipboard, 2 keyboard, 3 editor
        bool Leyendo = false;
        bool EnPausa = false;
        std::int32_t PosBase = 1;          // 1-based index of the first character given to the engine
        std::int32_t PosPalabra = 0;       // 0-based position of the last word event within that
        std::int16_t SeguimientoWord = 0;  // 0 off, 1 on, -1 to be cleared at the next start
        bool PendienteTeclado = false;     // ImprPant has asked for a fetch
        QString TextoWindows;              // the typing buffer
    };
    Lectura &Campos() { return m_l; }

    // Starts the reading of TextoLectura from source `tipo`.
    void IniciaLectura(std::int32_t tipo);
    bool EsTextoLeible(const QString &texto) const;
    QString TextoFiltrado(const QString &texto);
    QString GetTramoLectura() const;
    void DiAviso(const QString &texto);

private:
    void RecuperaConfiguracion();
    void RegistraTeclas();
    void RotulaMenu();
    void InicaLecturaPortapapeles();
    void IniciaLecturaTeclado(bool forzar);
    bool EsTeclaRapida(const TeclaEscrita &tecla) const;
    void EscribeEnTextoWindows(char32_t caracter);
    void TeclaDetener();
    void TeclaPausa();
    void TeclaRepetir();
    void TeclaAvanzar();
    void TeclaRetroceder();
    void TeclaImprPant();
    void TeclasVelocidad(const QString &nombre);
    void LeeVentanaConFoco();

    // Runs a procedure's body at its border: a failure becomes a log line under "cFormPrincipal.`procedimiento`: ".
    bool Ejecuta(const char *procedimiento, const std::function<void()> &cuerpo,
                 cGeneral::Aviso aviso = cGeneral::Aviso::SoloLog);

    // The reading.
    void Envia(std::int32_t tipo);
    void InformaFalloDeLectura(const Fallo &fallo);
    void IconoTrasInicio();
    QString RotuloPausa(bool reanudar) const;
    QString RotuloAvanzar() const;
    void TerminaMenus();
    void TerminaActivo();
    void BotonesEditorEnReposo();

    // Moves.
    enum class Sentido { Adelante, Atras };
    bool PreparaMovimiento();
    bool AvanzaPosicion();
    void RetrocedePosicion();
    void HablaResto();
    void Pausa(bool sinSalto, bool reinicia);
    void Reanuda(bool reinicia);

    // Word tracking of the reading.
    void DecideSeguimiento();
    void SiguePalabra();
    void SigueParada();
    void SiguePausa(bool sinSalto);
    void SigueMovimiento(Sentido sentido);
    void LeeDocumento(const std::function<bool()> &selecciona, std::int32_t filaError);

    // Sounds and notices.
    void SonidoDeLectura(const QString &nombre);  // wanted for the source of the reading
    void SonidoGeneral(const QString &nombre);    // wanted for general notices
    void DiFila(std::int32_t fila);
    void DiInactivo();  // the program's title and row 1
    // A hot key without effect: the sound, and the notice of `fila` or that the program is inactive.
    void Rechaza(std::int32_t fila, bool conAviso = true);
    void EjecutaORechaza(const EntradaMenu &entrada, void (cFormPrincipal::*accion)(), std::int32_t fila);

    void Desactiva();
    void Activa();

    // Commands of other programs.
    struct OrdenRemota {
        std::uint32_t numero;
        QString comando;
    };
    void AtiendeRemota();
    void CumpleRemota(const OrdenRemota &orden);
    void HablaRemota(std::uint32_t numero, QString texto);
    void LeeFicheroRemoto(QString fichero);
    void TerminaRemota(std::uint32_t numero);
    void AvisaRemoto(const QString &mensaje);

    ColaboradoresPrincipal c;
    Lectura m_l;
    MenuIcono m_menu;
    QString m_ddeLink{QStringLiteral("Vínculo")};
    std::function<void(const QString &)> m_alCambiarDDELink;
    std::function<void()> m_alCambiarVelocidad;
    int m_numIcono = 1;
    bool m_enOpciones = false;
    std::uint32_t m_ultimaVentana = 0;  // UltimaVentana: in front at the last poll with a readable buffer; 0: none
    std::deque<OrdenRemota> m_remotas;  // accepted, not begun
    qsizetype m_letrasRemotas = 0;      // their length together, UTF-16 units
    std::uint32_t m_ultimaRemota = 0;
    std::uint32_t m_remotaSonando = 0;  // the command whose speech hasn't stopped; 0: none
    bool m_enRemota = false;
    bool m_remotoCerrado = false;
    bool m_mensajeRemoto = false;  // a box about a command is open or on its way
    std::function<void(std::uint32_t)> m_alTerminarRemota;
};

}  // namespace ondalis
