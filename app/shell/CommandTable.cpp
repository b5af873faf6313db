#include "app/shell/CommandTable.h"

#include "app/base/Captions.h"
#include "app/base/Mnemonics.h"
#include "platform/Text.h"

#include <algorithm>
#include <stdexcept>

namespace app {
namespace {

constexpr std::string_view Separator = "-";

std::unique_ptr<ui::Menu> MakeSeparator()
{
    auto item = std::make_unique<ui::Menu>();
    item->Separator = true;
    return item;
}

} // namespace

const Command* CommandTable::Find(std::string_view name) const
{
    const auto found = std::ranges::find(commands, name, &Command::name);
    return found == commands.end() ? nullptr : &*found;
}

const Command& CommandTable::Named(std::string_view name) const
{
    if (const Command* command = Find(name))
        return *command;
    throw std::logic_error{"a menu or toolbar names a command that there is not: " + std::string{name}};
}

void CommandTable::Fill(ui::Menu& menu, const std::vector<std::string>& entries,
                        const std::vector<MenuLayout>& subMenus) const
{
    for (const std::string& entry : entries) {
        if (entry.starts_with(Separator)) {
            menu.Add(MakeSeparator()).Name = entry == Separator ? "" : Named(entry.substr(Separator.size())).name;
            continue;
        }
        if (entry.ends_with('>') && Find(entry) == nullptr) { // a web link is named by its text, which may end so, too
            const auto sub = std::ranges::find(subMenus, entry.substr(0, entry.size() - 1), &MenuLayout::name);
            if (sub == subMenus.end())
                throw std::logic_error{"a menu that there is not: " + entry};
            Fill(menu.Add(std::make_unique<ui::Menu>(sub->name, ui::Tag{sub->caption})), sub->entries, subMenus);
            continue;
        }
        const Command& command = Named(entry);
        ui::Menu& item = menu.Add(std::make_unique<ui::Menu>(command.name, ui::Tag{command.caption}));
        item.Caption = command.text;
        item.Shortcut = command.key;
        item.Click = [this, name = command.name] { Run(name); };
    }
}

void CommandTable::FillToolBar(ui::ToolBar& bar, const std::vector<std::string>& entries)
{
    std::vector<ui::ToolBar::Button> buttons;
    for (const std::string& entry : entries) {
        ui::ToolBar::Button button;
        if (entry == Separator) {
            button.style = ui::ToolBar::Button::Style::Separator;
        } else {
            const Command& command = Named(entry);
            button.key = command.name;
            button.image = command.image;
            if (command.toolTip > 0)
                button.toolTipText = std::to_string(command.toolTip);
            if (command.checked)
                button.style = ui::ToolBar::Button::Style::Check;
        }
        buttons.push_back(std::move(button));
    }
    bar.SetButtons(std::move(buttons));
    bar.ButtonClick = [this](const std::string& key) { Run(key); };
}

void CommandTable::FinishToolTips(ui::ToolBar& bar, const StringTable& strings) const
{
    for (std::size_t i = 0; i < bar.Buttons().size(); ++i) {
        const ui::ToolBar::Button& button = bar.Buttons()[i];
        const Command* command = Find(button.key);
        if (command == nullptr)
            continue;
        std::string tip = platform::text::Trimmed(WithoutMnemonic(button.toolTip));
        if (command->key)
            tip += " (" + KeyText(command->key, strings) + ")";
        bar.SetButtonToolTip(i, std::move(tip));
    }
}

void CommandTable::Refresh(ui::Menu& menu) const
{
    menu.ForEach([this](ui::Menu& item) {
        const Command* command = Find(item.Name);
        if (command == nullptr)
            return;
        item.Enabled = IsEnabled(*command) && !(command->dimmed && command->dimmed());
        item.Visible = IsVisible(*command);
        item.Checked = command->checked && command->checked();
        if (command->textNow)
            item.Caption = command->textNow();
    });
}

void CommandTable::Refresh(ui::ToolBar& bar) const
{
    auto buttons = bar.Buttons();
    for (ui::ToolBar::Button& button : buttons)
        if (const Command* command = Find(button.key); command != nullptr) {
            button.enabled = IsEnabled(*command);
            button.pressed = command->checked && command->checked();
            button.visible = IsVisible(*command);
        }
    bar.SetButtons(std::move(buttons)); // at once: the native bar goes through all of them
}

bool CommandTable::Run(std::string_view name) const
{
    const Command* command = Find(name);
    if (command == nullptr || !IsEnabled(*command) || !IsVisible(*command))
        return false;
    command->run();
    return true;
}

bool CommandTable::Press(const ui::Key& key) const
{
    const auto found = std::ranges::find(commands, key, &Command::key);
    return key && found != commands.end() && Run(found->name);
}

} // namespace app
