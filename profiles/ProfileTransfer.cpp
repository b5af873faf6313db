#include "profiles/ProfileTransfer.h"

#include "platform/CommandLine.h"
#include "platform/FileName.h"
#include "platform/Path.h"
#include "platform/Text.h"
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

/// Bytes. Some thousand profiles; a larger file is none of ours.
constexpr std::uint64_t largestImport = 16u << 20;

bool IsImageValue(std::string_view name)
{
    return std::ranges::any_of(AllImages, [&](ImageKind k) { return text::EqualIgnoringCase(name, ValueName(k)); });
}

bool IsPictureFile(std::string_view name)
{
    return std::ranges::any_of(AllImages, [&](ImageKind k) { return text::ContainsIgnoringCase(name, KindWord(k)); });
}

/// What is kept as a profile's picture is called so, and not only in part.
bool IsKeptPicture(std::string_view name)
{
    return std::ranges::any_of(
        AllImages, [&](ImageKind k) { return text::EqualIgnoringCase(path::WithoutLastFour(name), KindWord(k)); });
}

bool IsOnShare(std::string_view path)
{
    constexpr std::string_view separators = "\\/";
    return path.size() > 1 && separators.contains(path[0]) && separators.contains(path[1]);
}

bool HavePictures(const ExportedKeys& keys)
{
    return std::ranges::any_of(keys, [](const ExportedKey& key) {
        return std::ranges::any_of(
            key.values, [](const auto& value) { return !value.second.data.empty() && IsImageValue(value.first); });
    });
}

/// The folders that profiles keep their pictures in, folded.
std::set<std::string> NamedPictureFolders(const ExportedKeys& keys)
{
    std::set<std::string> names;
    for (const ExportedKey& key : keys) {
        if (const auto name = ImageFolderName(key.name))
            names.insert(text::Folded(*name));
        for (const auto& [name, value] : key.values)
            if (IsImageValue(name))
                names.insert(text::Folded(path::Name(path::Parent(value.data))));
    }
    return names;
}

} // namespace

bool ProfileTransfer::PictureFolder::Has(std::string_view file) const
{
    return std::ranges::any_of(files, [&](const auto& name) { return text::EqualIgnoringCase(name, file); });
}

ExportOutcome ProfileTransfer::Export(std::string_view location, std::string_view folderName, const Confirm& confirm)
{
    const app::PatientFiles::Operation whole{files};
    const auto folder = ExportFolder(location, folderName);
    if (!folder)
        return folder.error();
    if (confirm && files.Stat(path::Join(*folder, FileName)) &&
        !confirm(strings.LoadString(str::ReplaceExport) + "\r\n\r\n" + *folder))
        return ExportOutcome::BadName;
    const auto refused = [&](std::uint16_t message) {
        messages.Stop(message);
        return ExportOutcome::Failed;
    };
    LeftOut leftOut;
    const auto keys = ReadProfiles(leftOut);
    if (!keys)
        return refused(str::EnumerationFailed);
    const std::string imagesFolder = images.ImagesFolder();
    if (imagesFolder.empty() && HavePictures(*keys)) // they could not come along
        return refused(FileMessage(error::PathNotFound));
    const auto outOfReach = [&](platform::Error failure, const std::string& about) {
        images.TellFiles(failure, about);
        return ExportOutcome::Failed;
    };
    auto pictures = ListPictures(imagesFolder, NamedPictureFolders(*keys));
    if (!pictures)
        return outOfReach(pictures.error(), imagesFolder);

    unread.clear();
    FileBatch batch{files, system.clock};
    auto done = batch.MakeFolder(*folder);
    if (done)
        batch.Sweep(*folder);
    std::vector<std::string> emptied;
    if (done && !path::Same(*folder, imagesFolder))
        emptied = ReplaceEarlier(batch, *folder, *pictures);
    if (done)
        done = WriteExport(batch, *keys, path::Join(*folder, FileName));
    if (done)
        done = CopyPictures(batch, *pictures, imagesFolder, *folder, leftOut);
    if (done)
        done = batch.Commit();
    if (!done) {
        batch.Undo();
        return outOfReach(done.error(), unread.empty() ? *folder : unread);
    }
    (void)batch.Finish();
    for (const std::string& sub : emptied)
        (void)files.RemoveFolder(sub); // stays when it holds something else
    (void)settings.Save("Options", "ExportProfilePath", location);
    messages.Inform(WithLeftOut(strings.LoadString(str::Exported) + *folder + ".", leftOut));
    return ExportOutcome::Done;
}

