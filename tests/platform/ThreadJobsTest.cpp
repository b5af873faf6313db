#include "platform/ThreadJobs.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// A semaphore. The compiler's own loses wake-ups where the system has no futex and a dozen threads wait.
class Signal {
public:
    explicit Signal(int initial) : count{initial} {}
    void release(int more = 1)
    {
        const std::lock_guard lock{mutex};
        count += more;
        changed.notify_all();
    }
    void acquire()
    {
        std::unique_lock lock{mutex};
        changed.wait(lock, [this] { return count > 0; });
        --count;
    }
    bool try_acquire()
    {
        const std::lock_guard lock{mutex};
        return count > 0 && count-- > 0;
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    int count;
};

/// The window's thread: what was posted runs when it is asked for.
class Window {
public:
    Post Poster()
    {
        return [this](std::function<void()> task) {
            const std::lock_guard lock{mutex};
            tasks.push_back(std::move(task));
            posted.release();
        };
    }
    /// The ticket is dropped when its result is on its way.
    void RunNext(Ticket* dropped = nullptr)
    {
        posted.acquire();
        if (dropped)
            dropped->Drop();
        std::unique_lock lock{mutex};
        const auto task = std::move(tasks.front());
        tasks.pop_front();
        lock.unlock();
        task();
    }

private:
    std::mutex mutex;
    Signal posted{0};
    std::deque<std::function<void()>> tasks;
};

/// Held by work that must not end yet.
struct Gate {
    Signal entered{0}, open{0};

    Result<> Pass()
    {
        entered.release();
        open.acquire();
        return {};
    }
};

TEST(ThreadJobsTest, DoesSeveralAtOnceAndAllInTheEndAndEndsThreadsToSpare)
{
    Window window;
    const auto ended = std::make_shared<Signal>(0);
    ThreadJobs jobs{window.Poster(),
                    [ended] { return std::shared_ptr<void>{nullptr, [ended](void*) { ended->release(); }}; },
                    std::chrono::seconds{2}, std::chrono::milliseconds{0}};
    Gate gate;
    std::vector<Ticket> tickets;
    int done = 0;
    constexpr int count = 3 * static_cast<int>(ThreadJobs::Most);
    for (int i = 0; i < count; ++i)
        tickets.push_back(jobs.Start([&](const Cancelled&) { return gate.Pass(); }, [&](const Result<>&) { ++done; }));
    for (std::size_t i = 0; i < ThreadJobs::Most; ++i)
        gate.entered.acquire();
    EXPECT_FALSE(gate.entered.try_acquire());
    gate.open.release(count);
    while (done < count)
        window.RunNext();
    for (std::size_t i = ThreadJobs::Idle; i < ThreadJobs::Most; ++i)
        ended->acquire();
    EXPECT_FALSE(ended->try_acquire());
}

TEST(ThreadJobsTest, WorkLearnsThatNobodyWaitsAndAResultOnItsWayIsDropped)
{
    Window window;
    ThreadJobs jobs{window.Poster()};
    Signal begun{0};
    Ticket ticket = jobs.Start(
        [&](const Cancelled& cancelled) {
            begun.release();
            while (!cancelled)
                std::this_thread::yield();
            return Result<>{};
        },
        [](const Result<>&) { FAIL(); });
    begun.acquire();
    ticket.Drop();
    ticket = jobs.Start([](const Cancelled&) { return Result<>{}; }, [](const Result<>&) { FAIL(); });
    window.RunNext(&ticket);
}

TEST(ThreadJobsTest, AnAnswerIsWaitedForAndWakesTheLoopThatWaits)
{
    Window window;
    ThreadJobs jobs{window.Poster()};
    auto soon = jobs.Ask([](const Cancelled&) -> Result<std::string> { return "done"; });
    ASSERT_TRUE(soon.Ended(10s));
    EXPECT_EQ(soon.Take(), "done");
    auto thrown = jobs.Ask([](const Cancelled&) -> Result<> { throw std::runtime_error{"no"}; });
    ASSERT_TRUE(thrown.Ended(10s));
    EXPECT_EQ(thrown.Take().error(), error::GeneralFailure);

    Gate gate;
    auto later = jobs.Ask([&](const Cancelled&) { return gate.Pass(); });
    gate.entered.acquire();
    EXPECT_FALSE(later.Ended());
    gate.open.release();
    window.RunNext(); // what wakes the loop
    EXPECT_TRUE(later.Ended());

    // Nobody stands waiting for these two any more: one goes on, the other had ended already.
    std::string told;
    for (const bool endsBefore : {false, true}) {
        auto answer = jobs.Ask([&](const Cancelled&) { return gate.Pass(); });
        gate.entered.acquire();
        if (endsBefore) {
            gate.open.release();
            ASSERT_TRUE(answer.Ended(10s));
        }
        const Ticket ticket = std::move(answer).Tell([&](const Result<>& outcome) { told += outcome ? "." : "x"; });
        if (!endsBefore)
            gate.open.release();
        window.RunNext();
    }
    EXPECT_EQ(told, "..");

    Signal begun{0}, gone{0};
    auto unwanted = std::make_unique<Answer<Result<>>>(jobs.Ask([&](const Cancelled& cancelled) {
        begun.release();
        while (!cancelled)
            std::this_thread::yield();
        gone.release();
        return Result<>{};
    }));
    begun.acquire();
    unwanted.reset();
    gone.acquire();
}

TEST(ThreadJobsTest, EndingDoesNotWaitForWorkThatIsStuckNorHearOfIt)
{
    const auto gate = std::make_shared<Gate>();
    const auto ended = std::make_shared<Signal>(0);
    Ticket stuck;
    {
        Window window;
        ThreadJobs jobs{
            window.Poster(),
            [ended] { return std::shared_ptr<void>{nullptr, [ended](std::nullptr_t) { ended->release(); }}; }, 0ms};
        stuck = jobs.Start([gate](const Cancelled&) { return gate->Pass(); }, [](const Result<>&) { FAIL(); });
        gate->entered.acquire();
    } // the window is gone too: a result that arrived would be written into freed memory
    gate->open.release();
    ended->acquire();
}

} // namespace
