#pragma once

#include <string>
#include <string_view>

namespace platform {

/// Private-profile files (sections in brackets, key=value lines).
class IniFile {
public:
    virtual ~IniFile() = default;
    /// The value with one pair of surrounding quotes removed, cut at `buffer` - 1 characters; "" when the file, section
    /// or key is missing.
    virtual std::string Read(std::string_view section, std::string_view key, std::string_view file, int buffer) = 0;
};

} // namespace platform
