#include "app/shell/WindowPlacement.h"

#include <algorithm>
#include <cmath>

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
bool FitsOnAll(const ui::Rect& window, const std::vector<ui::WorkArea>& areas)
{
    const auto right = std::ranges::max(areas, {}, &ui::WorkArea::Right).Right();
    const auto bottom = std::ranges::max(areas, {}, &ui::WorkArea::Bottom).Bottom();
    return window.width <= right - std::ranges::min(areas, {}, &ui::WorkArea::left).left &&
           window.height <= bottom - std::ranges::min(areas, {}, &ui::WorkArea::top).top;
}

int Scaled(int length, double scale)
{
    return static_cast<int>(std::lround(length * scale));
}

/// The window with the size that it has on this monitor, in twips of the desktop.
ui::Rect On(const ui::WorkArea& area, const ui::Rect& window)
{
    return {window.left, window.top, Scaled(window.width, area.scale), Scaled(window.height, area.scale)};
}

auto ReachableIn(const ui::Rect& window, const std::vector<ui::WorkArea>& areas)
{
    return std::ranges::find_if(areas, [&](const ui::WorkArea& a) { return CanBeReached(On(a, window), a); });
}

/// Squared distance between the middles.
double Distance(const ui::Rect& a, const ui::Rect& b)
{
    const double x = (a.left + a.width / 2.0) - (b.left + b.width / 2.0);
    const double y = (a.top + a.height / 2.0) - (b.top + b.height / 2.0);
    return x * x + y * y;
}

} // namespace

ui::Rect PlacementWithin(const ui::Rect& stored, const std::vector<ui::WorkArea>& workAreas)
{
    const auto reachable = ReachableIn(stored, workAreas);
    if (reachable != workAreas.end() && FitsOnAll(On(*reachable, stored), workAreas))
        return stored;
    return WholeWithin(stored, workAreas);
}

ui::Rect WholeWithin(const ui::Rect& stored, const std::vector<ui::WorkArea>& workAreas)
{
    if (workAreas.empty())
        return stored;
    const auto reachable = ReachableIn(stored, workAreas);
    const ui::WorkArea& area = reachable != workAreas.end()
                                   ? *reachable
                                   : *std::ranges::min_element(workAreas, {}, [&](const ui::WorkArea& a) {
                                         return Distance(On(a, stored), a);
                                     });
    ui::Rect window = On(area, stored);
    window.width = std::min(window.width, area.width);
    window.height = std::min(window.height, area.height);
    window.left = std::clamp(window.left, area.left, area.Right() - window.width);
    window.top = std::clamp(window.top, area.top, area.Bottom() - window.height);
    return {window.left, window.top, std::min(Scaled(window.width, 1 / area.scale), stored.width),
            std::min(Scaled(window.height, 1 / area.scale), stored.height)};
}

} // namespace app
