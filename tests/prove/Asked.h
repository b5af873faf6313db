#pragma once

#include <cstdlib>

namespace prove {

/// A number that the environment asks for.
inline unsigned Asked(const char* variable, unsigned otherwise)
{
    const char* const text = std::getenv(variable);
    return text != nullptr ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : otherwise;
}

} // namespace prove
