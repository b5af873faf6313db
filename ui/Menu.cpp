#include "ui/Menu.h"

namespace ui {

Menu::Menu(std::string itemName, Tag tag) : Name{std::move(itemName)}
{
    if (tag.id > 0)
        TagText = std::to_string(tag.id);
}

Menu& Menu::Add(std::unique_ptr<Menu> item)
{
    items.push_back(std::move(item));
    return *items.back();
}

Menu* Menu::Find(std::string_view name)
{
    Menu* found = nullptr;
    ForEach([&](Menu& item) {
        if (found == nullptr && item.Name == name)
            found = &item;
    });
    return found;
}

void Menu::ForEach(const std::function<void(Menu&)>& visit)
{
    for (const auto& item : items) {
        visit(*item);
        item->ForEach(visit);
    }
}

void Menu::UserClicks()
{
    if (Enabled && Visible && Click)
        Click();
}

} // namespace ui
