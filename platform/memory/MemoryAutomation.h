#pragma once

#include "platform/Automation.h"
#include "platform/memory/FaultPlan.h"

#include <map>
#include <string>
#include <vector>

namespace platform::memory {

/// Knows no class until one is registered.
class MemoryAutomation final : public Automation {
public:
    explicit MemoryAutomation(FaultPlan& plan) : faults{plan} {}

    Result<> TryCreate(std::string_view progId) override;

    /// Registers a class whose creation has this outcome.
    void Register(std::string_view progId, Result<> outcome = {});
    /// Every class that was asked for, in order.
    const std::vector<std::string>& Asked() const { return asked; }

private:
    FaultPlan& faults;
    std::map<std::string, Result<>> outcomes; // by folded class name
    std::vector<std::string> asked;
};

} // namespace platform::memory
