#include "profiles/ProfileImages.h"

#include "app/base/StringTable.h"
#include "platform/FileName.h"
#include "platform/Path.h"
#include "platform/Text.h"
#include "profiles/StringId.h"

#include <algorithm>
#include <utility>

namespace profiles {

namespace error = platform::error;
namespace path = platform::path;
namespace file_name = platform::file_name;
namespace text = platform::text;
using platform::Result;

std::optional<std::string> ImageFolderName(std::string_view profile)
{
    if (profile.empty() || file_name::HasForbiddenCharacter(profile) || file_name::HasControlCharacter(profile))
        return std::nullopt;
    std::string_view stem = profile;
    while (stem.ends_with('_'))
        stem.remove_suffix(1);
    return std::string{profile} + (file_name::IsReserved(stem) ? "_" : "");
}

std::uint16_t FileMessage(platform::Error failure)
{
    return platform::IsNotThere(failure) || failure == error::InvalidName ? str::InvalidPath : str::PathFileAccessError;
}

std::string ProfileImages::ImagesFolder() const
{
    const auto stored = settings.Read("Options", "Profile Images Path");
    if (!stored) // where they were a moment ago, so that no picture is left there for want of an answer
        return lastFolder;
    if (!stored->empty())
        return lastFolder = path::WithoutTrailingSeparator(*stored);
    // Nobody has set one: pictures must not be refused for that. The name is the same in every language, so that a user
    // who changes it finds his pictures again.
    const auto documents = shell.FolderPath(platform::KnownFolder::Personal);
    if (documents && !documents->empty())
        lastFolder = path::Join(*documents, app::StringTable::Own(str::ProfileImagesTitle));
    return lastFolder;
}

std::string ProfileImages::FolderOf(std::string_view profile) const
{
    const auto name = ImageFolderName(profile);
    const std::string folder = ImagesFolder();
    return name && path::IsAbsolute(folder) ? path::Join(folder, *name) : std::string{};
}

std::string ProfileImages::EndingOf(std::string_view source) const
{
    std::string ending{path::LastFour(path::Name(source))};
    if (ending.starts_with('.') && ending.find_last_of('.') == 0)
        return ending;
    // Of "photo.jpeg" the last four would make a file without an ending, which no program opens.
    const auto start = files.Ask([file = std::string{source}](platform::FileSystem& disk) -> Result<std::string> {
        std::string bytes(4, '\0');
        const auto opened = disk.Open(file);
        if (!opened)
            return std::unexpected{opened.error()};
        bytes.resize((*opened)->Read(0, bytes));
        return bytes;
    });
    const std::string magic = start.value_or(std::string{});
    if (magic.starts_with("\xFF\xD8\xFF"))
        return ".jpg";
    return magic == "GIF8" ? ".gif" : "";
}

std::string ProfileImages::TargetOf(std::string_view profile, ImageKind kind, std::string_view source) const
{
    const std::string folder = FolderOf(profile);
    if (folder.empty())
        return folder;
    std::string ending = EndingOf(source);
    if (ending.empty()) // a copy of earlier times that cannot be read, or of another kind
        ending = path::LastFour(path::Name(source));
    return path::Join(folder, std::string{KindWord(kind)} + ending);
}

Result<std::string> ProfileImages::GetExistingFile(std::string_view profile, ImageKind kind) const
{
    const std::string folder = FolderOf(profile);
    if (folder.empty())
        return "";
    const auto entries = files.List(folder);
    if (!entries && !platform::IsNotThere(entries.error()))
        return std::unexpected{entries.error()};
    for (const platform::FileEntry& entry : entries.value_or(std::vector<platform::FileEntry>{}))
        if (!entry.IsFolder() && text::ContainsIgnoringCase(entry.name, KindWord(kind)))
            return path::Join(folder, entry.name);
    return "";
}

bool ProfileImages::IsKeptAs(std::string_view profile, ImageKind kind, std::string_view file) const
{
    const std::string folder = FolderOf(profile);
    return !folder.empty() && path::Same(path::Parent(file), folder) &&
           text::EqualIgnoringCase(path::WithoutLastFour(path::Name(file)), KindWord(kind));
}

Result<bool> ProfileImages::IsThere(std::string_view file) const
{
    const auto entry = files.Stat(file);
    if (entry)
        return !entry->IsFolder();
    const bool isKnown = platform::IsNotThere(entry.error()) || entry.error() == error::InvalidName;
    return isKnown ? Result<bool>{false} : std::unexpected{entry.error()};
}

Result<bool> ProfileImages::IsThereForSure(std::string_view file) const
{
    const auto isThere = IsThere(file);
    const std::string root = path::Root(file);
    if (isThere && !*isThere && !root.empty() && !files.Stat(root))
        return std::unexpected{error::PathNotFound};
    return isThere;
}

bool ProfileImages::IsOurs(std::string_view file) const
{
    const std::string folder = ImagesFolder();
    return !folder.empty() && path::Same(path::Parent(path::Parent(file)), folder);
}

bool ProfileImages::MakeFolders(std::string_view profile)
{
    const app::PatientFiles::Operation whole{files};
    FileBatch batch{files, clock};
    const auto made = MakeFolders(batch, profile);
    if (made)
        (void)batch.Finish();
    else
        TellFiles(made.error(), FolderToTell(profile));
    return made.has_value();
}

Result<> ProfileImages::MakeFolders(FileBatch& batch, std::string_view profile) const
{
    const std::string folder = FolderOf(profile);
    if (folder.empty())
        return std::unexpected{error::PathNotFound};
    if (const auto made = batch.MakeFolderAndAbove(ImagesFolder()); !made)
        return made;
    auto made = batch.MakeFolder(folder);
    if (made)
        batch.Sweep(folder);
    return made;
}

bool ProfileImages::Apply(std::string_view profile, const Changes& changes)
{
    const app::PatientFiles::Operation whole{files};
    FileBatch batch{files, clock};
    const auto refused = [&](platform::Error failure, const std::string& file) {
        batch.Undo();
        TellFiles(failure, file);
        return false;
    };
    const auto before = profiles.Current.images;
    const bool setsAny = std::ranges::any_of(changes, [](const auto& change) { return change && !change->empty(); });
    if (setsAny)
        if (const auto made = MakeFolders(batch, profile); !made)
            return refused(made.error(), FolderToTell(profile));
    for (const ImageKind kind : AllImages) {
        const auto& change = changes[static_cast<std::size_t>(kind)];
        if (!change)
            continue;
        std::string target;
        if (!change->empty()) {
            target = TargetOf(profile, kind, *change);
            if (const auto staged = batch.Copy(*change, target); !staged) {
                profiles.Current.images = before;
                return refused(staged.error(), *change);
            }
        }
        const auto existing = GetExistingFile(profile, kind);
        if (!existing) {
            profiles.Current.images = before;
            return refused(existing.error(), FolderToTell(profile));
        }
        if (!existing->empty() && !path::Same(*existing, target))
            batch.DeleteAtEnd(*existing);
        // An import may have left another one beside it.
        if (const std::string& stored = before[static_cast<std::size_t>(kind)];
            !path::Same(stored, target) && IsKeptAs(profile, kind, stored))
            batch.DeleteAtEnd(stored);
        profiles.Current[kind] = std::move(target);
        profiles.Current.unreadImages[static_cast<std::size_t>(kind)] = false;
    }
    if (const auto placed = batch.Commit(); !placed) {
        profiles.Current.images = before;
        return refused(placed.error(), FolderToTell(profile));
    }
    if (!SavePathToReg(profile, before)) {
        batch.Undo();
        return false;
    }
    if (const auto finished = batch.Finish(); !finished)
        TellFiles(finished.error(), FolderToTell(profile));
    return true;
}

std::string ProfileImages::FolderToTell(std::string_view profile) const
{
    std::string folder = FolderOf(profile);
    return folder.empty() ? ImagesFolder() : folder;
}

void ProfileImages::TellFiles(platform::Error failure, const std::string& about)
{
    messages.Stop(FileMessage(failure), about);
}

bool ProfileImages::SavePathToReg(std::string_view profile, const Paths& before)
{
    if (profiles.SaveProfileImages(profile))
        return true;
    // Some of the three values may be written already.
    const Paths wanted = std::exchange(profiles.Current.images, before);
    for (const ImageKind kind : AllImages)
        if (wanted[static_cast<std::size_t>(kind)] != profiles.Current[kind])
            (void)profiles.RestoreImage(profile, kind);
    return false;
}

bool ProfileImages::IsOwnFolder(const std::string& folder) const
{
    const auto entry = files.Stat(folder);
    return entry && entry->IsFolder() && !entry->IsLink() && text::EqualIgnoringCase(entry->name, path::Name(folder));
}

bool ProfileImages::DeleteFolder(std::string_view profile)
{
    const app::PatientFiles::Operation whole{files};
    const std::string folder = FolderOf(profile);
    if (folder.empty())
        return true;
    const auto top = files.Stat(folder);
    if (!top && platform::IsNotThere(top.error()))
        return true;
    bool gone = top && top->IsFolder();
    if (gone && !text::EqualIgnoringCase(top->name, path::Name(folder)))
        return true; // a second name of somebody else's folder
    if (gone && !top->IsLink()) {
        const auto entries = files.List(folder);
        gone = entries.has_value() && IsOwnFolder(folder); // nobody put a link there meanwhile
        FileBatch batch{files, clock};
        for (const platform::FileEntry& entry : entries.value_or(std::vector<platform::FileEntry>{})) {
            const std::string file = path::Join(folder, entry.name);
            if (!gone)
                break;
            if (entry.IsLink() && entry.IsFolder())
                gone = files.RemoveFolder(file).has_value();
            else if (!entry.IsFolder())
                gone = batch.Discard(file).has_value();
        }
    }
    gone = gone && files.RemoveFolder(folder).has_value();
    if (!gone)
        TellFiles(error::AccessDenied, folder);
    return gone;
}

} // namespace profiles
