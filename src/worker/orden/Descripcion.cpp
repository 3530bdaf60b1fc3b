#include "worker/orden/Descripcion.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <initializer_list>
#include <set>
#include <span>
#include <utility>

namespace ondalis {

namespace {

constexpr std::uint32_t kHzMin = 8000, kHzMax = 48000;
constexpr std::size_t kMaxLista = 32;

std::string_view Recorta(std::string_view t) {
    while (!t.empty() && (t.front() == ' ' || t.front() == '\t')) t.remove_prefix(1);
    while (!t.empty() && (t.back() == ' ' || t.back() == '\t' || t.back() == '\r')) t.remove_suffix(1);
    return t;
}

// Bytes of the well-formed UTF-8 sequence that begins `t`, 0 if there is none.
std::size_t Secuencia(std::string_view t) {
    const auto byte = [&t](std::size_t i) { return i < t.size() ? static_cast<unsigned char>(t[i]) : 0u; };
    const auto sigue = [&byte](std::size_t i) { return (byte(i) & 0xC0) == 0x80; };
    const unsigned c = byte(0);
    if (c < 0x80) return 1;
    if (c >= 0xC2 && c < 0xE0) return sigue(1) ? 2 : 0;
    if (c >= 0xE0 && c < 0xF0) {
        const bool bien = sigue(1) && sigue(2) && !(c == 0xE0 && byte(1) < 0xA0) && !(c == 0xED && byte(1) > 0x9F);
        return bien ? 3 : 0;
    }
    if (c < 0xF0 || c > 0xF4) return 0;
    const bool bien =
        sigue(1) && sigue(2) && sigue(3) && !(c == 0xF0 && byte(1) < 0x90) && !(c == 0xF4 && byte(1) > 0x8F);
    return bien ? 4 : 0;
}

bool EsUtf8(std::string_view t) {
    while (!t.empty()) {
        const std::size_t n = Secuencia(t);
        if (n == 0) return false;
        t.remove_prefix(n);
    }
    return true;
}

template <typename T>
bool Numero(std::string_view t, T minimo, T maximo, T &destino) {
    T valor{};
    const auto r = std::from_chars(t.data(), t.data() + t.size(), valor);
    if (r.ec != std::errc() || r.ptr != t.data() + t.size() || !(valor >= minimo && valor <= maximo)) return false;
    destino = valor;
    return true;
}

bool Lista(std::string_view t, std::vector<std::string> &destino) {
    while (true) {
        const std::size_t fin = t.find(';');
        const auto uno = Recorta(t.substr(0, fin));
        if (uno.empty() || (uno[0] != '/' && !uno.starts_with("{datos}/")) || destino.size() >= kMaxLista) return false;
        destino.emplace_back(uno);
        if (fin == std::string_view::npos) return true;
        t.remove_prefix(fin + 1);
    }
}

bool EsHexadecimal(std::string_view t) {
    return !t.empty() && t.size() <= 5 && t.find_first_not_of("0123456789abcdefABCDEF") == std::string_view::npos;
}

bool Lcids(std::string_view t, std::string &destino) {
    destino = t;
    while (true) {
        const std::size_t fin = t.find(';');
        if (!EsHexadecimal(t.substr(0, fin))) return false;
        if (fin == std::string_view::npos) return true;
        t.remove_prefix(fin + 1);
    }
}

bool Texto(std::string_view t, std::string &destino) {
    destino = t;
    return !t.empty();
}

bool EsPrograma(std::string_view t, std::string &destino) {
    destino = t;
    return t.find('/') == std::string_view::npos ? !t.empty() : t[0] == '/';
}

bool EsModelo(std::string_view t, std::string &destino) {
    std::vector<std::string> uno;
    if (!Lista(t, uno) || uno.size() != 1) return false;
    destino = uno[0];
    return true;
}

// A voice's identifier goes to the program: never taken for an option.
bool EsIdDeVoz(std::string_view t) {
    return !t.empty() && t.size() <= 100 && t[0] != '-' && std::all_of(t.begin(), t.end(), [](unsigned char c) {
        return c > ' ' && c != 0x7F && c != '[' && c != ']';
    });
}

enum class Toma { Bien, Desconocida, Invalida };

Toma Resultado(bool bien) { return bien ? Toma::Bien : Toma::Invalida; }

template <typename E>
using Valores = std::initializer_list<std::pair<std::string_view, E>>;

template <typename E>
Toma Elige(std::string_view v, Valores<E> valores, E &destino) {
    for (const auto &[nombre, valor] : valores)
        if (nombre == v) {
            destino = valor;
            return Toma::Bien;
        }
    return Toma::Invalida;
}

Toma TomaDeLlamada(Descripcion &d, std::string_view clave, std::string_view v) {
    using E = EntradaOrden;
    using R = RitmoOrden;
    if (clave == "fabricante") return Resultado(Texto(v, d.fabricante));
    if (clave == "programa") return Resultado(EsPrograma(v, d.programa));
    if (clave == "argumentos" || clave == "argumentos-palabras") {
        auto partes = ParteArgumentos(v);
        if (partes) (clave == "argumentos" ? d.argumentos : d.argumentosPalabras) = std::move(*partes);
        return Resultado(partes.has_value());
    }
    if (clave == "tiempos")
        return Elige(v, {{"segmentos", TiemposOrden::Segmentos}, {"palabras", TiemposOrden::Palabras}}, d.tiempos);
    if (clave == "entrada")
        return Elige(v, {{"estandar", E::Estandar}, {"argumento", E::Argumento}, {"fichero", E::Fichero}}, d.entrada);
    if (clave == "salida")
        return Elige(v, {{"estandar", SalidaOrden::Estandar}, {"fichero", SalidaOrden::Fichero}}, d.salida);
    if (clave == "formato") return Elige(v, {{"wav", FormatoOrden::Wav}, {"crudo", FormatoOrden::Crudo}}, d.formato);
    if (clave == "ritmo")
        return Elige(v, {{"factor", R::Factor}, {"inverso", R::Inverso}, {"palabras", R::Palabras}}, d.ritmo);
    if (clave == "primera-corta") return Elige(v, {{"si", true}, {"no", false}}, d.primeraCorta);
    if (clave == "ficheros") return Resultado(Lista(v, d.ficheros));
    return Toma::Desconocida;
}

Toma TomaDeMotor(Descripcion &d, std::string_view clave, std::string_view v) {
    if (clave == "hercios") return Resultado(Numero(v, kHzMin, kHzMax, d.hercios));
    if (clave == "canales") return Resultado(Numero(v, 1u, 2u, d.canales));
    if (clave == "ritmo-minimo") return Resultado(Numero(v, .1, 1., d.ritmoMinimo));
    if (clave == "ritmo-maximo") return Resultado(Numero(v, 1., 10., d.ritmoMaximo));
    if (clave == "palabras-minuto") return Resultado(Numero(v, 40., 600., d.palabrasMinuto));
    if (clave == "tono-centro") return Resultado(Numero(v, .001, 100000., d.tonoCentro));
    if (clave == "tono-minimo") return Resultado(Numero(v, 0., 100000., d.tonoMinimo));
    if (clave == "tono-maximo") return Resultado(Numero(v, 0., 100000., d.tonoMaximo));
    if (clave == "plazo-primera-ms") return Resultado(Numero(v, 50u, 55000u, d.plazoPrimeraMs));
    if (clave == "plazo-ms") return Resultado(Numero(v, 50u, 55000u, d.plazoMs));
    if (clave == "max-caracteres") return Resultado(Numero(v, 20u, 1500u, d.maxCaracteres));
    return TomaDeLlamada(d, clave, v);
}

Toma TomaDeVoz(VozOrden &voz, std::string_view clave, std::string_view v) {
    if (clave == "nombre") return Resultado(Texto(v, voz.nombre));
    if (clave == "lengua") return Resultado(Lcids(v, voz.lengua));
    if (clave == "genero") return Resultado((v == "hombre" || v == "mujer" || v == "neutro") && Texto(v, voz.genero));
    if (clave == "edad") return Resultado((v == "nino" || v == "adulto" || v == "mayor") && Texto(v, voz.edad));
    if (clave == "modelo") return Resultado(EsModelo(v, voz.modelo));
    if (clave == "ficheros") return Resultado(Lista(v, voz.ficheros));
    if (clave == "hercios") return Resultado(Numero(v, kHzMin, kHzMax, voz.hercios));
    return Toma::Desconocida;
}

Toma TomaDeModelos(ModelosOrden &m, std::string_view clave, std::string_view v) {
    const auto terminacion = [v](std::string &destino) {
        return v.size() > 1 && v[0] == '.' && v.find('/') == std::string_view::npos && Texto(v, destino);
    };
    if (clave == "carpetas") return Resultado(Lista(v, m.carpetas));
    if (clave == "terminacion") return Resultado(terminacion(m.terminacion));
    if (clave == "acompana") return Resultado(terminacion(m.acompana));
    return Toma::Desconocida;
}

bool Contiene(const std::vector<std::string> &argumentos, std::string_view hueco) {
    return std::any_of(argumentos.begin(), argumentos.end(),
                       [hueco](const std::string &a) { return a.find(hueco) != std::string::npos; });
}
bool Contiene(const Descripcion &d, std::string_view hueco) { return Contiene(d.argumentos, hueco); }

// A placeholder that isn't ours would reach the program as it stands.
bool HuecosConocidos(const std::vector<std::string> &argumentos, std::span<const std::string_view> huecos) {
    for (const std::string &a : argumentos)
        for (std::size_t i = a.find('{'); i != std::string::npos; i = a.find('{', i + 1)) {
            const auto resto = std::string_view(a).substr(i);
            const bool conocido =
                std::any_of(huecos.begin(), huecos.end(), [resto](std::string_view h) { return resto.starts_with(h); });
            if (!conocido) return false;
        }
    return true;
}

constexpr std::array<std::string_view, 7> kHuecos{"{voz}",   "{modelo}", "{ritmo}",  "{tono}",
                                                  "{texto}", "{salida}", "{tiempos}"};
constexpr std::array<std::string_view, 3> kHuecosPalabras{"{voz}", "{modelo}", "{texto}"};

std::string ReparoDeTiempos(const Descripcion &d) {
    const bool hay = d.tiempos != TiemposOrden::Ninguno, aparte = Contiene(d, "{tiempos}");
    if (!HuecosConocidos(d.argumentosPalabras, kHuecosPalabras))
        return "«argumentos-palabras» contiene un hueco desconocido";
    if (aparte && !hay) return "«{tiempos}» va con «tiempos», y sólo con él";
    if (hay && !aparte && d.salida != SalidaOrden::Fichero)
        return "«tiempos» necesita «salida = fichero» o el hueco «{tiempos}»";
    if ((d.tiempos == TiemposOrden::Segmentos) != !d.argumentosPalabras.empty())
        return "«argumentos-palabras» va con «tiempos = segmentos», y sólo con él";
    if (!d.argumentosPalabras.empty() &&
        (d.entrada != EntradaOrden::Estandar) != Contiene(d.argumentosPalabras, "{texto}"))
        return "«argumentos-palabras» recibe el texto como «argumentos»";
    return {};
}

// What single lines don't tell. Empty: all is well.
std::string Reparo(const Descripcion &d) {
    if (d.fabricante.empty()) return "falta «fabricante»";
    if (d.fabricante == "IBM") return "«IBM» es el fabricante de otra familia de voces";
    if (d.programa.empty()) return "falta «programa»";
    if (!HuecosConocidos(d.argumentos, kHuecos)) return "«argumentos» contiene un hueco desconocido";
    if (d.voces.empty() && !d.modelos) return "no hay ninguna voz";
    if (d.modelos && (d.modelos->carpetas.empty() || d.modelos->terminacion.empty()))
        return "«[modelos]» necesita «carpetas» y «terminacion»";
    if ((d.entrada != EntradaOrden::Estandar) != Contiene(d, "{texto}"))
        return "«{texto}» va con «entrada = argumento» o «entrada = fichero», y sólo con ellas";
    if ((d.salida == SalidaOrden::Fichero) != Contiene(d, "{salida}"))
        return "«{salida}» va con «salida = fichero», y sólo con ella";
    if ((d.ritmo != RitmoOrden::Ninguno) != Contiene(d, "{ritmo}")) return "«ritmo» y «{ritmo}» van juntos";
    if ((d.tonoCentro > 0) != Contiene(d, "{tono}")) return "«tono-centro» y «{tono}» van juntos";
    if (d.tonoCentro > 0 && !(d.tonoMinimo <= d.tonoCentro && d.tonoCentro <= d.tonoMaximo))
        return "«tono-centro» está fuera de «tono-minimo» y «tono-maximo»";
    const bool conModelo = Contiene(d, "{modelo}");
    for (const VozOrden &voz : d.voces) {
        if (voz.nombre.empty() || voz.lengua.empty()) return "a la voz «" + voz.id + "» le falta «nombre» o «lengua»";
        if (conModelo && voz.modelo.empty()) return "a la voz «" + voz.id + "» le falta «modelo»";
        if (d.formato == FormatoOrden::Crudo && d.hercios == 0 && voz.hercios == 0)
            return "el formato crudo necesita «hercios»";
    }
    if (d.modelos && d.formato == FormatoOrden::Crudo && d.hercios == 0 && d.modelos->acompana.empty())
        return "el formato crudo necesita «hercios» o «acompana»";
    if (d.plazoPrimeraMs > d.plazoMs) return "«plazo-primera-ms» pasa de «plazo-ms»";
    return ReparoDeTiempos(d);
}

class Lector {
public:
    LecturaDescripcion Lee(std::string_view texto) {
        if (texto.size() > kMaxDescripcion) return {{}, "el fichero es demasiado grande"};
        if (texto.starts_with("\xEF\xBB\xBF")) texto.remove_prefix(3);
        for (int n = 1; !texto.empty(); n++) {
            const std::size_t fin = texto.find('\n');
            if (std::string fallo = Linea(texto.substr(0, fin)); !fallo.empty())
                return {{}, "línea " + std::to_string(n) + ": " + fallo};
            texto.remove_prefix(fin == std::string_view::npos ? texto.size() : fin + 1);
        }
        if (std::string reparo = Reparo(m_d); !reparo.empty()) return {{}, reparo};
        return {std::move(m_d), {}};
    }

private:
    std::string Linea(std::string_view linea) {
        if (linea.size() > kMaxLineaDescripcion) return "demasiado larga";
        if (linea.find('\0') != std::string_view::npos) return "contiene un carácter nulo";
        if (!EsUtf8(linea)) return "no es UTF-8";
        linea = Recorta(linea);
        if (std::any_of(linea.begin(), linea.end(),
                        [](unsigned char c) { return (c < ' ' && c != '\t') || c == 0x7F; }))
            return "contiene un carácter de control";
        if (linea.empty() || linea[0] == '#') return {};
        if (linea[0] == '[') return Seccion(linea);
        const std::size_t igual = linea.find('=');
        if (igual == std::string_view::npos) return "no es «clave = valor»";
        return Clave(Recorta(linea.substr(0, igual)), Recorta(linea.substr(igual + 1)));
    }

