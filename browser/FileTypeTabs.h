#pragma once

#include "app/base/Settings.h"
#include "app/base/StringTable.h"
#include "ui/TabStrip.h"

#include <string>
#include <string_view>

namespace browser {

/// The tabs above the list. "All" is always there; the others, one a kind of template, can be hidden and shown again.
class FileTypeTabs {
public:
    /// Key of the tab that shows every type.
    static constexpr std::string_view AllTab = "All";

    FileTypeTabs(app::Settings& settings, const app::StringTable& strings, ui::TabStrip& strip);

    /// All tabs, then without those that the settings hide; the stored tab is selected when it is there.
    void Restore();
    bool IsShown(std::string_view key) const { return strip.Has(key); }
    /// Hides a tab or shows it again, and remembers it. A hidden tab that was selected gives way to "All"; one that is
    /// shown again is selected. True when another tab is selected now.
    bool Toggle(std::string_view key);
    /// Key of the selected tab.
    const std::string& Selected() const { return strip.Selected(); }
    /// Stores the selected tab as the one to come back to.
    void RememberSelection();
    /// The neighbour of the selected tab, round the end.
    void SelectNext(bool backwards);

    /// Whether files of this type (position among the kinds of templates) show under the tab.
    static bool Shows(std::string_view tab, std::size_t type);

private:
    app::Settings& settings;
    const app::StringTable& strings;
    ui::TabStrip& strip;
};

} // namespace browser
