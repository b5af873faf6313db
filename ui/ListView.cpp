#include "ui/ListView.h"

#include "platform/Scoped.h"

#include <algorithm>

namespace ui {

void ListView::SetModel(ListModel* value)
{
    model = value;
    Refill();
}

void ListView::Refill()
{
    selected = -1;
    Changed(Aspect::Items);
}

void ListView::Reordered(int row)
{
    selected = row < Rows() ? row : -1;
    Changed(Aspect::Items);
    if (selected >= 0)
        Changed(Aspect::Selection);
}

void ListView::Refreshed(int row)
{
    const platform::Scoped keep{keepsScrollPlace, true};
    Reordered(row);
}

void ListView::SetColumns(std::vector<Column> value)
{
    columns = std::move(value);
    Changed(Aspect::Columns);
}

void ListView::SetColumnText(std::size_t index, std::string text)
{
    columns.at(index).text = std::move(text);
    Changed(Aspect::Columns);
}

void ListView::SetView(View value)
{
    if (view == value)
        return;
    view = value;
    Changed(Aspect::View);
}

void ListView::SetSort(int column, bool ascending)
{
    sortColumn = column;
    sortAscending = ascending;
    Changed(Aspect::Columns);
}

void ListView::SetEmptyText(std::string text)
{
    if (text == emptyText)
        return;
    emptyText = std::move(text);
    Changed(Aspect::Caption);
}

void ListView::Select(int row)
{
    selected = row >= 0 && row < Rows() ? row : -1;
    Changed(Aspect::Selection);
}

void ListView::UserSelects(int row)
{
    const int wanted = row >= 0 && row < Rows() ? row : -1;
    if (!Enabled() || wanted == selected)
        return;
    selected = wanted;
    if (Click)
        Click();
}

void ListView::UserActivates(int row)
{
    UserSelects(row);
    if (Enabled() && selected >= 0 && DblClick)
        DblClick();
}

void ListView::UserClicksColumn(int column)
{
    if (Enabled() && ColumnClick)
        ColumnClick(column);
}

void ListView::UserSizesColumn(std::size_t column, int width)
{
    if (column < columns.size())
        columns[column].width = std::max(width, 0);
}

} // namespace ui
