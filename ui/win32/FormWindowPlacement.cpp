// Where a window stands and how large it is.
#include "ui/win32/FormWindow.h"

#include "platform/Scoped.h"
#include "ui/win32/PeerBase.h"

#include <algorithm>
#include <utility>

namespace ui::win32 {
namespace {

/// Twips added to a client area, a pixel's at 96 dpi less one: what is rounded to whole pixels never cuts.
constexpr int RoundingRoom = 14;

/// Moves `outer` to the middle of `around`, inside the work area of its monitor.
RECT Centred(SIZE outer, const RECT& around)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    GetMonitorInfoW(MonitorFromRect(&around, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    const LONG left = std::max(std::min((around.left + around.right - outer.cx) / 2, work.right - outer.cx), work.left);
    const LONG top = std::max(std::min((around.top + around.bottom - outer.cy) / 2, work.bottom - outer.cy), work.top);
    return {left, top, left + outer.cx, top + outer.cy};
}

RECT WorkAreaOf(HWND window)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

} // namespace

void FormWindow::ApplyPlacement()
{
    const auto pixels = [this] {
        const Rect& place = form.Placement();
        const POINT corner{ToPixels(place.left, SystemDpi()), ToPixels(place.top, SystemDpi())};
        return RECT{corner.x, corner.y, corner.x + ToPixels(place.width, dpi), corner.y + ToPixels(place.height, dpi)};
    };
    const platform::Scoped guard{byCode, true};
    if (IsIconic(Handle()) || IsZoomed(Handle())) {
        WINDOWPLACEMENT placement{};
        placement.length = sizeof(placement);
        GetWindowPlacement(Handle(), &placement);
        placement.rcNormalPosition = pixels();
        SetWindowPlacement(Handle(), &placement);
    } else {
        const auto move = [&] {
            const RECT place = pixels();
            SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                         SWP_NOZORDER | SWP_NOACTIVATE);
        };
        const int before = dpi;
        move();
        if (dpi != before) // on its way it has come to a monitor on which the size is another one in pixels
            move();
    }
}

Size FormWindow::ClientSize() const
{
    RECT client{};
    GetClientRect(Handle(), &client);
    return {ToTwips(client.right, dpi), ToTwips(client.bottom, dpi)};
}

void FormWindow::FitClient(Size client)
{
    const SIZE pixels{ToPixels(client.width + RoundingRoom, dpi), ToPixels(client.height + RoundingRoom, dpi)};
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(Handle(), GWL_STYLE));
    const auto extended = static_cast<DWORD>(GetWindowLongPtrW(Handle(), GWL_EXSTYLE));
    const SIZE outer = OuterSize(pixels, style, extended, GetMenu(Handle()) != nullptr, dpi);
    RECT around{};
    const HWND owner = GetWindow(Handle(), GW_OWNER);
    if (owner == nullptr || !IsWindowVisible(owner) || IsIconic(owner) || !GetWindowRect(owner, &around))
        around = WorkAreaOf(Handle());
    const RECT place = Centred(outer, around);
    const platform::Scoped guard{byCode, true};
    SetWindowPos(Handle(), nullptr, place.left, place.top, outer.cx, outer.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::OnPlaced()
{
    WINDOWPLACEMENT placement{};
    placement.length = sizeof(placement);
    if (!GetWindowPlacement(Handle(), &placement))
        return;
    RECT outer = placement.rcNormalPosition;
    auto state = Form::WindowState::Normal;
    if (IsIconic(Handle()))
        state = Form::WindowState::Minimized;
    else if (IsZoomed(Handle()))
        state = Form::WindowState::Maximized;
    if (state == Form::WindowState::Normal) {
        GetWindowRect(Handle(), &outer);
    } else {
        // The normal place of a window is kept relative to the work area, not to the monitor.
        MONITORINFO monitor{};
        monitor.cbSize = sizeof(monitor);
        GetMonitorInfoW(MonitorFromRect(&outer, MONITOR_DEFAULTTONEAREST), &monitor);
        OffsetRect(&outer, monitor.rcWork.left - monitor.rcMonitor.left, monitor.rcWork.top - monitor.rcMonitor.top);
    }
    form.UserPlaces({ToTwips(outer.left, SystemDpi()), ToTwips(outer.top, SystemDpi()),
                     ToTwips(outer.right - outer.left, dpi), ToTwips(outer.bottom - outer.top, dpi)},
                    state);
}

void FormWindow::OnDpiChanged(int newDpi, const RECT& suggested)
{
    dpi = newDpi;
    Fonts before = std::exchange(fonts, Fonts{dpi});
    ApplyIcon();
    for (Control* control : form.Controls())
        if (auto* peer = static_cast<PeerBase*>(control->Peer()))
            peer->DpiChanged();
    SetWindowPos(Handle(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    form.UserResizes(ClientSize());
}

} // namespace ui::win32
