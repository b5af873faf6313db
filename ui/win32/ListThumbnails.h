#pragma once

#include "pictures/win32/ThumbnailStore.h"
#include "ui/ListView.h"
#include "ui/win32/ListLayout.h"

namespace ui::win32 {

/// The thumbnails of a native list: has them composed, those in view first, and draws them.
class ListThumbnails {
public:
    ListThumbnails(const ListView& list, const ListLayout& layout, const pictures::Pictures& pictures,
                   platform::Jobs& jobs);

    /// The native list, as soon as there is one.
    void Attach(HWND listWindow) { window = listWindow; }
    bool IsShown() const { return isShown; }
    const pictures::win32::ThumbnailStore& Store() const { return store; }

    /// The rows are others. `room` is that of one thumbnail, `pitch` from one to the next in a line, in pixels; a small
    /// picture is shown `enlargement` times as large at most.
    void Reset(bool shown, SIZE room, int pitch, int enlargement);
    /// The list's messages about them; false for any other.
    bool Handles(UINT message, WPARAM wParam);
    /// False where there is only the row's icon to show.
    bool Draw(HDC context, int row);
    /// Where a row's picture stands, also an icon.
    RECT PlaceOf(int row) const;

private:
    const ListView& list;
    const ListLayout& layout;
    HWND window{};
    pictures::win32::ThumbnailStore store;
    int pitch{1};
    bool isShown{};
    bool composing{}; ///< the timer runs

    void StartComposing();
    void Compose();
    void Begin();
    /// `replaces`: there is another one in its place.
    void Show(int row, bool replaces);
    int RowAtOrBelow(int y) const;
};

} // namespace ui::win32
