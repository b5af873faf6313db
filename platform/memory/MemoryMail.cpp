#include "platform/memory/MemoryMail.h"

#include <utility>

namespace platform::memory {

Result<Ticket> MemoryMail::Compose(std::string user, MailMessage message, std::function<void(MailOutcome)> done)
{
    if (const auto fault = faults.Enter("Mail.Compose", message.recipient))
        return std::unexpected{*fault};
    messages.push_back({std::move(user), std::move(message)});
    const auto held = std::make_shared<Done>(std::move(done));
    waiting = held;
    return Ticket{held};
}

void MemoryMail::Close(MailOutcome outcome)
{
    if (const auto held = std::exchange(waiting, {}).lock()) {
        const Done done = std::move(*held); // it may let go of its own ticket
        done(outcome);
    }
}

} // namespace platform::memory
