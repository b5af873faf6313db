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
    const auto byNumber = [this](auto numberOf) {
        std::ranges::stable_sort(rows, [&](const TemplateRow& a, const TemplateRow& b) {
            return sortAscending ? a.*numberOf < b.*numberOf : b.*numberOf < a.*numberOf;
        });
    };
    const auto byName = [this](auto nameOf) { platform::NaturalOrder{locale}.Sort(rows, nameOf, sortAscending); };
    switch (sortColumn) {
    case FolderColumn:
        return byName(&TemplateRow::inFolder);
    case SizeColumn:
        return byNumber(&TemplateRow::size);
    case ModifiedColumn:
        return byNumber(&TemplateRow::modified);
    default:
        return byName(&TemplateRow::text);
    }
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
