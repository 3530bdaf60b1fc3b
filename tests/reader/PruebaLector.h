// The whole controller over fakes: real accepted values, filter, notices and hot-key table; an engine, a clipboard and
// ports that write their calls into one diary.
#pragma once

#include <gtest/gtest.h>

#include "fakes/GanchoFalso.h"
#include "fakes/MensajesGuion.h"
#include "fakes/MotorFalso.h"
#include "fakes/PortapapelesFalso.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/PuertosFalsos.h"
#include "fakes/RegistroPropio.h"
#include "fakes/SonidoFalso.h"
#include "fakes/TeclasFalsas.h"
#include "fakes/TemporizadorFalso.h"
#include "libs/ondalis_dicc.h"
#include "reader/cFormPrincipal.h"

namespace ondalis {
// Readable values in failed expectations.
inline void PrintTo(const Fallo &fallo, std::ostream *salida) { *salida << fallo.numero; }
}  // namespace ondalis

inline void PrintTo(const QString &texto, std::ostream *salida) { *salida << '"' << texto.toStdString() << '"'; }

namespace ondalis::prueba {

class SonidoDiario : public SonidoFalso {
public:
    SonidoDiario(cCola &cola, Diario &diario) : SonidoFalso(cola), m_diario(diario) {}
    void Reproduce(const QString &nombre) override {
        m_diario.Anota(QStringLiteral("sonido.") + nombre);
        SonidoFalso::Reproduce(nombre);
    }

private:
    Diario &m_diario;
};

class TemporizadorDiario : public TemporizadorFalso {
public:
    explicit TemporizadorDiario(Diario &diario) : m_diario(diario) {}
    void SetEnabled(bool encendido) override {
        m_diario.Anota(QStringLiteral("timer.") + SiNo(encendido));
        TemporizadorFalso::SetEnabled(encendido);
    }

private:
    Diario &m_diario;
};

class CanalMudo : public CanalVoz {
public:
    void SetOyente(OyenteMotor *) override {}
    void Habla(Locucion) override {}
    void Detiene() override {}
    void Pausa() override {}
    void Reanuda() override {}
};

class ListaTokensFija : public ListaTokens {
public:
    const std::vector<TokenVoz> &Tokens() const override { return m_tokens; }

private:
    std::vector<TokenVoz> m_tokens{
        {QStringLiteral("eSpeak NG"), QStringLiteral("Español"), QStringLiteral("40A;C0A"), "espeak", "es"}};
};

class VocesDelEquipo : public cVoces {
public:
    VocesDelEquipo(cLog &log, const ListaTokens &tokens) : cVoces(log) {
        ChequeaSAPI5Compatible([] { return true; });
        RecogeVocesEquipo(&tokens, false, {});
    }
};

// Everything that surrounds the controller but the engine.
class BancoLector : public testing::Test {
protected:
    BancoLector() {
        LiberaMemDicc();
        opcTipoLectura.SetIgnoraMiniTexto(false);
    }
    ~BancoLector() override { LiberaMemDicc(); }

    ColaboradoresPrincipal Colaboradores(MotorVoz &motor) {
        return {log,
                general,
                cola,
                opcGeneral,
                opcVoz,
                opcTipoLectura,
                opcGrabar,
                opcTeclasRap,
                sonidosAviso,
                editoresTexto,
                estado,
                motor,
                filtro,
                txtLengua,
                sonido,
                tecla,
                timer,
                portapapeles,
                word,
                explorer,
                foco,
                gancho,
                teclasLeeTeclado,
                grabadora,
                icono,
                ventanas,
                &editor,
                [this] { diario.Anota(QStringLiteral("voces.LeeValoresVoces")); },
                &extractor};
    }
    void PasaASAPI5() {
        opcVoz.SetFabricanteActivo(QStringLiteral("eSpeak NG"));
        opcVoz.SetVozActiva(QStringLiteral("Español"));
        opcVoz.SetTag(QStringLiteral("ScrollVelocidad"), QStringLiteral("0"));
        opcVoz.SetVelocidad(0);
    }
    void Corre() { cola.DejaCorrer(); }
    void Tic() { timer.Vence(); }
    void Copia(const QString &texto) { portapapeles.texto = texto; }
    QStringList Log() const { return almacen.LineasLog(); }
    Lineas Sonidos() const { return diario.De("sonido."); }
    std::int32_t &Estado() { return estado.valor; }

