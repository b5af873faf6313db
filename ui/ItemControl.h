#pragma once

#include "ui/Control.h"

#include <functional>
#include <string>
#include <vector>

namespace ui {

/// Lines of text of which at most one is selected: what lists and drop-down lists share.
class ItemControl : public Control {
public:
    bool IsTabStop() const override { return true; }

    const std::vector<std::string>& Items() const { return items; }
    /// Selects nothing. No event.
    void SetItems(std::vector<std::string> value);
    /// Another text for one line; the selection stays. No event.
    void SetItem(std::size_t index, std::string text);

    /// -1 when none is selected.
    int Selected() const { return selected; }
    /// The selected line; "" when none is.
    const std::string& Text() const;
    /// By code: no event. An index that is not there selects nothing.
    void Select(int index);

    /// The user selected another line.
    std::function<void()> Click;
    /// Nothing while disabled or hidden.
    void UserSelects(int index);

protected:
    explicit ItemControl(Form& form) : Control{form, {}} {}

private:
    std::vector<std::string> items;
    int selected{-1};

    int Allowed(int index) const { return index >= 0 && index < static_cast<int>(items.size()) ? index : -1; }
};

} // namespace ui
