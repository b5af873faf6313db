#pragma once

#include "ui/Toolkit.h"
#include "ui/win32/WindowsHeader.h"

namespace ui::win32 {

/// The system's dialog for opening a file. Nothing when the user cancelled.
std::optional<std::string> ChooseFile(HWND owner, const OpenFileDialog& dialog);

} // namespace ui::win32
