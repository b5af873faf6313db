#pragma once

#include "app/base/LoadProgress.h"
#include "library/FolderListings.h"
#include "library/FolderWalk.h"

#include <array>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace library {

/// The library's folders as a table of texts: 501 rows (0 to 500) by 7 columns. Row 0 holds the count of rows in use
/// in column 0; the other rows hold one folder each.
class FolderTable {
public:
    static constexpr std::size_t Rows = 501;
    static constexpr std::size_t Columns = 7;
    enum Column : std::size_t {
        Name = 0,         ///< last path component
        HasTemplates = 1, ///< "True" when the folder or one below it holds a template, else "False"
        Path = 5,         ///< relative path; "" for a top-level folder, whose path is its name
        ParentRow = 6     ///< decimal; "" for a top-level folder
    };

    explicit FolderTable(platform::FileSystem& files) : files{files} {}

    void ClearFolderTable();
    /// Records the walked folders, and marks those with templates, or without an answer, and their ancestors. A 501st
    /// folder, or one that cannot be read, ends the pass with what was recorded so far.
    void BuildFolderTable(const FolderWalk& walk, FolderListings& listings, app::LoadProgress& progress);
    /// Removes from the disk the recorded folders that are entirely empty, unless this is no library: nothing in it is
    /// a template, or there are e-books alone, which any folder may hold.
    void RemoveEmptyFolders(const std::string& templatesPath);
    bool HoldsTemplates() const { return templatesFound > 0; }
    /// The first row with this path (column Path) and name, letter case counting; 0 when there is none.
    std::size_t FindFolderRow(std::string_view path, std::string_view name) const;

    const std::string& Cell(std::size_t row, std::size_t column) const { return cells.at(row).at(column); }
    /// Rows in use, as row 0 says.
    std::size_t Count() const;
    /// The folder's path relative to the templates path.
    const std::string& PathOf(std::size_t row) const;
    /// 0 for a top-level folder.
    std::size_t ParentOf(std::size_t row) const;

    /// Counts every (folder, ending) pair for which a template was found, over all passes.
    int TemplateTypeCount{};

private:
    platform::FileSystem& files;
    std::array<std::array<std::string, Columns>, Rows> cells;
    /// Speeds FindFolderRow up: (path, name) to the first such row.
    std::map<std::pair<std::string, std::string>, std::size_t, std::less<>> firstRow;

    std::vector<std::string> emptyFolders; ///< paths
    int templatesFound{};                  ///< (folder, ending) pairs of the last pass
    int eBooksFound{};                     ///< those of them whose ending is no proof of a library

    void AddRow(std::size_t row, const FolderWalk& walk, const FolderWalk::Node& node);
    void TestFolderForTemplates(std::size_t row, const std::vector<platform::FileEntry>& listing);
    void MarkWithAncestors(std::size_t row);
};

} // namespace library
