#pragma once

#include "ui/Control.h"

#include <vector>

namespace ui {

/// The bar at the foot of a window. The first panel takes what the others leave, and never less than its text needs:
/// the last one is shortened in its middle then.
class StatusBar final : public Control {
public:
    explicit StatusBar(Form& form) : Control{form, {}} {}
    std::string_view TypeName() const override { return "StatusBar"; }
    const std::vector<std::string>& Panels() const { return panels; }
    void SetPanel(std::size_t index, std::string text);

private:
    std::vector<std::string> panels;
};

} // namespace ui
