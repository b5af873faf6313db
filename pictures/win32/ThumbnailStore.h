#pragma once

#include "pictures/DecodeQueue.h"
#include "pictures/win32/NativeHandle.h"
#include "pictures/win32/ThumbnailPainter.h"

#include <unordered_map>

namespace pictures::win32 {

/// The thumbnails of a list that have been composed so far, in a bounded amount of memory.
class ThumbnailStore {
public:
    explicit ThumbnailStore(const Pictures& pictures) : pictures{pictures} {}

    /// Drops everything. `cell` and `enlargement` as for the painter.
    void Reset(int rows, PixelSize cell, int enlargement);
    /// The rows in view, whose turn comes first.
    void Show(int first, int last) { queue.Show(first, last); }
    /// The row whose thumbnail is to be composed next; nothing when all is done.
    std::optional<int> Next() { return queue.Next(); }
    void Compose(int row, const Thumbnail& thumbnail);
    /// Whether the row's turn has come: it has its thumbnail, or has none because no picture could be decoded.
    bool IsDone(int row) const { return queue.IsDone(row); }
    /// False when the row has no thumbnail. `room`: where it is centred.
    bool Draw(HDC context, int row, const RECT& room) const;

private:
    struct Composed {
        BitmapHandle bitmap;
        PixelSize size;
    };
    const Pictures& pictures;
    DecodeQueue queue;
    std::optional<ThumbnailPainter> painter;
    std::unordered_map<int, Composed> thumbnails;
};

} // namespace pictures::win32
