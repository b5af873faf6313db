#pragma once

#include "ui/win32/WindowsHeader.h"

#include <string>

namespace ui::win32 {

/// Tells screen readers what a window is called. Where the system has no such service, they find their own name.
void NameForReaders(HWND window, const std::string& name);

} // namespace ui::win32
