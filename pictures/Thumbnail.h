#pragma once

#include "pictures/PixelSize.h"

#include <string>

namespace pictures {

/// The pictures that make up one thumbnail, as full paths.
struct Thumbnail {
    std::string picture;
    std::string fallback; ///< instead of a picture that is missing or broken; "" for none
    std::string frame;    ///< the picture is drawn onto this one; "" for none
    friend auto operator<=>(const Thumbnail&, const Thumbnail&) = default;
};

/// The frame as large as the cell of a thumbnail allows, whatever its own size.
PixelSize FrameSize(PixelSize frame, PixelSize cell);
/// What a frame of this size leaves for the picture on it: its border stays visible.
PixelSize RoomOnFrame(PixelSize frame);
/// How many thumbnails of this size are kept at a time of the list that shows.
int ThumbnailsKept(PixelSize cell);
/// How many of lists that showed before.
int FormerThumbnailsKept(PixelSize cell);

} // namespace pictures
