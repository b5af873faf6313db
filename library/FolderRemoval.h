#pragma once

#include "app/base/PatientFiles.h"
#include "platform/FileSystem.h"
#include "platform/Shell.h"

#include <optional>
#include <string>
#include <vector>

namespace library {

/// Removes one category folder: its templates, its "Previews" folder, the folders below it of any depth, and itself.
/// Files of other kinds stay, and with them their folders. A junction or symbolic link is removed itself; what it
/// points at is never listed and never touched.
class FolderRemoval {
public:
    FolderRemoval(app::PatientFiles& files, platform::Shell& shell, std::string templatesPath)
        : files{files}, shell{shell}, templatesPath{std::move(templatesPath)}
    {
    }

    /// How many templates a removal would take; nothing when a folder cannot be listed.
    std::optional<std::size_t> CountTemplates(const std::string& category);

    /// `category` is relative to the templates path and lies below a top-level folder. Where the volume has a recycle
    /// bin, and there is neither a link nor a file of another kind in it, it goes there as one. An error when anything
    /// of it is still there; what could be removed is gone then, but nothing is when a folder could not be listed or
    /// has a name by which the system finds another one, or when the recycle bin did not take it (error::Declined: the
    /// user wants to keep it after all).
    platform::Result<> Remove(const std::string& category);

private:
    struct Folder {
        std::string path; ///< relative to the templates path
        bool isLink{};
        bool isPreviews{};
        bool holdsOthers{};              ///< files that stay
        std::vector<std::string> doomed; ///< names of the files to delete
    };

    app::PatientFiles& files;
    platform::Shell& shell;
    std::string templatesPath;
    std::vector<Folder> folders; ///< parents before children

    bool List(const std::string& category);
    bool ListAll(const std::string& category);
    bool ListFolder(std::size_t index);
    bool DeleteFolderAndContent(const Folder& folder);
    /// Whether the shell would refuse to delete something of it for the length of its path.
    bool IsBeyondShell(const Folder& folder) const;
    bool IsCalledSo(const Folder& folder) const;
};

} // namespace library
