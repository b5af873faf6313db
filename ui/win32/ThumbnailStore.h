#pragma once

#include "ui/DecodeQueue.h"
#include "ui/ListView.h"
#include "ui/win32/ThumbnailPainter.h"

#include <unordered_map>

namespace ui::win32 {

/// The thumbnails of a list that have been composed so far, in a bounded amount of memory.
class ThumbnailStore {
public:
    /// Drops everything; `cell`: pixels of one thumbnail.
    void Reset(int rows, SIZE cell);
    /// The rows in view, whose turn comes first.
    void Show(int first, int last) { queue.Show(first, last); }
    /// Composes the next thumbnail; the row that has changed by it, or nothing when all is done.
    std::optional<int> ComposeNext(const ListModel& model);
    /// Whether the row's turn has come: it has its thumbnail, or has none because no picture could be decoded.
    bool IsDone(int row) const { return queue.IsDone(row); }
    /// False when the row has no thumbnail. `room`: where it is centred.
    bool Draw(HDC context, int row, const RECT& room) const;

private:
    struct Composed {
        BitmapHandle bitmap;
        SIZE size{};
    };
    DecodeQueue queue;
    ThumbnailPainter painter;
    std::unordered_map<int, Composed> thumbnails;
};

} // namespace ui::win32
