#include "engine/Protocolo.h"

#include <bit>
#include <cassert>
#include <cstring>
#include <type_traits>
#include <utility>

namespace ondalis {

namespace {

constexpr std::size_t kCabecera = 4;  // the length field

// Units and samples are copied whole where memory holds them as the wire does; a long text starts as fast as a short
// one.
template <typename T>
constexpr bool kEnBloque = std::is_integral_v<T> && (sizeof(T) == 1 || std::endian::native == std::endian::little);

// The order of fields is stated once, in Campos, and walked by the writer and by the reader alike.

class Escritor {
public:
    explicit Escritor(std::vector<std::uint8_t> &destino) : m_destino(destino) {}

    template <typename T>
    void operator()(const T &valor) {
        if constexpr (std::is_same_v<T, bool>) {
            m_destino.push_back(valor ? 1 : 0);
        } else if constexpr (std::is_enum_v<T>) {
            (*this)(static_cast<std::underlying_type_t<T>>(valor));
        } else if constexpr (std::is_same_v<T, double>) {
            (*this)(std::bit_cast<std::uint64_t>(valor));
        } else if constexpr (std::is_integral_v<T>) {
            const auto u = static_cast<std::make_unsigned_t<T>>(valor);
            for (unsigned i = 0; i < sizeof(T); i++) m_destino.push_back(static_cast<std::uint8_t>(u >> (8 * i)));
        } else if constexpr (requires { valor.data(); }) {
            (*this)(static_cast<std::uint32_t>(valor.size()));
            if constexpr (kEnBloque<typename T::value_type>) {
                const auto *bytes = reinterpret_cast<const std::uint8_t *>(valor.data());
                m_destino.insert(m_destino.end(), bytes, bytes + valor.size() * sizeof(valor[0]));
            } else {
                for (const auto &elemento : valor) (*this)(elemento);
            }
        } else {
            Campos(*this, valor);
        }
    }

private:
    std::vector<std::uint8_t> &m_destino;
};

// Reads the fields of one whole frame. After the first thing that doesn't fit it reads zeros and Bien() is false.
class Lector {
public:
    explicit Lector(std::span<const std::uint8_t> bytes) : m_bytes(bytes) {}

    bool Bien() const { return m_bien; }
    bool Agotado() const { return m_bytes.empty(); }
    void Rechaza() { m_bien = false, m_bytes = {}; }

    template <typename T>
    void operator()(T &valor) {
        if constexpr (std::is_same_v<T, bool>) {
            std::uint8_t u = 0;
            (*this)(u);
            if (u > 1) Rechaza();
            valor = u == 1;
        } else if constexpr (std::is_same_v<T, TipoTramo>) {
            std::uint8_t u = 0;
            (*this)(u);
            if (u > static_cast<std::uint8_t>(kUltimoTipoTramo)) return Rechaza();
            valor = static_cast<TipoTramo>(u);
        } else if constexpr (std::is_same_v<T, double>) {
            std::uint64_t u = 0;
            (*this)(u);
            valor = std::bit_cast<double>(u);
        } else if constexpr (std::is_integral_v<T>) {
            if (m_bytes.size() < sizeof(T)) return Rechaza();
            std::make_unsigned_t<T> u = 0;
            for (unsigned i = 0; i < sizeof(T); i++)
                u = static_cast<std::make_unsigned_t<T>>(u | static_cast<std::make_unsigned_t<T>>(m_bytes[i])
                                                                 << (8 * i));
            valor = static_cast<T>(u);
            m_bytes = m_bytes.subspan(sizeof(T));
        } else if constexpr (requires { valor.data(); }) {
            std::uint32_t cuenta = 0;
            (*this)(cuenta);
            using Elemento = typename T::value_type;
            if (cuenta > m_bytes.size() / MinimoDe<Elemento>()) return Rechaza();
            if constexpr (kEnBloque<Elemento>) {
                valor.resize(cuenta);
                if (cuenta > 0) std::memcpy(valor.data(), m_bytes.data(), cuenta * sizeof(Elemento));
                m_bytes = m_bytes.subspan(cuenta * sizeof(Elemento));
                return;
            }
            valor.reserve(cuenta);
            for (std::uint32_t i = 0; i < cuenta && m_bien; i++) {
                Elemento elemento{};
                (*this)(elemento);
                valor.push_back(std::move(elemento));
            }
        } else {
            Campos(*this, valor);
        }
    }

private:
    // Bytes that an element takes at least: a count above what came is refused before anything is allocated.
    template <typename T>
    static constexpr std::size_t MinimoDe() {
        if constexpr (std::is_same_v<T, Tramo>)
            return 1 + 1 + 8 + 4 + 4;
        else if constexpr (std::is_same_v<T, Corte>)
            return 4 + 4;
        else
            return sizeof(T);
    }

