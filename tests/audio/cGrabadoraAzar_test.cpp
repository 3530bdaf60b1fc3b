#include <random>

#include "PruebaGrabadora.h"

namespace ondalis {
namespace {

class cGrabadoraAzarTest : public prueba::PruebaGrabadora {
protected:
    enum Suceso { Lectura, DelEditor, Calla, Tic, CallaOtro, Recuenta, Voz, Espera, Sucesos };

    void Ocurre(Suceso suceso, const QString &texto) {
        switch (suceso) {
            case Lectura:
                Graba(texto);
                leidos << texto;
                break;
            case DelEditor: {
                const OpcionesGrabacion opciones{.NombreFichero = Musica("Editor.wav")};
                grabadora->GrabaEnFichero(texto, QString(), &opciones);
                ultimoDelEditor = texto;
                break;
            }
            case Calla: eci.hablando = false; break;
            case Tic: timer.Vence(); break;
            case CallaOtro: eci.Cancela(); break;
            case Recuenta: grabadora->EstableceNroFichero(); break;
            case Voz: opcVoz.EsIBM() ? UsaSAPI5() : UsaIBM(); break;
            case Espera: opc.SetGrabaSincrono(!opc.GrabaSincrono()); break;
            case Sucesos: break;
        }
    }
    void UsaIBM() {
        opcVoz.SetFabricanteActivo("IBM");
        opcVoz.SetVozActiva("Carlos");
    }

    QStringList leidos;
    QString ultimoDelEditor;
};

TEST_F(cGrabadoraAzarTest, WhateverHappensEachReadingEndsWholeInAFileOfItsOwn) {
    std::mt19937 azar(20261121);
    Numera();
    for (int i = 0; i < 1500; ++i) {
        Ocurre(static_cast<Suceso>(azar() % Sucesos), QStringLiteral("texto %1.").arg(i));
        // What is under way is the only one without its name.
        const int conNombre = static_cast<int>(EnMusica().filter("lectura").size());
        ASSERT_GE(conNombre, leidos.size() - 1) << i;
        ASSERT_EQ(timer.Enabled(), QFile::exists("~temp.wav")) << i;
        ASSERT_LE(EnActual().size(), 1) << i;
    }
    grabadora->TerminaPendiente();
    QStringList hallados;
    for (const QString &nombre : EnMusica().filter("lectura")) hallados << Lee(nombre);
    hallados.sort();
    leidos.sort();
    EXPECT_GT(leidos.size(), 100);
    EXPECT_EQ(hallados, leidos);
    EXPECT_EQ(Lee("Editor.wav"), ultimoDelEditor.toUtf8());
    EXPECT_TRUE(EnActual().isEmpty());
    EXPECT_TRUE(mensajes.cajas.empty());
    EXPECT_TRUE(p.LineasLog().isEmpty()) << p.LineasLog().join('\n').left(2000).toStdString();
}

}  // namespace
}  // namespace ondalis
