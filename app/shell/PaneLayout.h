#pragma once

#include "ui/Control.h"
#include "ui/Layout.h"
#include "ui/Splitter.h"

#include <functional>
#include <utility>
#include <vector>

namespace app {

/// A part of a window: one control, or parts beside or below each other. It takes what its neighbours leave, unless it
/// is told otherwise. All lengths in twips.
class Pane {
public:
    Pane(ui::Control& shown) : control{&shown} {} // implicit on purpose: Beside(tree, list)

    /// Controls as in a dialog, as high as they need; they show and hide themselves. Only in a column.
    explicit Pane(ui::Cell content) : kind{Kind::Cells}, cells{std::move(content)}, extent{Extent::Preferred} {}

    /// As high (in a row: as wide) as the control needs.
    Pane Preferred() &&;
    /// The same, but never more than this share of what there is.
    Pane PreferredUpTo(double most) &&;
    /// Ends where the splitter stands, which stores its place in `position` (client coordinates). At least `least` is
    /// left to this pane, and `behind` to what follows; `edge` says from where that is counted (none: from the end of
    /// the row or column).
    Pane UpTo(ui::Splitter& splitter, int& position, int least, int behind, std::function<int()> edge = {}) &&;
    /// Free space in front of it, and around what it holds.
    Pane After(int gap) &&;
    Pane Within(int around) &&;
    /// Shown while this holds.
    Pane When(std::function<bool()> condition) &&;

    template <class... Panes>
    friend Pane Beside(Panes&&... panes);
    template <class... Panes>
    friend Pane Below(Panes&&... panes);

private:
    friend class PaneLayout;
    enum class Kind { Control, Cells, Row, Column };
    enum class Extent { Fill, Preferred, UpToSplitter };

    Kind kind{Kind::Control};
    ui::Control* control{};
    ui::Cell cells;
    std::vector<Pane> panes;
    Extent extent{Extent::Fill};
    double share{1};
    ui::Splitter* splitter{};
    int* position{};
    int least{}, behind{};
    std::function<int()> edge;
    int gap{}, margin{};
    std::function<bool()> condition;
    int from{}, to{}; ///< what the splitter had to divide when it was placed last

    explicit Pane(Kind nested) : kind{nested} {}
    bool IsShown() const;
    void Hide();
    /// An allowed place of the splitter.
    int Clamped(int wanted) const;
};

/// Panes from left to right.
template <class... Panes>
Pane Beside(Panes&&... panes)
{
    Pane row{Pane::Kind::Row};
    (row.panes.push_back(Pane(std::forward<Panes>(panes))), ...);
    return row;
}

/// Panes from top to bottom.
template <class... Panes>
Pane Below(Panes&&... panes)
{
    Pane column{Pane::Kind::Column};
    (column.panes.push_back(Pane(std::forward<Panes>(panes))), ...);
    return column;
}

/// How a window is divided into panes. In each row and column one pane takes what the others leave: the first that has
/// no size of its own, or the last one shown.
class PaneLayout {
public:
    /// `resized` is called when the user has moved a splitter.
    PaneLayout(Pane wholeWindow, const std::function<void()>& resized);
    PaneLayout(const PaneLayout&) = delete;
    PaneLayout& operator=(const PaneLayout&) = delete;

    /// Shows, hides and places every control.
    void Place(ui::Size client);

    static constexpr int SplitterWidth = 75;

private:
    Pane root;

    static void Wire(Pane& pane, const std::function<void()>& resized);
    static void Place(Pane& pane, const ui::Rect& area);
    static void PlaceChildren(Pane& pane, const ui::Rect& area);
};

} // namespace app
