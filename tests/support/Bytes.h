#pragma once

#include <cstdint>
#include <string>

namespace tests {

/// A number in so many bytes, the low one first, as it stands in files.
inline std::string Number(std::uint64_t value, int bytes)
{
    std::string text;
    for (; bytes > 0; --bytes, value >>= 8)
        text += static_cast<char>(value);
    return text;
}

} // namespace tests
