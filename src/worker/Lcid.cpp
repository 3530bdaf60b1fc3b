#include "worker/Lcid.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace ondalis {

namespace {

struct Fila {
    std::string_view lengua, lcid;
};

// Spanish voices carry both sorts of Spanish, so that notices come in Spanish whichever is asked for.
constexpr std::array kFilas{
    Fila{"af", "436"},    Fila{"am", "45E"},    Fila{"ar", "401"},     Fila{"as", "44D"},    Fila{"az", "42C"},
    Fila{"ba", "46D"},    Fila{"be", "423"},    Fila{"bg", "402"},     Fila{"bn", "445"},    Fila{"bs", "141A"},
    Fila{"ca", "403"},    Fila{"chr", "45C"},   Fila{"cmn", "804"},    Fila{"cs", "405"},    Fila{"cy", "452"},
    Fila{"da", "406"},    Fila{"de", "407"},    Fila{"el", "408"},     Fila{"en", "409"},    Fila{"en-029", "2409"},
    Fila{"en-gb", "809"}, Fila{"en-us", "409"}, Fila{"es", "40A;C0A"}, Fila{"et", "425"},    Fila{"eu", "42D"},
    Fila{"fa", "429"},    Fila{"fi", "40B"},    Fila{"fr", "40C"},     Fila{"fr-be", "80C"}, Fila{"fr-ch", "100C"},
    Fila{"ga", "83C"},    Fila{"gd", "491"},    Fila{"gn", "474"},     Fila{"gu", "447"},    Fila{"haw", "475"},
    Fila{"hbs", "41A"},   Fila{"he", "40D"},    Fila{"hi", "439"},     Fila{"hr", "41A"},    Fila{"hu", "40E"},
    Fila{"hy", "42B"},    Fila{"hyw", "42B"},   Fila{"id", "421"},     Fila{"is", "40F"},    Fila{"it", "410"},
    Fila{"ja", "411"},    Fila{"ka", "437"},    Fila{"kk", "43F"},     Fila{"kl", "46F"},    Fila{"kn", "44B"},
    Fila{"ko", "412"},    Fila{"kok", "457"},   Fila{"ky", "440"},     Fila{"la", "476"},    Fila{"lb", "46E"},
    Fila{"lt", "427"},    Fila{"lv", "426"},    Fila{"mi", "481"},     Fila{"mk", "42F"},    Fila{"ml", "44C"},
    Fila{"mr", "44E"},    Fila{"ms", "43E"},    Fila{"mt", "43A"},     Fila{"my", "455"},    Fila{"nb", "414"},
    Fila{"ne", "461"},    Fila{"nl", "413"},    Fila{"no", "414"},     Fila{"om", "472"},    Fila{"or", "448"},
    Fila{"pa", "446"},    Fila{"pap", "479"},   Fila{"pl", "415"},     Fila{"pt", "816"},    Fila{"pt-br", "416"},
    Fila{"qu", "46B"},    Fila{"quc", "486"},   Fila{"ro", "418"},     Fila{"ru", "419"},    Fila{"sd", "859"},
    Fila{"si", "45B"},    Fila{"sk", "41B"},    Fila{"sl", "424"},     Fila{"smj", "103B"},  Fila{"sq", "41C"},
    Fila{"sr", "C1A"},    Fila{"sv", "41D"},    Fila{"sw", "441"},     Fila{"ta", "449"},    Fila{"te", "44A"},
    Fila{"th", "41E"},    Fila{"tk", "442"},    Fila{"tn", "432"},     Fila{"tr", "41F"},    Fila{"tt", "444"},
    Fila{"ug", "480"},    Fila{"uk", "422"},    Fila{"ur", "420"},     Fila{"uz", "443"},    Fila{"vi", "42A"},
    Fila{"yue", "C04"},   Fila{"zh", "804"},    Fila{"zh-yue", "C04"},
};

}  // namespace

std::string LcidDeLengua(std::string_view bcp47) {
    std::string lengua(bcp47);
    std::transform(lengua.begin(), lengua.end(), lengua.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    while (!lengua.empty()) {
        const auto fila =
            std::find_if(kFilas.begin(), kFilas.end(), [&lengua](const Fila &una) { return una.lengua == lengua; });
        if (fila != kFilas.end()) return std::string(fila->lcid);
        const std::size_t guion = lengua.rfind('-');
        lengua.resize(guion == std::string::npos ? 0 : guion);
    }
    return {};
}

std::string IdiomaDeLcid(std::string_view lcids) {
    const auto numero = [](std::string_view t) {
        unsigned valor = 0;
        std::from_chars(t.data(), t.data() + t.size(), valor, 16);
        return valor;
    };
    constexpr unsigned kPrimaria = 0x3FF;  // of the bits of an identifier: the language without region
    const unsigned lcid = numero(lcids);
    std::string_view exacta, lengua;
    for (const Fila &fila : kFilas) {
        if (lcid == 0) break;
        const unsigned suyo = numero(fila.lcid);
        if (suyo == lcid && fila.lengua.size() > exacta.size()) exacta = fila.lengua;
        if ((suyo & kPrimaria) == (lcid & kPrimaria) && (lengua.empty() || fila.lengua.size() < lengua.size()))
            lengua = fila.lengua;
    }
    return std::string(exacta.empty() ? lengua : exacta);
}

}  // namespace ondalis
