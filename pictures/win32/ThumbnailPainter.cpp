#include "pictures/win32/ThumbnailPainter.h"

#include "pictures/win32/pcMemDC.h"

namespace pictures::win32 {

std::shared_ptr<const PixelBuffer> ThumbnailPainter::Frame(const std::string& file)
{
    const std::lock_guard lock{mutex};
    if (!frame || file != frameFile) {
        frameFile = file;
        const PixelBuffer decoded = file.empty() ? PixelBuffer{} : pictures.Decode(file, cell);
        frame = std::make_shared<const PixelBuffer>(decoded.ScaledTo(FrameSize(decoded.Size(), cell)));
    }
    return frame;
}

std::uint64_t ThumbnailPainter::Stamp(const Thumbnail& thumbnail) const
{
    const std::uint64_t own = pictures.Stamp(thumbnail.picture);
    return own != 0 ? own : pictures.Stamp(thumbnail.fallback);
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
    const auto held = Frame(thumbnail.frame);
    const PixelBuffer& background = *held;
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
