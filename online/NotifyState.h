#pragma once

#include "app/base/Settings.h"

#include <string>

namespace online {

/// What the user and the service have said, and the counter of the starts.
struct NotifyState {
    bool NotifyDisabled{}; ///< the user wants no more messages
    int NotifyCount{};
    bool NotifyAllowed{};                                           ///< this start may show a message
    std::string NotifyMessageText, NotifyProductPath, NotifyParam1; ///< the last reply

    void Save(app::Settings& settings) const
    {
        (void)settings.SaveFlag("Options", "NotifyDisabled", NotifyDisabled);
        (void)settings.SaveNumber("Options", "NotifyCount", NotifyCount);
    }
};

} // namespace online
