#pragma once

#include "app/base/Program.h"
#include "online/HiddenPage.h"
#include "platform/Ticket.h"
#include "ui/Form.h"

namespace online {

/// Holds the page of the update service, which nobody sees, and the timer that gives it up. Its window is never shown,
/// and there until the main window closes.
class frmHidden final : public ui::Form {
public:
    /// A service that has not answered by then is not asked further, seconds.
    static constexpr int Patience = 25;

    explicit frmHidden(app::Program& program);

    /// Makes the window and sends the request.
    void Load();
    /// Builds the request from the settings and sends it; without an address of the service nothing happens.
    void UpdateNotification();
    /// Gives the page so many seconds, by the seconds since midnight, and gives it up when it is still under way then.
    /// The timer waits, not the caller: whoever yields in a loop of his own holds up all the loops around him.
    void TimeLapse(int seconds);
    bool RequestSent() const { return requestSent; }

    HiddenPage wbUpdateNotify;

private:
    app::Program& program;
    platform::Ticket tmrUpdateNotify;
    int waitsSince{}; ///< second of the day
    int waitsFor{};   ///< seconds
    bool requestSent{};

    int SecondsSinceMidnight() const;
    void tmrUpdateNotify_Timer();
};

} // namespace online
