#pragma once

#include "platform/Jobs.h"

#include <chrono>
#include <cstddef>

namespace platform {

/// Jobs on threads of this process, begun when they are needed.
class ThreadJobs final : public Jobs {
public:
    /// Threads at most: one folder on a server that does not answer must not hold up everything else.
    static constexpr std::size_t Most = 48;
    /// Threads that wait for more for as long as it takes. The others end once there are more than were wanted at once
    /// for a while: each holds its stack, and another begins in about a millisecond.
    static constexpr std::size_t Idle = 1;

    /// `enter` is called by each new thread and gives what the thread holds until its end; it may be empty. `linger` is
    /// the while by which it is counted how many threads are wanted; those to spare end within two of them.
    explicit ThreadJobs(Post post, std::function<std::shared_ptr<void>()> enter = {},
                        std::chrono::milliseconds patience = std::chrono::seconds{2},
                        std::chrono::milliseconds linger = std::chrono::seconds{10});
    ThreadJobs(const ThreadJobs&) = delete;
    ThreadJobs& operator=(const ThreadJobs&) = delete;
    /// Drops what waits, and gives the work that is being done `patience` to end. What is stuck for longer goes on by
    /// itself and is heard of no more.
    ~ThreadJobs() override;

private:
    struct Entry;
    struct Shared;

    Ticket Queue(Work work, Done done) override;
    std::unique_ptr<Pending> Begin(Work work) override;
    /// False when no thread can be begun and none is there.
    bool Enlist(Entry entry);

    std::function<std::shared_ptr<void>()> enterThread;
    std::chrono::milliseconds patience;
    std::shared_ptr<Shared> shared;
};

} // namespace platform
