// The recorder over fakes, in a current folder of its own.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QTemporaryDir>

#include "audio/cGrabadora.h"
#include "fakes/EciEnFichero.h"
#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"
#include "fakes/TemporizadorFalso.h"
#include "fakes/TokensFalsos.h"

inline void PrintTo(const QString &texto, std::ostream *salida) { *salida << '"' << texto.toStdString() << '"'; }

namespace ondalis::prueba {

class VocesDePrueba : public cVoces {
public:
    VocesDePrueba(cLog &log, const ListaTokens &tokens) : cVoces(log) {
        ChequeaSAPI5Compatible([] { return true; });
        RecogeVocesEquipo(&tokens, false, {});
    }
};

class PruebaGrabadora : public testing::Test {
protected:
    PruebaGrabadora() {
        antes = QDir::currentPath();
        QDir().mkpath(p.Ruta("actual"));
        QDir().mkpath(p.Ruta("musica"));
        QDir::setCurrent(p.Ruta("actual"));
    }
    ~PruebaGrabadora() override {
        grabadora.reset();
        QDir::setCurrent(antes);
    }

    QString Musica(const QString &nombre) const { return p.Ruta("musica/" + nombre); }
    void Pon(const QString &nombre, const QByteArray &texto) { RegistroPropio::Escribe(Musica(nombre), texto); }
    QByteArray Lee(const QString &nombre) const { return LeeFichero(Musica(nombre)); }
    QStringList EnMusica() const { return Nombres(p.Ruta("musica")); }
    QStringList EnActual() const { return Nombres(p.Ruta("actual")); }
    QStringList EnEstado() const { return Nombres(p.Ruta("estado")); }
    static QStringList Nombres(const QString &carpeta) {
        return QDir(carpeta).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    void UsaSAPI5() {
        opcVoz.SetFabricanteActivo("eSpeak NG");
        opcVoz.SetVozActiva("English");
        opcVoz.SetVelocidad(3);
        opcVoz.SetVolumen(80);
    }
    void Numera() { Modo(false, false, true); }
    void Sobrescribe() { Modo(false, true, false); }
    void Anade() { Modo(true, false, false); }
    void Graba(const QString &texto) { grabadora->GrabaEnFichero(texto, QString()); }
    // The texts of the boxes shown, in order.
    QStringList Cajas() const {
        QStringList textos;
        for (const auto &caja : mensajes.cajas) textos << caja.texto;
        return textos;
    }
    int LineasCon(const QString &texto) const { return static_cast<int>(p.LineasLog().filter(texto).size()); }

    QString antes;
    RegistroPropio p;
    MensajesGuion mensajes;
    PrioridadFalsa prioridad;
    cGeneral general{p.Log(), mensajes, prioridad};
    TokensFalsos tokens{TokensFalsos::Tres()};
    VocesDePrueba voces{p.Log(), tokens};
    cOpcGrabar opc{p.Registro(), p.Log(), Musica("Lectura.wav")};
    cOpcVoz opcVoz{p.Registro(), p.Log(), voces, true};
    EciEnFichero eci;
    VozEnFicheroFalsa::Diario sapi;
    ConversorMp3Falso conversor;
    TemporizadorFalso timer;
    cTemporalAudio temporal{p.Log(), "~temp.wav", {p.Ruta("estado")}};
    ColaboradoresGrabadora colaboradores{.general = general,
                                         .grabar = opc,
                                         .voz = opcVoz,
                                         .eci = eci,
                                         .temporal = temporal,
                                         .timer = timer,
                                         .creaVozSAPI5 = [this] { return std::make_unique<VozEnFicheroFalsa>(sapi); },
                                         .conversor = &conversor};
    std::unique_ptr<cGrabadora> grabadora = std::make_unique<cGrabadora>(colaboradores);

private:
    void Modo(bool anade, bool sobrescribe, bool numera) {
        opc.SetAnadirFich(anade);
        opc.SetSobrescribirFich(sobrescribe);
        opc.SetNumerarFich(numera);
    }
};

}  // namespace ondalis::prueba
