#include "pictures/win32/ThumbnailStore.h"

#include "pictures/win32/NativePixels.h"

namespace pictures::win32 {

void ThumbnailStore::Reset(int rows, PixelSize cell, int enlargement)
{
    thumbnails.clear();
    painter.emplace(pictures, cell, enlargement);
    queue.Reset(rows, ThumbnailsKept(cell));
}

void ThumbnailStore::Compose(int row, const Thumbnail& thumbnail)
{
    const PixelBuffer picture = painter->Paint(thumbnail);
    if (const auto evicted = queue.Done(row))
        thumbnails.erase(*evicted);
    if (!picture.Empty())
        thumbnails[row] = {ToBitmap(picture), picture.Size()};
}

bool ThumbnailStore::Draw(HDC context, int row, const RECT& room) const
{
    const auto found = thumbnails.find(row);
    if (found == thumbnails.end() || !found->second.bitmap)
        return false;
    DrawCentred(context, found->second.bitmap.get(), found->second.size, room);
    return true;
}

} // namespace pictures::win32
