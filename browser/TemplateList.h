#pragma once

#include "app/base/Program.h"
#include "library/Catalog.h"
#include "ui/ListView.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace browser {

/// The templates of the selected category, or My Favorites, as the rows of the list view.
class TemplateList final : public ui::ListModel {
public:
    enum Column { NameColumn, FolderColumn, SizeColumn, ModifiedColumn };

    struct Row {
        std::string text;     ///< base name
        std::string file;     ///< file name with its ending
        std::string folder;   ///< full path of its folder
        std::string inFolder; ///< what the "In Folder" column shows
        std::size_t type{};   ///< position among the template extensions
        bool hasDetails{};    ///< size and modified are known
        std::uint64_t size{};
        platform::FileTime modified{};
        ui::Thumbnail thumbnail; ///< only in the thumbnail view
    };
    using RowSet = std::vector<Row>;

    TemplateList(app::Program& program, ui::ListView& view);

    /// Base names that are never listed; the first empty entry ends them.
    std::array<std::string, 20> ExcludedNames;

    /// Fills the list with a category's files of the types that `tab` shows. A fill that is asked for while another
    /// one yields replaces it.
    void FillCategory(const std::string& category, std::string_view tab);
    /// Fills the list with the favourites (relative paths) whose ending, letter case counting, is a template's.
    void FillFavorites(const std::vector<std::string>& favorites, const library::Catalog& catalog,
                       std::string_view tab);
    void Clear();

    /// What FillCategory shows, for a caller that shows it in its own way; the list is cleared. Nothing when another
    /// fill has begun meanwhile.
    std::optional<RowSet> ReadCategory(const std::string& category, std::string_view tab);
    RowSet ReadFavorites(const std::vector<std::string>& favorites, const library::Catalog& catalog,
                         std::string_view tab);
    /// `emptyText` stands in the list when there are no rows.
    void Show(RowSet shown, std::string emptyText);

    /// A click on a column heading: sorts by it, the other way round when it was sorted by it already.
    void SortBy(int column);

    int Rows() const override { return static_cast<int>(rows.size()); }
    std::string Text(int row, int column) const override;
    int Icon(int row) const override { return static_cast<int>(At(row).type) + 1; }
    int SmallIcon(int row) const override { return static_cast<int>(At(row).type) + 3; }
    ui::Thumbnail ThumbnailOf(int row) const override { return At(row).thumbnail; }

    const Row& At(int row) const { return rows.at(static_cast<std::size_t>(row)); }
    /// Null when no row is selected.
    const Row* Selected() const;
    static std::string FullPath(const Row& row);
    /// Whether a template of this base name is never listed.
    bool IsExcluded(const std::string& baseName) const;
    /// The row of a full path, letter case ignored; -1 when it is not listed.
    int Find(std::string_view fullPath) const;
    /// Bytes in whole kilobytes, cut: 5,000 bytes are "4KB".
    static std::string SizeText(std::uint64_t bytes);
    /// Short date, a blank, medium time, on the user's clock.
    static std::string ModifiedText(const app::Program& program, platform::FileTime time);

private:
    app::Program& program;
    ui::ListView& view;
    RowSet rows;
    int sortColumn{-1};
    bool sortAscending{true};
    unsigned fill{}; ///< number of the latest fill

    void Sort();
    std::string EmptyText(std::string_view tab) const;
};

} // namespace browser
