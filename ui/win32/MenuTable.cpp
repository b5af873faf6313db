#include "ui/win32/MenuTable.h"

#include "ui/win32/NativeText.h"

#include <algorithm>

namespace ui::win32 {
namespace {

/// Above the numbers that dialogs keep for OK and Cancel.
constexpr int FirstCommand = 0x1000;

std::wstring BarText(const Menu& entry)
{
    return ToNative(entry.Caption) + (entry.Enabled ? L"" : L"\n");
}

std::vector<const Menu*> Shown(const Menu& menu)
{
    std::vector<const Menu*> shown;
    for (const auto& entry : menu.Items()) {
        // Separators stand between entries: hidden neighbours must not leave two in a row or one at an end.
        if (!entry->Visible || (entry->Separator && (shown.empty() || shown.back()->Separator)))
            continue;
        shown.push_back(entry.get());
    }
    if (!shown.empty() && shown.back()->Separator)
        shown.pop_back();
    return shown;
}

} // namespace

MenuHandle MenuTable::BuildBar(const Menu& bar)
{
    barTexts.clear();
    barPopups.clear();
    commands.clear();
    MenuHandle native;
    for (const Menu* entry : Shown(bar)) {
        if (!native)
            native.reset(CreateMenu());
        barTexts.push_back(BarText(*entry));
        Append(native.get(), *entry, true);
        barPopups.push_back(GetSubMenu(native.get(), static_cast<int>(barTexts.size()) - 1));
    }
    barCommands = commands.size();
    return native;
}

bool MenuTable::IsCurrent(const Menu& bar) const
{
    return std::ranges::equal(Shown(bar), barTexts, {}, [](const Menu* entry) { return BarText(*entry); });
}

bool MenuTable::FillBarPopup(const Menu& bar, HMENU popup, int index)
{
    const auto shown = Shown(bar);
    const auto place = static_cast<std::size_t>(index);
    if (index < 0 || place >= barPopups.size() || place >= shown.size() || barPopups[place] != popup)
        return false;
    while (GetMenuItemCount(popup) > 0)
        DeleteMenu(popup, 0, MF_BYPOSITION);
    Fill(popup, *shown[place]);
    return true;
}

MenuHandle MenuTable::BuildPopup(const Menu& menu)
{
    MenuHandle popup{CreatePopupMenu()};
    Fill(popup.get(), menu);
    return popup;
}

Menu* MenuTable::Find(Menu& root, int command) const
{
    const int index = command - FirstCommand;
    if (index < 0 || static_cast<std::size_t>(index) >= commands.size())
        return nullptr;
    Menu* found = nullptr;
    root.ForEach([&](Menu& entry) {
        if (&entry == commands[static_cast<std::size_t>(index)])
            found = &entry;
    });
    return found;
}

bool MenuTable::HasMnemonic(const Menu& bar, wchar_t letter) const
{
    return std::ranges::any_of(Shown(bar),
                               [&](const Menu* entry) { return MnemonicOf(ToNative(entry->Caption)) == letter; });
}

void MenuTable::Fill(HMENU native, const Menu& menu)
{
    for (const Menu* entry : Shown(menu))
        Append(native, *entry, false);
}

void MenuTable::Append(HMENU native, const Menu& entry, bool isBar)
{
    if (entry.Separator) {
        AppendMenuW(native, MF_SEPARATOR, 0, nullptr);
        return;
    }
    std::wstring text = ToNative(entry.Caption);
    const std::string keyText = entry.ShortcutText.empty() ? KeyText(entry.Shortcut) : entry.ShortcutText;
    if (!keyText.empty())
        text += L'\t' + ToNative(keyText);

    UINT flags = MF_STRING;
    flags |= entry.Enabled ? MF_ENABLED : MF_GRAYED;
    flags |= entry.Checked ? MF_CHECKED : MF_UNCHECKED;
    if (!entry.Items().empty()) {
        HMENU popup = CreatePopupMenu();
        if (!isBar)
            Fill(popup, entry);
        AppendMenuW(native, flags | MF_POPUP, reinterpret_cast<UINT_PTR>(popup), text.c_str());
        return;
    }
    // A numbered entry is chosen by its digit.
    if (text.size() > 1 && text[0] >= L'1' && text[0] <= L'9' && text[1] == L' ' && MnemonicOf(text) == 0)
        text.insert(0, 1, L'&');
    commands.push_back(&entry);
    const UINT command = static_cast<UINT>(FirstCommand) + static_cast<UINT>(commands.size()) - 1;
    AppendMenuW(native, flags, command, text.c_str());
    if (entry.Default)
        SetMenuDefaultItem(native, command, FALSE);
}

} // namespace ui::win32
