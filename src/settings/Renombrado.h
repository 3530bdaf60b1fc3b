// Giving a file another name without ever taking the place of a file that has it already, and without anything partial
// under the final name. Free functions without state, any thread. Each returns 0 or an errno, and after a failure the
// source stands as it was.
#pragma once

#include <string>

namespace ondalis {

// The whole operation: a rename, or a copy where the two names lie on different file systems. EEXIST: something has the
// name `a`, be it a folder or a link that leads nowhere. EISDIR: `de` is no regular file. A copy is made under a hidden
// name in the target's folder, brought to the disk, and renamed.
[[nodiscard]] int RenombraOCopia(const std::string &de, const std::string &a);

// The rename alone, by the first of the three ways below that the file system knows. EXDEV: two file systems.
[[nodiscard]] int RenombraSinReemplazar(const std::string &de, const std::string &a);
[[nodiscard]] int RenombraPorBandera(const std::string &de, const std::string &a);  // renameat2
[[nodiscard]] int RenombraPorEnlace(const std::string &de, const std::string &a);   // a second link, the first removed
// Over an empty file made exclusively for it; for file systems that have neither of both.
[[nodiscard]] int RenombraPorHueco(const std::string &de, const std::string &a);

}  // namespace ondalis
