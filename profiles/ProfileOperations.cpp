#include "profiles/ProfileOperations.h"

#include "platform/Path.h"
#include "profiles/RegistryTree.h"
#include "profiles/StringId.h"

namespace profiles {

namespace path = platform::path;
using platform::Hive;
using platform::Result;

struct ProfileOperations::FilesInTrouble {
    std::optional<platform::Error> error; ///< the first one
    std::string paths;                    ///< a line each

    /// True when it failed.
    template <class T>
    bool Add(const Result<T>& result, const std::string& file)
    {
        if (result)
            return false;
        if (!error)
            error = result.error();
        paths += (paths.empty() ? "" : "\r\n") + file;
        return true;
    }
};

bool ProfileOperations::Create(const std::string& name, const std::string& source)
{
    const app::PatientFiles::Operation whole{files};
    profiles.LoadProfile(source);
    if (profiles.Current.failed) { // the copy would be another profile than the user thinks
        messages.Plain(str::EnumerationFailed);
        return false;
    }
    profiles.Current.unread = {};
    profiles.Current.unreadImages = {};
    FileBatch batch{files, clock};
    FilesInTrouble trouble;
    for (const ImageKind kind : AllImages) {
        std::string& image = profiles.Current[kind];
        if (image.empty())
            continue;
        const auto isThere = images.IsThereForSure(image);
        if (trouble.Add(isThere, image))
            continue;
        if (!*isThere) { // the source shows none either
            image.clear();
            continue;
        }
        const std::string target = images.TargetOf(name, kind, image);
        if (trouble.Add(images.MakeFolders(batch, name), images.FolderToTell(name)))
            break;
        trouble.Add(batch.Copy(image, target), image);
        image = target;
    }
    if (!trouble.error)
        trouble.Add(batch.Commit(), images.FolderToTell(name));
    if (trouble.error) {
        batch.Undo();
        images.TellFiles(*trouble.error, trouble.paths);
        return false;
    }
    if (!profiles.SaveProfileText(name) || !profiles.SaveProfileImages(name)) {
        batch.Undo();
        (void)registry.DeleteKey(Hive::CurrentUser, ProfileKey(name));
        return false;
    }
    (void)batch.Finish();
    // The first profile is the default one: nobody should have to say so. A choice once made stays.
    if (const auto hasNone = profiles.IsStoredDefault(""); hasNone && *hasNone && profiles.Names().empty())
        (void)profiles.SetDefaultProfile(name);
    return true;
}

bool ProfileOperations::Rename(const std::string& oldName, const std::string& newName)
{
    const app::PatientFiles::Operation whole{files};
    const std::string newKey = ProfileKey(newName);
    (void)images.ImagesFolder(); // known from here on, also when it cannot be read again
    FileBatch batch{files, clock};
    const std::string current = profiles.GetCurrentProfile();
    const auto wasDefault = profiles.IsStoredDefault(oldName);
    if (!wasDefault) { // renamed, the default profile would no longer be one
        messages.Stop(str::SetValueFailed);
        return false;
    }
    bool settingsChanged = false;
    FilesInTrouble trouble;
    const auto undo = [&](std::uint16_t message) {
        batch.Undo();
        (void)DeleteTree(registry, newKey);
        if (settingsChanged) {
            (void)profiles.SetCurrentProfile(current);
            if (*wasDefault)
                (void)profiles.SetDefaultProfile(oldName);
        }
        if (trouble.error)
            images.TellFiles(*trouble.error, trouble.paths);
        else
            messages.Stop(message);
        return false;
    };

    if (!profiles.CopyProfileValues(oldName, newName))
        return undo(str::SetValueFailed);
    profiles.LoadProfile(newName);
    if (profiles.Current.failed) // a picture would stay in the folder of the old name
        return undo(str::SetValueFailed);
    const std::string oldFolder = images.FolderOf(oldName);
    const auto oldFiles = MovePictures(batch, oldFolder, newName, trouble);
    if (!oldFiles)
        return undo(str::SetValueFailed);
    if (!trouble.error)
        trouble.Add(batch.Commit(), images.FolderToTell(newName));
    if (trouble.error)
        return undo(str::None);

    settingsChanged = true;
    if (!profiles.SetCurrentProfile(newName) || (*wasDefault && !profiles.SetDefaultProfile(newName)))
        return undo(str::SetValueFailed);
    if (!DeleteTree(registry, ProfileKey(oldName)))
        return undo(str::DeleteValueFailed);

    for (const std::string& file : *oldFiles)
        batch.DeleteAtEnd(file);
    if (const auto finished = batch.Finish(); !finished)
        images.TellFiles(finished.error(), oldFolder);
    if (!oldFolder.empty())
        (void)files.RemoveFolder(oldFolder); // stays when it holds something else
    return true;
}

std::optional<std::vector<std::string>> ProfileOperations::MovePictures(FileBatch& batch, const std::string& oldFolder,
                                                                        const std::string& newName,
                                                                        FilesInTrouble& trouble)
{
    const std::string newKey = ProfileKey(newName);
    std::vector<std::string> oldFiles;
    for (const ImageKind kind : AllImages) {
        const std::string image = profiles.Current[kind];
        if (image.empty())
            continue;
        const auto isThere = images.IsThereForSure(image);
        if (trouble.Add(isThere, image))
            continue;
        if (!*isThere && !images.IsOurs(image))
            continue; // the value stays as it is
        const std::string target = images.TargetOf(newName, kind, image);
        if (*isThere) {
            if (trouble.Add(images.MakeFolders(batch, newName), images.FolderToTell(newName)))
                break;
            if (trouble.Add(batch.Copy(image, target), image))
                continue;
        }
        if (*isThere && path::Same(path::Parent(image), oldFolder)) // a picture kept elsewhere is not ours to delete
            oldFiles.push_back(image);
        const platform::RegistryValue value{platform::ValueType::String, target};
        if (!registry.Set(Hive::CurrentUser, newKey, ValueName(kind), value) ||
            registry.Query(Hive::CurrentUser, newKey, ValueName(kind)) != Result<platform::RegistryValue>{value})
            return std::nullopt;
    }
    return oldFiles;
}

bool ProfileOperations::Delete(const std::string& listed)
{
    const std::string name = profiles.Meant(listed);
    const auto wasDefault = profiles.IsStoredDefault(name);
    if (!wasDefault) { // nobody would be told that the default profile is gone
        messages.Stop(str::DeleteValueFailed);
        return false;
    }
    (void)images.ImagesFolder(); // known from here on, also when it cannot be read again
    if (!profiles.DeleteProfile(name))
        return false;
    (void)images.DeleteFolder(name);
    profiles.LoadProfile(profiles.GetCurrentProfile());
    // A default profile that is gone would be asked about at every turn.
    if (*wasDefault && profiles.ListProfiles() && !profiles.Names().empty() &&
        !profiles.SetDefaultProfile(profiles.Names().front()))
        messages.Stop(str::SetValueFailed);
    return true;
}

} // namespace profiles
