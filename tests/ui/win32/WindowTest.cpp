#include "WindowTest.h"

#include "ui/win32/FormWindow.h"
#include "ui/win32/NativeText.h"

#include <chrono>
#include <cstdint>
#include <cstring>

using ui::win32::FormWindow;
using ui::win32::PeerBase;

bool WindowHands::PumpUntil(const std::function<bool()>& condition)
{
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds{10};
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 10, QS_ALLINPUT);
        Pump();
    }
    return true;
}

HWND WindowHands::HandleOf(const ui::Form& form)
{
    return static_cast<FormWindow*>(form.Peer())->Handle();
}

HWND WindowHands::HandleOf(const ui::Control& control)
{
    return static_cast<PeerBase*>(control.Peer())->Handle();
}

LRESULT WindowHands::Send(const ui::Control& control, UINT message, WPARAM wParam, LPARAM lParam)
{
    return SendMessageW(HandleOf(control), message, wParam, lParam);
}

void WindowHands::Open(ui::Form& form)
{
    form.Show();
    SetForegroundWindow(HandleOf(form));
    ASSERT_TRUE(PumpUntil([&] { return GetActiveWindow() == HandleOf(form) && GetFocus() != nullptr; }));
}

void WindowHands::Focus(ui::Control& control)
{
    control.SetFocus();
    ASSERT_TRUE(PumpUntil([&] { return GetFocus() == HandleOf(control); }));
    if (auto* form = dynamic_cast<EventForm*>(&control.Owner()))
        form->Events.clear();
}

void WindowHands::Press(WORD virtualKey)
{
    PostMessageW(GetFocus(), WM_KEYDOWN, virtualKey, 1);
    Pump();
}

void WindowHands::Press(WORD virtualKey, std::vector<WORD> held)
{
    BYTE before[256];
    GetKeyboardState(before);
    BYTE keys[256];
    std::copy(std::begin(before), std::end(before), keys);
    for (const WORD key : held)
        keys[key] = 0x80;
    SetKeyboardState(keys);
    const bool isAlt = std::ranges::find(held, VK_MENU) != held.end();
    MSG message{GetFocus(), isAlt ? static_cast<UINT>(WM_SYSKEYDOWN) : static_cast<UINT>(WM_KEYDOWN),
                virtualKey, isAlt ? 0x20000001 : 1,
                0,          {}};
    // Straight to the window: the modifiers hold for this thread's next look only.
    HWND top = GetAncestor(message.hwnd, GA_ROOT);
    reinterpret_cast<FormWindow*>(GetWindowLongPtrW(top, GWLP_USERDATA))->Translate(message);
    SetKeyboardState(before);
    Pump();
}

void WindowHands::PressAlt(wchar_t letter)
{
    PostMessageW(GetFocus(), WM_SYSCHAR, letter, 0x20000001);
    Pump();
}

void WindowHands::Type(std::wstring_view text)
{
    for (const wchar_t letter : text) {
        PostMessageW(GetFocus(), WM_CHAR, letter, 1);
        Pump();
    }
}

void WindowHands::Click(HWND window, POINT at)
{
    PostMessageW(window, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    Pump();
}

void WindowHands::DoubleClick(HWND window, POINT at)
{
    Click(window, at);
    PostMessageW(window, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(at.x, at.y));
    PostMessageW(window, WM_LBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    Pump();
}

void WindowHands::RightClick(HWND window, POINT at)
{
    PostMessageW(window, WM_RBUTTONDOWN, MK_RBUTTON, MAKELPARAM(at.x, at.y));
    PostMessageW(window, WM_RBUTTONUP, 0, MAKELPARAM(at.x, at.y));
    Pump();
}

POINT WindowHands::PlaceOf(const ui::Control& control, int part)
{
    const auto index = static_cast<WPARAM>(part);
    RECT place{0, 0, 10, 10};
    const auto answer = reinterpret_cast<LPARAM>(&place);
    if (dynamic_cast<const ui::TreeView*>(&control) != nullptr) {
        LRESULT item = Send(control, TVM_GETNEXTITEM, TVGN_ROOT);
        for (int i = 0; i < part; ++i)
            item = Send(control, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item);
        std::memcpy(&place, &item, sizeof(item));
        Send(control, TVM_GETITEMRECT, TRUE, answer);
    } else if (dynamic_cast<const ui::ListView*>(&control) != nullptr) {
        place.left = LVIR_LABEL;
        Send(control, LVM_GETITEMRECT, index, answer);
        place.right = place.left + 20;
    } else if (dynamic_cast<const ui::ListBox*>(&control) != nullptr) {
        Send(control, LB_GETITEMRECT, index, answer);
    } else if (dynamic_cast<const ui::TabStrip*>(&control) != nullptr) {
        Send(control, TCM_GETITEMRECT, index, answer);
    } else if (dynamic_cast<const ui::ToolBar*>(&control) != nullptr) {
        Send(control, TB_GETITEMRECT, index, answer);
    } else if (dynamic_cast<const ui::UpDown*>(&control) != nullptr && part == 1) {
        GetClientRect(HandleOf(control), &place);
        place.top = place.bottom - 6;
    }
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

std::string WindowHands::Outline(const ui::TreeView& tree)
{
    std::string shown;
    const LRESULT caret = Send(tree, TVM_GETNEXTITEM, TVGN_CARET);
    for (LRESULT item = Send(tree, TVM_GETNEXTITEM, TVGN_ROOT); item != 0;
         item = Send(tree, TVM_GETNEXTITEM, TVGN_NEXTVISIBLE, item)) {
        for (LRESULT above = item; (above = Send(tree, TVM_GETNEXTITEM, TVGN_PARENT, above)) != 0;)
            shown += ' ';
        wchar_t text[256]{};
        TVITEMW native{};
        native.mask = TVIF_TEXT | TVIF_STATE | TVIF_HANDLE;
        native.hItem = reinterpret_cast<HTREEITEM>(item);
        native.stateMask = TVIS_EXPANDED;
        native.pszText = text;
        native.cchTextMax = 256;
        Send(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&native));
        shown += (item == caret ? "*" : "") + ui::win32::FromNative(text) +
                 ((native.state & TVIS_EXPANDED) != 0 ? "-" : "") + "\n";
    }
    return shown;
}

void WindowHands::MoveToDpi(HWND window, int dpi, SIZE size)
{
    RECT place{};
    GetWindowRect(window, &place);
    place.right = place.left + size.cx * dpi / 96;
    place.bottom = place.top + size.cy * dpi / 96;
    SendMessageW(window, 0x02E0 /* WM_DPICHANGED */, MAKEWPARAM(dpi, dpi), reinterpret_cast<LPARAM>(&place));
}

std::string WindowHands::TextOf(HWND window)
{
    wchar_t text[256]{};
    GetWindowTextW(window, text, 256);
    return ui::win32::FromNative(text);
}

std::vector<unsigned> Capture(HWND window)
{
    RECT client{};
    GetClientRect(window, &client);
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = client.right;
    info.bmiHeader.biHeight = -client.bottom;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    void* bits = nullptr;
    HDC source = GetDC(window);
    HDC memory = CreateCompatibleDC(source);
    HBITMAP bitmap = CreateDIBSection(memory, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, client.right, client.bottom, source, 0, 0, SRCCOPY);
    GdiFlush();
    const auto* first = static_cast<const unsigned*>(bits);
    std::vector<unsigned> pixels(first, first + client.right * client.bottom);
    for (unsigned& pixel : pixels)
        pixel &= 0xFFFFFF;
    SelectObject(memory, before);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(window, source);
    return pixels;
}
