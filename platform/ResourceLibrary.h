#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace platform {

/// A library of string resources, loaded as data: nothing in it is run.
class ResourceLibrary {
public:
    virtual ~ResourceLibrary() = default;
    /// True when the library at this full path could be loaded; an earlier one is released first.
    virtual bool Load(std::string_view file) = 0;
    /// The string of this number, cut at `buffer` - 1 characters; "" when there is none or nothing is loaded.
    virtual std::string LoadString(std::uint16_t id, int buffer) = 0;
};

} // namespace platform
