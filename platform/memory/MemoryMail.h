#pragma once

#include "platform/Mail.h"
#include "platform/memory/FaultPlan.h"

#include <memory>
#include <vector>

namespace platform::memory {

/// A mail client whose window is closed when the test says so.
class MemoryMail final : public Mail {
public:
    struct Composed {
        std::string user;
        MailMessage message;
    };

    explicit MemoryMail(FaultPlan& plan) : faults{plan} {}

    Result<Ticket> Compose(std::string user, MailMessage message, std::function<void(MailOutcome)> done) override;

    /// Every message that the client was given, in order.
    const std::vector<Composed>& Messages() const { return messages; }
    /// The window of the last one is closed; whoever still waits is told.
    void Close(MailOutcome outcome);

private:
    using Done = std::function<void(MailOutcome)>;

    FaultPlan& faults;
    std::vector<Composed> messages;
    std::weak_ptr<Done> waiting;
};

} // namespace platform::memory
