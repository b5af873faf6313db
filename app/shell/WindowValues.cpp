#include "app/shell/WindowValues.h"

#include "app/shell/WindowPlacement.h"

#include <algorithm>
#include <cstdlib>
#include <variant>

namespace app {
namespace {

constexpr std::string_view Section = "Browser";

/// One remembered value. A number outside its bounds comes back as the nearer of them.
struct Row {
    std::string_view key;
    std::variant<int WindowValues::*, bool WindowValues::*> member;
    int otherwise;
    int low{0}, high{1};
    bool isOfNormalState{};
};

// Saved in this order.
// clang-format off
const Row rows[] = {
    {"TSMaximized", &WindowValues::isMaximized, false},
    {"HorzSplitterTop", &WindowValues::horzSplitterTop, 5250, 0, PlaceLimit},
    {"MainLeft", &WindowValues::left, 1000, -PlaceLimit, PlaceLimit, true},
    {"MainTop", &WindowValues::top, 1000, -PlaceLimit, PlaceLimit, true},
    {"MainWidth", &WindowValues::width, 8750, 1, PlaceLimit, true},
    {"MainHeight", &WindowValues::height, 7200, 1000, PlaceLimit, true}, // less is hardly a title bar
    {"VertSplitterLeft", &WindowValues::vertSplitterLeft, 1965, 0, PlaceLimit},
    {"ListViewType", &WindowValues::listView, 0, 0, 3},
    {"ListViewFileColumnSize", &WindowValues::nameColumn, 3000, 300, 30'000},
    {"ListViewFolderColumnSize", &WindowValues::folderColumn, 2550, 0, 30'000}, // these can be hidden
    {"ListViewFoundFolderColumnSize", &WindowValues::foundFolderColumn, 5100, 0, 30'000},
    {"ListViewFileSizeColumnSize", &WindowValues::sizeColumn, 900, 0, 30'000},
    {"ListViewFileModifiedColumnSize", &WindowValues::modifiedColumn, 2100, 0, 30'000},
    {"ListViewSortColumn", &WindowValues::sortColumn, -1, -1, 3},
    {"ListViewSortDescending", &WindowValues::sortsDescending, false},
    {"ThumbnailViewOn", &WindowValues::thumbnailViewOn, false},
    {"FolderListOn", &WindowValues::folderListOn, true},
    {"PreviewPaneOn", &WindowValues::previewPaneOn, true},
    {"BannerOn", &WindowValues::bannerOn, true},
};
// clang-format on

} // namespace

WindowValues ReadWindowValues(const Settings& settings)
{
    WindowValues values;
    for (const Row& row : rows) {
        if (const auto* flag = std::get_if<bool WindowValues::*>(&row.member)) {
            values.*(*flag) = settings.Flag(Section, row.key, row.otherwise != 0);
            continue;
        }
        const int stored = settings.Number(Section, row.key, row.otherwise, -PlaceLimit - 1, PlaceLimit + 1);
        values.*std::get<int WindowValues::*>(row.member) =
            std::abs(stored) > PlaceLimit ? row.otherwise : std::clamp(stored, row.low, row.high);
    }
    return values;
}

bool SaveWindowValues(const WindowValues& values, Settings& settings)
{
    bool saved = true;
    for (const Row& row : rows) {
        if (row.isOfNormalState && values.isMaximized)
            continue;
        const auto* flag = std::get_if<bool WindowValues::*>(&row.member);
        const auto done =
            flag != nullptr ? settings.SaveFlag(Section, row.key, values.*(*flag))
                            : settings.SaveNumber(Section, row.key, values.*std::get<int WindowValues::*>(row.member));
        saved = done.has_value() && saved;
    }
    return saved;
}

} // namespace app
