#pragma once

#include "pictures/PixelBuffer.h"
#include "pictures/win32/NativeHandle.h"

#include <vector>

namespace pictures::win32 {

/// For the calls of the system that read or write such pixels.
BITMAPINFO DescriptionOf(PixelSize size);
/// Empty when the icon has no readable colour picture.
PixelBuffer FromIcon(HICON icon, int side);
/// Null for an empty buffer.
IconHandle ToIcon(const PixelBuffer& picture);
/// Of pictures that are `side` pixels wide and high, or empty: those are blank. Added one by one, each would take the
/// system longer than all of them do at once.
ImageListHandle ToImageList(const std::vector<PixelBuffer>& icons, int side);
BitmapHandle ToBitmap(const PixelBuffer& picture);
/// Copies a bitmap into a rectangle that may be larger or smaller.
void DrawStretched(HDC context, HBITMAP bitmap, PixelSize size, const RECT& into);
/// Copies a bitmap into the middle of a room.
void DrawCentred(HDC context, HBITMAP bitmap, PixelSize size, const RECT& room);

} // namespace pictures::win32
