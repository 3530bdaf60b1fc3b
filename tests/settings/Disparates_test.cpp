// Values written by hand that make no sense, in every row of the catalogue in turn: what is accepted is the default,
// and the next saving of all pages loses no other value.
#include <gtest/gtest.h>

#include <map>

#include "audio/cOpcGrabar.h"
#include "fakes/RegistroPropio.h"
#include "keys/cOpcTeclasRap.h"
#include "reader/cOpcEditoresTexto.h"
#include "settings/Catalogo.h"
#include "settings/cOpcGeneral.h"
#include "settings/cOpcSonidosAviso.h"
#include "settings/cOpcTipoLectura.h"
#include "speech/cOpcVoz.h"

namespace ondalis {
namespace {

using prueba::RegistroPropio;

struct Disparate {
    const char *que;
    QByteArray escrito;
    bool peligroso = false;  // it might take its neighbours along when the file is written again
};
const std::vector<Disparate> &Disparates() {
    static const std::vector<Disparate> todos{
        {"letters", "disparate"},
        {"empty", ""},
        {"huge", "99999999999999999999999"},
        {"out of range", "1000000"},
        {"negative", "-77"},
        {"commas", "1,2,,3"},
        {"quotes", "\"a\" \"b", true},
        {"one quote", "\"", true},
        {"invalid", "@Invalid()", true},
        {"variant", "@Variant(\\0\\0\\0\\x7f\\xff\\xff\\xff)"},
        {"rectangle", "@Rect(1 2 3 4)"},
        {"NUL", QByteArray("1\0x", 3), true},
        {"not UTF-8", "\xFF\xFE\xC3(\xF1", true},
        {"backslash", "\\", true},
        {"escape", "\\xZZ\\q"},
        {"comment", ";nada", true},
        {"section", "[Voz]", true},
        {"equals", "=="},
        {"long", QByteArray(20000, '9')},
    };
    return todos;
}

class VocesCarlos : public cVoces {
public:
    explicit VocesCarlos(cLog &log) : cVoces(log) { RecogeVocesEquipo(nullptr, true, {}); }
};

// Every object that accepts values, as a start makes them.
struct Aceptados {
    Aceptados(RegistroPropio &p, const cVoces &voces)
        : general(p.Registro(), p.Log()),
          tipo(p.Registro(), p.Log()),
          sonidos(p.Registro(), p.Log()),
          editores(p.Registro(), p.Log()),
          teclas(p.Registro(), p.Log()),
          grabar(p.Registro(), p.Log(), QStringLiteral("/musica/Lectura.wav")),
          voz(p.Registro(), p.Log(), voces, false) {}

    std::vector<const TablaOpciones *> Tablas() const {
        return {&general, &tipo, &sonidos, &editores, &teclas, &grabar, &voz};
    }
    void Guarda() {
        general.GuardaValores();
        tipo.GuardaValores();
        sonidos.GuardaValores();
        editores.GuardaValores();
        teclas.GuardaValores();
        grabar.GuardaValores();
        voz.GuardaValores();
    }
    // Accepted text by "section\key".
    std::map<std::string, std::string> Tags() const {
        std::map<std::string, std::string> tags;
        for (const TablaOpciones *tabla : Tablas())
            for (const FilaOpcion &fila : tabla->Filas())
                if (fila.clave)
                    tags[std::string(fila.seccion) + '\\' + fila.clave] =
                        tabla->Tag(QLatin1String(fila.control)).toStdString();
        return tags;
    }

