#pragma once

#include "pictures/PixelSize.h"

#include <cstdint>
#include <functional>
#include <vector>

namespace pictures {

struct Colour {
    std::uint8_t red{}, green{}, blue{};
};

/// A picture in memory: 32 bits a pixel, blue, green, red and alpha, colours multiplied by alpha, rows from the top.
class PixelBuffer {
public:
    PixelBuffer() = default;
    /// All transparent.
    explicit PixelBuffer(PixelSize size);

    PixelSize Size() const { return size; }
    bool Empty() const { return pixels.empty(); }
    std::vector<std::uint8_t>& Bytes() { return pixels; }
    const std::vector<std::uint8_t>& Bytes() const { return pixels; }
    std::size_t Stride() const { return static_cast<std::size_t>(size.width) * 4; }

    /// Each new pixel is the mean of the area it covers, which keeps a picture that gets smaller sharp and quiet. One
    /// that gets larger runs evenly from pixel to pixel.
    PixelBuffer ScaledTo(PixelSize newSize) const;
    /// What a row that comes from elsewhere holds of each pixel.
    enum class Channels { Colours = 3, ColoursAndAlpha = 4 };
    /// The same of a picture that is never whole in memory: `row` gives the bytes of a row, null for one that cannot be
    /// had (the result is empty then). Asked for again is only the one before the last.
    static PixelBuffer Scaled(PixelSize size, PixelSize newSize, Channels channels,
                              const std::function<const std::uint8_t*(int y)>& row);
    /// Takes the colour out and half of the opacity.
    void Fade();
    /// Lays the picture on a solid colour.
    void Flatten(Colour background);

private:
    PixelSize size;
    std::vector<std::uint8_t> pixels;
};

} // namespace pictures
