#include "pictures/Thumbnail.h"

#include <algorithm>
#include <limits>

namespace pictures {
namespace {

/// The frame's border that stays visible around the picture, as a part of the frame's width.
constexpr int BorderPart = 13;
constexpr int LeastBorder = 2; ///< pixels

/// Bytes of composed thumbnails that are kept: some 1,200 of them at 96 dpi, 500 at 144.
constexpr int MostBytes = 96 * 1024 * 1024;
/// Bytes of those of former lists.
constexpr int MostFormerBytes = 64 * 1024 * 1024;
/// One bitmap a thumbnail: the system gives a process 10,000 drawing objects.
constexpr int MostBitmaps = 4000;

int BytesOf(PixelSize cell)
{
    return std::max(1, cell.width * cell.height * 4);
}

} // namespace

PixelSize FrameSize(PixelSize frame, PixelSize cell)
{
    return Fitted(frame, cell, std::numeric_limits<int>::max());
}

PixelSize RoomOnFrame(PixelSize frame)
{
    const int border = std::max(LeastBorder, frame.width / BorderPart);
    return {frame.width - 2 * border, frame.height - 2 * border};
}

int ThumbnailsKept(PixelSize cell)
{
    return std::min(MostBitmaps, MostBytes / BytesOf(cell));
}

int FormerThumbnailsKept(PixelSize cell)
{
    return std::min(MostBitmaps, MostFormerBytes / BytesOf(cell));
}

} // namespace pictures
