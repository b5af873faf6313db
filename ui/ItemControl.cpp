#include "ui/ItemControl.h"

#include <algorithm>

namespace ui {

void ItemControl::SetItems(std::vector<std::string> value)
{
    items = std::move(value);
    selected = -1;
    Changed(Aspect::Items);
}

void ItemControl::SetItem(std::size_t index, std::string text)
{
    if (items.at(index) == text)
        return;
    items[index] = std::move(text);
    Changed(Aspect::Items);
}

const std::string& ItemControl::Text() const
{
    static const std::string none;
    return selected >= 0 ? items[static_cast<std::size_t>(selected)] : none;
}

void ItemControl::Select(int index)
{
    selected = Allowed(index);
    Changed(Aspect::Selection);
}

void ItemControl::UserSelects(int index)
{
    const int wanted = Allowed(index);
    if (!Enabled() || !Visible() || wanted == selected)
        return;
    selected = wanted;
    if (Click)
        Click();
}

} // namespace ui
