#pragma once

#include "ui/Control.h"

namespace ui {

class ProgressBar final : public Control {
public:
    explicit ProgressBar(Form& form) : Control{form, {}} {}
    std::string_view TypeName() const override { return "ProgressBar"; }
    /// Percent, 0 to 100.
    int Value() const { return value; }
    void SetValue(int percent);

private:
    int value{};
};

} // namespace ui
