// The resident reader's one owner: builds every service, hands each its collaborators, and takes them down in the
// opposite order. Made by main behind the QApplication. Main thread.
#pragma once

#include <memory>

#include "audio/VozEnFichero.h"
#include "desktop/VentanaMenu.h"
#include "desktop/cBandeja.h"
#include "desktop/cCanalPerezoso.h"
#include "desktop/cDialogoFicheroQt.h"
#include "desktop/cFinSesion.h"
#include "desktop/cMensajesQt.h"
#include "desktop/cMenuBandeja.h"
#include "desktop/cPunteroQt.h"
#include "desktop/cRemoto.h"
#include "desktop/cSinBandeja.h"
#include "desktop/cSuperficie.h"
#include "desktop/cVentanaConfiguracion.h"
#include "engine/Reloj.h"
#include "engine/cLanzadorProceso.h"
#include "engine/cSalidaFichero.h"
#include "keys/cGanchoTeclado.h"
#include "keys/cTecla.h"
#include "libs/ondalis_eci_servicio.h"
#include "platform/atspi/cFocoAccesible.h"
#include "platform/audio/cSalidaPulse.h"
#include "platform/audio/cServidorPulse.h"
#include "platform/audio/cSonidoPulse.h"
#include "platform/dbus/cIconoNotificador.h"
#include "platform/dbus/cVigiaBandeja.h"
#include "platform/motor/cTokensMotor.h"
#include "platform/sistema/cAbridorXdg.h"
#include "platform/sistema/cPrioridadUnix.h"
#include "platform/sistema/cSenales.h"
#include "platform/x11/cPortapapelesX11.h"
#include "platform/x11/cTecladoX11.h"
#include "platform/x11/cTeclasX11.h"
#include "platform/x11/cVentanaEnFocoX11.h"
#include "reader/cFormPrincipal.h"
#include "settings/cTemporizador.h"
#include "speech/Voces.h"
#include "speech/cVozECI.h"

namespace ondalis {

// What works on its own while the toolkit starts: the road to the sound server and the question for the voices.
struct Preparativos {
    Preparativos(cLog &log, const QString &programaMotor);

    cLog &log;
    cLanzadorProceso lanzador;
    cLanzadorProceso lanzadorFicheros;  // what makes files stays behind what is heard
    cTokensMotor tokens;
    cServidorPulse servidor;
};

class cAplicacion {
public:
    // `linea`: the command line without the program's name.
    cAplicacion(Preparativos &preparativos, QString linea);
    ~cAplicacion();
    cAplicacion(const cAplicacion &) = delete;
    cAplicacion &operator=(const cAplicacion &) = delete;

    // The program's whole life. The exit code.
    int Ejecuta();

private:
    // Without the editor's window; the end closes those that there are and the open boxes.
    class Ventanillas : public SinVentanas {
    public:
        explicit Ventanillas(cAplicacion &aplicacion)
            : SinVentanas(aplicacion.p.log, [&aplicacion] { aplicacion.Salir(); }), a(aplicacion) {}
        void Opciones() override;
        void Aviso() override;
        void DescargaFormularios() override;
        void MuestraLupa() override { a.m_superficie.MuestraLupa(); }
        void DescargaLupa() override { a.m_superficie.DescargaLupa(); }

    private:
        cAplicacion &a;
    };
    struct Opciones;
    struct Lector;

    ServicioECI ServiciosDeECI();
    void PreparaCarpetas();
    bool HaySonido();
    bool PreguntaSinSonido();
    bool CargaLector();
    void EsperaVoces();
    void ReuneVoces();
    void CreaLector();
    void ConectaMenu();
    void ConectaSalida();
    void PideSalida();
    void CortaEsperas();
    std::unique_ptr<VozEnFichero> CreaVozEnFichero();
    bool VelocidadConSuper() const;
    void MuestraVentanaMenu(bool visible);
    void AvisaEnReposo(const QString &texto);
    QString ComandoDeEstaVez() const;
    void Salir();

    Preparativos &p;
    QString m_linea;
    bool m_saliendo = false;

    cCola m_cola;
    cMensajesQt m_mensajes;
    cPunteroQt m_puntero;
    cPrioridadUnix m_prioridad;
    cGeneral m_general;
    cDialogoFicheroQt m_ventanaFichero;
    cDialogoFichero m_dialogo{m_ventanaFichero};
    cRegistro m_registro;
    cPortapapelesX11 m_portapapeles;
    cTeclasX11 m_teclas;
    cVentanaEnFocoX11 m_ventanaEnFoco;
    cConexionBus m_bus;
    cVigiaBandeja m_vigia;
    cIconoNotificador m_iconoDelBus;
    cBandeja m_bandeja;
    cTemporizador m_esperaBandeja;
    cSinBandeja m_sinBandeja;
    cSonidoPulse m_salidaSonido;
    cSonido m_sonido;
    cRelojMonotono m_reloj;
    cTecladoX11 m_teclado;
    cFocoAccesible m_foco;
    cTemporizador m_esperaFoco;
    cGanchoTeclado m_gancho;
    cSalidaPulse m_salidaIBM;
    cSalidaPulse m_salidaSAPI5;
    cSalidaPulse m_salidaECI;
    cSalidaFichero m_salidaFicheros;
    cCanalPerezoso m_canalIBM;
    cCanalPerezoso m_canalSAPI5;
    cCanalPerezoso m_canalECI;
    cCanalPerezoso m_canalFicheros;
    cEstadoVoz m_estadoVoz;
    ActorSvr m_voz;
    cServicioECI m_servicioECI;
    cVozECI m_vozECI;
    std::unique_ptr<SpVoice> m_vozSAPI5;  // null: switched off or unusable
    cVoces m_voces;
    cTecla m_tecla;
    cTemporizador m_timerLectura;
    cAbridorXdg m_abridor;
    cSuperficie m_superficie;
    Ventanillas m_ventanas;
    std::unique_ptr<Opciones> m_opciones;  // read from the store, after -clear has acted
    std::unique_ptr<Lector> m_lector;
    std::unique_ptr<cRemoto> m_remoto;
    std::unique_ptr<VentanaMenu> m_ventanaMenu;  // made on first use
    std::unique_ptr<cSenales> m_senales;
    std::unique_ptr<cFinSesion> m_finSesion;
};

}  // namespace ondalis
