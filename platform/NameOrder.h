#pragma once

#include "platform/Text.h"

#include <string>
#include <string_view>

namespace platform {

/// Names compared by this key stand in the order in which the system keeps sorted names: by their capital letters, so
/// that "_" follows the letters.
inline std::string NameOrderKey(std::string_view name)
{
    std::string key = text::Folded(name);
    for (char& c : key) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - 'a' + 'A');
    }
    return key;
}

} // namespace platform
