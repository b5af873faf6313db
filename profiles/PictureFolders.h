#pragma once

#include "profiles/FileBatch.h"
#include "profiles/RegistryText.h"

#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace profiles {

/// The folders in which profiles keep their pictures, all in one place: this machine's, or an export's.
class PictureFolders {
public:
    struct Folder {
        std::string name;
        std::vector<std::string> files;
    };
    using Names = std::set<std::string>; ///< folded

    /// What the folders of these profiles are called.
    static Names NamesFor(const ExportedKeys& keys);
    /// The wanted folders alone are listed: what else lies there may be anything, and may be closed to us.
    static platform::Result<PictureFolders> List(app::PatientFiles& files, const std::string& place,
                                                 const Names& wanted);

    const std::vector<Folder>& Folders() const { return folders; }
    bool Has(std::string_view folder) const { return Find(folder) != nullptr; }
    bool Has(std::string_view folder, std::string_view file) const;
    /// Copies all of them to another place. Files that cannot go are taken off the list. A picture that cannot be read
    /// fails, unless it is too large to be one.
    platform::Result<> Copy(FileBatch& batch, const std::string& to, LeftOut& leftOut);
    /// The picture that Copy failed for; "" when it was for where they go.
    const std::string& Unread() const { return unread; }

private:
    std::string place;
    std::vector<Folder> folders;
    std::string unread;

    const Folder* Find(std::string_view folder) const;
};

} // namespace profiles
