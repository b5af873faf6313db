#pragma once

#include "platform/Error.h"
#include "platform/Ticket.h"

#include <functional>
#include <string>

namespace platform {

/// A new message to one recipient, with one file attached.
struct MailMessage {
    std::string type; ///< message type, as the client knows it; "" for its usual one
    std::string subject;
    std::string text;
    std::string recipient;  ///< display name, which the client looks up
    std::string attachment; ///< full path
};

enum class MailOutcome {
    Composed,  ///< the client took the message
    GivenUp,   ///< by the user
    NoSession, ///< there is no client, or it could not be logged on to
    Failed
};

/// The user's mail client, by the system's simple mail interface.
class Mail {
public:
    virtual ~Mail() = default;
    /// Logs on as `user` ("": as the client is set up), without asking and without fetching mail, lets the client show
    /// the message in a window of its own, from which the user sends it or not, and logs off again. `done` is called on
    /// the window's thread when that window is closed, which may be never, unless the ticket is gone; the
    /// client's window stays all the same. The current folder is what it was before.
    virtual Result<Ticket> Compose(std::string user, MailMessage message, std::function<void(MailOutcome)> done) = 0;
};

} // namespace platform
