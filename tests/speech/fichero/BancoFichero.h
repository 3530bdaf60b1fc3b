// A SAPI 5 voice on a file, from the interface down to the worker program.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "engine/cCanalMotor.h"
#include "engine/cLanzadorProceso.h"
#include "fakes/CarpetaPropia.h"
#include "fakes/LectorWav.h"
#include "fakes/RegistroPropio.h"
#include "fakes/TokensFalsos.h"
#include "speech/SpFileStream.h"
#include "worker/Locuciones.h"

namespace ondalis::prueba {

class BancoFichero {
public:
    explicit BancoFichero(const char *programa, const char *motor = "espeak") : lanzador(programa) {
        tokens = TokensFalsos({TokensFalsos::Token("eSpeak NG", "Spanish", "40A;C0A", motor, "roa/es"),
                               TokensFalsos::Token("eSpeak NG", "English", "409", motor, "gmw/en-US"),
                               TokensFalsos::Token("Otro", "Ajena", "409", "otro", "ajena")});
        canal = std::make_unique<cCanalMotor>(lanzador, salida, reloj,
                                              PlazosMotor{std::chrono::seconds(20), std::chrono::seconds(20), {}});
        voz = std::make_unique<SpVoice>(*canal, tokens, cola, estado, registro.Log());
    }
    std::string Ruta() const { return carpeta.Ruta("a.wav"); }
    void Abre(int tipo = 0) {
        flujo.SetFormatType(tipo);
        ASSERT_FALSE(flujo.Open(QString::fromStdString(Ruta()), SpFileStream::SSFMCreateForWrite));
    }
    std::vector<std::int16_t> Cerrado() {
        EXPECT_FALSE(flujo.Close());
        const auto wav = LeeWav(carpeta.Lee("a.wav"));
        EXPECT_TRUE(wav);
        return wav ? wav->muestras : std::vector<std::int16_t>{};
    }
    // The sound of `texto`, at the engine's rate.
    std::vector<std::int16_t> Graba(const QString &texto, int flags = 10) {
        Abre();
        EXPECT_FALSE(voz->Speak(texto, flags));
        EXPECT_TRUE(voz->WaitUntilDone(-1));
        return Cerrado();
    }

    CarpetaPropia carpeta;
    RegistroPropio registro;
    cCola cola;
    cEstadoVoz estado;  // its own: the session's stays out of it
    TokensFalsos tokens;
    cRelojMonotono reloj;
    cLanzadorProceso lanzador;
    cSalidaFichero salida;
    SpFileStream flujo{salida};
    std::unique_ptr<cCanalMotor> canal;
    std::unique_ptr<SpVoice> voz;
};

inline double Duracion(const std::vector<std::int16_t> &muestras, int hercios = 22050) {
    return static_cast<double>(muestras.size()) / hercios;
}

}  // namespace ondalis::prueba
