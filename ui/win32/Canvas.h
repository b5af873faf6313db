#pragma once

namespace ui::win32 {

/// The window class of controls that draw themselves.
const wchar_t* CanvasClass();

} // namespace ui::win32
