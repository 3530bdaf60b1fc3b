// The table of spoken notices: twelve rows in five languages, addressed by LCID. Stateless.
#pragma once

#include <QString>
#include <cstdint>

namespace ondalis {

class cTxtLengua {
public:
    static constexpr int NumFilas = 12;
    // 1031 German, 1034 Spanish, 1036 French, 1040 Italian, every other LCID English. `fila` 0 to 11; else empty.
    QString GetTexto(std::int32_t lengua, std::int32_t fila) const;
};

}  // namespace ondalis
