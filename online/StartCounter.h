#pragma once

namespace online {

/// What one start of the program leads to.
struct StartCount {
    int count{};              ///< the counter from now on
    bool asks{};              ///< the update service is asked
    bool notifyAllowed{true}; ///< its message may be shown
};

/// Counts one start: of every ten the first asks the service, of every fifty for a user who wants no more messages.
/// `count` is what the starts before this one have left.
StartCount CountStart(int count, bool notifyDisabled);

} // namespace online
