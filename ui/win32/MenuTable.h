#pragma once

#include "ui/Menu.h"
#include "ui/win32/NativeHandle.h"

#include <string>
#include <vector>

namespace ui::win32 {

/// The native menus of one window: the bar, whose pop-ups are filled when they open, and the command numbers of the
/// entries that were last filled in.
class MenuTable {
public:
    /// A bar with an entry for each visible top entry; null when there is none. The caller owns it.
    MenuHandle BuildBar(const Menu& bar);
    /// Whether the bar that was built last still shows what it should.
    bool IsCurrent(const Menu& bar) const;
    /// Fills one pop-up of the bar anew. False when `popup` is none of the bar's own.
    bool FillBarPopup(const Menu& bar, HMENU popup, int index);
    /// A pop-up with all of `menu`'s entries.
    MenuHandle BuildPopup(const Menu& menu);
    /// Takes back the command numbers of pop-ups that are closed.
    void Restart() { commands.resize(barCommands); }
    /// The entry behind a command number; null when `root` does not hold it any more.
    Menu* Find(Menu& root, int command) const;
    bool HasMnemonic(const Menu& bar, wchar_t letter) const;

private:
    std::vector<const Menu*> commands;
    std::size_t barCommands{};
    std::vector<std::wstring> barTexts;
    std::vector<HMENU> barPopups;

    void Fill(HMENU native, const Menu& menu);
    void Append(HMENU native, const Menu& entry, bool isBar);
};

} // namespace ui::win32
