#pragma once

#include "ui/Control.h"

namespace ui {

/// Text that wraps inside its bounds. Its mnemonic moves to the next control in tab order.
class Label final : public Control {
public:
    explicit Label(Form& form, ui::Tag tag = {}) : Control{form, tag} {}
    std::string_view TypeName() const override { return "Label"; }
    bool HasLineHeight() const override { return true; }
    /// Larger, for the one heading of a window.
    bool Heading{};
    /// Names as they are: "&" is no mnemonic, and a name without blanks wraps as well. Set before the window is there.
    bool PlainText{};
    /// It asks for the height of so many lines, even when its text has fewer.
    int LeastLines{1};
};

} // namespace ui
