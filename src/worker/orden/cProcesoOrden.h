// One call of a command engine: a program in a process group of its own that gets a text and gives bytes. Destroying it
// kills the whole group at once and leaves no zombie; if the worker dies first, a guardian process does. Worker's
// thread.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ondalis {

struct Encargo {
    std::vector<std::string> argumentos;  // the first is the program's absolute path; no shell sees them
    std::string texto;
    bool porEntrada = true;  // the text goes to standard input; else "{texto}" is the path of a file with it
    bool aFichero = false;   // the bytes are taken from the file "{salida}", else from standard output
    bool textoEnFichero = false;
    // A second channel for what the program tells of its sound: the file "{tiempos}" where an argument names it, else
    // standard output, which then must not carry the bytes.
    bool conTiempos = false;
};

class cProcesoOrden {
public:
    using Reloj = std::chrono::steady_clock;

    // Null when no process can be made. A program that can't be run ends with 127.
    static std::unique_ptr<cProcesoOrden> Lanza(Encargo encargo);
    ~cProcesoOrden();
    cProcesoOrden(const cProcesoOrden &) = delete;
    cProcesoOrden &operator=(const cProcesoOrden &) = delete;

    // Moves what can be moved in both directions; waits for something to move, at most `esperaMs`.
    void Bombea(int esperaMs);
    bool Acabado() const { return m_acabado; }
    bool Desbordado() const { return m_desbordado; }  // it has given more than any text needs
    int Estado() const { return m_estado; }           // as of waitpid, once it has ended
    bool HaDadoAlgo() const { return !m_salida.empty() || m_hayFichero; }
    const std::vector<std::uint8_t> &Salida() const { return m_salida; }
    const std::vector<std::uint8_t> &Tiempos() const { return m_tiempos; }  // once it has ended

private:
    cProcesoOrden() = default;
    void Escribe();
    void Lee();
    void MiraFichero();
    void Acaba();

    pid_t m_pid = -1;
    int m_fin = -1;  // pidfd
    int m_haciaEl = -1, m_desdeEl = -1, m_fichero = -1, m_ficheroTiempos = -1;
    bool m_tiemposPorTubo = false;  // what comes from m_desdeEl
    std::string m_texto;
    std::size_t m_escritos = 0;
    std::vector<std::uint8_t> m_salida, m_tiempos;
    bool m_acabado = false, m_desbordado = false, m_hayFichero = false;
    int m_estado = 0;
};

}  // namespace ondalis
