#pragma once

#include "platform/Jobs.h"
#include "platform/Timers.h"

namespace platform::win32 {

/// The system's timers of the window's thread.
class Win32Timers final : public Timers {
public:
    explicit Win32Timers(Post postTask) : post{std::move(postTask)} {}

    Result<Ticket> Start(std::chrono::milliseconds interval, std::function<void()> elapsed) override;

private:
    Post post;
};

} // namespace platform::win32
