#pragma once

#include "ui/win32/WindowsHeader.h"

namespace ui::win32 {

/// Whether the user's system draws controls with a theme.
bool IsThemed();

/// Gives a tree or a list the look of the system's own file windows, where there is a theme.
void UseExplorerTheme(HWND control);

} // namespace ui::win32
