#pragma once

#include "ui/Control.h"

#include <functional>

namespace ui {

/// A bar between two panes that the user drags.
class Splitter final : public Control {
public:
    enum class Direction { LeftRight /**< a vertical bar */, UpDown /**< a horizontal bar */ };

    Splitter(Form& form, Direction direction) : Control{form, {}}, direction{direction} {}
    std::string_view TypeName() const override { return "Splitter"; }
    Direction GetDirection() const { return direction; }

    /// Turns a wanted position (left or top edge, twips in the client area) into an allowed one.
    std::function<int(int position)> Clamp;
    /// The user let the bar go at this (allowed) position.
    std::function<void(int position)> Moved;

    int Allowed(int position) const { return Clamp ? Clamp(position) : position; }
    void UserDrags(int position);

private:
    Direction direction;
};

} // namespace ui
