#include "profiles/ProfileTransfer.h"

#include "platform/Path.h"
#include "platform/Text.h"
#include "profiles/StringId.h"

#include <algorithm>
#include <functional>
#include <ranges>
#include <set>

namespace profiles {

namespace error = platform::error;
namespace path = platform::path;
namespace text = platform::text;
using platform::FileEntry;
using platform::Hive;
using platform::Registry;
using platform::RegistryValue;
using platform::Result;

namespace {

/// Bytes. Some thousand profiles; a larger file is none of ours.
constexpr std::uint64_t largestImport = 16u << 20;
constexpr int deepestKey = 8;
constexpr std::string_view invalidInFolderNames = "\\/:*?\"<>|";

std::string KeyOf(std::string_view name)
{
    return path::Join(ProfilesKey, name);
}

bool IsMissing(platform::Error failure)
{
    return failure == error::FileNotFound || failure == error::PathNotFound;
}

/// Reads a key with everything below it into `keys`.
Result<> ReadKeys(Registry& registry, const std::string& name, int depth, ExportedKeys& keys)
{
    const std::string key = KeyOf(name);
    const auto values = registry.ValueNames(Hive::CurrentUser, key);
    if (!values)
        return name.empty() && IsMissing(values.error()) ? Result<>{} : std::unexpected{values.error()};
    ExportedKey read{name, {}};
    for (const std::string& valueName : *values) {
        const auto value = registry.Query(Hive::CurrentUser, key, valueName);
        if (!value)
            return std::unexpected{value.error()};
        read.values.emplace_back(valueName, *value);
    }
    keys.push_back(std::move(read));
    const auto subKeys = registry.SubKeys(Hive::CurrentUser, key);
    if (!subKeys)
        return std::unexpected{subKeys.error()};
    if (depth == 0 && !subKeys->empty())
        return std::unexpected{error::GeneralFailure};
    for (const std::string& subKey : *subKeys)
        if (const auto below = ReadKeys(registry, path::Join(name, subKey), depth - 1, keys); !below)
            return below;
    return {};
}

/// Image values whose picture came along in the export point at the place that it gets here.
void PointImagesTo(ExportedKeys& keys, const std::string& imagesFolder,
                   const std::function<bool(std::string_view folder, std::string_view file)>& cameAlong)
{
    for (ExportedKey& key : keys)
        for (auto& [name, value] : key.values)
            for (const ImageKind kind : AllImages) {
                const std::string folder{path::Name(path::Parent(value.data))};
                const std::string file{path::Name(value.data)};
                if (text::EqualIgnoringCase(name, ValueName(kind)) && value.type == platform::ValueType::String &&
                    cameAlong(folder, file))
                    value.data = path::Join(path::Join(imagesFolder, folder), file);
            }
}

bool HavePictures(const ExportedKeys& keys)
{
    return std::ranges::any_of(keys, [](const ExportedKey& key) {
        return std::ranges::any_of(key.values, [](const auto& value) {
            return !value.second.data.empty() && std::ranges::any_of(AllImages, [&](ImageKind kind) {
                return text::EqualIgnoringCase(value.first, ValueName(kind));
            });
        });
    });
}

/// The folders that the profiles of an import keep their pictures in, folded.
std::set<std::string> NamedPictureFolders(const ExportedKeys& keys)
{
    std::set<std::string> names;
    for (const ExportedKey& key : keys) {
        if (const auto name = ImageFolderName(key.name))
            names.insert(text::Folded(*name));
        for (const auto& [name, value] : key.values)
            for (const ImageKind kind : AllImages)
                if (text::EqualIgnoringCase(name, ValueName(kind)))
                    names.insert(text::Folded(path::Name(path::Parent(value.data))));
    }
    return names;
}

} // namespace

ExportOutcome ProfileTransfer::Export(std::string_view location, std::string_view folderName)
{
    const ui::Hourglass hourglass{program.toolkit};
    const auto folder = ExportFolder(location, folderName);
    if (!folder)
        return folder.error();
    const auto refused = [&](platform::Error failure) {
        program.messages.Stop(FileMessage(failure));
        return ExportOutcome::Failed;
    };
    const auto keys = ReadProfiles();
    if (!keys) {
        program.messages.Stop(str::EnumerationFailed);
        return ExportOutcome::Failed;
    }
    const std::string imagesFolder = images.ImagesFolder();
    if (imagesFolder.empty() && HavePictures(*keys)) // they could not come along
        return refused(error::PathNotFound);
    auto pictures = PictureFolders(imagesFolder);
    if (!pictures)
        return refused(pictures.error());
    std::erase_if(*pictures, [&](const PictureFolder& sub) { // the export may lie among the pictures
        return path::Same(path::Join(imagesFolder, sub.name), *folder);
    });

    FileBatch batch{program.platform.files};
    if (const auto made = batch.MakeFolder(*folder); !made)
        return refused(made.error());
    if (const auto written = WriteExport(batch, *keys, path::Join(*folder, FileName)); !written)
        return refused(written.error());
    if (const auto copied = CopyPictures(batch, *pictures, imagesFolder, *folder); !copied)
        return refused(copied.error());
    if (const auto placed = batch.Commit(); !placed)
        return refused(placed.error());
    (void)batch.Finish();
    (void)program.settings.Save("Options", "ExportProfilePath", location);
    program.messages.Inform(program.Text(str::Exported) + *folder + ".");
    return ExportOutcome::Done;
}

std::expected<std::string, ExportOutcome> ProfileTransfer::ExportFolder(std::string_view typedLocation,
                                                                        std::string_view folderName)
{
    const std::string trimmed = text::Trimmed(typedLocation);
    if (trimmed.empty()) {
        program.messages.Inform(str::SelectExportFolder);
        return std::unexpected{ExportOutcome::BadLocation};
    }
    const std::string location{path::WithoutTrailingSeparator(trimmed)};
    const auto entry = program.platform.files.Stat(location);
    if (!entry && IsMissing(entry.error())) {
        program.messages.Inform(str::ExportFolderMissing);
        return std::unexpected{ExportOutcome::BadLocation};
    }
    if (!entry || !entry->IsFolder()) {
        program.messages.Inform(program.Text(str::ExportPathUnreadable) + "\r\n" + program.Text(str::RetypeExportPath));
        return std::unexpected{ExportOutcome::BadLocation};
    }
    // A name that the system changes or keeps for itself would put the export somewhere else than it says.
    const std::string name = text::Trimmed(folderName);
    if (name.find_first_of(invalidInFolderNames) != std::string::npos ||
        (!name.empty() && ImageFolderName(name) != name)) {
        program.messages.Stop(program.Text(str::FolderNameCharacters) + "\r\n\\ / : * ? \" < > |");
        return std::unexpected{ExportOutcome::BadName};
    }
    return name.empty() ? location : path::Join(location, name);
}

Result<ExportedKeys> ProfileTransfer::ReadProfiles() const
{
    ExportedKeys keys;
    if (const auto read = ReadKeys(program.platform.registry, "", deepestKey, keys); !read)
        return std::unexpected{read.error()};
    if (keys.empty())
        keys.emplace_back(); // an export without profiles is one all the same
    return keys;
}

Result<> ProfileTransfer::WriteExport(FileBatch& batch, const ExportedKeys& keys, const std::string& file)
{
    platform::FileSystem& files = program.platform.files;
    const std::string temporary = batch.NextTemporary(file);
    (void)files.DeleteFile(temporary); // what a program that died has left
    RunEditor("/e /a \"" + temporary + "\" \"" + FullProfilesKey() + "\"");
    const auto produced = files.Read(temporary, largestImport);
    const auto isGood = [&](std::string_view bytes) {
        return bytes.contains("REGEDIT4") && bytes.contains(FullProfilesKey()) &&
               ReadRegistryText(bytes, program.platform.locale) == keys;
    };
    if (produced && isGood(*produced)) {
        batch.Adopt(file);
        return {};
    }
    const std::string own = WriteRegistryText(keys, program.platform.locale);
    if (!isGood(own) || own.size() > largestImport) {
        (void)files.DeleteFile(temporary);
        return std::unexpected{error::GeneralFailure};
    }
    return batch.Write(own, file);
}

Result<std::vector<ProfileTransfer::PictureFolder>> ProfileTransfer::PictureFolders(const std::string& folder) const
{
    std::vector<PictureFolder> found;
    if (!path::IsAbsolute(folder))
        return found;
    const auto entries = program.platform.files.List(folder);
    if (!entries)
        return IsMissing(entries.error()) ? Result<std::vector<PictureFolder>>{found}
                                          : std::unexpected{entries.error()};
    for (const FileEntry& entry : *entries) {
        if (!entry.IsFolder() || entry.IsLink())
            continue;
        const auto files = program.platform.files.List(path::Join(folder, entry.name));
        if (!files)
            return std::unexpected{files.error()};
        PictureFolder& sub = found.emplace_back(entry.name);
        for (const FileEntry& file : *files)
            if (!file.IsFolder())
                sub.files.push_back(file.name);
    }
    return found;
}

Result<> ProfileTransfer::CopyPictures(FileBatch& batch, const std::vector<PictureFolder>& folders,
                                       const std::string& from, const std::string& to)
{
    for (const PictureFolder& folder : folders) {
        const std::string target = path::Join(to, folder.name);
        if (const auto made = batch.MakeFolder(target); !made)
            return made;
        for (const std::string& file : folder.files)
            if (const auto copied =
                    batch.Copy(path::Join(path::Join(from, folder.name), file), path::Join(target, file));
                !copied)
                return copied;
    }
    return {};
}

bool ProfileTransfer::Import(std::string_view folder)
{
    const ui::Hourglass hourglass{program.toolkit};
    const auto bytes = ReadImport(folder);
    if (!bytes)
        return false;
    ExportedKeys keys = ReadRegistryText(*bytes, program.platform.locale);
    if (keys.empty()) {
        program.messages.Stop(str::NoProfilesInFile);
        return false;
    }
    // Two readers may take an odd line for two different things: the editor gets no file but what would be written
    // here.
    const bool isClean = IsPlainRegistryText(*bytes, keys, program.platform.locale);
    const std::string source{path::WithoutTrailingSeparator(folder)};
    const auto refused = [&](std::uint16_t message) {
        program.messages.Stop(message);
        return false;
    };

    auto pictures = PictureFolders(source);
    if (!pictures)
        return refused(FileMessage(pictures.error()));
    const auto named = NamedPictureFolders(keys);
    std::erase_if(*pictures, [&](const PictureFolder& sub) { return !named.contains(text::Folded(sub.name)); });
    const std::string imagesFolder = images.ImagesFolder();
    PointImagesTo(keys, imagesFolder, [&](std::string_view sub, std::string_view file) {
        return std::ranges::any_of(*pictures, [&](const PictureFolder& f) {
            return text::EqualIgnoringCase(f.name, sub) &&
                   std::ranges::any_of(f.files, [&](const auto& name) { return text::EqualIgnoringCase(name, file); });
        });
    });

    FileBatch batch{program.platform.files};
    Result<> copied;
    if (!pictures->empty())
        copied = path::IsAbsolute(imagesFolder) ? batch.MakeFolder(imagesFolder) : std::unexpected{error::PathNotFound};
    if (copied)
        copied = CopyPictures(batch, *pictures, source, imagesFolder);
    if (copied)
        copied = batch.Commit();
    if (!copied)
        return refused(FileMessage(copied.error()));
    if (!MergeImport(keys, isClean ? path::Join(source, FileName) : std::string{})) {
        batch.Undo();
        return refused(str::SetValueFailed);
    }
    (void)batch.Finish();
    program.messages.Inform(str::Imported);
    return true;
}

std::optional<std::string> ProfileTransfer::ReadImport(std::string_view folder)
{
    platform::FileSystem& files = program.platform.files;
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
    else if (!bytes || !bytes->contains("REGEDIT4"))
        program.messages.Stop(str::InvalidRegistryFile);
    else if (!bytes->contains(FullProfilesKey()))
        program.messages.Stop(str::NoProfilesInFile);
    else
        return std::move(*bytes);
    return std::nullopt;
}

Result<> ProfileTransfer::MergeImport(const ExportedKeys& wanted, const std::string& cleanFile)
{
    Registry& registry = program.platform.registry;
    std::vector<Before> before;
    for (const ExportedKey& key : wanted) {
        Before& old = before.emplace_back(KeyOf(key.name));
        const auto names = registry.ValueNames(Hive::CurrentUser, old.key);
        if (!names && !IsMissing(names.error()))
            return std::unexpected{names.error()};
        old.existed = names.has_value();
        for (const auto& [name, value] : key.values) {
            auto stored = registry.Query(Hive::CurrentUser, old.key, name);
            if (!stored && !IsMissing(stored.error()))
                return std::unexpected{stored.error()};
            old.values.emplace_back(name, std::move(stored));
        }
    }
    const auto merge = [&]() -> Result<> {
        for (const ExportedKey& key : wanted) {
            const std::string path = KeyOf(key.name);
            if (const auto created = registry.CreateKey(Hive::CurrentUser, path); !created)
                return created;
            for (const auto& [name, value] : key.values) {
                if (registry.Query(Hive::CurrentUser, path, name) == Result<RegistryValue>{value})
                    continue;
                if (const auto written = registry.Set(Hive::CurrentUser, path, name, value); !written)
                    return written;
                if (registry.Query(Hive::CurrentUser, path, name) != Result<RegistryValue>{value})
                    return std::unexpected{error::GeneralFailure};
            }
        }
        return {};
    };
    if (!cleanFile.empty())
        RunEditor("/i /s \"" + cleanFile + "\"");
    const auto merged = merge();
    if (merged)
        return merged;
    for (const Before& old : std::views::reverse(before)) {
        if (!old.existed)
            (void)registry.DeleteKey(Hive::CurrentUser, old.key);
        for (const auto& [name, stored] : old.values | std::views::filter([&](const auto&) { return old.existed; }))
            (void)(stored ? registry.Set(Hive::CurrentUser, old.key, name, *stored)
                          : registry.DeleteValue(Hive::CurrentUser, old.key, name));
    }
    return merged;
}

void ProfileTransfer::RunEditor(const std::string& arguments)
{
    const auto windows = program.platform.shell.FolderPath(platform::KnownFolder::Windows);
    if (!windows)
        return;
    const std::string editor = path::Join(*windows, "regedit.exe");
    (void)program.platform.shell.RunAndWait(editor, "\"" + editor + "\" " + arguments,
                                            platform::WindowStyle::MinimizedFocus, editorTime);
}

void ProfileTransfer::TellFolder(std::uint16_t reason)
{
    std::string message = program.Text(reason);
    if (!message.ends_with(' ')) // one of the two texts brings its blank along
        message += ' ';
    program.messages.Inform(message + program.Text(str::SelectCorrectFolder));
}

} // namespace profiles
