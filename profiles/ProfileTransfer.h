#pragma once

#include "profiles/ProfileImages.h"
#include "profiles/RegistryText.h"

#include <cstdint>
#include <expected>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace profiles {

/// How an export ended. The user has been told.
enum class ExportOutcome {
    Done,
    BadLocation, ///< the folder to export into
    BadName,     ///< the name for the new folder
    Failed
};

/// Moves all profiles with their pictures between machines. The registry editor does it where it can; the result is
/// looked at, and what it did not do is done here. Every outcome is told once.
class ProfileTransfer {
public:
    /// Milliseconds that the registry editor gets, which else works in less than one second.
    static constexpr std::uint32_t EditorTime = 15'000;

    ProfileTransfer(app::Program& program, ProfileImages& images, std::uint32_t editorTime = EditorTime)
        : program{program}, images{images}, editorTime{editorTime}
    {
    }

    /// Exports into a folder of this name below an existing folder. An earlier export there is replaced by a complete
    /// one or stays.
    ExportOutcome Export(std::string_view location, std::string_view folderName);
    /// Merges an export: same-named profiles are overwritten value by value, others stay. All or nothing.
    bool Import(std::string_view folder);

    static constexpr std::string_view FileName = "TSProfile.tspf";

private:
    app::Program& program;
    ProfileImages& images;
    std::uint32_t editorTime;

    struct PictureFolder {
        std::string name;
        std::vector<std::string> files;
    };
    /// What the registry held before an import.
    struct Before {
        std::string key;
        bool existed{};
        std::vector<std::pair<std::string, platform::Result<platform::RegistryValue>>> values;
    };

    std::expected<std::string, ExportOutcome> ExportFolder(std::string_view location, std::string_view folderName);
    platform::Result<ExportedKeys> ReadProfiles() const;
    platform::Result<> WriteExport(FileBatch& batch, const ExportedKeys& profiles, const std::string& file);
    platform::Result<std::vector<PictureFolder>> PictureFolders(const std::string& folder) const;
    platform::Result<> CopyPictures(FileBatch& batch, const std::vector<PictureFolder>& folders,
                                    const std::string& from, const std::string& to);
    std::optional<std::string> ReadImport(std::string_view folder);
    platform::Result<> MergeImport(const ExportedKeys& wanted, const std::string& cleanFile);
    void RunEditor(const std::string& arguments);
    void TellFolder(std::uint16_t reason);
};

} // namespace profiles
