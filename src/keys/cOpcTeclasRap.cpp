#include "keys/cOpcTeclasRap.h"

#include <iterator>

#include "settings/Catalogo.h"

namespace ondalis {

namespace {

constexpr FilaOpcion kFilas[] = {
    FilaDe("ModActivar", "Teclas", "ModActivar"),       FilaDe("TeclaActivar", "Teclas", "AsciiActivar", "1"),
    FilaDe("ModPausa", "Teclas", "ModPausa"),           FilaDe("TeclaPausa", "Teclas", "AsciiPausa", "1"),
    FilaDe("ModDetener", "Teclas", "ModDetener"),       FilaDe("TeclaDetener", "Teclas", "AsciiDetener", "2"),
    FilaDe("ModRepetir", "Teclas", "ModRepetir"),       FilaDe("TeclaRepetir", "Teclas", "AsciiRepetir", "3"),
    FilaDe("ModAvanzar", "Teclas", "ModAvanzar"),       FilaDe("TeclaAvanzar", "Teclas", "AsciiAvanzar", "4"),
    FilaDe("ModRetroceder", "Teclas", "ModRetroceder"), FilaDe("TeclaRetroceder", "Teclas", "AsciiRetroceder", "5"),
    FilaDe("SaltoAvanzar", "Teclas", "NroPalAvance"),   FilaDe("SaltoRetroceder", "Teclas", "NroPalRetroceso"),
    FilaDe("CheckAvisos", "Teclas", "UtilizaAvisos"),
};

constexpr FilaTecla kTeclas[] = {
    {"0", 48},       {"1", 49},        {"2", 50},        {"3", 51},      {"4", 52},      {"5", 53},      {"6", 54},
    {"7", 55},       {"8", 56},        {"9", 57},        {"0 Num", 96},  {"1 Num", 97},  {"2 Num", 98},  {"3 Num", 99},
    {"4 Num", 100},  {"5 Num", 101},   {"6 Num", 102},   {"7 Num", 103}, {"8 Num", 104}, {"9 Num", 105}, {"F1", 112},
    {"F2", 113},     {"F3", 114},      {"F4", 115},      {"F5", 116},    {"F6", 117},    {"F7", 118},    {"F8", 119},
    {"F9", 120},     {"F10", 121},     {"F11", 122},     {"F12", 123},   {"F13", 124},   {"F14", 125},   {"F15", 126},
    {"F16", 127},    {"Tabulador", 9}, {"Retroceso", 8}, {"Insert", 45}, {"Supr", 12},   {"Intro", 13},  {"Esc", 27},
    {"Espacio", 32}, {"Inicio", 36},   {"Fin", 35},
};
static_assert(std::size(kTeclas) == 45);

constexpr const char *kComandos[] = {"Activar", "Pausa", "Detener", "Repetir", "Avanzar", "Retroceder"};
constexpr const char *kModificadores[] = {"Ctrl", "Alt", "Shift"};  // as the menus show them
constexpr int kMaxModificador = static_cast<int>(std::size(kModificadores)) - 1;

QString ControlMod(const QString &nombre) { return QStringLiteral("Mod") + nombre; }
QString ControlTecla(const QString &nombre) { return QStringLiteral("Tecla") + nombre; }

}  // namespace

std::span<const FilaTecla> TablaTeclas() { return kTeclas; }
std::span<const char *const> ComandosConfigurables() { return kComandos; }

cOpcTeclasRap::cOpcTeclasRap(cRegistro &registro, cLog &log)
    : TablaOpciones(kFilas, registro, log, QStringLiteral("ucOpcTeclasRap")) {
    for (const QString nombre : kComandos) {
        const QByteArray mod = ControlMod(nombre).toLatin1();
        if (const auto posicion = LeeEntero(Fila(mod.constData()), 0, kMaxModificador)) SetModif(nombre, *posicion);
        const QByteArray tecla = ControlTecla(nombre).toLatin1();
        if (const auto virtualKey = LeeFila(Fila(tecla.constData()))) SetAscii(nombre, virtualKey->toInt());
    }
    if (const auto palabras = LeeEntero(Fila("SaltoAvanzar"), MinPalabras, MaxPalabras)) SetNroPalAvance(*palabras);
    if (const auto palabras = LeeEntero(Fila("SaltoRetroceder"), MinPalabras, MaxPalabras))
        SetNroPalRetroceso(*palabras);
    if (const auto avisos = LeeFila(Fila("CheckAvisos"))) SetTag(QStringLiteral("CheckAvisos"), *avisos);
}

int cOpcTeclasRap::GetModif(const QString &nombre) const { return Tag(ControlMod(nombre)).toInt(); }

void cOpcTeclasRap::SetModif(const QString &nombre, int posicion) {
    SetTag(ControlMod(nombre), QString::number(posicion));
}

int cOpcTeclasRap::GetAscii(const QString &nombre) const {
    const std::size_t posicion = Tag(ControlTecla(nombre)).toUInt();
    return posicion < std::size(kTeclas) ? kTeclas[posicion].virtualKey : kTeclas[0].virtualKey;
}

void cOpcTeclasRap::SetAscii(const QString &nombre, int virtualKey) {
    std::size_t posicion = 0;
    for (std::size_t i = 0; i < std::size(kTeclas) && posicion == 0; ++i)
        if (kTeclas[i].virtualKey == virtualKey) posicion = i;
    SetTag(ControlTecla(nombre), QString::number(posicion));
}

void cOpcTeclasRap::SetNroPalAvance(int palabras) {
    if (palabras >= MinPalabras && palabras <= MaxPalabras) SetEntero("SaltoAvanzar", palabras);
}

void cOpcTeclasRap::SetNroPalRetroceso(int palabras) {
    if (palabras >= MinPalabras && palabras <= MaxPalabras) SetEntero("SaltoRetroceder", palabras);
}

QString cOpcTeclasRap::GetNombre(const QString &nombre) const {
    const int modificador = GetModif(nombre);
    const std::size_t tecla = Tag(ControlTecla(nombre)).toUInt();
    const QString texto = modificador >= 0 && modificador <= kMaxModificador
                              ? QString::fromLatin1(kModificadores[modificador])
                              : QString();
    return texto + QStringLiteral(" + ") +
           QString::fromLatin1(tecla < std::size(kTeclas) ? kTeclas[tecla].rotulo : kTeclas[0].rotulo);
}

void cOpcTeclasRap::GuardaValores() {
    for (const QString nombre : kComandos) {
        const QByteArray mod = ControlMod(nombre).toLatin1();
        SalvaFila(Fila(mod.constData()), Tag(ControlMod(nombre)));
        const QByteArray tecla = ControlTecla(nombre).toLatin1();
        SalvaFila(Fila(tecla.constData()), QString::number(GetAscii(nombre)));
    }
    for (const char *control : {"SaltoAvanzar", "SaltoRetroceder", "CheckAvisos"})
        SalvaFila(Fila(control), Tag(QLatin1String(control)));
}

}  // namespace ondalis
