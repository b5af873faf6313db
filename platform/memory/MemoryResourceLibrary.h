#pragma once

#include "platform/ResourceLibrary.h"
#include "platform/memory/FaultPlan.h"

#include <map>

namespace platform::memory {

class MemoryResourceLibrary final : public ResourceLibrary {
public:
    using Strings = std::map<std::uint16_t, std::string>;

    explicit MemoryResourceLibrary(FaultPlan& plan) : faults{plan} {}

    bool Load(std::string_view file) override;
    std::string LoadString(std::uint16_t id, int buffer) override;

    /// Puts a library at this full path.
    void Add(std::string_view file, Strings strings);
    /// What the end of a process does.
    void Unload() { loaded = nullptr; }

private:
    FaultPlan& faults;
    std::map<std::string, Strings> libraries; // by folded path
    const Strings* loaded{};
};

} // namespace platform::memory
