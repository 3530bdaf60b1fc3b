#include "platform/x11/TablaTeclasX.h"

#include <algorithm>

// clang-format off
#define XK_MISCELLANY
#define XK_LATIN1
#define XK_XKB_KEYS
#include <X11/keysymdef.h>
// clang-format on

namespace ondalis {

namespace {

constexpr std::uint32_t kCambiaTerminal1 = 0x1008FE01;  // XF86Switch_VT_1
constexpr std::uint32_t kCambiaTerminal12 = 0x1008FE0C;

bool Contiene(std::span<const std::uint32_t> simbolos, std::uint32_t buscado) {
    return std::find(simbolos.begin(), simbolos.end(), buscado) != simbolos.end();
}

}  // namespace

SimbolosTecla SimbolosDe(int virtualKey) {
    const auto n = static_cast<std::uint32_t>(virtualKey);
    if (virtualKey >= 48 && virtualKey <= 57) {
        // A layout without European digits still has the digit row in its place.
        const int fila = virtualKey == 48 ? 9 : virtualKey - 49;
        return {{n}, {}, {static_cast<std::uint8_t>(10 + fila)}};  // a digit's keysym is its character
    }
    if (virtualKey >= 96 && virtualKey <= 105) return {{XK_KP_0 + (n - 96)}, {}, {}};
    if (virtualKey >= 124 &&
        virtualKey <= 127)  // F13 to F16 have no keysym in today's maps but a key code of their own
        return {{XK_F1 + (n - 112)}, {}, {static_cast<std::uint8_t>(191 + (n - 124))}};
    if (virtualKey >= 112 && virtualKey <= 123) return {{XK_F1 + (n - 112)}, {}, {}};
    switch (virtualKey) {
        case 8: return {{XK_BackSpace}, {}, {}};
        case 9: return {{XK_Tab}, {}, {}};
        // The row "Supr" has always registered 12, which is the key Clear: the keypad's 5 while NumLock is off. It
        // stays that key, since stored settings mean it; Delete would take away a key that nobody has chosen.
        case 12: return {{XK_Clear}, {XK_KP_Begin}, {}};
        case 13: return {{XK_Return, XK_KP_Enter}, {}, {}};
        case 27: return {{XK_Escape}, {}, {}};
        case 32: return {{n}, {}, {}};  // the blank is its character, as the digits are
        case 35: return {{XK_End}, {}, {}};
        case 36: return {{XK_Home}, {}, {}};
        case 44: return {{XK_Print}, {}, {}};
        case 45: return {{XK_Insert}, {}, {}};
        default: return {};
    }
}

int VirtualKeyDe(std::uint32_t simbolo) {
    struct Par {
        std::uint32_t simbolo;
        int virtualKey;
    };
    static constexpr Par kPares[] = {
        {XK_BackSpace, 8},     {XK_Tab, 9},        {XK_ISO_Left_Tab, 9},   {XK_Clear, 12},        {XK_KP_Begin, 12},
        {XK_Return, 13},       {XK_KP_Enter, 13},  {XK_Shift_L, 16},       {XK_Shift_R, 16},      {XK_Control_L, 17},
        {XK_Control_R, 17},    {XK_Alt_L, 18},     {XK_Alt_R, 18},         {XK_Pause, 19},        {XK_Caps_Lock, 20},
        {XK_Escape, 27},       {XK_Prior, 33},     {XK_KP_Prior, 33},      {XK_Next, 34},         {XK_KP_Next, 34},
        {XK_End, 35},          {XK_KP_End, 35},    {XK_Home, 36},          {XK_KP_Home, 36},      {XK_Left, 37},
        {XK_KP_Left, 37},      {XK_Up, 38},        {XK_KP_Up, 38},         {XK_Right, 39},        {XK_KP_Right, 39},
        {XK_Down, 40},         {XK_KP_Down, 40},   {XK_Print, 44},         {XK_Insert, 45},       {XK_KP_Insert, 45},
        {XK_Delete, 46},       {XK_KP_Delete, 46}, {XK_Super_L, 91},       {XK_Super_R, 92},      {XK_Menu, 93},
        {XK_KP_Multiply, 106}, {XK_KP_Add, 107},   {XK_KP_Separator, 108}, {XK_KP_Subtract, 109}, {XK_KP_Decimal, 110},
        {XK_KP_Divide, 111},   {XK_Num_Lock, 144}, {XK_Scroll_Lock, 145},  {XK_plus, 187},        {XK_comma, 188},
        {XK_minus, 189},       {XK_period, 190},
    };
    if (simbolo == U' ') return 32;
    if (simbolo >= U'0' && simbolo <= U'9') return static_cast<int>(simbolo);
    if (simbolo >= U'A' && simbolo <= U'Z') return static_cast<int>(simbolo);
    if (simbolo >= U'a' && simbolo <= U'z') return static_cast<int>(simbolo - U'a' + U'A');
    if (simbolo >= XK_KP_0 && simbolo <= XK_KP_9) return static_cast<int>(96 + (simbolo - XK_KP_0));
    if (simbolo >= XK_F1 && simbolo <= XK_F24) return static_cast<int>(112 + (simbolo - XK_F1));
    const auto *par = std::find_if(std::begin(kPares), std::end(kPares), [=](Par p) { return p.simbolo == simbolo; });
    return par == std::end(kPares) ? 0 : par->virtualKey;
}

std::span<const std::uint32_t> MapaTeclado::De(std::size_t indice) const {
    return std::span(simbolos).subspan(indice * porTecla, porTecla);
}

void MapaTeclado::FijaModificadores(std::span<const std::uint8_t> codigos, int porModificador) {
    const auto bitDe = [&](std::initializer_list<std::uint32_t> buscados, std::uint16_t defecto) {
        for (std::uint32_t buscado : buscados)
            for (std::size_t i = 0; i < codigos.size(); ++i) {
                if (codigos[i] < primero || porTecla == 0) continue;
                const std::size_t indice = codigos[i] - primero;
                if ((indice + 1) * porTecla > simbolos.size() || !Contiene(De(indice), buscado)) continue;
                return static_cast<std::uint16_t>(1u << (i / static_cast<std::size_t>(porModificador)));
            }
        return defecto;
    };
    if (porModificador <= 0) return;
    bitAlt = bitDe({XK_Alt_L, XK_Alt_R}, BitsX::Mod1);
    bitBloqNum = bitDe({XK_Num_Lock}, 0);
    bitSuper = bitDe({XK_Super_L, XK_Super_R}, BitsX::Mod4);
}

std::vector<CodigoX> MapaTeclado::CodigosDe(int virtualKey) const {
    const SimbolosTecla buscados = SimbolosDe(virtualKey);
    std::vector<CodigoX> codigos;
    const std::size_t teclas = porTecla == 0 ? 0 : simbolos.size() / porTecla;
    // First the two levels of the two groups that a core mapping begins with: a digit that only a third level has is
    // another key's business as long as the digit row has it.
    for (const std::size_t niveles : {std::min<std::size_t>(4, porTecla), static_cast<std::size_t>(porTecla)}) {
        for (std::size_t i = 0; i < teclas; ++i) {
            const auto suyos = De(i).first(niveles);
            const auto alguno = [suyos](const auto &lista) {
                return std::any_of(lista.begin(), lista.end(), [suyos](std::uint32_t s) { return Contiene(suyos, s); });
            };
            const auto codigo = static_cast<std::uint8_t>(primero + i);
            if (alguno(buscados.siempre))
                codigos.push_back({codigo, false});
            else if (alguno(buscados.sinBloqNum))
                codigos.push_back({codigo, true});
        }
        if (!codigos.empty()) return codigos;
    }
    for (const std::uint8_t codigo : buscados.reserva) codigos.push_back({codigo, false});
    return codigos;
}

bool MapaTeclado::CambiaTerminal(std::uint8_t codigo) const {
    if (porTecla == 0 || codigo < primero || (std::size_t{codigo} - primero + 1) * porTecla > simbolos.size())
        return false;
    const auto suyos = De(std::size_t{codigo} - primero);
    return std::any_of(suyos.begin(), suyos.end(),
                       [](std::uint32_t s) { return s >= kCambiaTerminal1 && s <= kCambiaTerminal12; });
}

std::uint16_t MapaTeclado::Bits(std::uint32_t modificadores) const {
    unsigned bits = 0;
    if (modificadores & 1) bits |= bitAlt;
    if (modificadores & 2) bits |= BitsX::Control;
    if (modificadores & 4) bits |= BitsX::Mayus;
    return static_cast<std::uint16_t>(bits);
}

std::vector<std::uint16_t> MapaTeclado::VariantesDeBloqueo(const CodigoX &codigo) const {
    std::vector<std::uint16_t> variantes{0, BitsX::Bloqueo};
    if (bitBloqNum != 0 && !codigo.soloSinBloqNum) {
        variantes.push_back(bitBloqNum);
        variantes.push_back(static_cast<std::uint16_t>(bitBloqNum | BitsX::Bloqueo));
    }
    return variantes;
}

}  // namespace ondalis
