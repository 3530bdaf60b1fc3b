// What the fakes were asked to do, in order: one line a call, for tests that compare a whole sequence.
#pragma once

#include <QString>
#include <algorithm>
#include <string>
#include <vector>

namespace ondalis::prueba {

using Lineas = std::vector<std::string>;

class Diario {
public:
    void Anota(const QString &linea) { m_lineas.push_back(linea.toStdString()); }
    const Lineas &Todo() const { return m_lineas; }
    void Olvida() { m_lineas.clear(); }
    // The lines that begin with `objeto`, without it.
    Lineas De(const std::string &objeto) const {
        Lineas suyas;
        for (const std::string &linea : m_lineas)
            if (linea.starts_with(objeto)) suyas.push_back(linea.substr(objeto.size()));
        return suyas;
    }
    long Veces(const std::string &linea) const { return std::count(m_lineas.begin(), m_lineas.end(), linea); }

private:
    Lineas m_lineas;
};

}  // namespace ondalis::prueba
