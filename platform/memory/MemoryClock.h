#pragma once

#include "platform/Clock.h"

#include <functional>

namespace platform::memory {

/// A clock that stands still until it is set. Its time zone is UTC until an offset is set.
class MemoryClock final : public Clock {
public:
    FileTime Now() override { return now; }
    LocalTime ToLocal(FileTime time) override;
    /// The clock goes on, and `OnSleep` is what happens in the world meanwhile.
    void Sleep(std::uint32_t milliseconds) override;
    std::function<void()> OnSleep;

    void Set(FileTime time) { now = time; }
    /// Local time minus UTC; one offset the whole year round.
    void SetOffsetMinutes(int minutes) { offsetMinutes = minutes; }

    /// The moment that a wall clock in UTC shows so.
    static FileTime At(const LocalTime& utc);

private:
    FileTime now{At({2004, 3, 17, 15, 4, 5})};
    int offsetMinutes{};
};

} // namespace platform::memory
