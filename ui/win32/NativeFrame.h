#pragma once

#include "ui/win32/WindowsHeader.h"

namespace ui::win32 {

/// A top-level window as the system sees it. It outlives its form's peer while one of its own messages is still being
/// handled: a window must not be destroyed under the feet of its window procedure.
struct NativeFrame {
    HWND window{};
    int handling{}; ///< messages of the window and its controls that are being handled now

    class Busy {
    public:
        explicit Busy(NativeFrame& busyFrame) : frame{busyFrame} { ++frame.handling; }
        Busy(const Busy&) = delete;
        Busy& operator=(const Busy&) = delete;
        ~Busy() { --frame.handling; }

    private:
        NativeFrame& frame;
    };
};

} // namespace ui::win32
