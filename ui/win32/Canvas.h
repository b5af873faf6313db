#pragma once

#include "ui/win32/WindowsHeader.h"

#include <string>

namespace ui::win32 {

/// Registers a window class with the arrow and the colour of dialogs. False when the system does not take it.
bool RegisterPlainClass(const wchar_t* name, UINT style, WNDPROC procedure);
/// The window class of controls that draw themselves.
const wchar_t* CanvasClass();
/// Writes a text that stands where there is nothing else to show: grey, wrapped and centred from the top of the room.
void DrawNote(HDC context, const std::string& text, HFONT font, RECT room);

/// Whether a row that is selected in a list without the focus looks like the others: its colour is the window's own
/// (contrast schemes), or next to it. DrawSelectionFrame shows it then.
bool UnfocusedSelectionIsInvisible();
void DrawSelectionFrame(HDC context, RECT row, int width);

} // namespace ui::win32
