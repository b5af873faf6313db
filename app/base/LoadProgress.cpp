#include "app/base/LoadProgress.h"

namespace app {

void LoadProgress::Increment()
{
    if (ProgressCount < 100 && !ProgressStopped) {
        ++ProgressCount;
        if (Show)
            Show(ProgressCount);
    }
    toolkit.DoEvents();
}

} // namespace app
