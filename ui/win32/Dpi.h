#pragma once

#include "ui/Geometry.h"
#include "ui/win32/NativeHandle.h"

namespace ui::win32 {

/// Dots per inch that the whole desktop is measured with.
int SystemDpi();
/// Dots per inch of the monitor that a window is on, where the system tells them apart.
int DpiOf(HWND window);
int DpiOf(HMONITOR monitor);

int ToPixels(int twips, int dpi);
int ToTwips(int pixels, int dpi);
/// Never less than the pixels need, for sizes that texts were measured at.
int ToTwipsUp(int pixels, int dpi);
/// The edges are rounded, not the size, so that neighbours still touch.
RECT ToPixels(const Rect& rect, int dpi);
Rect ToTwips(const RECT& rect, int dpi);

/// How many times its own size a picture may be shown at: it was made for 96 dpi, and would look lost in its place at
/// much more.
int PictureEnlargement(int dpi);

/// A system metric (SM_...) at a dpi.
int SystemMetric(int index, int dpi);
/// The outer size of a window with this client area.
SIZE OuterSize(SIZE client, DWORD style, DWORD extendedStyle, bool hasMenu, int dpi);

/// The fonts of one window.
struct Fonts {
    explicit Fonts(int dpi);
    FontHandle normal;
    FontHandle heading;
};

} // namespace ui::win32
