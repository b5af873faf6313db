#pragma once

#include "app/base/StringTable.h"
#include "ui/Form.h"
#include "ui/ToolBar.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace app {

/// One thing the user can ask for. Menu entries, toolbar buttons, pop-up entries and keys are all made from it.
struct Command {
    std::string name;  ///< also the name of its menu entry
    int caption{};     ///< string number; 0: `text` stands as it is
    std::string text;  ///< caption that is no text of the program's own
    int toolTip{};     ///< string number; 0: none
    std::string image; ///< one of the program's pictures; "" for none
    ui::Key key;
    std::function<void()> run;     ///< none: nothing in the program does this yet, and it shows disabled
    std::function<bool()> enabled; ///< none: always
    /// Shown disabled although its key still says why it cannot be done; none: never.
    std::function<bool()> dimmed{};
    std::function<bool()> checked;        ///< none: not a switch
    std::function<bool()> visible;        ///< none: always
    std::function<std::string()> textNow; ///< caption of an entry that changes; none: it stays
};

/// The commands of a window, and the menus and toolbar that are made from them.
class CommandTable {
public:
    void Add(Command command) { commands.push_back(std::move(command)); }
    /// Null when there is none of that name.
    const Command* Find(std::string_view name) const;

    /// One menu: its entries by command name, "-" for a separator, "-name" for one that a command of that name
    /// shows and hides.
    struct MenuLayout {
        std::string name;
        int caption{};
        std::vector<std::string> entries;
    };
    /// Adds the entries to `menu`. An entry "name>" opens a sub-menu of that name from `subMenus`. Throws
    /// std::logic_error for a name that there is not, as FillToolBar does: a misspelt entry must not just be missing.
    void Fill(ui::Menu& menu, const std::vector<std::string>& entries,
              const std::vector<MenuLayout>& subMenus = {}) const;
    void FillToolBar(ui::ToolBar& bar, const std::vector<std::string>& entries);

    /// The tool tips of the buttons once the captions are loaded: without what marks a letter, with the command's key.
    void FinishToolTips(ui::ToolBar& bar, const StringTable& strings) const;

    /// Brings the states of everything made from the commands up to date.
    void Refresh(ui::Menu& menu) const;
    void Refresh(ui::ToolBar& bar) const;
    /// Runs a command that is there, visible and enabled; false otherwise.
    bool Run(std::string_view name) const;
    /// Runs the command that has this key: for those that stand in no menu bar, which looks for its keys itself. False
    /// when there is none, or it cannot run.
    bool Press(const ui::Key& key) const;

    static bool IsEnabled(const Command& command) { return command.run && (!command.enabled || command.enabled()); }
    static bool IsVisible(const Command& command) { return !command.visible || command.visible(); }

private:
    const Command& Named(std::string_view name) const;

    std::vector<Command> commands;
};

} // namespace app
