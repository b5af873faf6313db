#include "automation/Lifetime.h"

#include "automation/WindowsHeader.h"

#include <utility>

namespace automation {

Lifetime::Lifetime(std::function<void()> end) : endProgram{std::move(end)} {}

void Lifetime::EndIfNeverHeld()
{
    if (everHeld)
        return;
    CoSuspendClassObjects();
    End();
}

void Lifetime::Add()
{
    everHeld = true;
    CoAddRefServerProcess();
}

void Lifetime::Remove()
{
    if (CoReleaseServerProcess() == 0)
        End();
}

void Lifetime::End()
{
    if (!std::exchange(ending, true))
        endProgram();
}

} // namespace automation
