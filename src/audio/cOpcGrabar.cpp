#include "audio/cOpcGrabar.h"

#include <cstdint>
#include <limits>

#include "settings/Catalogo.h"

namespace ondalis {

namespace {

constexpr FilaOpcion kFilas[] = {
    FilaDe("CheckLeer", "Grabar", "LeerTexto"),
    FilaDe("CheckGrabar", "Grabar", "GrabarTexto"),
    // Lists of two: the tag is the position, the first one stands for True.
    FilaDe("FormatoAudio", "Grabar", "GrabaEnWAV", "0"),
    FilaDe("TipoGrabacion", "Grabar", "GrabaSincrono", "0"),
    FilaDe("NomFichero", "Grabar", "NombreFichero"),
    FilaDe("OpcionAnadir", "Grabar", "AnadirFich"),
    FilaDe("OpcionSobrescribir", "Grabar", "SobrescribirFich"),
    FilaDe("OpcionNumerar", "Grabar", "NumerarFich"),
    // Lists that keep a number beside each text: the tag is that number.
    FilaDe("CombokHz", "Grabar", "CalidadkHz"),
    FilaDe("Combokbps", "Grabar", "Calidadkbps"),
};

constexpr EntradaCalidad kkHz[] = {
    {" 8.00 kHz", 8000},  {"11.02 kHz", 11025}, {"12.00 kHz", 12000}, {"16.00 kHz", 16000}, {"22.05 kHz", 22050},
    {"24.00 kHz", 24000}, {"32.00 kHz", 32000}, {"44.10 kHz", 44100}, {"48.00 kHz", 48000},
};

constexpr EntradaCalidad kkbps[] = {
    {"  8 kbps", 8},   {" 16 kbps", 16},  {" 24 kbps", 24},  {" 32 kbps", 32},  {" 40 kbps", 40},  {" 48 kbps", 48},
    {" 56 kbps", 56},  {" 64 kbps", 64},  {" 80 kbps", 80},  {" 96 kbps", 96},  {"112 kbps", 112}, {"128 kbps", 128},
    {"144 kbps", 144}, {"160 kbps", 160}, {"192 kbps", 192}, {"224 kbps", 224}, {"256 kbps", 256}, {"320 kbps", 320},
};

QString DePosicion(bool primera) { return primera ? QStringLiteral("0") : QStringLiteral("1"); }

}  // namespace

std::span<const EntradaCalidad> TablakHz() { return kkHz; }
std::span<const EntradaCalidad> Tablakbps() { return kkbps; }

int FormatoSAPI5(int hercios) {
    // From 8 kHz, 16 bits, mono (6) on each rate of the table has four types.
    for (std::size_t i = 0; i < std::size(kkHz); ++i)
        if (kkHz[i].valor == hercios) return 6 + 4 * static_cast<int>(i);
    return 0;
}

cOpcGrabar::cOpcGrabar(cRegistro &registro, cLog &log, const QString &ficheroDefecto)
    : TablaOpciones(kFilas, registro, log, QStringLiteral("ucOpcGrabar")) {
    SetNombreFichero(ficheroDefecto);
    for (const char *control :
         {"CheckLeer", "CheckGrabar", "NomFichero", "OpcionAnadir", "OpcionSobrescribir", "OpcionNumerar"})
        if (const auto valor = LeeFila(Fila(control))) SetTag(QLatin1String(control), *valor);
    for (const char *control : {"FormatoAudio", "TipoGrabacion"})
        if (const auto valor = LeeFila(Fila(control)))
            SetTag(QLatin1String(control), DePosicion(*valor == QLatin1String("1")));
    // Any rate is accepted: one that the list doesn't have leaves its selection alone and has no SAPI 5 format.
    if (const auto hercios = LeeEntero(Fila("CombokHz"), 0, std::numeric_limits<int>::max())) SetCalidadkHz(*hercios);
    if (const auto kbps = LeeEntero(Fila("Combokbps"), 0, std::numeric_limits<std::int16_t>::max()))
        SetCalidadkbps(*kbps);
    CorrigeContradicciones();
}

// What the page can't show must not be in force behind it: neither spoken nor recorded, the reader would be mute.
void cOpcGrabar::CorrigeContradicciones() {
    if (!LeerTexto() && !GrabarTexto()) {
        AnotaSinSentido(Fila("CheckLeer"));
        SetLeerTexto(true);
    }
    if (int{AnadirFich()} + int{SobrescribirFich()} + int{NumerarFich()} == 1) return;
    // Numbering goes first, and what isn't overwritten is added to, as the recording takes them.
    AnotaSinSentido(Fila("OpcionAnadir"));
    SetSobrescribirFich(SobrescribirFich() && !NumerarFich());
    SetAnadirFich(!SobrescribirFich() && !NumerarFich());
}

bool cOpcGrabar::GrabaEnWAV() const { return Tag(QStringLiteral("FormatoAudio")) == QLatin1String("0"); }
void cOpcGrabar::SetGrabaEnWAV(bool valor) { SetTag(QStringLiteral("FormatoAudio"), DePosicion(valor)); }
bool cOpcGrabar::GrabaSincrono() const { return Tag(QStringLiteral("TipoGrabacion")) == QLatin1String("0"); }
void cOpcGrabar::SetGrabaSincrono(bool valor) { SetTag(QStringLiteral("TipoGrabacion"), DePosicion(valor)); }

void cOpcGrabar::GuardaValores() {
    const auto salva = [this](const char *control) { SalvaFila(Fila(control), Tag(QLatin1String(control))); };
    salva("CheckLeer");
    salva("CheckGrabar");
    SalvaFila(Fila("FormatoAudio"), GrabaEnWAV() ? QStringLiteral("1") : QStringLiteral("0"));
    SalvaFila(Fila("TipoGrabacion"), GrabaSincrono() ? QStringLiteral("1") : QStringLiteral("0"));
    for (const char *control :
         {"NomFichero", "OpcionAnadir", "OpcionSobrescribir", "OpcionNumerar", "CombokHz", "Combokbps"})
        salva(control);
}

}  // namespace ondalis
