#include "platform/CommandLine.h"
#include "platform/FileName.h"
#include "platform/Path.h"
#include "platform/Text.h"
#include "profiles/ProfileTransfer.h"
#include "profiles/StringId.h"

#include <algorithm>

namespace profiles {

namespace error = platform::error;
namespace path = platform::path;
using platform::command_line::Quoted;
namespace text = platform::text;
using platform::Hive;
using platform::Result;

namespace {

bool HavePictures(const ExportedKeys& keys)
{
    return std::ranges::any_of(keys, [](const ExportedKey& key) {
        return std::ranges::any_of(
            key.values, [](const auto& value) { return !value.second.data.empty() && IsImageValue(value.first); });
    });
}

/// What is kept as a profile's picture is called so, and not only in part.
bool IsKeptPicture(std::string_view name)
{
    return std::ranges::any_of(
        AllImages, [&](ImageKind k) { return text::EqualIgnoringCase(path::WithoutLastFour(name), KindWord(k)); });
}

} // namespace

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
    std::string reading;
    const auto keys = ReadProfiles(leftOut, reading);
    if (!keys) {
        messages.Stop(str::EnumerationFailed, reading);
        return ExportOutcome::Failed;
    }
    const std::string imagesFolder = images.ImagesFolder();
    const auto isOutOfReach = [&] { // the system tells of a missing drive in the words of a missing folder
        const std::string root = path::Root(imagesFolder);
        return root.empty() || !files.Stat(root);
    };
    if (HavePictures(*keys) && isOutOfReach()) // they could not come along, and those of an earlier export would go
        return refused(FileMessage(error::PathNotFound));
    const auto outOfReach = [&](platform::Error failure, const std::string& about) {
        images.TellFiles(failure, about);
        return ExportOutcome::Failed;
    };
    auto pictures = PictureFolders::List(files, imagesFolder, PictureFolders::NamesFor(*keys));
    if (!pictures)
        return outOfReach(pictures.error(), imagesFolder);

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
        done = pictures->Copy(batch, *folder, leftOut);
    if (done)
        done = batch.Commit();
    if (!done) {
        batch.Undo();
        return outOfReach(done.error(), pictures->Unread().empty() ? *folder : pictures->Unread());
    }
    (void)batch.Finish();
    for (const std::string& sub : emptied)
        (void)files.RemoveFolder(sub); // stays when it holds something else
    (void)settings.Save("Options", "ExportProfilePath", text::Trimmed(location));
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
        return strings.LoadString(str::FolderNameCharacters) + "\r\n" + file_name::ForbiddenShown;
    // The system would put the export somewhere else than the name says.
    if (file_name::IsDevice(folderName))
        return text::Replaced(strings.LoadString(str::FolderNameDevice), "%1", folderName);
    return file_name::IsShortened(folderName) ? strings.LoadString(str::FolderNameEnd) : std::string{};
}

Result<ExportedKeys> ProfileTransfer::ReadProfiles(LeftOut& leftOut, std::string& reading) const
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
        reading = name;
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
    const auto produced = files.Read(temporary, LargestExport);
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
    if (!isGood(own) || own.size() > LargestExport) {
        (void)batch.Discard(temporary);
        return std::unexpected{error::GeneralFailure};
    }
    return batch.Write(own, file);
}

std::vector<std::string> ProfileTransfer::ReplaceEarlier(FileBatch& batch, const std::string& folder,
                                                         const PictureFolders& now)
{
    std::vector<std::string> emptied;
    const auto earlier = files.Read(path::Join(folder, FileName), LargestExport);
    if (!earlier)
        return emptied;
    const auto names = PictureFolders::NamesFor(ReadRegistryText(*earlier, system.locale).keys);
    const auto before = PictureFolders::List(files, folder, names).value_or(PictureFolders{});
    for (const PictureFolders::Folder& old : before.Folders()) {
        const std::string sub = path::Join(folder, old.name);
        for (const std::string& file : old.files)
            if (IsKeptPicture(file) && !now.Has(old.name, file))
                batch.DeleteAtEnd(path::Join(sub, file));
        if (!now.Has(old.name))
            emptied.push_back(sub);
    }
    return emptied;
}

} // namespace profiles
