#include "platform/ThreadJobs.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace platform {

namespace {

/// The window's side of a job. Only tickets own one, so that what `done` holds is never let go by another thread.
struct Waiter {
    std::function<void(Result<>)> done;
    std::shared_ptr<Cancelled> cancelled = std::make_shared<Cancelled>(false);

    Waiter() = default;
    Waiter(const Waiter&) = delete;
    Waiter& operator=(const Waiter&) = delete;
    ~Waiter() { *cancelled = true; }
};

/// The window's side of work that is waited for, and the thread's.
struct Bell {
    std::mutex mutex;
    std::condition_variable rings;
    bool ended{};
    bool isWaitedForInLoop{};
    bool isTold{}; ///< in place of that
};

void Tell(const std::weak_ptr<Waiter>& waiter, const Result<>& ran)
{
    if (const auto waiting = waiter.lock()) {
        const auto done = std::exchange(waiting->done, nullptr); // it may let go of its own ticket
        done(ran);
    }
}

class Awaited final : public Pending {
public:
    Awaited(std::shared_ptr<Bell> bell, std::shared_ptr<Waiter> waiter, Post post)
        : bell{std::move(bell)}, waiter{std::move(waiter)}, post{std::move(post)}
    {
    }

    bool Ended(std::chrono::milliseconds patience) override
    {
        std::unique_lock lock{bell->mutex};
        bell->rings.wait_for(lock, patience, [this] { return bell->ended; });
        bell->isWaitedForInLoop = true; // from now on only messages are waited for
        return bell->ended;
    }
    Ticket Tell(std::function<void()> done) override
    {
        waiter->done = [done = std::move(done)](const Result<>&) { done(); };
        const std::lock_guard lock{bell->mutex};
        bell->isTold = true;
        if (bell->ended)
            post([waiting = std::weak_ptr{waiter}] { platform::Tell(waiting, {}); });
        return Ticket{waiter};
    }

private:
    std::shared_ptr<Bell> bell;
    std::shared_ptr<Waiter> waiter;
    Post post;
};

} // namespace

struct ThreadJobs::Entry {
    Work work;
    std::shared_ptr<Cancelled> cancelled;
    std::weak_ptr<Waiter> waiter;
    std::shared_ptr<Bell> bell; ///< of work that is waited for
};

/// What the threads share with the window's: it outlives the last of both.
struct ThreadJobs::Shared {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Entry> waiting;
    std::vector<std::shared_ptr<Cancelled>> beingDone;
    std::size_t threads{};
    std::size_t wanted{};            ///< threads at once, at most, in this while
    std::size_t wantedBefore = Idle; ///< in the one before, and no fewer than are kept anyway
    std::chrono::steady_clock::time_point whileEnds;
    std::chrono::milliseconds linger{};
    Post post; ///< empty once nobody listens any more

    /// False when the thread that asks is to end.
    bool AwaitsWork(std::unique_lock<std::mutex>& lock)
    {
        while (waiting.empty() && post) {
            if (threads <= Idle) {
                changed.wait(lock);
                continue;
            }
            changed.wait_until(lock, whileEnds);
            if (const auto now = std::chrono::steady_clock::now(); whileEnds <= now) {
                whileEnds = now + linger;
                wantedBefore = std::max(Idle, std::exchange(wanted, beingDone.size() + waiting.size()));
            }
            if (waiting.empty() && threads > std::max(wantedBefore, wanted))
                return false;
        }
        return post != nullptr;
    }

    static void Serve(const std::shared_ptr<Shared>& shared)
    {
        std::unique_lock lock{shared->mutex};
        for (;;) {
            if (!shared->AwaitsWork(lock)) {
                --shared->threads;
                return;
            }
            Entry entry = std::move(shared->waiting.front());
            shared->waiting.pop_front();
            shared->beingDone.push_back(entry.cancelled);
            lock.unlock();
            Do(entry);
            lock.lock();
            std::erase(shared->beingDone, entry.cancelled);
            if (shared->post && !*entry.cancelled) {
                const auto wanted = entry.bell ? Ring(*entry.bell) : Wanted::Told;
                while (shared->post && !Says(*shared, wanted, entry.waiter)) {
                    lock.unlock();
                    std::this_thread::sleep_for(std::chrono::milliseconds{20});
                    lock.lock();
                }
            }
            if (!shared->post) // the end waits for what is being done
                shared->changed.notify_all();
        }
    }

