#pragma once

#include <string>

namespace pictures {

/// Where an icon comes from: one of the program's own by name, or a file.
struct IconSource {
    std::string name; ///< one of the program's pictures (art/icons.rc, in lower case), or
    std::string file; ///< the full path of an icon file
    friend bool operator==(const IconSource&, const IconSource&) = default;
};

} // namespace pictures
