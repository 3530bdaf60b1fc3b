// The recording engine as a diary that also leaves a file: what it is told to say stands in the destination, behind
// what is there already. And the SAPI 5 voice with its stream, and the encoder, of the same kind.
#pragma once

#include <QFile>
#include <functional>
#include <memory>

#include "audio/VozEnFichero.h"
#include "fakes/VozECIFalsa.h"

namespace ondalis::prueba {

inline void EscribeDetras(const QString &ruta, const QByteArray &bytes) {
    QFile fichero(ruta);
    if (fichero.open(QIODevice::Append)) fichero.write(bytes);
}

inline QByteArray LeeFichero(const QString &ruta) {
    QFile fichero(ruta);
    return fichero.open(QIODevice::ReadOnly) ? fichero.readAll() : QByteArray("<absent>");
}

class EciEnFichero : public VozECIFalsa {
public:
    void Cancela() override {
        VozECIFalsa::Cancela();
        hablando = false;
    }
    bool Habla(const QString &texto, bool sincrono, const QString &destino, bool avanzados) override {
        if (error.isEmpty() || dejaAlgo) EscribeDetras(destino, texto.toUtf8());
        if (alHablar) alHablar();
        return VozECIFalsa::Habla(texto, sincrono, destino, avanzados);
    }
    bool HablaFichero(const QString &fichero, bool sincrono, const QString &destino, bool avanzados) override {
        if (error.isEmpty() || dejaAlgo) EscribeDetras(destino, LeeFichero(fichero));
        return VozECIFalsa::HablaFichero(fichero, sincrono, destino, avanzados);
    }
    bool dejaAlgo = false;           // fails behind having written
    std::function<void()> alHablar;  // what happens while it speaks
};

class VozEnFicheroFalsa : public VozEnFichero {
public:
    struct Diario {
        std::vector<std::string> ordenes;
        std::vector<QString> textos;
        int creadas = 0;
        Fallo alHablar;
        Fallo alAbrir;
        Fallo alCerrar;
        bool incompleta = false;
        std::function<void()> mientras;
    };
    explicit VozEnFicheroFalsa(Diario &diario) : d(diario) { ++d.creadas; }
    void SetFormato(int tipo) override { Anota("formato " + std::to_string(tipo)); }
    Fallo Abre(const QString &ruta) override {
        Anota("abre " + ruta.toStdString());
        m_ruta = ruta;
        if (!d.alAbrir) QFile(ruta).open(QIODevice::WriteOnly | QIODevice::Truncate);
        return d.alAbrir;
    }
    Fallo SetVoz(int numero) override {
        Anota("voz " + std::to_string(numero));
        return {};
    }
    void SetVelocidad(int velocidad) override { Anota("velocidad " + std::to_string(velocidad)); }
    void SetVolumen(int volumen) override { Anota("volumen " + std::to_string(volumen)); }
    Fallo Habla(const QString &texto, int flags) override {
        Anota("habla " + std::to_string(flags));
        d.textos.push_back(texto);
        if (d.alHablar) return d.alHablar;  // refused: nothing of it is spoken
        EscribeDetras(m_ruta, texto.toUtf8());
        if (d.mientras) d.mientras();
        return d.alHablar;
    }
    void EsperaFinal() override { Anota("espera"); }
    bool Incompleta() const override { return d.incompleta; }
    Fallo Cierra() override {
        Anota("cierra");
        return d.alCerrar;
    }
    void Cancela() override { Anota("cancela"); }

private:
    void Anota(std::string orden) { d.ordenes.push_back(std::move(orden)); }
    Diario &d;
    QString m_ruta;
};

class ConversorMp3Falso : public ConversorMp3 {
public:
    bool Convierte(const QString &wav, const QString &mp3, int hercios, int kbps, int remuestreo) override {
        llamadas.push_back(QStringLiteral("%1 %2 %3").arg(hercios).arg(kbps).arg(remuestreo).toStdString());
        if (!bien) return false;
        QFile(mp3).remove();
        EscribeDetras(mp3, "mp3:" + LeeFichero(wav));
        return true;
    }
    bool bien = true;
    std::vector<std::string> llamadas;
};

}  // namespace ondalis::prueba
