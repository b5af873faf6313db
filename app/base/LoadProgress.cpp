#include "app/base/LoadProgress.h"

namespace app {

bool LoadProgress::Increment()
{
    if (ProgressCount < 100 && !ProgressStopped) {
        ++ProgressCount;
        if (Show)
            Show(ProgressCount);
    }
    toolkit.DoEvents();
    return !Cancelled;
}

} // namespace app
