#pragma once

#include "app/base/PatientFiles.h"
#include "app/base/RegistryAccess.h"
#include "app/base/Settings.h"
#include "profiles/PictureFolders.h"
#include "profiles/ProfileImages.h"
#include "profiles/RegistryText.h"

#include <cstdint>
#include <expected>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace profiles {

/// How an export ended. The user has been told.
enum class ExportOutcome {
    Done,
    BadLocation, ///< the folder to export into
    BadName,     ///< the name for the new folder, or one that holds an export which the user wants to keep
    Failed
};

/// Moves all profiles with their pictures between machines. The registry editor does it where it can; the result is
/// looked at, and what it did not do is done here. Every outcome is told once, with the names of the things that could
/// not go: one odd value does not keep the others back.
class ProfileTransfer {
public:
    /// Milliseconds that the registry editor gets, which else works in less than one second.
    static constexpr std::uint32_t EditorTime = 15'000;

    ProfileTransfer(const platform::Platform& system, app::PatientFiles& files, app::RegistryAccess& access,
                    app::Settings& settings, app::Messages& messages, const app::StringTable& strings,
                    ProfileImages& images, std::uint32_t editorTime = EditorTime)
        : system{system}, files{files}, access{access}, settings{settings}, messages{messages}, strings{strings},
          images{images}, editorTime{editorTime}
    {
    }

    /// Puts a question to the user; false when nothing is to be done.
    using Confirm = std::function<bool(const std::string& question)>;

    /// Exports into a folder of this name below an existing folder. An earlier export there is replaced by a complete
    /// one or stays; `confirm`, when given, is asked before that.
    ExportOutcome Export(std::string_view location, std::string_view folderName, const Confirm& confirm = {});
    /// Merges an export from its folder, or from the folder above when that holds a single one: same-named profiles are
    /// overwritten value by value, others stay; `confirm`, when given, is asked before that. All or nothing.
    bool Import(std::string_view folder, const Confirm& confirm = {});

    static constexpr std::string_view FileName = "TSProfile.tspf";

private:
    platform::Platform system;
    app::PatientFiles& files;
    app::RegistryAccess& access;
    app::Settings& settings;
    app::Messages& messages;
    const app::StringTable& strings;
    ProfileImages& images;
    std::uint32_t editorTime;

    /// Bytes. Some thousand profiles; a larger file is none of ours.
    static constexpr std::uint64_t LargestExport = 16u << 20;

    std::expected<std::string, ExportOutcome> ExportFolder(std::string_view location, std::string_view folderName);
    /// `reading` is the profile that could not be read after an error, "" for the list of them.
    platform::Result<ExportedKeys> ReadProfiles(LeftOut& leftOut, std::string& reading) const;
    platform::Result<> ReadValues(ExportedKey& key, LeftOut& leftOut) const;
    platform::Result<> WriteExport(FileBatch& batch, const ExportedKeys& profiles, const std::string& file);
    /// The pictures that an earlier export has left in the folder and this one does not bring go in the end. Where
    /// there is none, the folder and all in it is the user's own. The folders that may be empty then.
    std::vector<std::string> ReplaceEarlier(FileBatch& batch, const std::string& folder, const PictureFolders& now);
    /// Why no folder of the user's can have this name, as a text; "" when one can.
    std::string RefusalOf(std::string_view folderName) const;
    /// The folder itself, or the only one in it that holds an export when it holds none.
    std::string ExportIn(std::string_view folder) const;
    bool MayOverwrite(const ExportedKeys& keys, const Confirm& confirm) const;
    std::optional<std::string> ReadImport(std::string_view folder);
    static bool CheckForValidRegFile(std::string_view bytes);
    /// A key of another name would be taken for another profile, or for none, wherever profiles are chosen from a list.
    void KeepPossibleNames(RegistryText& file) const;
    /// Image values whose picture came along point at the place that it has here. Those that would make this machine
    /// contact another one, whenever the profile is looked at, stay out unless they are the user's own.
    void PlacePictures(RegistryText& file, const PictureFolders& came, const std::string& imagesFolder) const;
    /// `fileForEditor` is "" when the registry editor is not to be asked.
    platform::Result<> ImportProfiles(const ExportedKeys& wanted, std::string_view fileForEditor);
    void RunEditor(const std::string& arguments);
    void TellFolder(std::uint16_t reason);
    std::string WithLeftOut(std::string message, const LeftOut& leftOut) const;
};

} // namespace profiles
