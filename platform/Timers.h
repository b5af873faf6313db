#pragma once

#include "platform/Error.h"
#include "platform/Ticket.h"

#include <chrono>
#include <functional>

namespace platform {

class Timers {
public:
    virtual ~Timers() = default;
    /// Calls `elapsed` on the window's thread, between two messages, each time that the interval has passed, until the
    /// ticket goes. A tick that comes while an earlier one still waits for its turn is left out.
    virtual Result<Ticket> Start(std::chrono::milliseconds interval, std::function<void()> elapsed) = 0;
};

} // namespace platform
