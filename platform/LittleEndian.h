#pragma once

#include <cstddef>
#include <string_view>

namespace platform {

/// A whole number, low byte first; 0 where the text has too few bytes.
template <class Number>
constexpr Number LittleEndian(std::string_view text, std::size_t at)
{
    Number value = 0;
    if (at > text.size() || text.size() - at < sizeof value)
        return 0;
    for (std::size_t i = sizeof value; i-- > 0;)
        value = static_cast<Number>(value << 8 | static_cast<unsigned char>(text[at + i]));
    return value;
}

} // namespace platform
