#include "ui/win32/ListThumbnails.h"

#include <algorithm>
#include <chrono>

namespace ui::win32 {
namespace {

constexpr UINT_PTR ComposeTimer = 1;
constexpr UINT ComposePause = 10; ///< milliseconds: everything else that waits has its turn
/// Thumbnails are to be begun before anything is drawn.
constexpr UINT ComposeMessage = WM_APP + 2;
/// No further thumbnail is begun after this time: what shows in them is looked for on the disk.
constexpr std::chrono::milliseconds ComposeTurn{15};

} // namespace

ListThumbnails::ListThumbnails(const ListView& shownList, const ListLayout& listLayout,
                               const pictures::Pictures& pictures, platform::Jobs& jobs)
    : list{shownList}, layout{listLayout}, store{pictures, jobs}
{
    store.Changed = [this](int row, bool replaces) { Show(row, replaces); };
    store.Ready = [this] { Begin(); };
}

void ListThumbnails::Reset(bool shown, SIZE room, int pixels, int enlargement)
{
    isShown = shown;
    pitch = std::max(1, pixels);
    store.Reset(isShown ? list.Rows() : 0, {room.cx, room.cy}, enlargement);
    if (isShown)
        PostMessageW(window, ComposeMessage, 0, 0);
}

bool ListThumbnails::Handles(UINT message, WPARAM wParam)
{
    if (message != ComposeMessage && (message != WM_TIMER || wParam != ComposeTimer))
        return false;
    Compose();
    return true;
}

void ListThumbnails::StartComposing()
{
    if (!composing)
        composing = SetTimer(window, ComposeTimer, ComposePause, nullptr) != 0;
}

void ListThumbnails::Compose()
{
    // The pause begins anew after each turn: a timer that ran on would always be due again, and whoever handles the
    // waiting messages would not come to an end.
    KillTimer(window, ComposeTimer);
    composing = false;
    if (!isShown || list.Rows() == 0)
        return;
    RECT client{};
    GetClientRect(window, &client);
    const int first = RowAtOrBelow(0);
    const int below = RowAtOrBelow(client.bottom);
    // The row that `below` starts in may be partly in view, and so may the rest of its line.
    const int perLine = std::max(1, static_cast<int>(client.right) / pitch);
    store.Show(first, below + perLine - 1);
    Begin();
}

void ListThumbnails::Begin()
{
    const auto start = std::chrono::steady_clock::now();
    const auto of = [this](int row) { return row < list.Rows() ? list.Model()->ThumbnailOf(row) : Thumbnail{}; };
    while (isShown && store.Begin(of))
        if (std::chrono::steady_clock::now() - start >= ComposeTurn || HIWORD(GetQueueStatus(QS_INPUT)) != 0) {
            StartComposing();
            return;
        }
}

void ListThumbnails::Show(int row, bool replaces)
{
    const RECT place = PlaceOf(row);
    RECT client{};
    RECT part{};
    GetClientRect(window, &client);
    if (IntersectRect(&part, &place, &client) == 0)
        return;
    // Drawn at once where there is nothing yet: asked to draw one place, the control looks at each of its rows, and so
    // it would be busy with hundreds of them for as long as they come.
    bool isDrawn = false;
    const bool comesAnyway = GetUpdateRect(window, nullptr, FALSE) != 0;
    if (!replaces && !comesAnyway && !layout.Holds() &&
        SendMessageW(window, LVM_GETITEMSTATE, static_cast<WPARAM>(row), LVIS_SELECTED) == 0) {
        HDC context = GetDC(window);
        isDrawn = store.Draw(context, row, place);
        ReleaseDC(window, context);
    }
    if (!isDrawn)
        InvalidateRect(window, &place, FALSE);
}

bool ListThumbnails::Draw(HDC context, int row)
{
    if (store.IsDone(row))
        return store.Draw(context, row, PlaceOf(row));
    StartComposing();
    return true;
}

RECT ListThumbnails::PlaceOf(int row) const
{
    RECT place{};
    place.left = LVIR_ICON;
    SendMessageW(window, LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    return place;
}

int ListThumbnails::RowAtOrBelow(int y) const
{
    int low = 0;
    int high = list.Rows();
    while (low < high) {
        const int middle = low + (high - low) / 2;
        if (PlaceOf(middle).bottom > y)
            high = middle;
        else
            low = middle + 1;
    }
    return low;
}

} // namespace ui::win32
