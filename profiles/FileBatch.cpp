#include "profiles/FileBatch.h"

#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <ranges>

namespace profiles {

namespace error = platform::error;
namespace path = platform::path;
using platform::Result;

namespace {

constexpr std::string_view temporaryStart = "~TSProfile", newEnding = ".new", oldEnding = ".old";

std::string TemporaryName(std::size_t number, std::string_view ending)
{
    return std::string{temporaryStart}.append(std::to_string(number)).append(ending);
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

Result<> FileBatch::MakeFolderAndAbove(std::string_view folder)
{
    const auto made = MakeFolder(folder);
    const std::string above = path::Parent(folder);
    if (made || made.error() != error::PathNotFound || path::Same(above, folder) ||
        path::Same(above, path::Root(folder)))
        return made;
    const auto parent = MakeFolderAndAbove(above);
    return parent ? MakeFolder(folder) : parent;
}

void FileBatch::Sweep(std::string_view folder)
{
    for (const platform::FileEntry& entry : files.List(folder).value_or(std::vector<platform::FileEntry>{})) {
        const std::string file = path::Join(folder, entry.name);
        const auto isOurs = [&](const Item& item) { return path::Same(item.temporary, file); };
        if (!entry.IsFolder() && IsTemporary(entry.name) && std::ranges::none_of(items, isOurs))
            (void)files.DeleteFile(file);
    }
}

std::string FileBatch::NextTemporary(std::string_view target) const
{
    return path::Join(path::Parent(target), TemporaryName(items.size() + 1, newEnding));
}

void FileBatch::Adopt(std::string_view target)
{
    items.push_back({.target = std::string{target}, .temporary = NextTemporary(target)});
}

bool FileBatch::IsTemporary(std::string_view name)
{
    return platform::text::EqualIgnoringCase(name.substr(0, temporaryStart.size()), temporaryStart) &&
           (platform::text::EndsWithIgnoringCase(name, newEnding) ||
            platform::text::EndsWithIgnoringCase(name, oldEnding));
}

/// Scanners, indexers and whoever shows a picture hold files open for a moment. `alsoHeld` is what the system says of
/// that besides.
template <class Act>
auto FileBatch::Patiently(const Act& act, platform::Error alsoHeld)
{
    constexpr std::uint32_t step = 50, most = 1000; // milliseconds
    auto outcome = act();
    const auto isHeld = [&] { return outcome.error() == error::SharingViolation || outcome.error() == alsoHeld; };
    for (; !outcome && isHeld() && waited < most; outcome = act()) {
        (void)files.Ask([&world = clock](platform::FileSystem&) -> Result<> {
            world.Sleep(step);
            return {};
        });
        waited += step;
    }
    return outcome;
}

Result<std::string> FileBatch::Read(std::string_view file)
{
    return Patiently([&] { return files.Read(file, LargestFile); });
}

Result<> FileBatch::Copy(std::string_view source, std::string_view target)
{
    // Not the system's copy, which takes the write protection of a file from a compact disc along.
    const auto bytes = Read(source);
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
    const auto stored = Patiently([&] { return files.Read(temporary, bytes.size()); });
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
        if (const auto placed = Place(items[i], i + 1); !placed) {
            Undo();
            return placed;
        }
        items[i].placed = true;
    }
    return {};
}

Result<> FileBatch::Place(Item& item, std::size_t number)
{
    const auto old = files.Stat(item.target);
    if (!old && !IsNotThere(old.error()))
        return std::unexpected{old.error()};
    if (old) {
        if ((old->attributes & platform::attribute::ReadOnly) != 0)
            if (const auto writable = files.MakeWritable(item.target); !writable)
                return writable;
        item.backup = path::Join(path::Parent(item.target), TemporaryName(number, oldEnding));
        if (const auto cleared = Discard(item.backup); !cleared)
            return cleared;
        if (const auto kept = Patiently([&] { return files.CopyFile(item.target, item.backup); }); !kept)
            return kept;
    }
    return PatientlyReplace(item.temporary, item.target);
}

Result<> FileBatch::PatientlyReplace(const std::string& from, const std::string& to)
{
    return Patiently([&] { return files.Replace(from, to); }, error::AccessDenied);
}

void FileBatch::Undo()
{
    waited = 0; // what was there before is waited for anew, however long it took to get here
    for (Item& item : std::views::reverse(items)) {
        if (!item.placed)
            (void)Discard(item.temporary);
        if (!item.placed && !item.backup.empty())
            (void)Discard(item.backup);
        else if (item.placed && !item.backup.empty())
            (void)PatientlyReplace(item.backup, item.target);
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
    auto gone = Patiently([&] { return files.DeleteFile(path); });
    if (!gone && !IsNotThere(gone.error())) { // write-protected, or something passing
        (void)files.MakeWritable(path);
        gone = files.DeleteFile(path);
    }
    return gone || !IsNotThere(gone.error()) ? gone : Result<>{};
}

} // namespace profiles
