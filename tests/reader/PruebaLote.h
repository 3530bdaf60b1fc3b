// A batch job with everything about it scripted: settings, engines, messages, the temporary audio file.
#pragma once

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <map>

#include "fakes/Diario.h"
#include "fakes/MensajesGuion.h"
#include "fakes/PrioridadFalsa.h"
#include "fakes/RegistroPropio.h"
#include "fakes/VozECIFalsa.h"
#include "reader/cLote.h"

namespace ondalis::prueba {

class VozSAPI5Falsa : public VozSAPI5Lote {
public:
    explicit VozSAPI5Falsa(Diario &diario) : d(diario) {}
    bool Elige(const QString &nombre) override {
        d.Anota("voz: Name=" + nombre);
        return hayVoz;
    }
    int Rate() const override { return rate; }
    void SetRate(int valor) override {
        rate = valor;
        d.Anota(QStringLiteral("voz: Rate %1").arg(valor));
    }
    int Volume() const override { return volume; }
    void SetVolume(int valor) override {
        volume = valor;
        d.Anota(QStringLiteral("voz: Volume %1").arg(valor));
    }
    Fallo Speak(const QString &texto) override {
        d.Anota("voz: " + texto);
        if (alHablar) alHablar();
        return fallo;
    }
    Fallo SpeakAFichero(const QString &texto, const QString &ruta, int formato) override {
        d.Anota(QStringLiteral("voz: %1 <%2> %3").arg(texto, ruta).arg(formato));
        if (alHablar) alHablar();
        return fallo;
    }
    void Cancela() override { d.Anota("voz: cancela"); }

    int rate = -3, volume = 77;
    bool hayVoz = true;
    Fallo fallo;
    std::function<void()> alHablar;

private:
    Diario &d;
};

class TemporalFalso : public TemporalLote {
public:
    explicit TemporalFalso(Diario &diario) : d(diario) {}
    bool Prepara() override {
        d.Anota("temporal: prepara");
        return sePuede;
    }
    QString Ruta() const override { return QStringLiteral("~temp.wav"); }
    Fallo Nombra(const QString &destino) override {
        d.Anota("nombra " + destino);
        return falloAlNombrar;
    }
    void Borra() override { d.Anota("temporal: borra"); }
    bool sePuede = true;
    Fallo falloAlNombrar;

private:
    Diario &d;
};

class ConversorFalso : public ConversorMp3 {
public:
    explicit ConversorFalso(Diario &diario) : d(diario) {}
    bool Convierte(const QString &wav, const QString &mp3, int hercios, int kbps, int remuestreo) override {
        d.Anota(QStringLiteral("mp3: %1 %2 %3 %4 %5").arg(wav, mp3).arg(hercios).arg(kbps).arg(remuestreo));
        if (bien) RegistroPropio::Escribe(mp3, "hecho");
        if (alConvertir) alConvertir();
        return bien;
    }
    bool bien = true;
    std::function<void()> alConvertir;

private:
    Diario &d;
};

// The engine of the "IBM" family, writing into the common diary; what a test wants to happen meanwhile happens inside.
class VozECIDeLote : public VozECIFalsa {
public:
    explicit VozECIDeLote(Diario &diario) : d(diario) {}
    bool Habla(const QString &texto, bool sincrono, const QString &destino, bool avanzados) override {
        return Anota(VozECIFalsa::Habla(texto, sincrono, destino, avanzados));
    }
    bool HablaFichero(const QString &fichero, bool sincrono, const QString &destino, bool avanzados) override {
        return Anota(VozECIFalsa::HablaFichero(fichero, sincrono, destino, avanzados));
    }
    std::function<void()> alHablar;

private:
    bool Anota(bool bien) {
        d.Anota("eci: " + QString::fromStdString(ordenes.back()));
        if (alHablar) alHablar();
        return bien;
    }
    Diario &d;
};

// Gives what a test wants for a path, else the path itself.
class ExtractorFalso : public ExtractorTexto {
public:
    Fallo ConvierteAFichTexto(const QString &fichero, bool muestraError, QString &texto) override {
        EXPECT_FALSE(muestraError);
        texto = convertidos.contains(fichero) ? convertidos[fichero] : fichero;
        return fallo;
    }
    std::map<QString, QString> convertidos;
    Fallo fallo;
};

// The current folder is the test's own while it runs.
class PruebaLote : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(QDir::setCurrent(carpeta.path())); }
    void TearDown() override { ASSERT_TRUE(QDir::setCurrent(antes)); }

    bool De(const QString &orden) { return lote.EjecutaLineaComandos(orden); }
    Lineas Hecho() { return diario.Todo(); }
    QStringList Mensajes() const {
        QStringList textos;
        for (const auto &caja : mensajes.cajas) textos << caja.texto;
        return textos;
    }
    void ConSAPI5() { ASSERT_TRUE(registro.Salva("Voz", "FabricanteActivo", "eSpeak NG")); }
    QString Fichero(const QString &nombre, const QByteArray &texto = "hola") {
        RegistroPropio::Escribe(carpeta.filePath(nombre), texto);
        return nombre;
    }
    bool Existe(const QString &nombre) const { return QFile::exists(carpeta.filePath(nombre)); }

    QString antes = QDir::currentPath();
    QTemporaryDir carpeta;
    RegistroPropio registro;
    MensajesGuion mensajes;
    PrioridadFalsa prioridad;
    cGeneral general{registro.Log(), mensajes, prioridad};
    Diario diario;
    ExtractorFalso extractor;
    TemporalFalso temporal{diario};
    VozECIDeLote eci{diario};
    VozSAPI5Falsa sapi5{diario};
    ConversorFalso conversor{diario};
    bool hayMp3 = false;
    bool haySonido = true;
    bool sapi5Compatible = true;
    PuertosLote Puertos() {
        return {.general = general,
                .registro = registro.Registro(),
                .extractor = extractor,
                .temporal = temporal,
                .vozECI = [this]() -> VozECI & { return eci; },
                .chequeaSAPI5Compatible = [this] { return sapi5Compatible; },
                .vozSAPI5 = [this]() -> VozSAPI5Lote & { return sapi5; },
                .haySonido =
                    [this] {
                        diario.Anota("sonido?");
                        return haySonido;
                    },
                .conversor = nullptr};
    }
    cLote lote{Puertos()};
};

}  // namespace ondalis::prueba
