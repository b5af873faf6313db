#include "app/shell/WindowPlacement.h"

#include <algorithm>

namespace app {
namespace {

/// How much of the title bar must be inside a work area to be caught with the mouse: 80 by 20 pixels at 96 dpi.
constexpr ui::Size Reachable{1200, 300};

int Overlap(int start, int length, int otherStart, int otherLength)
{
    return std::min(start + length, otherStart + otherLength) - std::max(start, otherStart);
}

bool CanBeReached(const ui::Rect& window, const ui::Rect& area)
{
    return window.top >= area.top && Overlap(window.left, window.width, area.left, area.width) >= Reachable.width &&
           Overlap(window.top, Reachable.height, area.top, area.height) >= Reachable.height;
}

/// Whether the monitors together have room for it.
bool FitsOnAll(const ui::Rect& window, const std::vector<ui::Rect>& areas)
{
    const auto right = std::ranges::max(areas, {}, &ui::Rect::Right).Right();
    const auto bottom = std::ranges::max(areas, {}, &ui::Rect::Bottom).Bottom();
    return window.width <= right - std::ranges::min(areas, {}, &ui::Rect::left).left &&
           window.height <= bottom - std::ranges::min(areas, {}, &ui::Rect::top).top;
}

/// Squared distance between the middles.
double Distance(const ui::Rect& a, const ui::Rect& b)
{
    const double x = (a.left + a.width / 2.0) - (b.left + b.width / 2.0);
    const double y = (a.top + a.height / 2.0) - (b.top + b.height / 2.0);
    return x * x + y * y;
}

} // namespace

ui::Rect PlacementWithin(const ui::Rect& stored, const std::vector<ui::Rect>& workAreas)
{
    if (workAreas.empty())
        return stored;
    const auto reachable = std::ranges::find_if(workAreas, [&](const ui::Rect& a) { return CanBeReached(stored, a); });
    if (reachable != workAreas.end() && FitsOnAll(stored, workAreas))
        return stored;
    const ui::Rect& area =
        reachable != workAreas.end()
            ? *reachable
            : *std::ranges::min_element(workAreas, {}, [&](const ui::Rect& a) { return Distance(stored, a); });
    ui::Rect window = stored;
    window.width = std::min(window.width, area.width);
    window.height = std::min(window.height, area.height);
    window.left = std::clamp(window.left, area.left, area.Right() - window.width);
    window.top = std::clamp(window.top, area.top, area.Bottom() - window.height);
    return window;
}

} // namespace app
