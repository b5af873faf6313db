#include "browser/FileTypeTabs.h"

#include "app/base/StringId.h"
#include "library/TemplateFiles.h"

#include <algorithm>

namespace browser {
namespace {

constexpr FileTypeTabs::Type types[] = {
    {"Word", "ShowWordTemplates", app::str::TabWord, app::str::TabWordAgain, 149, "word"},
    {"Excel", "ShowXLTemplates", app::str::TabExcel, app::str::TabExcelAgain, 150, "excel"},
    {"PPT", "ShowPPTTemplates", app::str::TabPowerPoint, app::str::TabPowerPointAgain, 151, "ppt"},
    {"Photo", "ShowPhotoTemplates", app::str::TabPhoto, app::str::TabPhoto, 152, "photo"},
};

/// Image numbers of the tab strip: the types in order, then "All".
int ImageOf(std::size_t index)
{
    return static_cast<int>(index) + 1;
}

ui::TabStrip::Tab MakeTab(const FileTypeTabs::Type& type, std::size_t index, int caption)
{
    return {std::string{type.key}, std::to_string(caption), {}, {}, {}, ImageOf(index)};
}

} // namespace

std::span<const FileTypeTabs::Type> FileTypeTabs::Types()
{
    return types;
}

FileTypeTabs::FileTypeTabs(app::Settings& settings, const app::StringTable& strings, ui::TabStrip& strip)
    : settings{settings}, strings{strings}, strip{strip}
{
    std::vector<ui::TabStrip::Tab> tabs;
    for (std::size_t i = 0; i < std::size(types); ++i) {
        tabs.push_back(MakeTab(types[i], i, types[i].caption));
        strip.Images.SetNamed(ImageOf(i), std::string{types[i].image});
    }
    strip.Images.SetNamed(ImageOf(std::size(types)), "all");
    tabs.push_back({std::string{AllTab}, std::to_string(app::str::TabAll), {}, {}, {}, ImageOf(std::size(types))});
    strip.SetTabs(std::move(tabs));
    strip.Select(AllTab);
}

void FileTypeTabs::Restore()
{
    for (const Type& type : types)
        if (!settings.Flag("Browser", type.setting, true))
            strip.Remove(type.key);
    strip.Select(AllTab);
    strip.Select(settings.Text("Browser", "LastTabSelected"));
}

bool FileTypeTabs::Toggle(std::string_view key)
{
    const auto* type = std::ranges::find(types, key, &Type::key);
    if (type == std::end(types))
        return false;
    const std::string selected = strip.Selected();
    const bool show = !strip.Has(key);
    if (show) {
        // In its own place: behind those before it that are shown.
        const auto index = static_cast<std::size_t>(type - types);
        const auto place = std::ranges::count_if(std::span{types}.first(index),
                                                 [this](const Type& before) { return strip.Has(before.key); });
        auto tab = MakeTab(*type, index, type->captionAgain);
        tab.caption = strings.LoadString(static_cast<std::uint16_t>(type->captionAgain));
        strip.Insert(static_cast<std::size_t>(place), std::move(tab));
        strip.Select(key);
    } else {
        strip.Remove(key);
        if (selected == key)
            strip.Select(AllTab);
    }
    (void)settings.SaveFlag("Browser", type->setting, show);
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
    static constexpr std::pair<std::string_view, std::size_t> shown[] = {
        {"Word", library::WordTemplate},
        {"Excel", library::SpreadsheetTemplate},
        {"PPT", library::PresentationTemplate},
        {"Photo", library::PhotoTemplate},
    };
    return tab == AllTab || std::ranges::find(shown, std::pair{tab, type}) != std::end(shown);
}

} // namespace browser