std::expected<std::string, ExportOutcome> ProfileTransfer::ExportFolder(std::string_view typedLocation,
                                                                        std::string_view folderName)
{
    const std::string trimmed = text::Trimmed(typedLocation);
    if (trimmed.empty()) {
        messages.Inform(str::SelectExportFolder);
        return std::unexpected{ExportOutcome::BadLocation};
    }
    const std::string location{path::WithoutTrailingSeparator(trimmed)};
    const auto entry = files.Stat(location);
    if (!entry && IsNotThere(entry.error())) {
        messages.Inform(str::ExportFolderMissing);
        return std::unexpected{ExportOutcome::BadLocation};
    }
    if (!entry || !entry->IsFolder()) {
        messages.Inform(strings.LoadString(str::ExportPathUnreadable) + "\r\n" +
                        strings.LoadString(str::RetypeExportPath));
        return std::unexpected{ExportOutcome::BadLocation};
    }
    const std::string name = text::Trimmed(folderName);
    if (name.empty()) { // the location may be the library, or anything else that is no export's
        messages.Inform(str::EnterFolderName);
        return std::unexpected{ExportOutcome::BadName};
    }
    if (const std::string refusal = RefusalOf(name); !refusal.empty()) {
        messages.Stop(refusal);
        return std::unexpected{ExportOutcome::BadName};
    }
    return path::Join(location, name);
}

std::string ProfileTransfer::RefusalOf(std::string_view folderName) const
{
    namespace file_name = platform::file_name;
    if (file_name::HasForbiddenCharacter(folderName) || file_name::HasControlCharacter(folderName))
        return strings.LoadString(str::FolderNameCharacters) + "\r\n\\ / : * ? \" < > |";
    // The system would put the export somewhere else than the name says.
    if (file_name::IsDevice(folderName))
        return text::Replaced(strings.LoadString(str::FolderNameDevice), "%1", folderName);
    return file_name::IsShortened(folderName) ? strings.LoadString(str::FolderNameEnd) : std::string{};
}

Result<ExportedKeys> ProfileTransfer::ReadProfiles(LeftOut& leftOut) const
{
    ExportedKeys keys(1); // an export without profiles is one all the same
    const auto names = system.registry.SubKeys(Hive::CurrentUser, ProfilesKey);
    if (!names)
        return IsNotThere(names.error()) ? Result<ExportedKeys>{keys} : std::unexpected{names.error()};
    if (const auto read = ReadValues(keys.front(), leftOut); !read)
        return std::unexpected{read.error()};
    for (const std::string& name : *names) {
        if (!CanBeWritten(name, system.locale) || keys.size() == LargestNumberOfKeys) {
            leftOut.Add(name);
            continue;
        }
        if (const auto read = ReadValues(keys.emplace_back(name), leftOut); !read)
            return std::unexpected{read.error()};
        const auto deeper = system.registry.SubKeys(Hive::CurrentUser, ProfileKey(name));
        if (!deeper)
            return std::unexpected{deeper.error()};
        for (const std::string& subKey : *deeper)
            leftOut.Add(path::Join(name, subKey));
    }
    return keys;
}

