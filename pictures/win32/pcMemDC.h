#pragma once

#include "pictures/PixelBuffer.h"
#include "pictures/win32/NativeHandle.h"

namespace pictures::win32 {

/// A memory device context like the screen's, for drawing one picture onto another. It holds its context and its
/// bitmap until it is destroyed. What fails leaves it empty: 0 x 0 pixels, and an empty picture.
class pcMemDC {
public:
    pcMemDC() = default;
    pcMemDC(const pcMemDC&) = delete;
    pcMemDC& operator=(const pcMemDC&) = delete;
    ~pcMemDC() { Release(); }

    /// Makes the context as large as the picture, with a copy of it.
    void CreateFromPicture(const PixelBuffer& picture);
    /// The same from a bitmap, which stays the caller's.
    void CreateFromHBitmap(HBITMAP picture);
    /// Draws a picture into a place (pixels), stretched where the sizes differ. `operation` is a raster operation such
    /// as SRCCOPY.
    void PaintPicture(const PixelBuffer& picture, const RECT& place, DWORD operation);
    /// What the context holds now, opaque.
    PixelBuffer Picture() const;

    HDC hdc() const { return context; }
    int Width() const { return width; }
    int Height() const { return height; }
    /// Make the bitmap anew at the new size, blank.
    void SetWidth(int pixels) { Create(pixels, height); }
    void SetHeight(int pixels) { Create(width, pixels); }

    /// Whether the next picture to be composed starts from a background picture.
    bool BackgroundImage() const { return startsFromBackground; }
    void SetBackgroundImage(bool starts) { startsFromBackground = starts; }

private:
    HDC context{};
    HGDIOBJ formerBitmap{};
    BitmapHandle bitmap;
    int width{};
    int height{};
    bool startsFromBackground{};

    void Create(int newWidth, int newHeight);
    void Release();
};

} // namespace pictures::win32
