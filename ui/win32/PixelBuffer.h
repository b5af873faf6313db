#pragma once

#include "ui/win32/NativeHandle.h"

#include <cstdint>
#include <vector>

namespace ui::win32 {

/// A picture in memory: 32 bits a pixel, blue, green, red and alpha, colours multiplied by alpha, rows from the top.
class PixelBuffer {
public:
    PixelBuffer() = default;
    /// All transparent.
    PixelBuffer(int bufferWidth, int bufferHeight);

    int Width() const { return width; }
    int Height() const { return height; }
    bool Empty() const { return pixels.empty(); }
    std::uint8_t* Bytes() { return pixels.data(); }
    const std::uint8_t* Bytes() const { return pixels.data(); }
    /// For the calls of the system that read or write such pixels.
    BITMAPINFO Description() const;
    std::size_t Stride() const { return static_cast<std::size_t>(width) * 4; }
    std::size_t Size() const { return pixels.size(); }

    /// Empty when the icon has no readable colour picture.
    static PixelBuffer FromIcon(HICON icon, int size);
    /// Each new pixel is the mean of the area it covers, which keeps a picture that gets smaller sharp and quiet.
    PixelBuffer ScaledTo(int newWidth, int newHeight) const;
    /// Takes the colour out and half of the opacity.
    void Fade();
    /// Lays the picture on a solid colour.
    void Flatten(COLORREF background);
    /// Null for an empty buffer.
    IconHandle ToIcon() const;
    BitmapHandle ToBitmap() const;

private:
    int width{};
    int height{};
    std::vector<std::uint8_t> pixels;
};

} // namespace ui::win32
