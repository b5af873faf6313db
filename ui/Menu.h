#pragma once

#include "ui/Control.h"
#include "ui/Key.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ui {

/// One entry of a menu bar or pop-up, with the entries below it. A peer builds the native menu from this state when
/// it opens.
class Menu {
public:
    Menu() = default;
    Menu(std::string itemName, Tag tag);

    static constexpr std::string_view TypeName() { return "Menu"; }

    std::string Name;
    std::string TagText; ///< string number of the caption
    std::string Caption;
    Key Shortcut;
    std::string ShortcutText; ///< in the user's language; "": as KeyText says it
    bool Separator{};
    bool Enabled{true};
    bool Checked{};
    bool Visible{true};
    bool Default{}; ///< of a pop-up: what a double click does, in bold
    std::function<void()> Click;

    Menu& Add(std::unique_ptr<Menu> item);
    const std::vector<std::unique_ptr<Menu>>& Items() const { return items; }
    void Clear() { items.clear(); }
    /// Anywhere below this entry; null when there is none.
    Menu* Find(std::string_view name);
    /// Calls `visit` for this entry's descendants, depth first.
    void ForEach(const std::function<void(Menu&)>& visit);

    /// The user chose the entry; nothing while it is disabled or hidden.
    void UserClicks();

private:
    std::vector<std::unique_ptr<Menu>> items;
};

} // namespace ui
