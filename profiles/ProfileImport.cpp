#include "platform/CommandLine.h"
#include "platform/Path.h"
#include "platform/Text.h"
#include "profiles/ProfileTransfer.h"
#include "profiles/RegistryMerge.h"
#include "profiles/StringId.h"

#include <algorithm>

namespace profiles {

namespace error = platform::error;
namespace path = platform::path;
using platform::command_line::Quoted;
namespace text = platform::text;
using platform::FileEntry;
using platform::Hive;
using platform::RegistryValue;
using platform::Result;
using platform::ValueType;

namespace {

bool IsOnShare(std::string_view path)
{
    constexpr std::string_view separators = "\\/";
    return path.size() > 1 && separators.contains(path[0]) && separators.contains(path[1]);
}

} // namespace

bool ProfileTransfer::Import(std::string_view chosen, const Confirm& confirm)
{
    const app::PatientFiles::Operation whole{files};
    const std::string folder = ExportIn(chosen);
    const auto refused = [&](std::uint16_t message) {
        messages.Stop(message);
        return false;
    };
    const auto bytes = ReadImport(folder);
    if (!bytes)
        return false;
    RegistryText file = ReadRegistryText(*bytes, system.locale);
    KeepPossibleNames(file);
    if (file.keys.empty())
        return refused(str::NoProfilesInFile);
    if (confirm && !MayOverwrite(file.keys, confirm))
        return false;
    // Two readers may take an odd line for two different things: the editor gets no file but what would be written
    // here.
    const bool isPlain = IsPlainRegistryText(*bytes, file.keys, system.locale);

    const std::string source{path::WithoutTrailingSeparator(folder)};
    auto pictures = PictureFolders::List(files, source, PictureFolders::NamesFor(file.keys));
    const auto outOfReach = [&](platform::Error failure, const std::string& about) {
        images.TellFiles(failure, about);
        return false;
    };
    if (!pictures)
        return outOfReach(pictures.error(), source);
    const std::string imagesFolder = images.ImagesFolder();
    FileBatch batch{files, system.clock};
    Result<> copied;
    if (!pictures->Folders().empty())
        copied = path::IsAbsolute(imagesFolder) ? batch.MakeFolderAndAbove(imagesFolder)
                                                : std::unexpected{error::PathNotFound};
    if (copied)
        copied = pictures->Copy(batch, imagesFolder, file.leftOut);
    if (copied)
        copied = batch.Commit();
    if (!copied)
        return outOfReach(copied.error(), pictures->Unread().empty() ? imagesFolder : pictures->Unread());
    PlacePictures(file, *pictures, imagesFolder);
    if (!ImportProfiles(file.keys, isPlain && file.leftOut.IsEmpty() ? *bytes : std::string_view{})) {
        batch.Undo();
        return refused(str::SetValueFailed);
    }
    (void)batch.Finish();
    messages.Inform(WithLeftOut(strings.LoadString(str::Imported), file.leftOut));
    return true;
}

std::string ProfileTransfer::ExportIn(std::string_view folder) const
{
    const auto holdsExport = [this](const std::string& place) {
        const auto entry = files.Stat(path::Join(place, FileName));
        return entry && !entry->IsFolder();
    };
    const std::string given{folder};
    if (holdsExport(given))
        return given;
    std::string found;
    for (const FileEntry& entry : files.List(folder).value_or(std::vector<FileEntry>{})) {
        const std::string sub = path::Join(folder, entry.name);
        if (!entry.IsFolder() || entry.IsLink() || !holdsExport(sub))
            continue;
        if (!found.empty()) // which of them is for the user to say
            return given;
        found = sub;
    }
    return found.empty() ? given : found;
}

bool ProfileTransfer::MayOverwrite(const ExportedKeys& keys, const Confirm& confirm) const
{
    LeftOut overwritten;
    for (const ExportedKey& key : keys)
        if (!key.name.empty() && system.registry.ValueNames(Hive::CurrentUser, ProfileKey(key.name)))
            overwritten.Add(key.name);
    return overwritten.IsEmpty() || confirm(strings.LoadString(str::OverwriteProfiles) + "\r\n" + overwritten.Text());
}

std::optional<std::string> ProfileTransfer::ReadImport(std::string_view folder)
{
    const auto entries = files.List(folder);
    if (!entries) {
        TellFolder(str::NoProfileData);
        return std::nullopt;
    }
    const auto file = std::ranges::find_if(*entries, [](const FileEntry& entry) {
        return !entry.IsFolder() && text::EqualIgnoringCase(entry.name, FileName);
    });
    if (file == entries->end()) {
        TellFolder(str::NoProfilesInFolder);
        return std::nullopt;
    }
    auto bytes = files.Read(path::Join(folder, file->name), LargestExport);
    if (!bytes && bytes.error() != error::FileTooLarge)
        TellFolder(str::NoProfileData);
    else if (!bytes || !CheckForValidRegFile(*bytes))
        messages.Stop(str::InvalidRegistryFile);
    else if (!bytes->contains(FullProfilesKey()))
        messages.Stop(str::NoProfilesInFile);
    else
        return std::move(*bytes);
    return std::nullopt;
}

void ProfileTransfer::KeepPossibleNames(RegistryText& file) const
{
    const std::string blankProfile = strings.LoadString(str::BlankProfile);
    std::erase_if(file.keys, [&](const ExportedKey& key) {
        const bool isPossible =
            key.name.empty() || (ImageFolderName(key.name) && key.name == text::Trimmed(key.name) &&
                                 !key.name.contains(DefaultSuffix) && !text::EqualIgnoringCase(key.name, blankProfile));
        if (!isPossible)
            file.leftOut.Add(key.name);
        return !isPossible;
    });
}

void ProfileTransfer::PlacePictures(RegistryText& file, const PictureFolders& came,
                                    const std::string& imagesFolder) const
{
    for (ExportedKey& key : file.keys)
        std::erase_if(key.values, [&](auto& entry) {
            auto& [name, value] = entry;
            if (!IsImageValue(name))
                return false;
            const std::string folder{path::Name(path::Parent(value.data))};
            const std::string picture{path::Name(value.data)};
            if (value.type == ValueType::String && came.Has(folder, picture)) {
                value.data = path::Join(path::Join(imagesFolder, folder), picture);
                return false;
            }
            const bool isForeign =
                IsOnShare(value.data) &&
                system.registry.Query(Hive::CurrentUser, ProfileKey(key.name), name) != Result<RegistryValue>{value};
            if (isForeign)
                file.leftOut.Add(value.data);
            return isForeign;
        });
}

Result<> ProfileTransfer::ImportProfiles(const ExportedKeys& wanted, std::string_view fileForEditor)
{
    RegistryMerge merge{system.registry, access};
    if (const auto prepared = merge.Prepare(wanted); !prepared)
        return prepared;
    const auto temporary = system.shell.FolderPath(platform::KnownFolder::Temporary);
    if (!fileForEditor.empty() && temporary) {
        // A file of our own: the one that was checked may be changed by others meanwhile.
        FileBatch batch{files, system.clock};
        const std::string file = batch.NextTemporary(path::Join(*temporary, FileName));
        if (batch.Write(fileForEditor, path::Join(*temporary, FileName)))
            RunEditor("/i /s " + Quoted(file));
        batch.Undo();
    }
    const auto merged = merge.Complete(wanted);
    if (!merged)
        merge.Undo();
    return merged;
}

void ProfileTransfer::TellFolder(std::uint16_t reason)
{
    std::string message = strings.LoadString(reason);
    if (!message.ends_with(' ')) // one of the two texts brings its blank along
        message += ' ';
    messages.Inform(message + strings.LoadString(str::SelectCorrectFolder));
}

} // namespace profiles
