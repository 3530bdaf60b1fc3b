#include "engine/cSalidaFichero.h"

#include <soxr.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <span>
#include <utility>

namespace ondalis {

namespace {
constexpr std::size_t kJuntas = 8192;  // samples written at once: what a killed process may lose, half a second
}  // namespace

// Streams one file's speeches from the engine's rate to the file's. Lengths are reckoned over all of them, so that
// what is rounded off one doesn't add up.
class cSalidaFichero::Conversor {
public:
    Conversor(int entra, int sale) : m_entra(entra), m_sale(sale) {}
    ~Conversor() { soxr_delete(m_soxr); }
    Conversor(const Conversor &) = delete;
    Conversor &operator=(const Conversor &) = delete;

    bool Sirve(int entra, int sale) const { return m_entra == entra && m_sale == sale; }

    // Gives what comes out to `guarda`, piece by piece. False: no memory.
    template <class Guarda>
    [[nodiscard]] bool Convierte(std::span<const std::int16_t> muestras, Guarda guarda) {
        if (!m_soxr && !Crea()) return false;
        m_entradas += muestras.size();
        while (!muestras.empty()) {
            std::size_t tomadas = 0, dadas = 0;
            if (soxr_process(m_soxr, muestras.data(), muestras.size(), &tomadas, m_bloque.data(), m_bloque.size(),
                             &dadas) != nullptr ||
                (tomadas == 0 && dadas == 0))
                return false;
            muestras = muestras.subspan(tomadas);
            Da(dadas, guarda);
        }
        return true;
    }

    // The end of a speech: its last samples. The next one begins anew.
    template <class Guarda>
    [[nodiscard]] bool Descarga(Guarda guarda) {
        if (!m_soxr) return true;
        bool bien = true;
        for (std::size_t dadas = 1; bien && dadas > 0;) {
            bien = soxr_process(m_soxr, nullptr, 0, nullptr, m_bloque.data(), m_bloque.size(), &dadas) == nullptr;
            if (bien) Da(dadas, guarda);
        }
        soxr_delete(std::exchange(m_soxr, nullptr));
        m_bloque.fill(0);
        while (bien && m_salidas < Debidas()) Da(m_bloque.size(), guarda);
        return bien;
    }

private:
    bool Crea() {
        const soxr_io_spec_t formas = [] {
            soxr_io_spec_t f = soxr_io_spec(SOXR_INT16_I, SOXR_INT16_I);
            f.flags = SOXR_NO_DITHER;  // silence stays silence
            return f;
        }();
        const soxr_quality_spec_t calidad = soxr_quality_spec(SOXR_HQ, 0);
        const soxr_runtime_spec_t marcha = soxr_runtime_spec(1);
        m_soxr = soxr_create(m_entra, m_sale, 1, nullptr, &formas, &calidad, &marcha);
        return m_soxr != nullptr;
    }
    // How many samples all that came in makes.
    std::uint64_t Debidas() const {
        const auto entra = static_cast<std::uint64_t>(m_entra), sale = static_cast<std::uint64_t>(m_sale);
        return m_entradas / entra * sale + (m_entradas % entra * sale + entra / 2) / entra;
    }
    template <class Guarda>
    void Da(std::size_t dadas, Guarda &guarda) {
        const auto n = static_cast<std::size_t>(std::min<std::uint64_t>(dadas, Debidas() - m_salidas));
        m_salidas += n;
        guarda(std::span<const std::int16_t>(m_bloque.data(), n));
    }

