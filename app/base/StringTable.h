#pragma once

#include "platform/ResourceLibrary.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace app {

/// The program's texts by number (strings.txt), which the resource library "TS_RES.dll" beside the program overrides
/// one by one.
class StringTable {
public:
    explicit StringTable(platform::ResourceLibrary& library) : library{library} {}

    /// Loads "TS_RES.dll" from the program folder; without one the program speaks its own texts.
    void LoadResourceLibrary(std::string_view programFolder);
    bool UseResourceLibrary() const { return useResourceLibrary == 1; }

    /// The library's text (at most 511 characters) when it has one, else the program's own; "" for an unknown number.
    std::string LoadString(std::uint16_t id) const;

    /// The program's own text.
    static std::string_view Own(std::uint16_t id);

private:
    platform::ResourceLibrary& library;
    std::int16_t useResourceLibrary{};
};

} // namespace app
