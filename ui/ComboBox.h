#pragma once

#include "ui/ItemControl.h"

namespace ui {

/// A list that drops down; its text cannot be edited.
class ComboBox final : public ItemControl {
public:
    explicit ComboBox(Form& form) : ItemControl{form} {}
    std::string_view TypeName() const override { return "ComboBox"; }
    bool HasLineHeight() const override { return true; }
};

} // namespace ui
