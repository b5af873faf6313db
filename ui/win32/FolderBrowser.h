#pragma once

#include "ui/win32/WindowsHeader.h"

#include <optional>
#include <string>

namespace ui::win32 {

/// The system's dialog for choosing a folder, the older one where the newer is missing. The current folder stays as
/// it is.
std::optional<std::string> ChooseFolder(HWND owner, const std::string& prompt, const std::string& initial);

} // namespace ui::win32
