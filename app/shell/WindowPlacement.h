#pragma once

#include "ui/Geometry.h"

#include <vector>

namespace app {

/// Where a window with this stored place goes: as it is while it fits the monitors and enough of its title bar can
/// be reached on one, otherwise moved and shrunk into the nearest work area. All in twips; `workAreas` holds the
/// primary one first.
ui::Rect PlacementWithin(const ui::Rect& stored, const std::vector<ui::Rect>& workAreas);

} // namespace app
