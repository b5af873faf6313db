#pragma once

#include "platform/FileSystem.h"

namespace platform {

/// A moment on the user's wall clock.
struct LocalTime {
    int year{}, month{}, day{}, hour{}, minute{}, second{};
    friend bool operator==(const LocalTime&, const LocalTime&) = default;
};

class Clock {
public:
    virtual ~Clock() = default;
    virtual FileTime Now() = 0;
    /// In the user's time zone, with the daylight saving that held at that moment.
    virtual LocalTime ToLocal(FileTime time) = 0;
    /// Waits; nothing is handled meanwhile.
    virtual void Sleep(std::uint32_t milliseconds) = 0;
};

} // namespace platform
