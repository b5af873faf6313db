#include "profiles/FileBatch.h"

#include "platform/Path.h"

#include <algorithm>
#include <ranges>

namespace profiles {

namespace error = platform::error;
namespace path = platform::path;
using platform::Result;

namespace {

bool IsMissing(platform::Error error)
{
    return error == error::FileNotFound || error == error::PathNotFound;
}

} // namespace

FileBatch::~FileBatch()
{
    if (!finished)
        Undo();
}

Result<> FileBatch::MakeFolder(std::string_view folder)
{
    const auto made = files.CreateFolder(folder);
    if (made)
        madeFolders.emplace_back(folder);
    else if (made.error() == error::AlreadyExists)
        return {};
    return made;
}

std::string FileBatch::NextTemporary(std::string_view target) const
{
    return path::Join(path::Parent(target), "~" + std::to_string(items.size() + 1) + ".new");
}

void FileBatch::Adopt(std::string_view target)
{
    items.push_back({.target = std::string{target}, .temporary = NextTemporary(target)});
}

Result<> FileBatch::Copy(std::string_view source, std::string_view target)
{
    // Not the system's copy, which takes the write protection of a file from a compact disc along.
    const auto bytes = files.Read(source, LargestFile);
    return bytes ? Write(*bytes, target) : std::unexpected{bytes.error()};
}

Result<> FileBatch::Write(std::string_view bytes, std::string_view target)
{
    const std::string temporary = NextTemporary(target);
    if (const auto cleared = Discard(temporary); !cleared)
        return cleared;
    Adopt(target);
    if (const auto written = files.Write(temporary, bytes); !written)
        return written;
    const auto stored = files.Read(temporary, bytes.size());
    if (!stored)
        return std::unexpected{stored.error()};
    return *stored == bytes ? Result<>{} : std::unexpected{error::GeneralFailure};
}

void FileBatch::DeleteAtEnd(std::string_view path)
{
    deletions.emplace_back(path);
}

Result<> FileBatch::Commit()
{
    for (std::size_t i = 0; i < items.size(); ++i) {
        Item& item = items[i];
        const auto old = files.Stat(item.target);
        Result<> outcome;
        if (old) {
            item.backup = path::Join(path::Parent(item.target), "~" + std::to_string(i + 1) + ".old");
            outcome = Discard(item.backup);
            if (outcome)
                outcome = files.CopyFile(item.target, item.backup);
        } else if (!IsMissing(old.error())) {
            outcome = std::unexpected{old.error()};
        }
        if (outcome)
            outcome = files.Replace(item.temporary, item.target);
        if (!outcome) {
            Undo();
            return outcome;
        }
        item.placed = true;
    }
    return {};
}

void FileBatch::Undo()
{
    for (Item& item : std::views::reverse(items)) {
        if (!item.placed)
            (void)Discard(item.temporary);
        if (!item.placed && !item.backup.empty())
            (void)Discard(item.backup);
        else if (item.placed && !item.backup.empty())
            (void)files.Replace(item.backup, item.target);
        else if (item.placed)
            (void)Discard(item.target);
    }
    for (const std::string& folder : std::views::reverse(madeFolders))
        (void)files.RemoveFolder(folder);
    items.clear();
    madeFolders.clear();
    deletions.clear();
}

Result<> FileBatch::Finish()
{
    finished = true;
    Result<> first;
    const auto discard = [&](const std::string& path) {
        if (const auto gone = Discard(path); !gone && first)
            first = gone;
    };
    for (const Item& item : items)
        if (!item.backup.empty())
            discard(item.backup);
    std::ranges::for_each(deletions, discard);
    return first;
}

Result<> FileBatch::Discard(const std::string& path)
{
    // A second time for a virus scanner or an indexer, which hold new files open for a moment.
    auto gone = files.DeleteFile(path);
    if (!gone && !IsMissing(gone.error()))
        gone = files.DeleteFile(path);
    return gone || !IsMissing(gone.error()) ? gone : Result<>{};
}

} // namespace profiles