    std::string Seccion(std::string_view linea) {
        if (linea.back() != ']') return "sección sin cerrar";
        const auto nombre = Recorta(linea.substr(1, linea.size() - 2));
        const bool esVoz = nombre.starts_with("voz ");
        if (!m_secciones.insert(std::string(nombre)).second) return "sección repetida";
        m_claves.clear();
        m_donde = esVoz ? Donde::Voz : nombre == "motor" ? Donde::Motor : Donde::Modelos;
        if (nombre == "motor") return {};
        if (nombre == "modelos") {
            m_d.modelos.emplace();
            return {};
        }
        if (!esVoz) return "sección desconocida";
        const auto id = Recorta(nombre.substr(4));
        if (!EsIdDeVoz(id)) return "voz sin un identificador válido";
        if (m_d.voces.size() >= kMaxVocesDescripcion) return "demasiadas voces";
        m_d.voces.push_back({std::string(id), {}, {}, {}, {}, {}, {}, 0});
        return {};
    }

    std::string Clave(std::string_view clave, std::string_view valor) {
        const std::string nombre = "«" + std::string(clave) + "»";
        if (m_donde == Donde::Fuera) return "clave " + nombre + " fuera de toda sección";
        if (!m_claves.insert(std::string(clave)).second) return "clave " + nombre + " repetida";
        const Toma toma = m_donde == Donde::Motor ? TomaDeMotor(m_d, clave, valor)
                          : m_donde == Donde::Voz ? TomaDeVoz(m_d.voces.back(), clave, valor)
                                                  : TomaDeModelos(*m_d.modelos, clave, valor);
        if (toma == Toma::Desconocida) return "clave desconocida: " + nombre;
        return toma == Toma::Bien ? std::string() : "valor no válido de " + nombre;
    }

    enum class Donde { Fuera, Motor, Voz, Modelos };
    Descripcion m_d;
    Donde m_donde = Donde::Fuera;
    std::set<std::string> m_secciones, m_claves;
};

}  // namespace

LecturaDescripcion LeeDescripcion(std::string_view texto) { return Lector().Lee(texto); }

bool EsNombreDeMotor(std::string_view nombre) {
    return !nombre.empty() && nombre.size() <= 40 &&
           nombre.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-") == std::string_view::npos;
}

std::optional<std::vector<std::string>> ParteArgumentos(std::string_view linea) {
    std::vector<std::string> partes;
    bool entreComillas = false, hay = false;
    for (const char c : linea) {
        if (c == '"') {
            entreComillas = !entreComillas;
            if (!hay) partes.emplace_back();
            hay = true;
        } else if (!entreComillas && (c == ' ' || c == '\t')) {
            hay = false;
        } else {
            if (!hay) partes.emplace_back();
            hay = true;
            partes.back() += c;
        }
    }
    if (entreComillas) return std::nullopt;
    return partes;
}

}  // namespace ondalis
