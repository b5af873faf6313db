#pragma once

#include "ui/Control.h"

#include <functional>

namespace ui {

/// What Enter and Esc do in a dialog.
enum class Role { Plain, Default, Cancel };

class Button final : public Control {
public:
    explicit Button(Form& form, ui::Tag tag = {}, Role role = Role::Plain) : Control{form, tag}, role{role} {}
    std::string_view TypeName() const override { return "CommandButton"; }
    bool IsTabStop() const override { return true; }
    Role GetRole() const { return role; }

    std::function<void()> Click;
    /// A click, Space, Enter or the mnemonic; nothing while disabled or hidden.
    void UserClicks();

private:
    Role role;
};

} // namespace ui
