#pragma once

#include "ui/ItemControl.h"

namespace ui {

/// A list of lines that are all in sight or scrolled to.
class ListBox final : public ItemControl {
public:
    explicit ListBox(Form& form) : ItemControl{form} {}
    std::string_view TypeName() const override { return "ListBox"; }

    std::function<void()> DblClick;
    /// Selects the line (Click when it was another), then DblClick.
    void UserActivates(int index);
};

} // namespace ui
