#include "ui/Layout.h"

#include <algorithm>
#include <numeric>

namespace ui {
namespace {

bool Hidden(const Cell& cell)
{
    return cell.kind == Cell::Kind::Leaf && !cell.control->Visible();
}

Size MeasureChildren(const Cell& cell, int width)
{
    const bool isRow = cell.kind == Cell::Kind::Row;
    Size total;
    int count = 0;
    int widest = 0;
    for (const Cell& child : cell.cells) {
        if (Hidden(child))
            continue;
        const Size size = Measure(child, isRow ? 0 : width);
        widest = std::max(widest, size.width);
        ++count;
        if (isRow) {
            total.width += size.width;
            total.height = std::max(total.height, size.height);
        } else {
            total.width = std::max(total.width, size.width);
            total.height += size.height;
        }
    }
    const int gaps = count > 1 ? (count - 1) * cell.gap : 0;
    if (isRow && cell.equal)
        total.width = widest * count;
    (isRow ? total.width : total.height) += gaps;
    return total;
}

/// In a row the wrapping texts get what the fixed neighbours leave.
Size MeasureRow(const Cell& row, int width)
{
    Size free = MeasureChildren(row, 0);
    if (width <= 0 || free.width <= width)
        return free;
    int fixed = 0;
    int filling = 0;
    for (const Cell& child : row.cells)
        if (!Hidden(child)) {
            fixed += row.gap + (child.fill ? 0 : Measure(child, 0).width);
            filling += child.fill ? 1 : 0;
        }
    if (filling == 0)
        return free;
    int height = 0;
    for (const Cell& child : row.cells)
        if (!Hidden(child))
            height = std::max(height, Measure(child, child.fill ? (width - fixed + row.gap) / filling : 0).height);
    return {std::max(width, fixed - row.gap), height};
}

struct GridColumns {
    std::vector<int> widths;
    std::vector<bool> fills;
    int total{};
};

GridColumns ColumnsOf(const Cell& grid)
{
    GridColumns columns;
    for (const Cell& row : grid.cells)
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            if (i == columns.widths.size()) {
                columns.widths.push_back(0);
                columns.fills.push_back(false);
            }
            columns.widths[i] = std::max(columns.widths[i], Measure(row.cells[i], 0).width);
            columns.fills[i] = columns.fills[i] || row.cells[i].fill;
        }
    columns.total = std::accumulate(columns.widths.begin(), columns.widths.end(), 0);
    if (columns.widths.size() > 1)
        columns.total += static_cast<int>(columns.widths.size() - 1) * LayoutGap;
    return columns;
}

/// A lone control stands in the middle beside taller neighbours, so that the texts line up.
void PlaceInRow(const Cell& cell, const Rect& area)
{
    int height = area.height;
    if (cell.kind == Cell::Kind::Leaf && (!cell.fill || cell.control->HasLineHeight()))
        height = std::min(Measure(cell, area.width).height, height);
    Place(cell, {area.left, area.top + (area.height - height) / 2, area.width, height});
}

void PlaceGrid(const Cell& grid, const Rect& area)
{
    GridColumns columns = ColumnsOf(grid);
    const auto filling = std::ranges::count(columns.fills, true);
    if (filling > 0 && area.width > columns.total)
        for (std::size_t i = 0; i < columns.widths.size(); ++i)
            if (columns.fills[i])
                columns.widths[i] += (area.width - columns.total) / static_cast<int>(filling);

    int top = area.top;
    for (const Cell& row : grid.cells) {
        const int height = Measure(row, 0).height;
        int left = area.left;
        for (std::size_t i = 0; i < row.cells.size(); ++i) {
            PlaceInRow(row.cells[i], {left, top, columns.widths[i], height});
            left += columns.widths[i] + LayoutGap;
        }
        top += height + grid.gap;
    }
}

int TitleHeight(const Cell& framed)
{
    return framed.control->PreferredSize().height;
}

} // namespace

Size Measure(const Cell& cell, int width)
{
    Size size;
    switch (cell.kind) {
    case Cell::Kind::Leaf:
        size = cell.control->PreferredSize(width);
        break;
    case Cell::Kind::Row:
        size = MeasureRow(cell, width);
        break;
    case Cell::Kind::Column:
        size = MeasureChildren(cell, width);
        break;
    case Cell::Kind::Grid:
        size = {ColumnsOf(cell).total, MeasureChildren(cell, 0).height};
        break;
    case Cell::Kind::Framed:
        size = Measure(cell.cells.front(), width > 0 ? std::max(width - 2 * FrameMargin, 1) : 0);
        size = {std::max(size.width + 2 * FrameMargin, cell.control->PreferredSize().width),
                TitleHeight(cell) + size.height + FrameMargin};
        break;
    case Cell::Kind::Space:
        break;
    }
    return {std::max(size.width, cell.minimum.width), std::max(size.height, cell.minimum.height)};
}

void Place(const Cell& cell, const Rect& area)
{
    if (cell.kind == Cell::Kind::Leaf) {
        cell.control->SetBounds(area);
        return;
    }
    if (cell.kind == Cell::Kind::Space)
        return;
    if (cell.kind == Cell::Kind::Grid) {
        PlaceGrid(cell, area);
        return;
    }
    if (cell.kind == Cell::Kind::Framed) {
        const int title = TitleHeight(cell);
        cell.control->SetBounds(area);
        Place(cell.cells.front(), {area.left + FrameMargin, area.top + title, area.width - 2 * FrameMargin,
                                   area.height - title - FrameMargin});
        return;
    }

    const bool isRow = cell.kind == Cell::Kind::Row;
    const int room = isRow ? area.width : area.height;
    int used = 0;
    int filling = 0;
    int widest = 0;
    int count = 0;
    for (const Cell& child : cell.cells) {
        if (Hidden(child))
            continue;
        ++count;
        const Size size = Measure(child, isRow ? 0 : area.width);
        widest = std::max(widest, size.width);
        if (child.fill)
            ++filling;
        else
            used += isRow ? size.width : size.height;
    }
    if (cell.equal)
        used = widest * count;
    used += count > 1 ? (count - 1) * cell.gap : 0;
    const int share = filling > 0 ? std::max(room - used, 0) / filling : 0;

    int position = isRow ? area.left : area.top;
    for (const Cell& child : cell.cells) {
        if (Hidden(child))
            continue;
        const Size size = Measure(child, isRow ? 0 : area.width);
        int length = isRow ? size.width : size.height;
        if (cell.equal)
            length = widest;
        else if (child.fill)
            length = share;
        if (isRow)
            PlaceInRow(child, {position, area.top, length, area.height});
        else
            Place(child, {area.left, position, area.width, length});
        position += length + cell.gap;
    }
}

} // namespace ui
