#pragma once

#include "ui/win32/WindowsHeader.h"

#include <string>

namespace ui::win32 {

/// The window class of controls that draw themselves.
const wchar_t* CanvasClass();
/// Writes a text that stands where there is nothing else to show: grey, wrapped and centred from the top of the room.
void DrawNote(HDC context, const std::string& text, HFONT font, RECT room);

} // namespace ui::win32
