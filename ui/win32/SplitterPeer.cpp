#include "ui/win32/SplitterPeer.h"

#include "ui/win32/Canvas.h"
#include "ui/win32/FormWindow.h"

#include <utility>

namespace ui::win32 {

SplitterPeer::SplitterPeer(Splitter& peerSplitter, FormWindow& form, int id)
    : PeerBase{peerSplitter, form}, splitter{peerSplitter}
{
    Create(CanvasClass(), 0, 0, id);
}

SplitterPeer::~SplitterPeer()
{
    End();
}

Size SplitterPeer::Preferred(int) const
{
    return {75, 75};
}

bool SplitterPeer::UsesKey(const Key& key)
{
    if (bar == nullptr || key.code != KeyCode::Escape)
        return false;
    End();
    return true;
}

std::optional<LRESULT> SplitterPeer::OnMessage(UINT message, WPARAM, LPARAM lParam)
{
    const POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
    switch (message) {
    case WM_SETCURSOR:
        SetCursor(LoadCursorW(nullptr, IsVertical() ? IDC_SIZEWE : IDC_SIZENS));
        return TRUE;
    case WM_LBUTTONDOWN:
        Begin(point);
        return 0;
    case WM_MOUSEMOVE:
        if (bar != nullptr)
            MoveTo(point);
        return 0;
    case WM_LBUTTONUP:
        if (bar != nullptr) {
            MoveTo(point);
            const int wanted = position;
            End();
            splitter.UserDrags(wanted);
        }
        return 0;
    case WM_CAPTURECHANGED:
        // Another window took the mouse: the drag counts as given up.
        if (reinterpret_cast<HWND>(lParam) != Handle())
            End();
        return 0;
    default:
        return std::nullopt;
    }
}

void SplitterPeer::Begin(POINT point)
{
    End();
    grip = IsVertical() ? point.x : point.y;
    bar = CreateWindowExW(0, WC_STATICW, nullptr, WS_CHILD | WS_CLIPSIBLINGS | SS_GRAYRECT, 0, 0, 0, 0,
                          Window().Handle(), nullptr, GetModuleHandleW(nullptr), nullptr);
    SetCapture(Handle());
    MoveTo(point);
}

void SplitterPeer::MoveTo(POINT point)
{
    MapWindowPoints(Handle(), Window().Handle(), &point, 1);
    const int edge = (IsVertical() ? point.x : point.y) - grip;
    position = splitter.Allowed(ToTwips(edge, Dpi()));
    ShowBar();
}

void SplitterPeer::ShowBar()
{
    RECT place = ToPixels(splitter.Bounds(), Dpi());
    const int edge = Pixels(position);
    OffsetRect(&place, IsVertical() ? edge - place.left : 0, IsVertical() ? 0 : edge - place.top);
    SetWindowPos(bar, HWND_TOP, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOACTIVATE | SWP_SHOWWINDOW);
    UpdateWindow(bar);
}

void SplitterPeer::End()
{
    const HWND gone = std::exchange(bar, nullptr);
    if (gone == nullptr)
        return;
    DestroyWindow(gone);
    if (GetCapture() == Handle())
        ReleaseCapture();
}

} // namespace ui::win32
