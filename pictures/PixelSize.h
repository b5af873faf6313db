#pragma once

namespace pictures {

/// A size in pixels; one without width or height is that of no picture.
struct PixelSize {
    int width{}, height{};
    bool Empty() const { return width <= 0 || height <= 0; }
    friend bool operator==(const PixelSize&, const PixelSize&) = default;
};

/// The size with the picture's proportions that just fits into the room, but at most `enlargement` times its own.
PixelSize Fitted(PixelSize picture, PixelSize room, int enlargement = 1);

} // namespace pictures
