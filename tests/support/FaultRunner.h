#pragma once

#include "platform/memory/FaultPlan.h"
#include "tests/support/TestMachine.h"

#include <functional>

namespace tests {

/// How a run goes wrong at one of its calls of the system.
struct Trouble {
    enum Kind { OneCallFails, NothingWorksFromThereOn, TheWorldChanges, TheProcessDies };
    Kind kind{};
    platform::Error error{platform::error::AccessDenied};
    std::function<void(TestMachine&)> change{};
};

/// Lets `act` meet the trouble at its first call of the system, then at its second and so on until it makes no more,
/// each time on a fresh machine that `prepare` has made ready. `check` then gets the machine, in which everything works
/// again unless the process died, and the call ("none" in the last run). Fewer calls than `least` mean that something
/// goes round the platform's interfaces.
template <class Machine>
void ForEachCall(std::size_t least, const Trouble& trouble, const std::function<void(Machine&)>& prepare,
                 const std::function<void(Machine&)>& act,
                 const std::function<void(Machine&, const std::string& call)>& check)
{
    const auto calls = platform::memory::ForEachFault([&](std::size_t n) {
        SCOPED_TRACE("call " + std::to_string(n));
        Machine machine;
        prepare(machine);
        auto& faults = machine.system.faults;
        faults.ForgetCalls();
        switch (trouble.kind) {
        case Trouble::OneCallFails:
            faults.FailAt(n, trouble.error);
            break;
        case Trouble::NothingWorksFromThereOn:
            faults.FailFrom(n, trouble.error);
            break;
        case Trouble::TheWorldChanges:
            faults.ChangeBefore(n, [&] { trouble.change(machine); });
            break;
        case Trouble::TheProcessDies:
            faults.DieAt(n);
        }
        try {
            act(machine);
        } catch (const platform::memory::ProcessDied&) {
        }
        const bool fired = faults.Fired();
        const std::string call = fired ? faults.Log().at(n - 1) : "none";
        SCOPED_TRACE(call);
        if (trouble.kind != Trouble::TheProcessDies)
            faults.Clear();
        check(machine, call);
        return fired;
    });
    EXPECT_GE(calls, least);
}

} // namespace tests
