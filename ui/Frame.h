#pragma once

#include "ui/Control.h"

namespace ui {

/// A titled box around the controls that `Framed` puts inside.
class Frame final : public Control {
public:
    explicit Frame(Form& form, ui::Tag tag = {}) : Control{form, tag} {}
    std::string_view TypeName() const override { return "Frame"; }
};

} // namespace ui
