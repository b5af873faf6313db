#pragma once

#include "ui/TextBox.h"

#include <functional>

namespace ui {

/// Two small arrows that count the number in a text box up and down. The number lives in the box, where it can also be
/// typed; `Joined(box, arrows)` puts the two side by side.
class UpDown final : public Control {
public:
    UpDown(Form& form, TextBox& numberBox, int lowest, int highest)
        : Control{form, {}}, box{numberBox}, low{lowest}, high{highest}
    {
    }
    std::string_view TypeName() const override { return "UpDown"; }
    TextBox& Buddy() const { return box; }

    /// The whole number that the box's text starts with, brought into the range; the lowest when it has none.
    int Value() const;
    /// By code: the box's Change, but not this one's.
    void SetValue(int value);

    std::function<void()> Change;
    /// An arrow, or the arrow keys in the box: counts by `steps` and raises Change when the number changed.
    void UserSteps(int steps);

private:
    TextBox& box;
    int low;
    int high;
};

} // namespace ui
