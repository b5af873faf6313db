#pragma once

#include "tests/ui/DemoForm.h"

#include "ui/win32/PeerBase.h"
#include "ui/win32/Win32Toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

/// Real windows and the messages that a user's hands would send them.
class WindowHands {
public:
    ui::win32::Win32Toolkit toolkit;

    /// Handles messages until `condition` holds. False when it does not within ten seconds.
    bool PumpUntil(const std::function<bool()>& condition);
    void Pump() { toolkit.DoEvents(); }

    static HWND HandleOf(const ui::Form& form);
    static HWND HandleOf(const ui::Control& control);
    static LRESULT Send(const ui::Control& control, UINT message, WPARAM wParam = 0, LPARAM lParam = 0);
    /// Shows the form and waits until it has the keyboard.
    void Open(ui::Form& form);
    /// Moves the keyboard to the control; what that raises is forgotten.
    void Focus(ui::Control& control);

    void Press(WORD virtualKey);
    /// With modifiers held: VK_CONTROL, VK_MENU, VK_SHIFT.
    void Press(WORD virtualKey, std::vector<WORD> held);
    void PressAlt(wchar_t letter);
    void Type(std::wstring_view text);
    void Click(HWND window, POINT at);
    void DoubleClick(HWND window, POINT at);
    void RightClick(HWND window, POINT at);
    /// The middle of a control's part, as FormsUnderTest counts them; in the control's client area.
    static POINT PlaceOf(const ui::Control& control, int part);

    static std::string TextOf(HWND window);
    /// What the native tree shows, as FormsUnderTest::Shown writes it.
    static std::string Outline(const ui::TreeView& tree);
    /// The window moves to a monitor of this dpi; `size` is what it would have at 96.
    static void MoveToDpi(HWND window, int dpi, SIZE size);
};

class WindowTest : public testing::Test, protected WindowHands {};

/// The pixels of a window's client area, 32 bits each, rows from the top.
std::vector<unsigned> Capture(HWND window);
