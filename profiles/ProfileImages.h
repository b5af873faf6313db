#pragma once

#include "app/base/Messages.h"
#include "app/base/PatientFiles.h"
#include "app/base/Settings.h"
#include "platform/Platform.h"
#include "profiles/FileBatch.h"
#include "profiles/ProfileManager.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace profiles {

/// The name of the folder that a profile's pictures have below the images folder: the profile's name. The system drops
/// dots and blanks at the end of a folder's name and keeps some names for devices; such names get a "_" behind, and so
/// do names that would be taken for one of these then: two profiles never share a folder. Nothing for a name that no
/// folder can have.
std::optional<std::string> ImageFolderName(std::string_view profile);

/// The string number that tells why a file operation failed.
std::uint16_t FileMessage(platform::Error error);

/// The program's own copies of the profiles' pictures: <images folder>\<profile>\Logo.jpg ...
class ProfileImages {
public:
    ProfileImages(const platform::Platform& system, app::PatientFiles& files, app::Settings& settings,
                  app::Messages& messages, ProfileManager& profiles)
        : files{files}, clock{system.clock}, shell{system.shell}, settings{settings}, messages{messages},
          profiles{profiles}
    {
    }

    /// The setting, else a folder among the user's documents; "" when there is neither.
    std::string ImagesFolder() const;
    /// "" when the profile can have no folder.
    std::string FolderOf(std::string_view profile) const;
    /// The ending that a copy of the picture gets: the source's own last four characters where they are an ending of
    /// three letters, else what its content is; "" for content that is neither JPEG nor GIF.
    std::string EndingOf(std::string_view source) const;
    /// Where a picture from `source` is kept.
    std::string TargetOf(std::string_view profile, ImageKind kind, std::string_view source) const;
    /// The first file of the profile's folder whose name contains the kind's word; "" when there is none, an error
    /// when the folder cannot be read.
    platform::Result<std::string> GetExistingFile(std::string_view profile, ImageKind kind) const;
    /// Whether a file lies in the profile's folder and is called like its picture of this kind.
    bool IsKeptAs(std::string_view profile, ImageKind kind, std::string_view file) const;
    /// Whether the file is there; an error when that cannot be told.
    platform::Result<bool> IsThere(std::string_view file) const;
    /// The same, and an error while the file's drive or share is away: the file is not lost then.
    platform::Result<bool> IsThereForSure(std::string_view file) const;
    /// Whether the path lies in a folder of pictures of ours, this profile's or another's.
    bool IsOurs(std::string_view file) const;

    /// Makes the images folder and the profile's folder unless they are there; string 222 or 223 on failure.
    bool MakeFolders(std::string_view profile);
    platform::Result<> MakeFolders(FileBatch& batch, std::string_view profile) const;

    /// What to do with one picture: a full path to set, "" to clear, nothing to leave it.
    using Changes = std::array<std::optional<std::string>, ImageCount>;
    /// Sets and clears pictures of the profile in profiles.Current and stores them. All or, with one message, none.
    bool Apply(std::string_view profile, const Changes& changes);

    /// Deletes the profile's files and its folder. Links are removed, not followed; string 223 when something stays.
    bool DeleteFolder(std::string_view profile);

    /// Tells why files or folders could not be worked with, and which.
    void TellFiles(platform::Error failure, const std::string& about);
    /// What to name in a message about the profile's folder.
    std::string FolderToTell(std::string_view profile) const;

private:
    app::PatientFiles& files;
    platform::Clock& clock;
    platform::Shell& shell;
    app::Settings& settings;
    app::Messages& messages;
    ProfileManager& profiles;
    mutable std::string lastFolder; ///< the last that was known of ImagesFolder

    /// Whether this is the folder that was asked for: there, no link, and not one that the system gives a second name.
    bool IsOwnFolder(const std::string& folder) const;
    using Paths = std::array<std::string, ImageCount>;
    /// Stores the pictures' paths of profiles.Current; after a failure, told, those of before stand there again.
    bool SavePathToReg(std::string_view profile, const Paths& before);
};

} // namespace profiles