    Diario diario;
    RegistroPropio almacen;
    cLog &log = almacen.Log();
    MensajesGuion mensajes;
    PrioridadFalsa prioridad;
    cGeneral general{log, mensajes, prioridad};
    cCola cola;
    cRegistro &registro = almacen.Registro();
    cOpcGeneral opcGeneral{registro, log};
    ListaTokensFija tokens;
    VocesDelEquipo voces{log, tokens};
    cOpcVoz opcVoz{registro, log, voces, true};
    cOpcTipoLectura opcTipoLectura{registro, log};
    cOpcGrabar opcGrabar{registro, log, QStringLiteral("/x/Lectura.wav")};
    cOpcTeclasRap opcTeclasRap{registro, log};
    cOpcSonidosAviso sonidosAviso{registro, log};
    cOpcEditoresTexto editoresTexto{registro, log};
    cEstadoVoz estado;
    cFiltro filtro{log};
    cTxtLengua txtLengua;
    SonidoDiario sonido{cola, diario};
    TeclasFalsas teclas;
    cTecla tecla{teclas, cola, log};
    TemporizadorDiario timer{diario};
    PortapapelesFalso portapapeles{diario};
    EnlaceWordFalso word{diario};
    EnlaceExplorerFalso explorer{diario};
    VentanaEnFocoFalsa foco;
    GanchoFalso gancho{diario};
    cTeclasLeeTeclado teclasLeeTeclado{registro, general, {QStringLiteral(DATOS_DEL_PROGRAMA)}};
    GrabadoraFalsa grabadora{diario};
    IconoFalso icono{diario};
    VentanasFalsas ventanas{diario};
    EditorFalso editor{diario};
    ExtractorTextoLlano extractor{general};
};

// The controller with an engine that the test plays.
class PruebaLector : public BancoLector {
protected:
    PruebaLector() { motor.SetEventos(principal.Eventos()); }

    // As after a start with the design values: active, idle, nothing in the diary.
    void Arranca() {
        principal.Form_Load();
        principal.Init();
        diario.Olvida();
    }
    // Copies and ticks: state Sent. The engine's start is on its way.
    void Envia(const QString &texto) {
        Copia(texto);
        Tic();
    }
    // State Speaking, nothing in the diary.
    void Lee(const QString &texto) {
        Envia(texto);
        Corre();
        diario.Olvida();
    }
    // The same from another source.
    void LeeDe(std::int32_t tipo, const QString &texto) {
        campos.TextoLectura = texto;
        principal.IniciaLectura(tipo);
        Corre();
        diario.Olvida();
    }
    void TerminaTexto() {
        motor.Termina();
        Corre();
    }
    void Pulsa(const char *comando) { principal.tecla_HotKeyPulsada(QLatin1String(comando)); }
    Lineas Motor() const { return diario.De("motor."); }
    bool Ociosa() const {
        return !campos.Leyendo && !campos.EnPausa && !menu.Detener.Habilitada() && estado.valor == 0;
    }
    bool Enviada() const {
        return campos.Leyendo && !campos.EnPausa && !menu.Detener.Habilitada() && estado.valor == 0;
    }
    bool Hablando() const {
        return campos.Leyendo && !campos.EnPausa && menu.Detener.Habilitada() && estado.valor == 0;
    }
    bool Pausada() const { return !campos.Leyendo && campos.EnPausa && menu.Detener.Habilitada() && estado.valor == 0; }
    bool Reiniciando() const { return !campos.EnPausa && menu.Detener.Habilitada() && estado.valor == 2; }

    CanalMudo canal;
    ActorSvr voz{canal, cola, estado, log};
    MotorFalso motor{voz, opcVoz, cola, estado, diario};
    cFormPrincipal principal{Colaboradores(motor)};
    cFormPrincipal::Lectura &campos = principal.Campos();
    MenuIcono &menu = principal.Menu();
};

}  // namespace ondalis::prueba