    std::span<const std::uint8_t> m_bytes;
    bool m_bien = true;
};

template <typename A, typename T, typename... Campo>
void Todos(A &a, T &t, Campo... campo) {
    (a(t.*campo), ...);
}

template <typename A, typename T>
void Campos(A &a, T &t) {
    using X = std::remove_const_t<T>;
    if constexpr (std::is_same_v<X, Corte>) {
        Todos(a, t, &X::texto, &X::origen);
    } else if constexpr (std::is_same_v<X, Tramo>) {
        Todos(a, t, &X::tipo, &X::absoluto, &X::valor, &X::texto, &X::cortes);
    } else if constexpr (std::is_same_v<X, ParametrosVoz>) {
        Todos(a, t, &X::motor, &X::voz, &X::formantes, &X::velocidad, &X::ganancia, &X::tono, &X::fluctuacion,
              &X::aspereza, &X::diafonia, &X::tamCabeza);
    } else if constexpr (std::is_same_v<X, Locucion>) {
        Todos(a, t, &X::numero, &X::voz, &X::tramos, &X::desde);
    } else if constexpr (std::is_same_v<X, TramaHabla>) {
        Todos(a, t, &X::locucion);
    } else if constexpr (std::is_same_v<X, TramaPara> || std::is_same_v<X, TramaFin>) {
        Todos(a, t, &X::numero);
    } else if constexpr (std::is_same_v<X, TramaFormato>) {
        Todos(a, t, &X::numero, &X::hercios);
    } else if constexpr (std::is_same_v<X, TramaPcm>) {
        Todos(a, t, &X::numero, &X::muestras);
    } else if constexpr (std::is_same_v<X, TramaPalabra>) {
        Todos(a, t, &X::numero, &X::muestra, &X::posicion, &X::longitud);
    } else if constexpr (std::is_same_v<X, TramaMarca>) {
        Todos(a, t, &X::numero, &X::muestra, &X::nombre);
    } else if constexpr (std::is_same_v<X, TramaError>) {
        Todos(a, t, &X::numero, &X::texto);
    } else if constexpr (std::is_same_v<X, TramaVoz>) {
        Todos(a, t, &X::motor, &X::voz, &X::nombre, &X::lengua, &X::fabricante, &X::plazoMs, &X::genero, &X::edad);
    } else {
        static_assert(std::is_same_v<X, TramaPideVoces>);
    }
}

// What the fields' own widths don't say.
bool EnRango(const TramaFormato &t) { return t.hercios >= 8000 && t.hercios <= 48000; }
bool EnRango(const TramaPcm &t) { return t.muestras.size() <= kMaxMuestrasPcm; }
template <typename T>
bool EnRango(const T &) {
    return true;
}

template <std::size_t I = 0>
std::optional<Trama> Lee(std::size_t tipo, std::span<const std::uint8_t> bytes) {
    if constexpr (I == std::variant_size_v<Trama>) {
        return std::nullopt;
    } else {
        if (tipo != I) return Lee<I + 1>(tipo, bytes);
        std::variant_alternative_t<I, Trama> trama;
        Lector lector(bytes);
        Campos(lector, trama);
        if (!lector.Bien() || !lector.Agotado() || !EnRango(trama)) return std::nullopt;
        return trama;
    }
}

std::uint32_t Longitud(std::span<const std::uint8_t> bytes) {
    return static_cast<std::uint32_t>(bytes[0]) | static_cast<std::uint32_t>(bytes[1]) << 8 |
           static_cast<std::uint32_t>(bytes[2]) << 16 | static_cast<std::uint32_t>(bytes[3]) << 24;
}

}  // namespace

std::size_t TamanoDeHabla(const Locucion &locucion) {
    constexpr std::size_t kDeLocucion = 128;  // numbers, counts and the frame's own head
    constexpr std::size_t kDeTramo = 18;
    std::size_t bytes = kDeLocucion + locucion.voz.motor.size() + locucion.voz.voz.size();
    for (const Tramo &tramo : locucion.tramos)
        bytes += kDeTramo + tramo.texto.size() * sizeof(char16_t) + tramo.cortes.size() * 2 * sizeof(std::uint32_t);
    return bytes;
}

void Codifica(const Trama &trama, std::vector<std::uint8_t> &destino) {
    const std::size_t inicio = destino.size();
    destino.resize(inicio + kCabecera);
    destino.push_back(static_cast<std::uint8_t>(trama.index()));
    Escritor escritor(destino);
    std::visit(
        [&escritor](const auto &t) {
            assert(EnRango(t));
            Campos(escritor, t);
        },
        trama);
    const std::size_t longitud = destino.size() - inicio - kCabecera;
    for (unsigned i = 0; i < kCabecera; i++) destino[inicio + i] = static_cast<std::uint8_t>(longitud >> (8 * i));
}

void Descodificador::Alimenta(std::span<const std::uint8_t> bytes) {
    if (m_roto) return;
    // What was read is dropped once it is the greater half, so each byte is moved a bounded number of times.
    if (m_leidos > m_bytes.size() / 2) {
        m_bytes.erase(m_bytes.begin(), m_bytes.begin() + static_cast<std::ptrdiff_t>(m_leidos));
        m_leidos = 0;
    }
    m_bytes.insert(m_bytes.end(), bytes.begin(), bytes.end());
}

std::optional<Trama> Descodificador::Siguiente() {
    const auto rompe = [this] {
        m_roto = true;
        m_bytes = {};
        m_leidos = 0;
        return std::nullopt;
    };
    const auto resto = std::span<const std::uint8_t>(m_bytes).subspan(m_leidos);
    if (m_roto || resto.size() < kCabecera) return std::nullopt;
    const std::size_t longitud = Longitud(resto);
    if (longitud == 0 || longitud > kMaxTrama) return rompe();
    // An unknown type is told at once and not after the bytes that it announces.
    if (resto.size() > kCabecera && resto[kCabecera] >= std::variant_size_v<Trama>) return rompe();
    if (resto.size() - kCabecera < longitud) return std::nullopt;
    auto trama = Lee(resto[kCabecera], resto.subspan(kCabecera + 1, longitud - 1));
    if (!trama) return rompe();
    m_leidos += kCabecera + longitud;
    if (m_leidos == m_bytes.size()) {
        constexpr std::size_t kGuarda = 1 << 20;  // a long text's buffer isn't kept for ever
        if (m_bytes.capacity() > kGuarda) m_bytes = {};
        m_bytes.clear();
        m_leidos = 0;
    }
    return trama;
}

}  // namespace ondalis
