#include "platform/ThreadJobs.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// The window's thread: what was posted runs when it is asked for.
class Window {
public:
    Post Poster()
    {
        return [this](std::function<void()> task) {
            const std::lock_guard lock{mutex};
            tasks.push_back(std::move(task));
            changed.notify_all();
        };
    }
    void WaitForNews()
    {
        std::unique_lock lock{mutex};
        changed.wait(lock, [this] { return !tasks.empty(); });
    }
    void RunNext()
    {
        WaitForNews();
        std::unique_lock lock{mutex};
        const auto task = std::move(tasks.front());
        tasks.pop_front();
        lock.unlock();
        task();
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> tasks;
};

/// Held by work that must not end yet.
struct Gate {
    std::atomic<int> entered{};
    std::atomic<bool> open{};

    Result<> Pass()
    {
        ++entered;
        entered.notify_all();
        open.wait(false);
        return {};
    }
    void WaitFor(int count)
    {
        for (int now = entered; now < count; now = entered)
            entered.wait(now);
    }
    void Open()
    {
        open = true;
        open.notify_all();
    }
};

TEST(ThreadJobsTest, DoesSeveralAtOnceAndAllInTheEnd)
{
    Window window;
    ThreadJobs jobs{window.Poster()};
    Gate gate;
    std::vector<Ticket> tickets;
    int done = 0;
    constexpr int count = 3 * static_cast<int>(ThreadJobs::Most);
    for (int i = 0; i < count; ++i)
        tickets.push_back(jobs.Start([&](const Cancelled&) { return gate.Pass(); }, [&](const Result<>&) { ++done; }));
    gate.WaitFor(static_cast<int>(ThreadJobs::Most));
    EXPECT_EQ(gate.entered, static_cast<int>(ThreadJobs::Most));
    gate.Open();
    while (done < count)
        window.RunNext();
}

TEST(ThreadJobsTest, WorkLearnsThatNobodyWaitsAndAResultOnItsWayIsDropped)
{
    Window window;
    ThreadJobs jobs{window.Poster()};
    std::atomic<bool> begun{};
    std::vector<std::string> told;
    Ticket ticket = jobs.Start(
        [&](const Cancelled& cancelled) {
            begun = true;
            begun.notify_all();
            while (!cancelled)
                std::this_thread::yield();
            return Result<>{};
        },
        [&](const Result<>&) { told.emplace_back("cancelled"); });
    begun.wait(false);
    ticket.Drop();
    ticket = jobs.Start([](const Cancelled&) { return Result<>{}; },
                        [&](const Result<>&) { told.emplace_back("on its way"); });
    window.WaitForNews();
    ticket.Drop();
    window.RunNext();
    EXPECT_EQ(told, std::vector<std::string>{});
}

TEST(ThreadJobsTest, EndingDoesNotWaitForWorkThatIsStuckNorHearOfIt)
{
    const auto gate = std::make_shared<Gate>();
    const auto ended = std::make_shared<std::atomic<bool>>();
    Ticket stuck;
    Ticket waiting;
    {
        auto window = std::make_unique<Window>();
        auto jobs = std::make_unique<ThreadJobs>(
            window->Poster(),
            [ended] {
                return std::shared_ptr<void>{nullptr, [ended](std::nullptr_t) {
                                                 *ended = true;
                                                 ended->notify_all();
                                             }};
            },
            0ms);
        stuck = jobs->Start([gate](const Cancelled&) { return gate->Pass(); }, [](const Result<>&) { FAIL(); });
        gate->WaitFor(1);
        jobs.reset();
    } // the window is gone too: a result that arrived would be written into freed memory
    gate->Open();
    ended->wait(false);
}

} // namespace
