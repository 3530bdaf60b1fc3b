// The hot-key commands: which procedure a name calls, and what is heard when it has nothing to do.
#include "reader/cFormPrincipal.h"

namespace ondalis {

namespace {

constexpr int kPasoIBM = 25;  // words a minute
constexpr int kPasoSAPI5 = 1;

}  // namespace

void cFormPrincipal::tecla_HotKeyPulsada(const QString &nombre) {
    Ejecuta("tecla_HotKeyPulsada", [this, &nombre] {
        struct Comando {
            const char *nombre;
            void (cFormPrincipal::*accion)();
        };
        static constexpr Comando comandos[] = {
            {"Activar", &cFormPrincipal::ActivarDesactivar_Click},
            {"Detener", &cFormPrincipal::TeclaDetener},
            {"Pausa", &cFormPrincipal::TeclaPausa},
            {"Repetir", &cFormPrincipal::TeclaRepetir},
            {"Avanzar", &cFormPrincipal::TeclaAvanzar},
            {"Retroceder", &cFormPrincipal::TeclaRetroceder},
            {"ImprPant", &cFormPrincipal::TeclaImprPant},
            {"MostrarConf", &cFormPrincipal::Opciones_Click},
            {"MostrarEditor", &cFormPrincipal::AbrirEditor_Click},
        };
        if (nombre == QLatin1String("MasVel") || nombre == QLatin1String("MenosVel")) {
            TeclasVelocidad(nombre);
            return;
        }
        for (const Comando &comando : comandos) {
            if (nombre != QLatin1String(comando.nombre)) continue;
            (this->*comando.accion)();
            return;
        }
    });
}

void cFormPrincipal::EjecutaORechaza(const EntradaMenu &entrada, void (cFormPrincipal::*accion)(), std::int32_t fila) {
    if (entrada.Habilitada())
        (this->*accion)();
    else if (m_l.TipoLectura != 3)
        Rechaza(fila);
}

void cFormPrincipal::Rechaza(std::int32_t fila, bool conAviso) {
    SonidoGeneral(QStringLiteral("ERROR"));
    if (!c.opcTeclasRap.UtilizaAvisos()) return;
    if (!ProgramaActivo())
        DiInactivo();
    else if (conAviso)
        DiFila(fila);
}

void cFormPrincipal::TeclaDetener() {
    Ejecuta("TeclaDetener", [this] { EjecutaORechaza(m_menu.Detener, &cFormPrincipal::Detener_Click, 2); });
}

void cFormPrincipal::TeclaPausa() {
    Ejecuta("TeclaPausa", [this] { EjecutaORechaza(m_menu.PausaReanudar, &cFormPrincipal::PausaReanudar_Click, 3); });
}

void cFormPrincipal::TeclaRepetir() {
    Ejecuta("TeclaRepetir", [this] {
        if (m_l.TipoLectura == 3) return;
        if (m_menu.RepetirLectura.Habilitada())
            RepetirLectura_Click();
        else
            Rechaza(4, !m_menu.Detener.Habilitada());  // during a reading the sound alone
    });
}

void cFormPrincipal::TeclaAvanzar() {
    Ejecuta("TeclaAvanzar", [this] {
        if (m_l.TipoLectura == 3) return;
        EjecutaORechaza(m_menu.AvanzarPalabras, &cFormPrincipal::AvanzarPalabras_Click, 5);
    });
}

void cFormPrincipal::TeclaRetroceder() {
    Ejecuta("TeclaRetroceder", [this] {
        if (m_l.TipoLectura == 3) return;
        EjecutaORechaza(m_menu.RetrocederPalabras, &cFormPrincipal::RetrocederPalabras_Click, 6);
    });
}

void cFormPrincipal::TeclasVelocidad(const QString &nombre) {
    Ejecuta("TeclasVelocidad", [this, &nombre] {
        if (!ProgramaActivo()) {
            SonidoGeneral(QStringLiteral("ERROR"));
            if (c.opcTeclasRap.UtilizaAvisos()) DiInactivo();
            return;
        }
        // The speed changes only between readings; in one the key is not even heard.
        if (m_menu.PausaReanudar.Habilitada()) return;
        const bool ibm = c.opcVoz.EsIBM();
        const int paso = ibm ? kPasoIBM : kPasoSAPI5;
        c.opcVoz.SetVelocidad(c.opcVoz.Velocidad() + (nombre == QLatin1String("MasVel") ? paso : -paso));
        c.motor.FijaVelocidad(c.opcVoz.Velocidad());
        c.opcVoz.SalvaVelocidad(c.motor.VelocidadMotor());
        if (m_alCambiarVelocidad) m_alCambiarVelocidad();
        SonidoGeneral(QStringLiteral("VOLUMEN"));
        if (!c.opcTeclasRap.UtilizaAvisos()) return;
        const int dicha = ibm ? c.opcVoz.Velocidad() : c.opcVoz.Velocidad() + 10;
        DiAviso(c.txtLengua.GetTexto(c.opcVoz.LenguaVoz(), 11) + QLatin1Char(' ') + QString::number(dicha));
    });
}

}  // namespace ondalis
