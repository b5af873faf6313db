#pragma once

#include "tests/endtoend/Installation.h"
#include "tests/support/win32/Windows.h"

#include <gtest/gtest.h>

namespace endtoend {

using Names = std::vector<std::wstring>;

/// The program's visible window of a kind; null when there is none.
inline HWND MainWindow()
{
    return FindTop(L"TSBrowserForm", [](HWND window) { return GetMenu(window) != nullptr; });
}
inline HWND Dialog()
{
    return FindTop(L"TSBrowserForm", [](HWND window) { return !GetMenu(window) && ChildOf(window, WC_BUTTONW); });
}
/// A fresh installation, and the program run alone from it.
class BrowserTest : public testing::Test {
protected:
    void Start() { browser.emplace(installation.program, L""); }
    /// Starts it and waits until the start is through: its last step stores the caption.
    HWND Open()
    {
        installation.Remove(L"Customization", L"ApplicationName");
        Start();
        EXPECT_TRUE(WaitFor([] { return !Installation::Setting(L"Customization", L"ApplicationName").empty(); }));
        return MainWindow();
    }
    void Close()
    {
        PostMessageW(MainWindow(), WM_CLOSE, 0, 0);
        ExpectEnd();
    }
    void ExpectEnd()
    {
        EXPECT_EQ(browser->ExitCode(), 0u);
        EXPECT_FALSE(MainWindow());
    }

    Installation installation;
    std::optional<Child> browser;
};

} // namespace endtoend
