#include "app/base/Captions.h"

#include "app/base/StringId.h"
#include "platform/Text.h"
#include "ui/ListView.h"
#include "ui/TabStrip.h"
#include "ui/ToolBar.h"

#include <utility>

namespace app {
namespace {

/// Calls `use` with the text that `number` names; not when it is no number above 0.
template <class Use>
void WithText(const StringTable& strings, const std::string& number, Use use)
{
    const int id = platform::text::IsNumeric(number) ? platform::text::ToInt(number, 0, 0, 0xFFFF) : 0;
    if (id > 0)
        use(strings.LoadString(static_cast<std::uint16_t>(id)));
}

void LoadTabs(ui::TabStrip& strip, const StringTable& strings)
{
    for (std::size_t i = 0; i < strip.Tabs().size(); ++i) {
        const ui::TabStrip::Tab tab = strip.Tabs()[i];
        std::string caption = tab.caption;
        std::string toolTip = tab.toolTip;
        WithText(strings, tab.tagText, [&](std::string text) { caption = std::move(text); });
        WithText(strings, tab.toolTipText, [&](std::string text) { toolTip = std::move(text); });
        strip.SetTabTexts(i, std::move(caption), std::move(toolTip));
    }
}

void LoadControl(ui::Control& control, const StringTable& strings)
{
    const std::string_view type = control.TypeName();
    if (type == "TabStrip") {
        LoadTabs(static_cast<ui::TabStrip&>(control), strings);
    } else if (type == "Toolbar") {
        auto& bar = static_cast<ui::ToolBar&>(control);
        for (std::size_t i = 0; i < bar.Buttons().size(); ++i)
            WithText(strings, bar.Buttons()[i].toolTipText,
                     [&](std::string text) { bar.SetButtonToolTip(i, std::move(text)); });
    } else if (type == "ListView") {
        auto& list = static_cast<ui::ListView&>(control);
        for (std::size_t i = 0; i < list.Columns().size(); ++i)
            WithText(strings, list.Columns()[i].tagText,
                     [&](std::string text) { list.SetColumnText(i, std::move(text)); });
    } else {
        if (type != "Label")
            WithText(strings, control.ToolTipText, [&](std::string text) { control.SetToolTip(std::move(text)); });
        WithText(strings, control.TagText, [&](std::string text) { control.SetCaption(std::move(text)); });
    }
}

} // namespace

std::string KeyText(const ui::Key& key, const StringTable& strings)
{
    static constexpr std::pair<std::string_view, std::uint16_t> words[] = {
        {"Ctrl+", str::CtrlKey}, {"Shift+", str::ShiftKey}, {"Enter", str::EnterKey}, {"Del", str::DeleteKey}};
    std::string text = ui::KeyText(key);
    for (const auto& [word, id] : words)
        text = platform::text::Replaced(text, word, strings.LoadString(id));
    return text;
}

void LoadCaptions(ui::Form& form, const StringTable& strings)
{
    WithText(strings, form.TagText, [&](std::string text) { form.SetCaption(std::move(text)); });
    for (ui::Control* control : form.Controls())
        LoadControl(*control, strings);
    const auto loadMenu = [&](ui::Menu& item) {
        WithText(strings, item.TagText, [&](std::string text) { item.Caption = std::move(text); });
        item.ShortcutText = KeyText(item.Shortcut, strings);
    };
    form.MenuBar.ForEach(loadMenu);
    for (ui::Menu* popup : form.Popups)
        popup->ForEach(loadMenu);
}

} // namespace app