    const int m_entra, m_sale;
    soxr_t m_soxr = nullptr;
    std::uint64_t m_entradas = 0, m_salidas = 0;
    std::array<std::int16_t, 8192> m_bloque{};
};

cSalidaFichero::cSalidaFichero() = default;
cSalidaFichero::~cSalidaFichero() { static_cast<void>(CierraYa()); }

// Outside the lock: the player's thread may be waiting for it to write.
void cSalidaFichero::Asienta() {
    std::function<void()> asienta;
    {
        const std::lock_guard guarda(m_cerrojo);
        asienta = m_asienta;
    }
    if (asienta) asienta();
}

int cSalidaFichero::Destina(const std::string &ruta, int hercios, cFicheroWav::Modo modo) {
    Asienta();
    const std::lock_guard guarda(m_cerrojo);
    static_cast<void>(CierraYa());
    m_error = 0;
    const int error = m_fichero.Abre(ruta, hercios, modo);
    if (error != 0) return error;
    m_herciosFichero = hercios > 0 || m_fichero.Muestras() > 0 ? m_fichero.Hercios() : 0;
    return 0;
}

int cSalidaFichero::Cierra() {
    Asienta();
    const std::lock_guard guarda(m_cerrojo);
    return CierraYa();
}

int cSalidaFichero::CierraYa() {
    Descarga();
    m_conversor.reset();
    AnotaError(m_fichero.Cierra());
    return std::exchange(m_error, 0);
}

int cSalidaFichero::Error() const {
    const std::lock_guard guarda(m_cerrojo);
    return m_error;
}

void cSalidaFichero::AnotaError(int error) {
    if (m_error == 0) m_error = error;
}

void cSalidaFichero::SetDespertador(std::function<void()>) {}  // there is always room

void cSalidaFichero::SetAsentador(std::function<void()> asienta) {
    const std::lock_guard guarda(m_cerrojo);
    m_asienta = std::move(asienta);
}

bool cSalidaFichero::Abre(int hz) {
    const std::lock_guard guarda(m_cerrojo);
    if (hz != m_herciosMotor) Descarga();
    m_herciosMotor = hz;
    m_oidas = 0;
    return true;
}

bool cSalidaFichero::Prepara() {
    if (m_error != 0 || !m_fichero.Abierto()) return false;
    if (m_herciosFichero == 0) {
        AnotaError(m_fichero.ReponHercios(m_herciosMotor));
        m_herciosFichero = m_herciosMotor;
    }
    if (m_herciosFichero == m_herciosMotor)
        m_conversor.reset();
    else if (!m_conversor || !m_conversor->Sirve(m_herciosMotor, m_herciosFichero))
        m_conversor = std::make_unique<Conversor>(m_herciosMotor, m_herciosFichero);
    return m_error == 0;
}

std::size_t cSalidaFichero::Escribe(const std::int16_t *muestras, std::size_t n) {
    const std::lock_guard guarda(m_cerrojo);
    m_oidas += n;
    if (!Prepara()) return n;
    const std::span<const std::int16_t> todas(muestras, n);
    if (!m_conversor)
        Guarda(todas);
    else if (!m_conversor->Convierte(todas, [this](auto piezas) { Guarda(piezas); }))
        AnotaError(ENOMEM);
    return n;
}

void cSalidaFichero::Guarda(std::span<const std::int16_t> muestras) {
    m_porGuardar.insert(m_porGuardar.end(), muestras.begin(), muestras.end());
    if (m_porGuardar.size() >= kJuntas) Vuelca();
}

void cSalidaFichero::Vuelca() {
    if (m_error == 0 && !m_porGuardar.empty()) AnotaError(m_fichero.Escribe(m_porGuardar));
    m_porGuardar.clear();
}

void cSalidaFichero::Descarga() {
    if (m_conversor && m_error == 0 && !m_conversor->Descarga([this](auto piezas) { Guarda(piezas); }))
        AnotaError(ENOMEM);
    Vuelca();
}

void cSalidaFichero::Completa() {
    const std::lock_guard guarda(m_cerrojo);
    Descarga();
}

std::uint64_t cSalidaFichero::Oidas() {
    const std::lock_guard guarda(m_cerrojo);
    return m_oidas;
}

void cSalidaFichero::Vacia() {
    const std::lock_guard guarda(m_cerrojo);
    Descarga();
    m_oidas = 0;
}

}  // namespace ondalis