Result<> ProfileTransfer::ReadValues(ExportedKey& key, LeftOut& leftOut) const
{
    const std::string place = ProfileKey(key.name);
    const auto names = system.registry.ValueNames(Hive::CurrentUser, place);
    if (!names)
        return std::unexpected{names.error()};
    for (const std::string& name : *names) {
        const auto value = system.registry.Query(Hive::CurrentUser, place, name);
        if (!value)
            return std::unexpected{value.error()};
        if (CanBeWritten(name, *value, system.locale))
            key.values.emplace_back(name, *value);
        else
            leftOut.Add(path::Join(key.name, name));
    }
    return {};
}

Result<> ProfileTransfer::WriteExport(FileBatch& batch, const ExportedKeys& keys, const std::string& file)
{
    const std::string temporary = batch.NextTemporary(file);
    (void)batch.Discard(temporary);
    RunEditor("/e /a " + Quoted(temporary) + " " + Quoted(FullProfilesKey()));
    const auto produced = files.Read(temporary, largestImport);
    const auto isGood = [&](std::string_view bytes) {
        if (!CheckForValidRegFile(bytes) || !bytes.contains(FullProfilesKey()))
            return false;
        const RegistryText read = ReadRegistryText(bytes, system.locale);
        return read.keys == keys && read.leftOut.IsEmpty();
    };
    if (produced && isGood(*produced)) {
        batch.Adopt(file);
        return {};
    }
    const std::string own = WriteRegistryText(keys, system.locale);
    if (!isGood(own) || own.size() > largestImport) {
        (void)batch.Discard(temporary);
        return std::unexpected{error::GeneralFailure};
    }
    return batch.Write(own, file);
}

/// The pictures that an earlier export has left in the folder and this one does not bring go in the end. Where there is
/// none, the folder and all in it is the user's own. The folders that may be empty then.
std::vector<std::string> ProfileTransfer::ReplaceEarlier(FileBatch& batch, const std::string& folder,
                                                         const PictureFolders& now)
{
    std::vector<std::string> emptied;
    const auto earlier = files.Read(path::Join(folder, FileName), largestImport);
    if (!earlier)
        return emptied;
    const Names names = NamedPictureFolders(ReadRegistryText(*earlier, system.locale).keys);
    for (const PictureFolder& old : ListPictures(folder, names).value_or(PictureFolders{})) {
        const auto same = std::ranges::find_if(
            now, [&](const PictureFolder& sub) { return text::EqualIgnoringCase(sub.name, old.name); });
        const std::string sub = path::Join(folder, old.name);
        for (const std::string& file : old.files)
            if (IsKeptPicture(file) && (same == now.end() || !same->Has(file)))
                batch.DeleteAtEnd(path::Join(sub, file));
        if (same == now.end())
            emptied.push_back(sub);
    }
    return emptied;
}

/// The wanted folders alone are listed: what else lies there may be anything, and may be closed to us.
Result<ProfileTransfer::PictureFolders> ProfileTransfer::ListPictures(const std::string& folder,
                                                                      const Names& wanted) const
{
    PictureFolders found;
    if (!path::IsAbsolute(folder))
        return found;
    const auto entries = files.List(folder);
    if (!entries)
        return IsNotThere(entries.error()) ? Result<PictureFolders>{found} : std::unexpected{entries.error()};
    for (const FileEntry& entry : *entries) {
        if (!entry.IsFolder() || entry.IsLink() || !wanted.contains(text::Folded(entry.name)))
            continue;
        const auto listed = files.List(path::Join(folder, entry.name));
        if (!listed)
            return std::unexpected{listed.error()};
        PictureFolder& sub = found.emplace_back(entry.name);
        for (const FileEntry& file : *listed)
            if (!file.IsFolder() && !file.IsLink() && !FileBatch::IsTemporary(file.name) &&
                !text::EqualIgnoringCase(file.name, FileName)) // an export may lie among the pictures
                sub.files.push_back(file.name);
    }
    return found;
}