    /// What the window's loop is to do for the one who waits.
    enum class Wanted { Nothing, Woken, Told };
    static Wanted Ring(Bell& bell)
    {
        const std::lock_guard lock{bell.mutex};
        bell.ended = true;
        bell.rings.notify_all();
        if (bell.isTold)
            return Wanted::Told;
        return bell.isWaitedForInLoop ? Wanted::Woken : Wanted::Nothing;
    }

    /// False when there was no memory for it.
    static bool Says(const Shared& shared, Wanted wanted, const std::weak_ptr<Waiter>& waiter)
    {
        try {
            if (wanted == Wanted::Told)
                shared.post([waiter] { Tell(waiter, {}); });
            else if (wanted == Wanted::Woken)
                shared.post([] {});
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    static void Do(Entry& entry)
    {
        try {
            if (!*entry.cancelled)
                entry.work(*entry.cancelled);
        } catch (...) { // the outcome stays what it was before: a failure
        }
        entry.work = nullptr;
    }
};

ThreadJobs::ThreadJobs(Post post, std::function<std::shared_ptr<void>()> enter, std::chrono::milliseconds patience,
                       std::chrono::milliseconds linger)
    : enterThread{std::move(enter)}, patience{patience}, shared{std::make_shared<Shared>()}
{
    shared->post = std::move(post);
    shared->linger = linger;
    shared->beingDone.reserve(Most); // no thread may fail at what it says of itself
}

ThreadJobs::~ThreadJobs()
{
    std::deque<Entry> dropped;
    std::unique_lock lock{shared->mutex};
    shared->post = nullptr;
    dropped.swap(shared->waiting);
    for (const auto& cancelled : shared->beingDone)
        *cancelled = true;
    shared->changed.notify_all();
    shared->changed.wait_for(lock, patience, [this] { return shared->beingDone.empty(); });
}

Ticket ThreadJobs::Queue(Work work, Done done)
{
    const auto waiter = std::make_shared<Waiter>();
    waiter->done = std::move(done);
    if (!Enlist({std::move(work), waiter->cancelled, waiter, nullptr})) {
        const std::lock_guard lock{shared->mutex};
        shared->post([waiting = std::weak_ptr{waiter}] { Tell(waiting, std::unexpected{error::OutOfMemory}); });
    }
    return Ticket{waiter};
}

std::unique_ptr<Pending> ThreadJobs::Begin(Work work)
{
    const auto waiter = std::make_shared<Waiter>();
    const auto bell = std::make_shared<Bell>();
    auto pending = std::make_unique<Awaited>(bell, waiter, shared->post);
    if (Entry entry{std::move(work), waiter->cancelled, waiter, bell}; !Enlist(entry)) {
        Shared::Do(entry);
        (void)Shared::Ring(*bell);
    }
    return pending;
}

bool ThreadJobs::Enlist(Entry entry)
{
    const std::lock_guard lock{shared->mutex};
    const std::size_t wanted = shared->waiting.size() + shared->beingDone.size() + 1;
    shared->wanted = std::max(shared->wanted, wanted);
    if (wanted > shared->threads && shared->threads < Most) {
        try {
            std::thread{[held = shared, enter = enterThread] {
                const auto entered = enter ? enter() : nullptr;
                Shared::Serve(held);
            }}.detach();
            ++shared->threads;
        } catch (const std::system_error&) {
            if (shared->threads == 0) // else one that is there will come to it
                return false;
        }
    }
    shared->waiting.push_back(std::move(entry));
    shared->changed.notify_one();
    return true;
}

} // namespace platform
