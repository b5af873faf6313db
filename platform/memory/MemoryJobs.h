#pragma once

#include "platform/Jobs.h"
#include "platform/memory/Delays.h"
#include "platform/memory/FaultPlan.h"

#include <cstddef>
#include <vector>

namespace platform::memory {

/// Jobs that are done when the test says so, in the order that it says, or never. Each can be stopped at two points:
/// before its work, and between its work and the moment when its result arrives. Work that is waited for is done at
/// once, and has ended as soon as slow drives let it.
class MemoryJobs final : public Jobs {
public:
    MemoryJobs(FaultPlan& plan, Delays& slowness) : faults{plan}, delays{slowness} {}

    /// Jobs that are not told yet, in the order of their start; those that nobody waits for any more are left out.
    std::size_t Count();
    /// Does the work of one of them; nothing when it is done already.
    void DoWork(std::size_t index = 0);
    /// Does the work if need be, and lets the result arrive.
    void Finish(std::size_t index = 0);
    /// The same for all, and for those that are started meanwhile.
    void FinishAll();

private:
    struct Waiter;
    struct Entry {
        Work work;
        Result<> begun;
        std::shared_ptr<Cancelled> cancelled;
        std::weak_ptr<Waiter> waiter;
    };

    Ticket Queue(Work work, Done done) override;
    std::unique_ptr<Pending> Begin(Work work) override;
    /// Something that was done already, and is told when the test says so.
    Ticket Tell(std::function<void()> done);
    void Run(const Work& work, const Cancelled& cancelled);

    FaultPlan& faults;
    Delays& delays;
    std::vector<Entry> entries;
};

} // namespace platform::memory
