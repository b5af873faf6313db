#pragma once

#include "platform/Web.h"
#include "platform/memory/FaultPlan.h"

#include <functional>
#include <string>
#include <vector>

namespace platform::memory {

/// A net of what the test answers; without an answer no server can be reached.
class MemoryWeb final : public Web {
public:
    using Server = std::function<Result<WebReply>(const std::string& address)>;

    explicit MemoryWeb(FaultPlan& plan) : faults{plan} {}

    Result<WebReply> Get(std::string_view address, const WebBounds& bounds, const Cancelled& cancelled) override;

    void OnGet(Server answers) { server = std::move(answers); }
    /// Every address that was asked for, in order.
    const std::vector<std::string>& Asked() const { return asked; }

private:
    FaultPlan& faults;
    Server server;
    std::vector<std::string> asked;
};

} // namespace platform::memory
