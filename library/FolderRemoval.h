#pragma once

#include "platform/FileSystem.h"

#include <string>
#include <vector>

namespace library {

/// Removes one category folder: its templates, its "Previews" folder, the folders below it of any depth, and itself.
/// Files of other kinds stay, and with them their folders. A junction or symbolic link is removed itself; what it
/// points at is never listed and never touched.
class FolderRemoval {
public:
    FolderRemoval(platform::FileSystem& files, std::string templatesPath)
        : files{files}, templatesPath{std::move(templatesPath)}
    {
    }

    /// `category` is relative to the templates path and lies below a top-level folder. False when anything of it is
    /// still there; what could be removed is gone then, but nothing is when a folder could not be listed
    /// or has a name by which the system finds another one.
    bool Remove(const std::string& category);

private:
    struct Folder {
        std::string path; ///< relative to the templates path
        bool isLink{};
        bool isPreviews{};
        std::vector<std::string> doomed; ///< names of the files to delete
    };

    platform::FileSystem& files;
    std::string templatesPath;
    std::vector<Folder> folders; ///< parents before children

    bool ListAll(const std::string& category);
    bool ListFolder(std::size_t index);
    bool DeleteFolderAndContent(const Folder& folder);
    bool IsCalledSo(const Folder& folder) const;
};

} // namespace library
