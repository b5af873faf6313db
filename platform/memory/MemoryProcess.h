#pragma once

#include "platform/Process.h"
#include "platform/memory/FaultPlan.h"

namespace platform::memory {

class MemoryProcess final : public Process {
public:
    explicit MemoryProcess(FaultPlan& plan) : faults{plan} {}

    bool ClaimSingleInstance() override;
    void ReleaseSingleInstance() override;

    /// Another process has a browser open (or closes it).
    void HoldByAnotherProcess(bool held) { heldByAnother = held; }
    bool IsClaimed() const { return claimed; }
    /// What the system does when this process ends in any way.
    void Die() { claimed = false; }

private:
    FaultPlan& faults;
    bool claimed{};
    bool heldByAnother{};
};

} // namespace platform::memory
