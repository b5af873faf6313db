#pragma once

#include "ui/Control.h"

#include <utility>
#include <vector>

namespace ui {

/// One place in a form's layout: a control, or a row or column of further places. A form's constructor nests them so
/// that the declaration is the picture of the dialog; the sizes come from the controls' peers, so translated captions
/// and other dpi never clip.
struct Cell {
    enum class Kind { Leaf, Row, Column, Space };
    Kind kind{Kind::Space};
    Control* control{};
    std::vector<Cell> cells;
    bool fill{};      ///< takes what is left over, in the direction of its row or column
    Size minimum{};   ///< twips
    bool equal{};     ///< cells share the width of the widest

    Cell() = default;
    Cell(Control& leaf) : kind{Kind::Leaf}, control{&leaf} {} // implicit on purpose: Row(lblName, txtName)
};

inline constexpr int LayoutGap = 90;     ///< twips between neighbours (6 px at 96 dpi)
inline constexpr int LayoutMargin = 165; ///< twips around a dialog's content (11 px)

template <class... Cells>
Cell Row(Cells&&... cells)
{
    Cell row;
    row.kind = Cell::Kind::Row;
    (row.cells.push_back(Cell(std::forward<Cells>(cells))), ...);
    return row;
}

template <class... Cells>
Cell Column(Cells&&... cells)
{
    Cell column;
    column.kind = Cell::Kind::Column;
    (column.cells.push_back(Cell(std::forward<Cells>(cells))), ...);
    return column;
}

/// The same place, taking what is left over.
inline Cell Fill(Cell cell)
{
    cell.fill = true;
    return cell;
}

inline Cell Least(Cell cell, Size minimum)
{
    cell.minimum = minimum;
    return cell;
}

/// A row of buttons of one width at the right-hand edge.
template <class... Cells>
Cell Buttons(Cells&&... cells)
{
    Cell buttons = Row(std::forward<Cells>(cells)...);
    buttons.equal = true;
    return Row(Fill(Cell{}), std::move(buttons));
}

/// The size a layout needs when it may be `width` twips wide (0: no bound), without the margin.
Size Measure(const Cell& cell, int width);
/// Gives every control in `cell` its bounds.
void Place(const Cell& cell, const Rect& area);

} // namespace ui
