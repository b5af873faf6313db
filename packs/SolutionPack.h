#pragma once

#include "packs/PackFolders.h"

#include <string>
#include <vector>

namespace packs {

/// One installed solution pack, as its installer has recorded it.
struct SolutionPack {
    std::string name; ///< of its key below "Content"
    std::string version;
    std::string description;
    bool isOfSetup{}; ///< came with the product's own setup: its folders stay when it is deleted
    std::vector<PackFolder> folders;
};

} // namespace packs
