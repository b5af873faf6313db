#include "browser/TemplateList.h"

#include "platform/NaturalOrder.h"
#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <iterator>

namespace browser {

using platform::text::EqualIgnoringCase;

void TemplateList::Add(TemplateRows piece)
{
    if (rows.empty())
        rows = std::move(piece);
    else
        rows.insert(rows.end(), std::move_iterator{piece.begin()}, std::move_iterator{piece.end()});
    if (sortColumn >= 0)
        Sort();
}

void TemplateList::SortBy(int column)
{
    SortBy(column, column != sortColumn || !sortAscending);
}

void TemplateList::SortBy(int column, bool ascending)
{
    sortColumn = column;
    sortAscending = ascending;
    if (sortColumn >= 0)
        Sort();
}

void TemplateList::Sort()
{
    const auto order = [this](const TemplateRow& a, const TemplateRow& b) -> int {
        const auto byNumber = [](auto x, auto y) { return x < y ? -1 : (y < x ? 1 : 0); };
        switch (sortColumn) {
        case FolderColumn:
            return platform::CompareNaturally(locale, a.inFolder, b.inFolder);
        case SizeColumn:
            return byNumber(a.size, b.size);
        case ModifiedColumn:
            return byNumber(a.modified, b.modified);
        default:
            return platform::CompareNaturally(locale, a.text, b.text);
        }
    };
    std::ranges::stable_sort(rows, [&](const TemplateRow& a, const TemplateRow& b) {
        return sortAscending ? order(a, b) < 0 : order(b, a) < 0;
    });
}

std::string TemplateList::Text(int row, int column) const
{
    const TemplateRow& item = At(row);
    switch (column) {
    case FolderColumn:
        return std::string{item.inFolder};
    case SizeColumn:
        return item.hasDetails ? SizeText(item.size) : std::string{};
    case ModifiedColumn:
        return item.hasDetails ? ModifiedOf(item) : std::string{};
    default:
        return item.text;
    }
}

int TemplateList::Find(std::string_view fullPath) const
{
    const std::string_view name = platform::path::Name(fullPath);
    const auto found = std::ranges::find_if(rows, [&](const TemplateRow& row) {
        return EqualIgnoringCase(row.file, name) && EqualIgnoringCase(FullPath(row), fullPath);
    });
    return found == rows.end() ? -1 : static_cast<int>(found - rows.begin());
}

} // namespace browser
