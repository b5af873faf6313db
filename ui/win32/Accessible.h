#pragma once

#include "ui/win32/WindowsHeader.h"

#include <string>

namespace ui::win32 {

/// Tells screen readers what a window is called. Where the system has no such service, they find their own name.
void NameForReaders(HWND window, const std::string& name);
/// Tells them what it is (ROLE_SYSTEM_...), where its class does not say so.
void RoleForReaders(HWND window, LONG role);
/// Before a window goes: the system keeps what it was told until then, and would keep it for good.
void ForgetForReaders(HWND window);

} // namespace ui::win32
