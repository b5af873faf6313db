#pragma once

#include "ui/Geometry.h"

#include <vector>

namespace app {

/// Twips, either way: a stored place or size beyond this is damage.
inline constexpr int PlaceLimit = 200'000;

/// Where a window with this stored place goes: as it is while it fits the monitors and enough of its title bar can
/// be reached on one, otherwise moved and shrunk into the nearest work area. A place is that of ui::Form: its corner in
/// twips of the desktop, its size in those of the monitor that it is on.
ui::Rect PlacementWithin(const ui::Rect& stored, const std::vector<ui::WorkArea>& workAreas);

/// The same for a window that is to be seen whole: always moved and shrunk into one work area.
ui::Rect WholeWithin(const ui::Rect& stored, const std::vector<ui::WorkArea>& workAreas);

} // namespace app
