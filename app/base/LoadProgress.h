#pragma once

#include "ui/Toolkit.h"

#include <functional>

namespace app {

/// The count behind the load progress window: one step after each piece of loading, and a yield, so that the window
/// stays alive.
class LoadProgress {
public:
    explicit LoadProgress(ui::Toolkit& toolkit) : toolkit{toolkit} {}

    /// Adds one percent, up to 100 and until stopped, and yields to pending window messages. False when the work in
    /// hand should end now, because the window it works for is closing.
    bool Increment();

    int ProgressCount{}; ///< percent
    bool ProgressStopped{true};
    bool Cancelled{};
    /// Shows the new count; set while the progress window is there.
    std::function<void(int percent)> Show;

private:
    ui::Toolkit& toolkit;
};

} // namespace app
