#pragma once

#include "pictures/win32/NativeHandle.h"
#include "ui/win32/WindowsHeader.h"

#include <string>

namespace ui::win32 {

// Gives a file to other programs: the file itself, and its name for those that take text. They may copy it, never move
// it or link to it.

/// Puts it onto the clipboard; false when another program holds that. The text likewise.
bool CopyFileToClipboard(HWND owner, const std::string& path);
bool CopyTextToClipboard(HWND owner, const std::string& text);

/// What a drop gets.
pictures::win32::ComPointer<IDataObject> OfferOf(const std::string& path);

/// Lets the user drop it: the mouse button is down. Returns when it was dropped or given up.
void DragFile(const std::string& path);

// And takes one from them.

/// The first file on the clipboard; "" when there is none, or another program holds it.
std::string FileOnClipboard(HWND owner);

/// The first of the files that were dropped; lets go of them.
std::string TakeDroppedFile(HDROP files);

} // namespace ui::win32
