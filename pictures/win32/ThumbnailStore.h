#pragma once

#include "pictures/DecodeQueue.h"
#include "pictures/win32/NativeHandle.h"
#include "pictures/win32/ThumbnailPainter.h"
#include "platform/Jobs.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>

namespace pictures::win32 {

/// The thumbnails of a list, composed beside the window's thread, in a bounded amount of memory. Those of lists that
/// showed before are kept for a while. They show at once when their list comes back, and their files are looked at when
/// all that is in view is there: they may have changed.
class ThumbnailStore {
public:
    ThumbnailStore(const Pictures& pictures, platform::Jobs& jobs) : pictures{pictures}, jobs{jobs} {}

    /// Another list, or the same in another order. `cell` and `enlargement` as for the painter.
    void Reset(int rows, PixelSize cell, int enlargement);
    /// The rows in view, whose turn comes first.
    void Show(int first, int last) { queue.Show(first, last); }
    /// Takes the next row in hand; false when nothing is left to do now. What `of` gives is what the row shows.
    bool Begin(const std::function<Thumbnail(int row)>& of);
    /// A row has its thumbnail, or has none because no picture could be decoded. `replaces`: it had one before.
    std::function<void(int row, bool replaces)> Changed;
    /// A thumbnail has come: another one can be begun.
    std::function<void()> Ready;
    bool IsDone(int row) const { return queue.IsDone(row); }
    /// False when the row has no thumbnail. `room`: where it is centred.
    bool Draw(HDC context, int row, const RECT& room) const;

private:
    struct Composed {
        Thumbnail source;
        std::uint64_t stamp{};
        PixelSize size;
        BitmapHandle bitmap; ///< none when no picture could be decoded
    };
    struct Former {
        Composed composed;
        unsigned age{};
    };
    /// What a job brings: nothing in `picture` when what is shown holds.
    struct Painted {
        std::uint64_t stamp{};
        std::optional<PixelBuffer> picture;
    };

    const Pictures& pictures;
    platform::Jobs& jobs;
    DecodeQueue queue;
    PixelSize cell;
    int enlargement{};
    std::shared_ptr<ThumbnailPainter> painter;
    std::unordered_map<int, Composed> thumbnails;
    std::map<Thumbnail, Former> former;
    unsigned resets{};
    std::unordered_map<int, platform::Ticket> onTheWay;
    std::deque<int> unchecked; ///< rows that show a former one

    void KeepForLater();
    void Paint(int row, Thumbnail source, std::optional<std::uint64_t> known);
    void Arrived(int row, const Thumbnail& source, const platform::Result<Painted>& painted);
    void Put(int row, Composed composed);
};

} // namespace pictures::win32
