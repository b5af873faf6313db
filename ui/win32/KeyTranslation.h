#pragma once

#include "ui/Key.h"
#include "ui/win32/WindowsHeader.h"

namespace ui::win32 {

/// The key of a WM_KEYDOWN or WM_SYSKEYDOWN with the modifiers held now; no key for one that no command uses, and for
/// plain letters and digits, which are text.
Key KeyOf(WPARAM virtualKey);

} // namespace ui::win32
