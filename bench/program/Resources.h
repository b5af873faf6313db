#pragma once

#include <cstddef>
#include <string>

namespace bench {

/// What a process holds of the system.
struct Resources {
    std::size_t handles{}, windows{}, drawing{}, privateKilobytes{};

    std::string Text() const
    {
        return std::to_string(handles) + " handles, " + std::to_string(windows) + " windows, " +
               std::to_string(drawing) + " drawing objects, " + std::to_string(privateKilobytes) + " KB";
    }
};

/// Counted from outside. `process` is the id of a process of this user. Wine does not count drawing objects: 0.
Resources ResourcesOf(unsigned long process);

} // namespace bench
