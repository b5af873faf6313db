#include "ui/win32/ThumbnailPainter.h"

#include "ui/win32/PictureLoader.h"
#include "ui/win32/pcMemDC.h"

#include <algorithm>

namespace ui::win32 {
namespace {

/// The frame's border that stays visible around the picture, as a part of the frame's size.
constexpr int BorderPart = 13;

/// The size with the picture's proportions that just fits.
SIZE FittedInto(const PixelBuffer& picture, SIZE room)
{
    const double scale =
        std::min(static_cast<double>(room.cx) / picture.Width(), static_cast<double>(room.cy) / picture.Height());
    return {std::max(1L, static_cast<LONG>(picture.Width() * scale)),
            std::max(1L, static_cast<LONG>(picture.Height() * scale))};
}

PixelBuffer LoadEither(const Thumbnail& thumbnail, SIZE room)
{
    PixelBuffer picture = PictureLoader::Load(thumbnail.picture, room);
    if (picture.Empty() && thumbnail.fallback != thumbnail.picture)
        picture = PictureLoader::Load(thumbnail.fallback, room);
    picture.Flatten(RGB(255, 255, 255)); // a memory context has no alpha: what shows through is paper
    return picture;
}

} // namespace

const PixelBuffer& ThumbnailPainter::Frame(const std::string& file)
{
    if (file != frameFile) {
        frameFile = file;
        frame = file.empty() ? PixelBuffer{} : PictureLoader::Load(file, cell);
        if (!frame.Empty()) {
            const SIZE size = FittedInto(frame, cell);
            frame = frame.ScaledTo(size.cx, size.cy);
        }
    }
    return frame;
}

PixelBuffer ThumbnailPainter::Paint(const Thumbnail& thumbnail)
{
    pcMemDC memory;
    const PixelBuffer& background = Frame(thumbnail.frame);
    memory.SetBackgroundImage(!background.Empty());
    if (!memory.BackgroundImage()) {
        memory.CreateFromPicture(LoadEither(thumbnail, cell));
        return memory.Picture();
    }
    memory.CreateFromPicture(background);
    const int border = std::max(2, background.Width() / BorderPart);
    const SIZE room{background.Width() - 2 * border, background.Height() - 2 * border};
    const PixelBuffer picture = LoadEither(thumbnail, room);
    if (picture.Empty())
        return {};
    const LONG left = (background.Width() - picture.Width()) / 2;
    const LONG top = (background.Height() - picture.Height()) / 2;
    memory.PaintPicture(picture, {left, top, left + picture.Width(), top + picture.Height()}, SRCCOPY);
    return memory.Picture();
}

} // namespace ui::win32
