#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace pictures {

/// Bytes: more than any real icon file has; a larger one is not looked at.
inline constexpr std::uint64_t LargestIconFile = 4u << 20;

/// Where an icon comes from: one of the program's own by name, or a file.
struct IconSource {
    std::string name;                   ///< one of the program's pictures (art/icons.rc, in lower case), or
    std::string file;                   ///< the full path of an icon file
    std::optional<std::string> bytes{}; ///< what is in the file, where it was read already
    friend bool operator==(const IconSource&, const IconSource&) = default;
};

} // namespace pictures
