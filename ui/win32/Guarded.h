#pragma once

#include "ui/win32/WindowsHeader.h"

#include <exception>

namespace ui::win32 {

/// Runs what a window procedure does. An exception must not cross the system's code: it is written to the debugger
/// and the message counts as not handled.
template <class Act>
auto Guarded(Act&& act) noexcept -> decltype(act())
{
    try {
        return act();
    } catch (const std::exception& exception) {
        OutputDebugStringA("exception in a window procedure: ");
        OutputDebugStringA(exception.what());
        OutputDebugStringA("\n");
    } catch (...) {
        OutputDebugStringA("unknown exception in a window procedure\n");
    }
    return decltype(act())();
}

} // namespace ui::win32
