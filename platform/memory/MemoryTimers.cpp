#include "platform/memory/MemoryTimers.h"

namespace platform::memory {

Result<Ticket> MemoryTimers::Start(std::chrono::milliseconds interval, std::function<void()> elapsed)
{
    if (const auto fault = faults.Enter("Timers.Start", std::to_string(interval.count())))
        return std::unexpected{*fault};
    auto timer = std::make_shared<Timer>(interval, std::move(elapsed));
    timers.push_back(timer);
    return Ticket{std::move(timer)};
}

std::vector<std::shared_ptr<MemoryTimers::Timer>> MemoryTimers::Live() const
{
    std::vector<std::shared_ptr<Timer>> live;
    for (const auto& entry : timers)
        if (auto timer = entry.lock())
            live.push_back(std::move(timer));
    return live;
}

std::vector<std::chrono::milliseconds> MemoryTimers::Running() const
{
    std::vector<std::chrono::milliseconds> intervals;
    for (const auto& timer : Live())
        intervals.push_back(timer->interval);
    return intervals;
}

void MemoryTimers::Elapse(std::size_t index)
{
    Live().at(index)->elapsed();
}

} // namespace platform::memory
