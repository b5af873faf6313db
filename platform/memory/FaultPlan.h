#pragma once

#include "platform/Error.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace platform::memory {

/// Thrown by the call in which the process "dies".
class ProcessDied : public std::runtime_error {
public:
    ProcessDied() : std::runtime_error{"the process died here"} {}
};

/// Counts the calls of all the interfaces of one System together and makes chosen ones go wrong. Calls are numbered
/// from 1, beginning with the call after the plan was made. Clock and Locale do not count: they touch nothing and
/// cannot fail. The set-up helpers of the fakes (AddFile ...) do not count either.
class FaultPlan {
public:
    /// The n-th call fails with `error`, without an effect.
    void FailAt(std::size_t n, Error error);
    /// The n-th call and every later one fail.
    void FailFrom(std::size_t n, Error error);
    /// `change` runs just before the n-th call, which then sees the changed world. Calls made by it do not count.
    void ChangeBefore(std::size_t n, std::function<void()> change);
    /// The n-th call throws ProcessDied, without an effect; whatever a dead process still calls fails the same silent
    /// way (error::GeneralFailure), until Clear.
    void DieAt(std::size_t n);
    /// Everything works again, as for a process started anew. Count and log go on.
    void Clear();

    /// Whether the fault was met since the plan was made.
    bool Fired() const { return fired; }
    /// Calls counted so far.
    std::size_t Calls() const { return log.size(); }
    /// One line a call: its name and what it was about. For the messages of failing tests.
    const std::vector<std::string>& Log() const { return log; }
    void ForgetCalls();

    /// Told of every call, before it goes wrong or right.
    std::function<void(std::string_view call, std::string_view subject)> OnCall;

    /// For the fakes: counts one call; an error when this call has to fail.
    std::optional<Error> Enter(std::string_view call, std::string_view subject);

private:
    enum class Kind { None, FailOnce, FailFromHere, Change, Die };
    void Plan(Kind newKind, std::size_t n);

    Kind kind{Kind::None};
    std::size_t at{};
    Error error{};
    std::function<void()> change;
    bool fired{};
    bool dead{};
    bool changing{};
    std::vector<std::string> log;
};

/// Runs `scenario` for n = 1, 2, 3 ... until it returns false, and returns how often it returned true: the number of
/// calls that the scenario makes. A scenario builds its own System, plans a fault at n, acts, checks, and returns
/// `system.faults.Fired()`. Throws std::logic_error when there is no end to it.
///
///     const auto calls = ForEachFault([](std::size_t n) {
///         memory::System system;
///         system.faults.FailAt(n, error::AccessDenied);
///         ...
///         return system.faults.Fired();
///     });
std::size_t ForEachFault(const std::function<bool(std::size_t n)>& scenario);

} // namespace platform::memory
