#pragma once

#include "pictures/PixelBuffer.h"
#include "pictures/win32/NativeHandle.h"

namespace pictures::win32 {

/// For the calls of the system that read or write such pixels.
BITMAPINFO DescriptionOf(PixelSize size);
/// Empty when the icon has no readable colour picture.
PixelBuffer FromIcon(HICON icon, int side);
/// Null for an empty buffer.
IconHandle ToIcon(const PixelBuffer& picture);
BitmapHandle ToBitmap(const PixelBuffer& picture);
/// Copies a bitmap into a rectangle that may be larger or smaller.
void DrawStretched(HDC context, HBITMAP bitmap, PixelSize size, const RECT& into);
/// Copies a bitmap into the middle of a room.
void DrawCentred(HDC context, HBITMAP bitmap, PixelSize size, const RECT& room);

} // namespace pictures::win32
