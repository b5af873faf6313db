#pragma once

#include "app/base/Program.h"
#include "online/NotifyState.h"
#include "online/frmHidden.h"
#include "online/frmNotifyMessage.h"

#include <functional>
#include <memory>

namespace online {

/// Asks the update service, on one start in ten, whether there is a newer build, and shows its message. Everything that
/// goes wrong stays silent. Owned by the main window; what is under way ends with it.
class UpdateNotification {
public:
    explicit UpdateNotification(app::Program& program) : program{program} {}

    /// Counts this start and asks the service when it is its turn; once in a process, and not before the browser is
    /// ready.
    void StartUpdateCheck();
    /// The service named another banner page, which is stored by now.
    std::function<void()> BannerChanged;

    /// The main window closes, and the message with it.
    void End();
    bool RequestSent() const { return hidden != nullptr && hidden->RequestSent(); }

private:
    app::Program& program;
    NotifyState state;
    std::unique_ptr<frmHidden> hidden;
    std::unique_ptr<frmNotifyMessage> message;

    void ReadReply();
    void ShowMessage();
};

} // namespace online
