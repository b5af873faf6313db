#include "pictures/win32/ThumbnailPainter.h"

#include "pictures/win32/pcMemDC.h"

namespace pictures::win32 {

const PixelBuffer& ThumbnailPainter::Frame(const std::string& file)
{
    if (file != frameFile) {
        frameFile = file;
        frame = file.empty() ? PixelBuffer{} : pictures.Decode(file, cell);
        frame = frame.ScaledTo(FrameSize(frame.Size(), cell));
    }
    return frame;
}

PixelBuffer ThumbnailPainter::PictureOf(const Thumbnail& thumbnail, PixelSize room) const
{
    PixelBuffer picture = pictures.DecodeEither(thumbnail.picture, thumbnail.fallback, room, enlargement);
    picture.Flatten({255, 255, 255}); // a memory context has no alpha: what shows through is paper
    return picture;
}

PixelBuffer ThumbnailPainter::Paint(const Thumbnail& thumbnail)
{
    pcMemDC memory;
    const PixelBuffer& background = Frame(thumbnail.frame);
    memory.SetBackgroundImage(!background.Empty());
    if (!memory.BackgroundImage()) {
        memory.CreateFromPicture(PictureOf(thumbnail, cell));
        return memory.Picture();
    }
    memory.CreateFromPicture(background);
    const PixelSize outer = background.Size();
    const PixelBuffer picture = PictureOf(thumbnail, RoomOnFrame(outer));
    if (picture.Empty())
        return {};
    const auto [width, height] = picture.Size();
    const LONG left = (outer.width - width) / 2;
    const LONG top = (outer.height - height) / 2;
    memory.PaintPicture(picture, {left, top, left + width, top + height}, SRCCOPY);
    return memory.Picture();
}

} // namespace pictures::win32
