#pragma once

#include "tests/support/win32/Windows.h"
#include "tests/ui/DemoForm.h"

#include "ui/win32/FormWindow.h"
#include "ui/win32/NativeText.h"
#include "ui/win32/PeerBase.h"
#include "ui/win32/Win32Toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <string>
#include <vector>

/// Does one thing after the other from messages of its own, in whatever loop runs; each is tried until it succeeds.
class Acts {
public:
    Acts();
    Acts(const Acts&) = delete;
    Acts& operator=(const Acts&) = delete;
    ~Acts() { DestroyWindow(window); }

    void Add(std::function<bool()> act);

private:
    std::deque<std::function<bool()>> waiting;
    HWND window;

    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
};

/// Real windows and the messages that a user's hands would send them.
class WindowHands {
public:
    ui::win32::Win32Toolkit toolkit;
    Acts acts;

    /// Handles messages until `condition` holds. False when it does not in time.
    bool PumpUntil(const std::function<bool()>& condition);
    void Pump() { toolkit.DoEvents(); }

    static HWND HandleOf(const ui::Form& form) { return static_cast<ui::win32::FormWindow*>(form.Peer())->Handle(); }
    static HWND HandleOf(const ui::Control& control)
    {
        return static_cast<ui::win32::PeerBase*>(control.Peer())->Handle();
    }
    static LRESULT Send(const ui::Control& control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0)
    {
        return SendMessageW(HandleOf(control), message, wParam, lParam);
    }
    static LRESULT Send(const ui::Control& control, UINT message, WPARAM wParam, const void* data)
    {
        return Send(control, message, wParam, reinterpret_cast<LPARAM>(data));
    }
    /// Shows the form and waits until it has the keyboard.
    void Open(ui::Form& form);
    /// Moves the keyboard to the control; what that raises is forgotten.
    void Focus(ui::Control& control);
    /// Does each act and expects its events; looks at what else must hold after each.
    void Check(EventForm& form, const std::vector<Act>& list, const std::function<void()>& after = [] {});

    void PostKey(UINT message, WPARAM key, LPARAM repeat = 1);
    void Press(WORD virtualKey) { PostKey(WM_KEYDOWN, virtualKey); }
    /// With modifiers held: VK_CONTROL, VK_MENU.
    void Press(WORD virtualKey, const std::vector<WORD>& held);
    /// Does the act while this thread sees the keys held.
    static void Hold(const std::vector<WORD>& held, const std::function<void()>& act);
    void PressAlt(wchar_t letter) { PostKey(WM_SYSCHAR, letter, 0x20000001); }
    void Type(std::wstring_view text);
    void Mouse(HWND window, POINT at, std::initializer_list<UINT> messages);
    void Click(HWND window, POINT at) { Mouse(window, at, {WM_LBUTTONDOWN, WM_LBUTTONUP}); }
    void RightClick(HWND window, POINT at) { Mouse(window, at, {WM_RBUTTONDOWN, WM_RBUTTONUP}); }
    void DoubleClick(HWND window, POINT at)
    {
        Mouse(window, at, {WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP});
    }
    /// The list tells of the start of a drag.
    static void BeginDrag(const ui::ListView& list, int row);
    /// The middle of a control's part, as FormsUnderTest counts them; in the control's client area.
    static POINT PlaceOf(const ui::Control& control, int part);
    /// Where a list shows a row (LVIR_BOUNDS, LVIR_ICON, LVIR_LABEL), in its client area.
    static RECT PlaceOfRow(const ui::ListView& list, int row, LONG part);
    static RECT ClientOf(HWND window);
    /// The selected row of the native list.
    static int RowOf(const ui::ListView& list);

    static std::string TextOf(HWND window) { return ui::win32::FromNative(support::TextOf(window)); }
    /// What the native tree shows, as FormsUnderTest::Shown writes it.
    static std::string Outline(const ui::TreeView& tree);
    /// The window moves to a monitor of this dpi; `size` is what it would have at 96.
    static void MoveToDpi(HWND window, int dpi, SIZE size);
};

class WindowTest : public testing::Test, protected WindowHands {};

/// The main window in small, open.
class DemoFormTest : public WindowTest {
protected:
    DemoForm form{toolkit};
    const HWND window{[this] {
        Open(form);
        return HandleOf(form);
    }()};
    const HWND list{HandleOf(form.lvList)};
    const HWND tree{HandleOf(form.tvTree)};
};

/// The pixels of a window's client area once it is drawn, 32 bits each, rows from the top.
std::vector<unsigned> Capture(HWND window);
/// How many of them have one colour.
inline int CountOf(HWND window, unsigned colour)
{
    return static_cast<int>(std::ranges::count(Capture(window), colour));
}
