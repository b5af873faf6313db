#pragma once

#include "app/base/LoadProgress.h"
#include "app/base/StringTable.h"
#include "library/FolderListings.h"

#include <optional>
#include <string>
#include <vector>

namespace library {

/// The first pass over the library: every category folder, four levels deep, as a plain tree. Hidden and system folders
/// are not the user's, and a name that the system shortens stands for another folder: they are left out.
class FolderWalk {
public:
    struct Node {
        std::string name;  ///< last path component
        std::string path;  ///< relative to the templates path
        bool behindLink{}; ///< a junction or symbolic link, or below one: shown, but nothing is removed there
        int parent{-1};    ///< index into Nodes; -1 for a top-level folder
        std::vector<std::size_t> children;
    };

    FolderWalk(const app::StringTable& strings, app::LoadProgress& progress, FolderListings& listings);

    /// How deep it goes below the templates path.
    static constexpr int Levels = 4;
    static bool IsCategory(const platform::FileEntry& entry);
    /// Whether the scan for sub-folders stops at this entry: what the system lists after it is missed. Libraries are
    /// laid out so that nothing stands there.
    static bool EndsScan(const platform::FileEntry& entry);
    /// The entry behind which a sub-folder of the category would be missed if it got this name; nothing when it would
    /// be found, or when that cannot be told, because the folder is not listed in the order of names.
    static std::optional<std::string> Hides(platform::FileSystem& files, const std::string& templatesPath,
                                            const std::string& category, const std::string& name);

    /// Walks until the end, a bound or a folder that cannot be read; what was found until then stays. One that does not
    /// answer in time is passed over.
    void Run();

    /// The folders in this one that are walked once its listing is known; nothing changes.
    std::vector<std::string> FollowersOf(const std::string& folder,
                                         const std::vector<platform::FileEntry>& listing) const;

    const std::vector<Node>& Nodes() const { return nodes; }
    const std::vector<std::size_t>& Roots() const { return roots; }
    /// The relative paths in the order found; numeric top-level names are not among them.
    const std::vector<std::string>& FolderNames() const { return folderNames; }

private:
    std::string recentSearch; ///< the name of a folder at the top that is no category
    app::LoadProgress& progress;
    FolderListings& listings;
    std::vector<Node> nodes;
    std::vector<std::size_t> roots;
    std::vector<std::string> folderNames;

    bool WalkTopLevel();
    bool ScanForSubfolders(std::size_t parent);
    bool WalkThirdLevel(std::size_t child);
    void AddNode(int parent, const platform::FileEntry& entry, std::string path);
    void AddChild(std::size_t parent, const platform::FileEntry& entry);
};

} // namespace library
