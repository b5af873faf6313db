#pragma once

#include "app/base/Program.h"
#include "online/HiddenPage.h"
#include "platform/FileSystem.h"

namespace online {

/// Holds the page of the update service, which nobody sees, and the timer that gives it up.
class frmHidden {
public:
    /// A service that has not answered by then is not asked further, seconds.
    static constexpr int Patience = 25;

    explicit frmHidden(app::Program& program) : wbUpdateNotify{program.platform}, program{program} {}

    /// Builds the request from the settings and sends it; without an address of the service nothing happens.
    void UpdateNotification();
    /// Whether so many seconds have passed since the request, by the seconds since midnight. Messages go on meanwhile:
    /// it is asked by the timer.
    bool TimeLapse(int seconds) const;
    bool RequestSent() const { return requestSent; }

    HiddenPage wbUpdateNotify;

private:
    app::Program& program;
    platform::Ticket tmrUpdateNotify;
    int sentAt{}; ///< second of the day
    bool requestSent{};

    int SecondsSinceMidnight() const;
    void tmrUpdateNotify_Timer();
};

} // namespace online
