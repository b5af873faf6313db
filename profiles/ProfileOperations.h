#pragma once

#include "profiles/ProfileImages.h"
#include "profiles/ProfileManager.h"

#include <optional>
#include <string>
#include <vector>

namespace profiles {

/// Making, renaming and deleting whole profiles: registry key, pictures and settings together. Each failure is told
/// once.
class ProfileOperations {
public:
    ProfileOperations(platform::Registry& registry, app::PatientFiles& files, platform::Clock& clock,
                      app::Messages& messages, ProfileManager& profiles, ProfileImages& images)
        : registry{registry}, files{files}, clock{clock}, messages{messages}, profiles{profiles}, images{images}
    {
    }

    /// A new profile with a valid name; `source` names the profile whose fields and pictures it gets, "" for an empty
    /// one. The first of all becomes the default. False when nothing was made.
    bool Create(const std::string& name, const std::string& source);
    /// Moves the whole profile to a valid new name: the old key and the old pictures go only after the new ones are
    /// complete and read back. False when the old profile is left as it was.
    bool Rename(const std::string& oldName, const std::string& newName);
    /// The key, then the pictures. Of the profiles that remain the first becomes the default when this one was it.
    /// False when the profile is still there.
    bool Delete(const std::string& name);

private:
    platform::Registry& registry;
    app::PatientFiles& files;
    platform::Clock& clock;
    app::Messages& messages;
    ProfileManager& profiles;
    ProfileImages& images;

    /// What went wrong with the files of a whole profile: all of them are tried, so that one message names them all.
    struct FilesInTrouble;
    /// Copies the pictures of profiles.Current to where the new name keeps its own, and has the new name's values say
    /// so. Those in the old name's folder, which can go in the end; nothing when a value could not be stored.
    std::optional<std::vector<std::string>> MovePictures(FileBatch& batch, const std::string& oldFolder,
                                                         const std::string& newName, FilesInTrouble& trouble);
};

} // namespace profiles
