#pragma once

#include "app/base/Settings.h"

namespace app {

/// What the main window remembers from one session to the next. Lengths in twips.
struct WindowValues {
    bool isMaximized{};
    int horzSplitterTop{};
    int left{}, top{}, width{}, height{}; ///< in the normal state
    int vertSplitterLeft{};
    int listView{}; ///< the last one that was not the thumbnails
    int nameColumn{}, folderColumn{}, sizeColumn{}, modifiedColumn{};
    int foundFolderColumn{}; ///< while the list shows what was found
    int sortColumn{-1};      ///< -1: in the order in which the folder has them
    bool sortsDescending{};
    bool thumbnailViewOn{};
    bool folderListOn{};
    bool previewPaneOn{};
    bool bannerOn{};

    /// The widths of the list's columns, in their order.
    static constexpr int WindowValues::* Columns[] = {&WindowValues::nameColumn, &WindowValues::folderColumn,
                                                      &WindowValues::sizeColumn, &WindowValues::modifiedColumn};
};

/// What is not stored has its default.
WindowValues ReadWindowValues(const Settings& settings);
/// The place of the normal state is not touched by a maximised window. False when a value could not be saved.
bool SaveWindowValues(const WindowValues& values, Settings& settings);

} // namespace app
