#pragma once

#include "DemoForm.h"

#include "ui/win32/PeerBase.h"
#include "ui/win32/Win32Toolkit.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

/// Real windows and the messages that a user's hands would send them.
class WindowTest : public testing::Test {
protected:
    ui::win32::Win32Toolkit toolkit;

    /// Handles messages until `condition` holds. False when it does not within ten seconds.
    bool PumpUntil(const std::function<bool()>& condition);
    void Pump() { toolkit.DoEvents(); }

    static HWND HandleOf(const ui::Form& form);
    static HWND HandleOf(const ui::Control& control);
    /// Shows the form and waits until it has the keyboard.
    void Open(ui::Form& form);
    /// Moves the keyboard to the control and forgets what that raised.
    void Focus(ui::Control& control);

    void Press(WORD virtualKey);
    /// With modifiers held: VK_CONTROL, VK_MENU, VK_SHIFT.
    void Press(WORD virtualKey, std::vector<WORD> held);
    void Type(wchar_t letter);
    void Click(HWND window, POINT at);
    void DoubleClick(HWND window, POINT at);
    void RightClick(HWND window, POINT at);

    static std::string TextOf(HWND window);
    /// The window moves to a monitor of this dpi; `size` is what it would have at 96.
    static void MoveToDpi(HWND window, int dpi, SIZE size);
};

/// The pixels of a window's client area, 32 bits each, rows from the top.
std::vector<unsigned> Capture(HWND window);
