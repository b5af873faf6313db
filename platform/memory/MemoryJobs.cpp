#include "platform/memory/MemoryJobs.h"

#include "platform/ThreadJobs.h"

#include <exception>

namespace platform::memory {

struct MemoryJobs::Waiter {
    Done done;
    std::shared_ptr<Cancelled> cancelled = std::make_shared<Cancelled>(false);

    Waiter() = default;
    Waiter(const Waiter&) = delete;
    Waiter& operator=(const Waiter&) = delete;
    ~Waiter() { *cancelled = true; }
};

Ticket MemoryJobs::Queue(Work work, Done done)
{
    const auto fault = faults.Enter("Jobs.Start", "");
    const auto waiter = std::make_shared<Waiter>();
    waiter->done = std::move(done);
    entries.push_back({fault ? nullptr : std::move(work), fault ? Result<>{std::unexpected{*fault}} : Result<>{},
                       waiter->cancelled, waiter});
    return Ticket{waiter};
}

std::size_t MemoryJobs::Count()
{
    std::erase_if(entries, [](const Entry& entry) { return entry.waiter.expired(); });
    return entries.size();
}

void MemoryJobs::DoWork(std::size_t index)
{
    if (index >= Count() || !entries[index].work)
        return;
    const auto work = std::exchange(entries[index].work, nullptr);
    const auto cancelled = entries[index].cancelled;
    if (delays.OnThread([&] { Run(work, *cancelled); }, ThreadJobs::Most) == Delays::Never)
        entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(index)); // it never comes back
}

void MemoryJobs::Run(const Work& work, const Cancelled& cancelled)
{
    try {
        work(cancelled);
    } catch (const ProcessDied&) {
        throw;
    } catch (const Delays::NeverAnswers&) {
        throw;
    } catch (const std::exception&) { // as on a real thread: its outcome stays a failure
    }
}

std::unique_ptr<Pending> MemoryJobs::Begin(Work work)
{
    /// Work that ends at a moment.
    class Ending final : public Pending {
    public:
        Ending(MemoryJobs& jobs, Delays& delays, Delays::Time moment)
            : jobs{jobs}, delays{delays}, moment{moment}, expected{delays.Expect(moment)}
        {
        }
        bool Ended(std::chrono::milliseconds patience) override { return delays.StandStill(moment, patience); }
        Ticket Tell(std::function<void()> done) override
        {
            return moment == Delays::Never ? Ticket{expected} : jobs.Tell(std::move(done));
        }

    private:
        MemoryJobs& jobs;
        Delays& delays;
        Delays::Time moment;
        std::shared_ptr<void> expected;
    };
    const Cancelled cancelled{};
    return std::make_unique<Ending>(*this, delays, delays.OnThread([&] { Run(work, cancelled); }, ThreadJobs::Most));
}

Ticket MemoryJobs::Tell(std::function<void()> done)
{
    const auto waiter = std::make_shared<Waiter>();
    waiter->done = [done = std::move(done)](const Result<>&) { done(); };
    entries.push_back({nullptr, {}, waiter->cancelled, waiter});
    return Ticket{waiter};
}

void MemoryJobs::Finish(std::size_t index)
{
    const std::size_t count = Count();
    DoWork(index);
    if (index >= count || Count() < count)
        return;
    const Entry entry = std::move(entries[index]);
    entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(index));
    if (const auto waiting = entry.waiter.lock()) {
        const auto done = std::exchange(waiting->done, nullptr);
        done(entry.begun);
    }
}

void MemoryJobs::FinishAll()
{
    while (Count() > 0)
        Finish();
}

} // namespace platform::memory
