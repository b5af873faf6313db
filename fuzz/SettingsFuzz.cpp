// A registry in which our own settings have been spoiled, and monitors of any size.
#include "fuzz/Machine.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>

using fuzz::Check;
using platform::ValueType;

namespace {

constexpr std::pair<const char*, const char*> settings[] = {
    // clang-format off
    {"Browser", "TSMaximized"}, {"Browser", "MainLeft"}, {"Browser", "MainTop"}, {"Browser", "MainWidth"},
    {"Browser", "MainHeight"}, {"Browser", "HorzSplitterTop"}, {"Browser", "VertSplitterLeft"},
    {"Browser", "ListViewType"}, {"Browser", "ListViewFileColumnSize"}, {"Browser", "ListViewFolderColumnSize"},
    {"Browser", "ListViewFileSizeColumnSize"}, {"Browser", "ListViewFileModifiedColumnSize"},
    {"Browser", "FolderListOn"}, {"Browser", "PreviewPaneOn"}, {"Browser", "LastFolderBrowsed"},
    {"Browser", "LastTabSelected"}, {"Browser", "ShowWordTemplates"}, {"Browser", "ShowXLTemplates"},
    {"Browser", "ShowPPTTemplates"}, {"Browser", "ShowPhotoTemplates"}, {"Browser", "Access HDD_Templates"},
    {"Browser", "HDD Templates Path"}, {"Browser", "CDROM Templates Path"}, {"Options", "MSOVersion"},
    {"Options", "ExcludedTemplates"}, {"Options", "Installed Path"}, {"Customization", "ApplicationName"},
    {"Browser", "ThumbnailViewOn"}, {"Browser", "Show Path Toggle"}, {"Browser\\Recent Files", "File 1"},
    {"Browser\\Recent Files", "File 2"}, {"Options", "WebLink"}, {"Options", "ReportABug"},
    {"Options", "History List Time Period"}, {"Options", "Profile Images Path"}, {"Options", "ExportProfilePath"},
    {"Help", "Using Find HTML"}, {"Browser\\History List", "C:\\Templates\\Letters\\Memo.swt"}, {"Profiles", "FirstRun"}, {"Profiles", "DefaultProfile"},
    {"Profiles", "CurrentProfileToUse"}, {"Profiles", "PromptForProfile"}, {"Profiles", "ShowAutoComplete"},
    // clang-format on
};
constexpr const char* typicalTexts[] = {
    // clang-format off
    "", "True", "False", "0", "-1", "1", "3", "99999999999999999999", "-32000", "15000", "All", "Word", "Letters",
    "My Favorites", "C:\\Templates", "X:\\",
    // clang-format on
};

void Spoil(fuzz::Machine& machine, FuzzedDataProvider& input)
{
    const auto take = [&] {
        return input.ConsumeBool() ? std::string{input.PickValueInArray(typicalTexts)}
                                   : input.ConsumeRandomLengthString(600);
    };
    while (input.remaining_bytes() > 0) {
        const auto type = static_cast<ValueType>(input.ConsumeBool() ? 1 : input.ConsumeIntegralInRange(0, 12));
        if (input.ConsumeIntegralInRange(0, 7) == 0) {
            if (const std::string name = take(); name.find('\0') == std::string::npos)
                machine.Put("Browser\\Favorites", name, {type, take()});
        } else {
            const auto& [section, name] = input.PickValueInArray(settings);
            machine.Put(section, name, {type, take()});
        }
    }
}

/// Enough of the title bar lies in a work area to catch the window with the mouse.
bool CanBeCaught(const ui::Rect& window, const ui::Rect& area)
{
    return window.top >= area.top && window.top + 300 <= area.Bottom() &&
           std::min(window.Right(), area.Right()) - std::max(window.left, area.left) >= 1200;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider input{bytes, size};
    fuzz::Machine machine;
    for (const char* file : {"Letters\\Memo.swt", "Letters\\Formal\\Note.swt", "Money\\Budget.ccw", "Money\\Guide.pdf"})
        machine.system.files.AddFile(fuzz::Templates + "\\" + file, "contents");
    machine.toolkit.Areas.clear();
    for (int left = input.ConsumeIntegralInRange(-30'000, 0), count = input.ConsumeIntegralInRange(1, 3); count > 0;
         --count) {
        const int width = input.ConsumeIntegralInRange(9700, 60'000); // a window is never narrower
        machine.toolkit.Areas.push_back(
            {{left, input.ConsumeIntegralInRange(-9000, 9000), width, input.ConsumeIntegralInRange(6000, 30'000)}});
        left += width;
    }
    Spoil(machine, input);
    const auto disk = machine.system.files.Snapshot();

    for (int start = 1; start <= 2; ++start) // the second one reads what the first one has stored
        machine.Run([&](app::frmMain& main) {
            Check(std::ranges::any_of(machine.toolkit.Areas,
                                      [&](const ui::Rect& area) { return CanBeCaught(main.Placement(), area); }),
                  "the window can be caught");
            for (const ui::Control* control : main.Controls())
                Check(!control->Visible() || (control->Bounds().width >= 0 && control->Bounds().height >= 0),
                      "no control is inside out");
            for (const char* tab : {"Word", "All"})
                main.fileTypeTabStrip.UserSelects(tab);
            main.tvTreeView.UserSelects("Money");
            main.tvTreeView.UserSelects("My Favorites");
            for (const char* command :
                 {"mnuHelpSearch", "mnuFile1", "mnuRecentDocuments", "mnuHistory", "mnuProfileEdit", "mnuProfileManage",
                  "mnuProfileImportExport", "mnuViewThumbnails"})
                main.Commands().Run(command);
        });
    Check(machine.system.files.Snapshot() == disk, "settings change nothing on the disk");
    return 0;
}
