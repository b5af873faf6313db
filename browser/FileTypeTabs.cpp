#include "browser/FileTypeTabs.h"

#include "app/base/StringId.h"
#include "library/TemplateFiles.h"

#include <algorithm>

namespace browser {
namespace {

using library::TemplateKind;
using library::TemplateKinds;

/// Image number of the tab for all, behind those of the kinds.
constexpr int AllImage = static_cast<int>(TemplateKinds.size()) + 1;

int ImageOf(const TemplateKind& kind)
{
    return static_cast<int>(&kind - TemplateKinds.data()) + 1;
}

ui::TabStrip::Tab MakeTab(const TemplateKind& kind)
{
    return {std::string{kind.tab}, std::to_string(kind.tabCaption), {}, {}, {}, ImageOf(kind)};
}

} // namespace

FileTypeTabs::FileTypeTabs(app::Settings& settings, const app::StringTable& strings, ui::TabStrip& strip)
    : settings{settings}, strings{strings}, strip{strip}
{
    std::vector<ui::TabStrip::Tab> tabs;
    for (const TemplateKind& kind : TemplateKinds) {
        if (kind.tab.empty())
            continue;
        tabs.push_back(MakeTab(kind));
        strip.Images.SetNamed(ImageOf(kind), std::string{kind.image});
    }
    strip.Images.SetNamed(AllImage, "all");
    tabs.push_back({std::string{AllTab}, std::to_string(app::str::TabAll), {}, {}, {}, AllImage});
    strip.SetTabs(std::move(tabs));
    strip.Select(AllTab);
}

void FileTypeTabs::Restore()
{
    for (const TemplateKind& kind : TemplateKinds)
        if (!kind.tab.empty() && !settings.Flag("Browser", kind.tabSetting, true))
            strip.Remove(kind.tab);
    strip.Select(AllTab);
    strip.Select(settings.Text("Browser", "LastTabSelected"));
}

bool FileTypeTabs::Toggle(std::string_view key)
{
    const auto* kind = std::ranges::find(TemplateKinds, key, &TemplateKind::tab);
    if (key.empty() || kind == TemplateKinds.end())
        return false;
    const std::string selected = strip.Selected();
    const bool show = !strip.Has(key);
    if (show) {
        // In its own place: behind those before it that are shown.
        const auto place = std::count_if(TemplateKinds.begin(), kind,
                                         [this](const TemplateKind& before) { return strip.Has(before.tab); });
        auto tab = MakeTab(*kind);
        tab.caption = strings.LoadString(static_cast<std::uint16_t>(kind->tabCaption));
        strip.Insert(static_cast<std::size_t>(place), std::move(tab));
        strip.Select(key);
    } else {
        strip.Remove(key);
        if (selected == key)
            strip.Select(AllTab);
    }
    (void)settings.SaveFlag("Browser", kind->tabSetting, show);
    return strip.Selected() != selected;
}

void FileTypeTabs::RememberSelection()
{
    (void)settings.Save("Browser", "LastTabSelected", strip.Selected());
}

void FileTypeTabs::SelectNext(bool backwards)
{
    const auto& tabs = strip.Tabs();
    const auto current = std::ranges::find(tabs, strip.Selected(), &ui::TabStrip::Tab::key);
    if (current == tabs.end())
        return;
    const auto count = tabs.size();
    const auto index = static_cast<std::size_t>(current - tabs.begin());
    const std::string key = tabs[(index + (backwards ? count - 1 : 1)) % count].key;
    strip.UserSelects(key);
}

bool FileTypeTabs::Shows(std::string_view tab, std::size_t type)
{
    return tab == AllTab || TemplateKinds.at(type).tab == tab;
}

} // namespace browser