/// Files that cannot go are taken off the list. A picture that cannot be read fails, unless it is too large to be one.
Result<> ProfileTransfer::CopyPictures(FileBatch& batch, PictureFolders& folders, const std::string& from,
                                       const std::string& to, LeftOut& leftOut)
{
    for (PictureFolder& folder : folders) {
        const std::string target = path::Join(to, folder.name);
        if (const auto made = batch.MakeFolder(target); !made)
            return made;
        batch.Sweep(target);
        std::vector<std::string> copied;
        for (const std::string& file : folder.files) {
            const auto bytes = batch.Read(path::Join(path::Join(from, folder.name), file));
            if (!bytes && bytes.error() != error::FileTooLarge && IsPictureFile(file)) {
                unread = path::Join(path::Join(from, folder.name), file);
                return std::unexpected{bytes.error()};
            }
            if (!bytes) {
                leftOut.Add(path::Join(folder.name, file));
                continue;
            }
            if (const auto written = batch.Write(*bytes, path::Join(target, file)); !written)
                return written;
            copied.push_back(file);
        }
        folder.files = std::move(copied);
    }
    return {};
}

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
    auto pictures = ListPictures(source, NamedPictureFolders(file.keys));
    const auto outOfReach = [&](platform::Error failure, const std::string& about) {
        images.TellFiles(failure, about);
        return false;
    };
    if (!pictures)
        return outOfReach(pictures.error(), source);
    const std::string imagesFolder = images.ImagesFolder();
    unread.clear();
    FileBatch batch{files, system.clock};
    Result<> copied;
    if (!pictures->empty())
        copied = path::IsAbsolute(imagesFolder) ? batch.MakeFolderAndAbove(imagesFolder)
                                                : std::unexpected{error::PathNotFound};
    if (copied)
        copied = CopyPictures(batch, *pictures, source, imagesFolder, file.leftOut);
    if (copied)
        copied = batch.Commit();
    if (!copied)
        return outOfReach(copied.error(), unread.empty() ? imagesFolder : unread);
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
    auto bytes = files.Read(path::Join(folder, file->name), largestImport);
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

bool ProfileTransfer::CheckForValidRegFile(std::string_view bytes)
{
    return bytes.contains("REGEDIT4");
}

/// A key of another name would be taken for another profile, or for none, wherever profiles are chosen from a list.
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

/// Image values whose picture came along point at the place that it has here. Those that would make this machine
/// contact another one, whenever the profile is looked at, stay out unless they are the user's own.
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
            if (value.type == ValueType::String && std::ranges::any_of(came, [&](const PictureFolder& sub) {
                    return text::EqualIgnoringCase(sub.name, folder) && sub.Has(picture);
                })) {
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

/// `fileForEditor` is "" when the registry editor is not to be asked.
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

void ProfileTransfer::RunEditor(const std::string& arguments)
{
    const auto windows = system.shell.FolderPath(platform::KnownFolder::Windows);
    if (!windows)
        return;
    const std::string editor = path::Join(*windows, "regedit.exe");
    (void)files.Change(editor, [&shell = system.shell, editor, line = Quoted(editor) + " " + arguments,
                                time = editorTime](platform::FileSystem&) {
        return shell.RunAndWait(editor, line, platform::WindowStyle::MinimizedFocus, time);
    });
}

void ProfileTransfer::TellFolder(std::uint16_t reason)
{
    std::string message = strings.LoadString(reason);
    if (!message.ends_with(' ')) // one of the two texts brings its blank along
        message += ' ';
    messages.Inform(message + strings.LoadString(str::SelectCorrectFolder));
}

std::string ProfileTransfer::WithLeftOut(std::string message, const LeftOut& leftOut) const
{
    if (leftOut.IsEmpty())
        return message;
    return message + "\r\n\r\n" + strings.LoadString(str::LeftOut) + leftOut.Text();
}

} // namespace profiles
