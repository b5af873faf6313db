#include "ui/win32/ListLayout.h"

#include <utility>

namespace ui::win32 {
namespace {

bool HasStyle(HWND window, LONG_PTR style)
{
    return (GetWindowLongPtrW(window, GWL_STYLE) & style) != 0;
}

/// The window's own part of WM_SETREDRAW, whatever the control makes of the message.
void SetDrawn(HWND control, bool drawn)
{
    DefWindowProcW(control, WM_SETREDRAW, drawn ? TRUE : FALSE, 0);
}

void SetLaidOut(HWND list, bool laidOut)
{
    SendMessageW(list, WM_SETREDRAW, laidOut ? TRUE : FALSE, 0);
}

void Arrange(HWND list)
{
    SendMessageW(list, LVM_ARRANGE, LVA_DEFAULT, 0);
}

/// While the control does not lay out, moving its rows costs next to nothing: so its scroll bar comes before they take
/// their places beside it.
void ShowNeededScrollBar(HWND list)
{
    RECT rows{};
    RECT client{};
    if (SendMessageW(list, LVM_GETVIEWRECT, 0, reinterpret_cast<LPARAM>(&rows)) == 0)
        return;
    GetClientRect(list, &client);
    const bool isNeeded = rows.bottom - rows.top > client.bottom;
    if (isNeeded != HasStyle(list, WS_VSCROLL))
        ShowScrollBar(list, SB_VERT, isNeeded ? TRUE : FALSE);
}

} // namespace

Undrawn::Undrawn(HWND undrawnControl, bool shows) : control{undrawnControl}, isShown{shows}
{
    SetDrawn(control, false);
}

Undrawn::~Undrawn()
{
    SetDrawn(control, isShown);
    if (isShown)
        RedrawWindow(control, nullptr, nullptr, RDW_FRAME | RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void ListLayout::Hold(HWND list)
{
    if (std::exchange(holds, true))
        return;
    SetLaidOut(list, false);
}

void ListLayout::Release(HWND list, int rows)
{
    if (!std::exchange(holds, false))
        return;
    const auto view = SendMessageW(list, LVM_GETVIEW, 0, 0);
    if (view == LV_VIEW_ICON || view == LV_VIEW_SMALLICON) {
        Arrange(list); // rows past the old count have no place until then
        ShowNeededScrollBar(list);
        Arrange(list);
        // What a scroll bar that came meanwhile has left to the rows is known from here on.
        SetLaidOut(list, true);
        SetLaidOut(list, false);
        Arrange(list);
    }
    SetLaidOut(list, true);
    // How far the list scrolls is told by the places that the rows had when they were counted.
    SendMessageW(list, LVM_SETITEMCOUNT, static_cast<WPARAM>(rows), LVSICF_NOSCROLL);
}

} // namespace ui::win32
