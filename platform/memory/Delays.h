#pragma once

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace platform::memory {

/// The time that calls take on slow drives, and for how long the window's thread stands still for them. It passes in
/// steps, from one event to the next: what a test measures here does not depend on the machine it runs on.
class Delays {
public:
    using Time = std::chrono::microseconds;
    /// A drive that does not answer: whoever calls it on a thread of its own never comes back.
    static constexpr Time Never = Time::max();

    /// Calls that are about a path that begins so (letter case ignored) take so long, whatever was set before.
    void Set(std::string_view path, Time delay);
    Time Now() const { return now; }
    /// Measures from here on.
    void Forget() { longest = {}; }
    /// The longest that the window's thread handled no message, in calls of its own or waiting for others.
    Time LongestStretch() const { return longest; }
    /// The call to which that is owed.
    const std::string& LongestCall() const { return longestCall; }

    // For the fakes.
    /// A call of the system.
    void Call(std::string_view name, std::string_view subject);
    /// Does work as if on another thread, of which there are `threads`, and gives the moment at which it has ended.
    Time OnThread(const std::function<void()>& work, std::size_t threads);
    /// The window's thread stands still until `moment`, at most so long. Whether it has come.
    bool StandStill(Time moment, Time atMost);
    /// The window's thread handles messages: until the next of these moments, at most so long. Whether it has come.
    bool Live(Time atMost);
    /// Something ends at this moment as long as the result is kept.
    std::shared_ptr<void> Expect(Time moment);

    struct NeverAnswers : std::exception {};

private:
    std::vector<std::pair<std::string, Time>> rules; ///< the paths folded
    std::vector<Time> threadsFree;                   ///< from when each thread is free
    std::vector<std::weak_ptr<Time>> expected;
    Time now{};
    Time stretch{};
    Time longest{};
    std::string longestCall;
    Time* work{}; ///< what the work that runs on another thread has taken so far

    void Stand(Time time, std::string_view call);
};

} // namespace platform::memory
