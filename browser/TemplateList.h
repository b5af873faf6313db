#pragma once

#include "browser/TemplateRow.h"
#include "ui/ListView.h"

#include <string>
#include <string_view>

namespace browser {

/// The rows behind the list view, in the order that the user chose.
class TemplateList final : public ui::ListModel {
public:
    enum Column { NameColumn, FolderColumn, SizeColumn, ModifiedColumn };

    TemplateList(platform::Clock& clock, platform::Locale& locale) : clock{clock}, locale{locale} {}

    void Clear() { rows.clear(); }
    /// Puts the rows behind those that are there, or in their places when the list is sorted.
    void Add(TemplateRows piece);
    /// Sorts by a column, the other way round when it was sorted by it already.
    void SortBy(int column);
    /// The same as it was chosen before; -1: in the order in which the rows come.
    void SortBy(int column, bool ascending);
    int SortColumn() const { return sortColumn; }
    bool SortAscending() const { return sortAscending; }

    int Rows() const override { return static_cast<int>(rows.size()); }
    std::string Text(int row, int column) const override;
    int Icon(int row) const override { return static_cast<int>(At(row).type) + 1; }
    int SmallIcon(int row) const override { return static_cast<int>(At(row).type) + 3; }
    ui::Thumbnail ThumbnailOf(int row) const override
    {
        const auto& thumbnail = At(row).thumbnail;
        return thumbnail ? *thumbnail : ui::Thumbnail{};
    }

    const TemplateRows& All() const { return rows; }
    const TemplateRow& At(int row) const { return rows.at(static_cast<std::size_t>(row)); }
    /// The row of a full path, letter case ignored; -1 when it is not listed.
    int Find(std::string_view fullPath) const;
    std::string ModifiedOf(const TemplateRow& row) const { return ModifiedText(clock, locale, row.modified); }

private:
    platform::Clock& clock;
    platform::Locale& locale;
    TemplateRows rows;
    int sortColumn{-1};
    bool sortAscending{true};

    void Sort();
};

} // namespace browser
