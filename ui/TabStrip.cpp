#include "ui/TabStrip.h"

#include <algorithm>

namespace ui {

void TabStrip::SetTabs(std::vector<Tab> value)
{
    tabs = std::move(value);
    if (!Has(selected))
        selected = tabs.empty() ? std::string{} : tabs.front().key;
    Changed(Aspect::Items);
}

void TabStrip::Insert(std::size_t index, Tab tab)
{
    if (Has(tab.key))
        return;
    const auto place = std::min(index, tabs.size());
    tabs.insert(tabs.begin() + static_cast<std::ptrdiff_t>(place), std::move(tab));
    if (selected.empty())
        selected = tabs.front().key;
    Changed(Aspect::Items);
}

void TabStrip::Remove(std::string_view key)
{
    if (std::erase_if(tabs, [&](const Tab& tab) { return tab.key == key; }) == 0)
        return;
    if (selected == key)
        selected = tabs.empty() ? std::string{} : tabs.front().key;
    Changed(Aspect::Items);
}

bool TabStrip::Has(std::string_view key) const
{
    return std::ranges::any_of(tabs, [&](const Tab& tab) { return tab.key == key; });
}

void TabStrip::SetTabTexts(std::size_t index, std::string caption, std::string toolTip)
{
    tabs.at(index).caption = std::move(caption);
    tabs.at(index).toolTip = std::move(toolTip);
    Changed(Aspect::Items);
}

void TabStrip::Select(std::string_view key)
{
    if (selected == key || !Has(key))
        return;
    selected = key;
    Changed(Aspect::Selection);
}

void TabStrip::UserSelects(std::string_view key)
{
    if (!Enabled() || selected == key || !Has(key))
        return;
    Select(key);
    if (Click)
        Click();
}

} // namespace ui
