#include "platform/memory/FaultPlan.h"

#include <utility>

namespace platform::memory {

void FaultPlan::FailAt(std::size_t n, Error newError)
{
    Plan(Kind::FailOnce, n);
    error = newError;
}

void FaultPlan::FailFrom(std::size_t n, Error newError)
{
    Plan(Kind::FailFromHere, n);
    error = newError;
}

void FaultPlan::ChangeBefore(std::size_t n, std::function<void()> newChange)
{
    Plan(Kind::Change, n);
    change = std::move(newChange);
}

void FaultPlan::DieAt(std::size_t n)
{
    Plan(Kind::Die, n);
}

void FaultPlan::Clear()
{
    kind = Kind::None;
    dead = false;
}

void FaultPlan::ForgetCalls()
{
    Clear(); // a planned number counts from calls that are forgotten now
    log.clear();
}

void FaultPlan::Plan(Kind newKind, std::size_t n)
{
    kind = newKind;
    at = log.size() + n;
    fired = false;
    dead = false;
}

std::optional<Error> FaultPlan::Enter(std::string_view call, std::string_view subject)
{
    if (changing)
        return std::nullopt;
    if (dead)
        return platform::error::GeneralFailure;

    if (OnCall)
        OnCall(call, subject);
    log.emplace_back(call).append(1, ' ').append(subject);
    const bool met = kind == Kind::FailFromHere ? log.size() >= at : log.size() == at;
    if (kind == Kind::None || !met)
        return std::nullopt;

    fired = true;
    switch (kind) {
    case Kind::Die:
        dead = true;
        throw ProcessDied{};
    case Kind::Change:
        changing = true;
        change();
        changing = false;
        return std::nullopt;
    default:
        return error;
    }
}

std::size_t ForEachFault(const std::function<bool(std::size_t n)>& scenario)
{
    constexpr std::size_t endless = 100'000;
    for (std::size_t n = 1; n <= endless; ++n) {
        if (!scenario(n))
            return n - 1;
    }
    throw std::logic_error{"the scenario meets its fault without end"};
}

} // namespace platform::memory
