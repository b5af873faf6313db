#include "ui/ToolBar.h"

#include <algorithm>

namespace ui {

void ToolBar::SetButtons(std::vector<Button> value)
{
    if (value == buttons)
        return;
    buttons = std::move(value);
    Changed(Aspect::Items);
}

const ToolBar::Button* ToolBar::Find(std::string_view key) const
{
    const auto found = std::ranges::find(buttons, key, &Button::key);
    return found == buttons.end() ? nullptr : &*found;
}

void ToolBar::SetButtonToolTip(std::size_t index, std::string text)
{
    buttons.at(index).toolTip = std::move(text);
    Changed(Aspect::ToolTip);
}

void ToolBar::SetButtonCaption(std::string_view key, std::string text)
{
    const auto button = std::ranges::find(buttons, key, &Button::key);
    if (button == buttons.end())
        return;
    button->caption = std::move(text);
    Changed(Aspect::Items);
}

void ToolBar::UserClicks(std::string_view key)
{
    const Button* button = Find(key);
    if (Enabled() && button != nullptr && button->enabled && button->visible && ButtonClick)
        ButtonClick(button->key);
}

} // namespace ui
