#pragma once

#include "ui/Control.h"

#include <functional>
#include <vector>

namespace ui {

class ToolBar final : public Control {
public:
    struct Button {
        enum class Style { Push, Check, Separator };
        std::string key;
        std::string image;       ///< one of the program's pictures
        std::string toolTipText; ///< string number of the tool tip
        std::string toolTip;
        std::string caption; ///< "" for a button that shows its picture alone
        Style style{Style::Push};
        bool enabled{true};
        bool pressed{};
        bool visible{true};
        friend bool operator==(const Button&, const Button&) = default;
    };

    explicit ToolBar(Form& form) : Control{form, {}} {}
    std::string_view TypeName() const override { return "Toolbar"; }

    const std::vector<Button>& Buttons() const { return buttons; }
    void SetButtons(std::vector<Button> value);
    /// Null when there is none of that key.
    const Button* Find(std::string_view key) const;
    void SetButtonToolTip(std::size_t index, std::string text);
    void SetButtonCaption(std::string_view key, std::string text);

    std::function<void(const std::string& key)> ButtonClick;
    /// Nothing while the button is disabled or hidden.
    void UserClicks(std::string_view key);

private:
    std::vector<Button> buttons;
};

} // namespace ui
