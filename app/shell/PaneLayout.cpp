#include "app/shell/PaneLayout.h"

#include <algorithm>

namespace app {
namespace {

/// The strip of `area` from `start` to `end` along a row or a column.
ui::Rect Strip(const ui::Rect& area, bool isRow, int start, int end)
{
    const int length = std::max(end - start, 0);
    return isRow ? ui::Rect{start, area.top, length, area.height} : ui::Rect{area.left, start, area.width, length};
}

} // namespace

Pane Pane::Preferred() &&
{
    extent = Extent::Preferred;
    return std::move(*this);
}

Pane Pane::PreferredUpTo(double most) &&
{
    extent = Extent::Preferred;
    share = most;
    return std::move(*this);
}

Pane Pane::UpTo(ui::Splitter& bar, int& place, int leastHere, int leastBehind, std::function<int()> countedFrom) &&
{
    extent = Extent::UpToSplitter;
    splitter = &bar;
    position = &place;
    least = leastHere;
    behind = leastBehind;
    edge = std::move(countedFrom);
    return std::move(*this);
}

Pane Pane::After(int twips) &&
{
    gap = twips;
    return std::move(*this);
}

Pane Pane::Within(int around) &&
{
    margin = around;
    return std::move(*this);
}

Pane Pane::When(std::function<bool()> shownWhile) &&
{
    condition = std::move(shownWhile);
    return std::move(*this);
}

bool Pane::IsShown() const
{
    if (condition && !condition())
        return false;
    return kind == Kind::Control || kind == Kind::Cells || std::ranges::any_of(panes, &Pane::IsShown);
}

void Pane::Hide()
{
    if (control != nullptr)
        control->SetVisible(false);
    if (splitter != nullptr)
        splitter->SetVisible(false);
    for (Pane& pane : panes)
        pane.Hide();
}

int Pane::Clamped(int wanted) const
{
    const int last = (edge ? edge() : to) - behind;
    const int allowed = std::max(std::min(wanted, last), from + least);
    return std::max(std::min(allowed, to - least), from); // a window that is too small for both
}

PaneLayout::PaneLayout(Pane wholeWindow, const std::function<void()>& resized) : root{std::move(wholeWindow)}
{
    Wire(root, resized);
}

void PaneLayout::Wire(Pane& pane, const std::function<void()>& resized)
{
    if (pane.splitter != nullptr) {
        pane.splitter->Clamp = [&pane](int wanted) { return pane.Clamped(wanted); };
        pane.splitter->Moved = [&pane, resized](int position) {
            *pane.position = position;
            resized();
        };
    }
    for (Pane& inner : pane.panes)
        Wire(inner, resized);
}

void PaneLayout::Place(ui::Size client)
{
    Place(root, {0, 0, client.width, client.height});
}

void PaneLayout::Place(Pane& pane, const ui::Rect& area)
{
    const ui::Rect inner{area.left + pane.margin, area.top + pane.margin, std::max(area.width - 2 * pane.margin, 0),
                         std::max(area.height - 2 * pane.margin, 0)};
    if (pane.kind == Pane::Kind::Cells) {
        ui::Place(pane.cells, inner);
        return;
    }
    if (pane.kind != Pane::Kind::Control) {
        PlaceChildren(pane, inner);
        return;
    }
    pane.control->SetVisible(true);
    pane.control->SetBounds(inner);
}

void PaneLayout::PlaceChildren(Pane& pane, const ui::Rect& area)
{
    const bool isRow = pane.kind == Pane::Kind::Row;
    std::vector<Pane*> shown;
    for (Pane& child : pane.panes) {
        if (child.IsShown())
            shown.push_back(&child);
        else
            child.Hide();
    }
    if (shown.empty())
        return;
    const auto filling = std::ranges::find(shown, Pane::Extent::Fill, &Pane::extent);
    const auto rest = filling != shown.end() ? filling : shown.end() - 1;
    int start = isRow ? area.left : area.top;
    int end = isRow ? area.Right() : area.Bottom();
    const auto lengthOf = [&](const Pane& child) {
        if (child.kind == Pane::Kind::Cells)
            return ui::Measure(child.cells, area.width - 2 * child.margin).height + 2 * child.margin;
        const ui::Size needed = child.control->PreferredSize(area.width);
        return std::min(isRow ? needed.width : needed.height, static_cast<int>((end - start) * child.share));
    };

    for (auto child = shown.begin(); child != rest; ++child) {
        start += (*child)->gap;
        if ((*child)->extent != Pane::Extent::UpToSplitter) {
            const int length = lengthOf(**child);
            Place(**child, Strip(area, isRow, start, start + length));
            start += length;
            continue;
        }
        (*child)->from = start;
        (*child)->to = end;
        const int bar = (*child)->Clamped(*(*child)->position);
        Place(**child, Strip(area, isRow, start, bar));
        start = bar + SplitterWidth;
        (*child)->splitter->SetVisible(true);
        (*child)->splitter->SetBounds(Strip(area, isRow, bar, start));
    }
    for (auto child = shown.end() - 1; child != rest; --child) {
        const int length = lengthOf(**child);
        Place(**child, Strip(area, isRow, end - length, end));
        end -= length + (*child)->gap;
    }
    if ((*rest)->splitter != nullptr)
        (*rest)->splitter->SetVisible(false); // nothing is left for it to part
    Place(**rest, Strip(area, isRow, start + (*rest)->gap, end));
}

} // namespace app
