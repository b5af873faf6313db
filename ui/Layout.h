#pragma once

#include "ui/Control.h"

#include <utility>
#include <vector>

namespace ui {

inline constexpr int LayoutGap = 90;     ///< twips between neighbours (6 px at 96 dpi)
inline constexpr int LayoutMargin = 165; ///< twips around a dialog's content (11 px)
inline constexpr int FrameMargin = 135;  ///< twips between a frame's lines and what it holds (9 px)

/// One place in a form's layout: a control, or a row or column of further places. A form's constructor nests them so
/// that the declaration is the picture of the dialog; the sizes come from the controls' peers, so translated captions
/// and other dpi never clip.
struct Cell {
    enum class Kind { Leaf, Row, Column, Grid, Framed, Space };
    Kind kind{Kind::Space};
    Control* control{};
    std::vector<Cell> cells;
    bool fill{};        ///< takes what is left over, in the direction of its row or column
    Size minimum{};     ///< twips
    bool equal{};       ///< cells share the width of the widest
    int gap{LayoutGap}; ///< twips between the cells

    Cell() = default;
    Cell(Control& leaf) : kind{Kind::Leaf}, control{&leaf} {} // implicit on purpose: Row(lblName, txtName)
};

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

/// Rows whose cells line up in columns: each column is as wide as its widest cell, and takes what is left over when one
/// of its cells is a `Fill`.
template <class... Rows>
Cell Grid(Rows&&... rows)
{
    Cell grid = Column(std::forward<Rows>(rows)...);
    grid.kind = Cell::Kind::Grid;
    return grid;
}

/// Two controls that look like one, such as a text box and its arrows.
inline Cell Joined(Control& left, Control& right)
{
    Cell joined = Row(left, right);
    joined.gap = 0;
    return joined;
}

/// A titled box (a Frame) around `content`.
inline Cell Framed(Control& frame, Cell content)
{
    Cell framed{frame};
    framed.kind = Cell::Kind::Framed;
    framed.cells.push_back(std::move(content));
    return framed;
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
