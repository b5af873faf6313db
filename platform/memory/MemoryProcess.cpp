#include "platform/memory/MemoryProcess.h"

namespace platform::memory {

bool MemoryProcess::ClaimSingleInstance()
{
    if (faults.Enter("Process.ClaimSingleInstance", "") || claimed || heldByAnother)
        return false;
    claimed = true;
    return true;
}

void MemoryProcess::ReleaseSingleInstance()
{
    if (!faults.Enter("Process.ReleaseSingleInstance", ""))
        claimed = false;
}

} // namespace platform::memory
