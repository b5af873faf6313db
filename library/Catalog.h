#pragma once

#include "app/base/LoadProgress.h"
#include "app/base/StringTable.h"
#include "library/FolderListings.h"
#include "library/FolderTable.h"
#include "platform/Locale.h"

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace library {

/// Numbers of the folders' pictures. Icons of categories ("folder*.ico") come after the last of these.
namespace treeimage {
inline constexpr int FolderOpen = 1, Folder = 2, GetMore = 13, Favorites = 15, Category = 17, EBook = 18;
}

/// The library as data: every folder that the user can choose, in the order of the tree. The tree view shows it; who
/// wants to know something of a folder asks here.
class Catalog {
public:
    enum class Kind { Category, EBook, Favorites, GetMore };

    struct Folder {
        Kind kind{};
        std::string key;  ///< unique, and no number: its path as a rule
        std::string path; ///< relative to the templates path; "" for those that stand for no folder on the disk
        std::string text; ///< what the user reads
        int image{};
        int selectedImage{};
        std::string iconFile; ///< its own icon, in place of the two; "" without one
        std::string icon;     ///< what is in that file
        bool leads{};         ///< the one category that stands first, in bold
        const Folder* parent{};
        std::vector<const Folder*> children; ///< in alphabetical order

        /// Whether it stands for a folder on the disk.
        bool IsCategory() const { return kind == Kind::Category || kind == Kind::EBook; }
        bool IsTopLevelCategory() const { return IsCategory() && parent == nullptr; }
    };

    Catalog(const app::StringTable& strings, platform::FileSystem& files, platform::Locale& locale)
        : strings{strings}, files{files}, locale{locale}
    {
    }

    /// Takes the folders with templates from the table. Yields; until the new contents are complete, readers see the
    /// old ones. False when it was cancelled, and nothing has changed.
    bool Build(const FolderTable& table, FolderListings& listings, app::LoadProgress& progress,
               const std::string& templatesPath);
    void Clear() { contents = {}; }

    // What these give lives until the next Build, which may come in any yield.
    const std::vector<const Folder*>& Roots() const { return contents.roots; }
    /// Every folder, parents before children, in the order of the tree. Stops when `visit` gives false.
    void ForEach(const std::function<bool(const Folder&)>& visit) const;
    /// Null when there is none, in this and the following.
    const Folder* FindByKey(std::string_view key) const;
    /// The category of this path, letter case ignored.
    const Folder* FindByPath(std::string_view path) const;
    const Folder* FirstCategory() const;
    const Folder* Favorites() const { return contents.favorites; }
    const Folder* GetMore() const { return contents.getMore; }

    /// What is stored of a folder to come back to it: a category's path, the favourites' name; "" for the others, and
    /// for none.
    static std::string RememberedAs(const Folder* folder);
    const Folder* FindRemembered(std::string_view stored) const;

    /// Where the files of a category (its path) lie, relative to the templates path: its path; when nothing is there,
    /// its path with every "Create New\" removed, since such a folder stands for the one below it.
    std::string PlaceOf(const std::string& category) const;
    /// The files that lie there now, without hidden and system files.
    platform::Result<std::vector<platform::FileEntry>> FilesIn(const std::string& place) const;

private:
    struct Contents {
        std::string templatesPath;
        std::deque<Folder> folders;
        std::vector<const Folder*> roots;
        std::unordered_map<std::string, Folder*> byKey;
        std::unordered_map<std::string, Folder*> byPath; ///< folded
        const Folder* favorites{};
        const Folder* getMore{};

        Folder& Add(Folder folder);
        Folder& AddCategory(Folder* parent, Folder folder);
    };

    const app::StringTable& strings;
    platform::FileSystem& files;
    platform::Locale& locale;
    Contents contents;

    Folder* AddTopLevel(Contents& made, const std::string& name, FolderListings& listings) const;
    Folder* AddBelow(Contents& made, Folder& parent, const FolderTable& table, std::size_t row,
                     FolderListings& listings, const std::string& eBook) const;
    void AddLeading(Contents& made) const;
    std::string Unanswered(const FolderListings::Listing& listing) const;
    /// Reads the category's own icon, if it has one.
    void AddIcon(const Contents& made, Folder& category, FolderListings& listings) const;
    void SortChildren(Contents& made) const;
};

} // namespace library