    cOpcGeneral general;
    cOpcTipoLectura tipo;
    cOpcSonidosAviso sonidos;
    cOpcEditoresTexto editores;
    cOpcTeclasRap teclas;
    cOpcGrabar grabar;
    cOpcVoz voz;
};

std::string Nombre(const FilaCatalogo &fila) { return std::string(fila.seccion) + '\\' + fila.clave; }

// A value other than the default that the row accepts, but for those that mean something together only.
QByteArray Bueno(const FilaCatalogo &fila) {
    const QByteArray clave = fila.clave;
    if (QByteArrayList{"LeerTexto", "AnadirFich", "SobrescribirFich", "NumerarFich"}.contains(clave))
        return fila.defecto;
    switch (fila.forma) {
        case FormaOpcion::Booleano: return qstrcmp(fila.defecto, "True") == 0 ? "False" : "True";
        case FormaOpcion::BooleanoComoCifra: return "0";
        case FormaOpcion::Decimal: return "1500";
        case FormaOpcion::Texto: return clave == "FabricanteActivo" ? "IBM" : clave == "VozActiva" ? "Carlos" : "texto";
        case FormaOpcion::Entero: break;
    }
    if (clave == "Velocidad" || clave == "Tono") return "200";
    if (clave == "Volumen") return "30000";
    if (clave == "CalidadkHz") return "8000";
    if (clave.startsWith("Ascii")) return "54";
    if (clave.startsWith("Mod")) return "2";
    return "3";
}

QByteArray Fichero(const FilaCatalogo *mala, const QByteArray &disparate) {
    QByteArray texto, seccion;
    for (const FilaCatalogo &fila : Catalogo()) {
        if (seccion != fila.seccion) {
            seccion = fila.seccion;
            texto += seccion == "General" ? "[%General]\n" : '[' + seccion + "]\n";
        }
        // Advanced values are read only while they are in use.
        const bool avanzados = qstrcmp(fila.clave, "ValoresAvanzados") == 0;
        texto += QByteArray(fila.clave) + '=' + (&fila == mala ? disparate : avanzados ? "True" : Bueno(fila)) + '\n';
    }
    return texto;
}

// Whether the row's form takes the text that stands there.
bool TieneSentido(const FilaCatalogo &fila, const QByteArray &escrito) {
    if (fila.forma == FormaOpcion::Texto) return !escrito.startsWith('@');
    bool bien = false;
    if (fila.forma == FormaOpcion::Decimal) (void)escrito.toFloat(&bien);
    if (fila.forma == FormaOpcion::Entero) (void)escrito.toInt(&bien);
    return bien;
}

TEST(Disparates, InEveryRowTheAcceptedValueIsTheDefaultAndNoOtherIsLost) {
    RegistroPropio limpio;
    const VocesCarlos voces(limpio.Log());
    // Advanced values are read only while they are in use; else they are the voice's.
    RegistroPropio::Escribe(limpio.FicheroUsuario(), "[Voz]\nValoresAvanzados=True\n");
    auto deDiseno = Aceptados(limpio, voces).Tags();
    deDiseno["Voz\\ValoresAvanzados"] = "0";
    RegistroPropio bueno;
    RegistroPropio::Escribe(bueno.FicheroUsuario(), Fichero(nullptr, {}));
    const auto buenos = Aceptados(bueno, voces).Tags();

    for (const Disparate &disparate : Disparates()) {
        for (const FilaCatalogo &mala : Catalogo()) {
            SCOPED_TRACE(Nombre(mala) + ": " + disparate.que);
            RegistroPropio p;
            RegistroPropio::Escribe(p.FicheroUsuario(), Fichero(&mala, disparate.escrito));
            Aceptados aceptados(p, voces);
            // These two decide what the rest of their section means.
            const bool decisiva =
                qstrcmp(mala.clave, "FabricanteActivo") == 0 || qstrcmp(mala.clave, "ValoresAvanzados") == 0;
            for (const auto &[nombre, valor] : aceptados.Tags()) {
                if (nombre == Nombre(mala)) {
                    if (!TieneSentido(mala, disparate.escrito)) {
                        EXPECT_EQ(valor, deDiseno.at(nombre)) << nombre;
                    }
                } else if (!decisiva || nombre.rfind("Voz\\", 0) != 0) {
                    EXPECT_EQ(valor, buenos.at(nombre)) << nombre;
                }
            }
            if (!disparate.peligroso) continue;
            aceptados.Guarda();
            for (const FilaCatalogo &fila : Catalogo()) {
                if (&fila == &mala || qstrcmp(fila.clave, "ValoresAvanzados") == 0) continue;
                if (decisiva && qstrcmp(fila.seccion, "Voz") == 0) continue;
                EXPECT_EQ(p.Lee(fila.seccion, fila.clave, "lost").toLatin1(), Bueno(fila)) << Nombre(fila);
            }
            if (testing::Test::HasFailure()) return;  // the first one says enough
        }
    }
}

TEST(Disparates, InAllRowsAtOnceTheReadersValuesAreInTheirRanges) {
    RegistroPropio limpio;
    const VocesCarlos voces(limpio.Log());
    for (const Disparate &disparate : Disparates()) {
        SCOPED_TRACE(disparate.que);
        QByteArray texto, seccion;
        for (const FilaCatalogo &fila : Catalogo()) {
            if (seccion != fila.seccion) {
                seccion = fila.seccion;
                texto += seccion == "General" ? "[%General]\n" : '[' + seccion + "]\n";
            }
            texto += QByteArray(fila.clave) + '=' + disparate.escrito + '\n';
        }
        RegistroPropio p;
        RegistroPropio::Escribe(p.FicheroUsuario(), texto);
        Aceptados a(p, voces);
        EXPECT_TRUE(a.voz.EsIBM());
        EXPECT_GE(a.voz.Velocidad(), 70);
        EXPECT_LE(a.voz.Velocidad(), 450);
        EXPECT_GE(a.voz.Volumen(), 1000);
        EXPECT_LE(a.voz.Volumen(), 65000);
        EXPECT_GE(a.teclas.NroPalAvance(), 1);
        EXPECT_LE(a.teclas.NroPalRetroceso(), 100);
        EXPECT_LE(std::abs(a.editores.SaltoWord()), 5);
        EXPECT_GE(a.grabar.CalidadkHz(), 0);
        a.Guarda();
        const Aceptados despues(p, voces);
        EXPECT_EQ(a.Tags(), despues.Tags());
    }
}

}  // namespace
}  // namespace ondalis
