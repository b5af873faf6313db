#include "ui/win32/ThumbnailStore.h"

#include "ui/win32/Canvas.h"

#include <algorithm>

namespace ui::win32 {
namespace {

/// Bytes of composed thumbnails that are kept: some 1,200 of them at 96 dpi, 500 at 144.
constexpr int MostBytes = 96 * 1024 * 1024;
/// One bitmap a thumbnail: the system gives a process 10,000 drawing objects.
constexpr int MostBitmaps = 4000;

} // namespace

void ThumbnailStore::Reset(int rows, SIZE cell)
{
    thumbnails.clear();
    painter = ThumbnailPainter{cell};
    const int each = std::max<int>(1, static_cast<int>(cell.cx * cell.cy * 4));
    queue.Reset(rows, std::min(MostBitmaps, MostBytes / each));
}

std::optional<int> ThumbnailStore::ComposeNext(const ListModel& model)
{
    const std::optional<int> row = queue.Next();
    if (!row || *row >= model.Rows())
        return std::nullopt;
    const PixelBuffer picture = painter.Paint(model.ThumbnailOf(*row));
    if (const auto evicted = queue.Done(*row))
        thumbnails.erase(*evicted);
    if (!picture.Empty())
        thumbnails[*row] = {picture.ToBitmap(), {picture.Width(), picture.Height()}};
    return row;
}

bool ThumbnailStore::Draw(HDC context, int row, const RECT& room) const
{
    const auto found = thumbnails.find(row);
    if (found == thumbnails.end() || !found->second.bitmap)
        return false;
    DrawCentred(context, found->second.bitmap.get(), found->second.size, room);
    return true;
}

} // namespace ui::win32
