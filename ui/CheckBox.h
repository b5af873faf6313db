#pragma once

#include "ui/Control.h"

#include <functional>

namespace ui {

class CheckBox final : public Control {
public:
    explicit CheckBox(Form& form, ui::Tag tag = {}) : Control{form, tag} {}
    std::string_view TypeName() const override { return "CheckBox"; }
    bool IsTabStop() const override { return true; }

    bool Checked() const { return checked; }
    /// By code: no event.
    void SetChecked(bool value);

    std::function<void()> Click;
    /// The box changes, then Click; nothing while disabled or hidden.
    void UserClicks();

private:
    bool checked{};
};

} // namespace ui
