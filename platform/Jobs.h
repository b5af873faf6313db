#pragma once

#include "platform/Error.h"
#include "platform/Ticket.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <type_traits>
#include <utility>

namespace platform {

/// Hands a task to the window's thread, which runs it between two messages. Safe from any thread.
using Post = std::function<void(std::function<void()> task)>;

/// Set when nobody waits for a job any more: work in several steps looks at it between them.
using Cancelled = std::atomic<bool>;

/// Work that somebody waits for. When it goes, nobody does any more.
class Pending {
public:
    Pending() = default;
    Pending(const Pending&) = delete;
    Pending& operator=(const Pending&) = delete;
    virtual ~Pending() = default;
    /// Stands still until the work has ended, at most so long. Whether it has.
    virtual bool Ended(std::chrono::milliseconds patience) = 0;
    /// Calls `done` on the window's thread, between two messages, once the work has ended, unless the ticket is gone.
    /// The ticket alone holds the work from then on.
    virtual Ticket Tell(std::function<void()> done) = 0;
};

/// What a job was asked for. Made and let go on the window's thread.
template <class Outcome>
class [[nodiscard]] Answer {
public:
    Answer(std::shared_ptr<Outcome> outcome, std::unique_ptr<Pending> pending)
        : outcome{std::move(outcome)}, pending{std::move(pending)}
    {
    }
    bool Ended(std::chrono::milliseconds patience = {}) const { return pending->Ended(patience); }
    /// Once it has ended.
    Outcome Take() { return std::move(*outcome); }
    /// For who does not stand waiting any more: calls `done` with the outcome once there is one, unless the ticket is
    /// gone.
    template <class Done>
    Ticket Tell(Done done) &&
    {
        return pending->Tell([outcome = outcome, done = std::move(done)]() mutable { done(std::move(*outcome)); });
    }

private:
    std::shared_ptr<Outcome> outcome;
    std::unique_ptr<Pending> pending;
};

/// Work that may take long, done off the window's thread.
class Jobs {
public:
    virtual ~Jobs() = default;

    /// Runs `work(cancelled)` on another thread, and then `done` with what it returned on the window's thread. `work`
    /// returns a Result and owns all that it works on. `done` stays on the window's thread, and is not called when the
    /// ticket is gone. Work that throws gives error::GeneralFailure.
    template <class Work, class Done>
    Ticket Start(Work work, Done done)
    {
        using Outcome = std::invoke_result_t<Work&, const Cancelled&>;
        const auto outcome = std::make_shared<Outcome>(std::unexpected{error::GeneralFailure});
        return Queue(
            [outcome, work = std::move(work)](const Cancelled& cancelled) mutable { *outcome = work(cancelled); },
            [outcome, done = std::move(done)](Result<> ran) mutable {
                done(ran ? std::move(*outcome) : Outcome{std::unexpected{ran.error()}});
            });
    }

    /// The same for who cannot go on without what `work` returns. The window's loop wakes when it has ended. Where no
    /// other thread can be had, the work is done at once.
    template <class Work>
    auto Ask(Work work)
    {
        using Outcome = std::invoke_result_t<Work&, const Cancelled&>;
        const auto outcome = std::make_shared<Outcome>(std::unexpected{error::GeneralFailure});
        return Answer<Outcome>{outcome, Begin([outcome, work = std::move(work)](const Cancelled& cancelled) mutable {
                                   *outcome = work(cancelled);
                               })};
    }

protected:
    using Work = std::function<void(const Cancelled& cancelled)>;
    /// Its argument tells whether the work could be begun.
    using Done = std::function<void(Result<> ran)>;

    virtual Ticket Queue(Work work, Done done) = 0;
    virtual std::unique_ptr<Pending> Begin(Work work) = 0;
};

} // namespace platform
