#include "ui/Layout.h"

#include <algorithm>

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
    const int gaps = count > 1 ? (count - 1) * LayoutGap : 0;
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
            fixed += LayoutGap + (child.fill ? 0 : Measure(child, 0).width);
            filling += child.fill ? 1 : 0;
        }
    if (filling == 0)
        return free;
    int height = 0;
    for (const Cell& child : row.cells)
        if (!Hidden(child))
            height = std::max(height, Measure(child, child.fill ? (width - fixed + LayoutGap) / filling : 0).height);
    return {std::max(width, fixed - LayoutGap), height};
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
    used += count > 1 ? (count - 1) * LayoutGap : 0;
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
        if (isRow) {
            // A lone label stands beside taller neighbours, so that its text lines up with theirs.
            const int height = child.kind == Cell::Kind::Leaf && !child.fill ? std::min(size.height, area.height)
                                                                              : area.height;
            Place(child, {position, area.top + (area.height - height) / 2, length, height});
        } else {
            Place(child, {area.left, position, area.width, length});
        }
        position += length + LayoutGap;
    }
}

} // namespace ui
