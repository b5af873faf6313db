#pragma once

#include "platform/Timers.h"
#include "platform/memory/FaultPlan.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace platform::memory {

/// Timers whose intervals pass when the test says so.
class MemoryTimers final : public Timers {
public:
    explicit MemoryTimers(FaultPlan& plan) : faults{plan} {}

    Result<Ticket> Start(std::chrono::milliseconds interval, std::function<void()> elapsed) override;

    /// The intervals of those that run, in the order of their start.
    std::vector<std::chrono::milliseconds> Running() const;
    /// The interval of one of them passes.
    void Elapse(std::size_t index = 0);

private:
    struct Timer {
        std::chrono::milliseconds interval;
        std::function<void()> elapsed;
    };

    std::vector<std::shared_ptr<Timer>> Live() const;

    FaultPlan& faults;
    std::vector<std::weak_ptr<Timer>> timers;
};

} // namespace platform::memory
