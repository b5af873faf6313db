#include "pictures/win32/ThumbnailStore.h"

#include "pictures/win32/NativePixels.h"

#include <algorithm>
#include <thread>

namespace pictures::win32 {
namespace {

/// Pictures that are under way at a time. More than there are processors: a job also waits for the disk, and for the
/// window's thread, which begins no other while it draws the list. No more than a 32-bit process has room for.
std::size_t MostAtATime()
{
    static const std::size_t most = std::clamp<std::size_t>(2 * std::thread::hardware_concurrency(), 2, 4);
    return most;
}

} // namespace

void ThumbnailStore::Reset(int rows, PixelSize newCell, int newEnlargement)
{
    onTheWay.clear();
    unchecked.clear();
    if (!painter || newCell != cell || newEnlargement != enlargement) {
        former.clear();
        cell = newCell;
        enlargement = newEnlargement;
        painter = std::make_shared<ThumbnailPainter>(pictures, cell, enlargement);
    } else {
        KeepForLater();
    }
    thumbnails.clear();
    queue.Reset(rows, ThumbnailsKept(cell));
}

void ThumbnailStore::KeepForLater()
{
    ++resets;
    for (auto& [row, composed] : thumbnails) {
        Thumbnail source = composed.source;
        former.insert_or_assign(std::move(source), Former{std::move(composed), resets});
    }
    const auto most = static_cast<std::size_t>(FormerThumbnailsKept(cell));
    while (former.size() > most)
        former.erase(std::ranges::min_element(former, {}, [](const auto& entry) { return entry.second.age; }));
}

bool ThumbnailStore::Begin(const std::function<Thumbnail(int row)>& of)
{
    if (onTheWay.size() >= MostAtATime())
        return false;
    if (!unchecked.empty() && !queue.WaitsInView()) {
        const int row = unchecked.front();
        unchecked.pop_front();
        if (const auto shown = thumbnails.find(row); shown != thumbnails.end())
            Paint(row, shown->second.source, shown->second.stamp);
        return true;
    }
    const auto row = queue.Next();
    if (!row)
        return false;
    Thumbnail source = of(*row);
    if (const auto kept = former.extract(source)) {
        Put(*row, std::move(kept.mapped().composed));
        unchecked.push_back(*row);
    } else {
        Paint(*row, std::move(source), std::nullopt);
    }
    return true;
}

void ThumbnailStore::Paint(int row, Thumbnail source, std::optional<std::uint64_t> known)
{
    onTheWay[row] = jobs.Start(
        [work = painter, source, known](const platform::Cancelled& cancelled) -> platform::Result<Painted> {
            Painted painted{.stamp = work->Stamp(source), .picture = {}};
            if (!cancelled && painted.stamp != known)
                painted.picture = work->Paint(source);
            return painted;
        },
        [this, row, source](const platform::Result<Painted>& painted) { Arrived(row, source, painted); });
}

void ThumbnailStore::Arrived(int row, const Thumbnail& source, const platform::Result<Painted>& painted)
{
    const auto ticket = onTheWay.extract(row); // until the end of this
    const bool holds = painted ? !painted->picture : IsDone(row);
    if (!holds) {
        Composed composed{source, painted ? painted->stamp : 0, {}, nullptr};
        if (painted && !painted->picture->Empty()) {
            composed.size = painted->picture->Size();
            composed.bitmap = ToBitmap(*painted->picture);
        }
        Put(row, std::move(composed));
    }
    if (Ready)
        Ready();
}

void ThumbnailStore::Put(int row, Composed composed)
{
    if (const auto evicted = queue.Done(row))
        thumbnails.erase(*evicted);
    const bool replaces = thumbnails.contains(row);
    if (queue.IsDone(row))
        thumbnails[row] = std::move(composed);
    if (Changed)
        Changed(row, replaces);
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
