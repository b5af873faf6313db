#include "platform/memory/MemoryAutomation.h"

#include "platform/Text.h"

namespace platform::memory {

Result<> MemoryAutomation::TryCreate(std::string_view progId)
{
    if (const auto fault = faults.Enter("Automation.TryCreate", progId))
        return std::unexpected{*fault};
    asked.emplace_back(progId);
    const auto found = outcomes.find(text::Folded(progId));
    return found == outcomes.end() ? std::unexpected{error::CannotCreateObject} : found->second;
}

void MemoryAutomation::Register(std::string_view progId, Result<> outcome)
{
    outcomes.insert_or_assign(text::Folded(progId), outcome);
}

} // namespace platform::memory
