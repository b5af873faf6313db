#pragma once

#include "tests/endtoend/Desktop.h"
#include "tests/endtoend/Installation.h"

#include <gtest/gtest.h>

namespace endtoend {

/// A fresh installation, and the program run alone from it.
class BrowserTest : public testing::Test {
protected:
    void Start() { browser.emplace(installation.program.wstring(), L""); }
    /// Starts it and waits until the start is through: its last step stores the caption.
    HWND Open()
    {
        installation.Remove(L"Customization", L"ApplicationName");
        Start();
        EXPECT_TRUE(AwaitApplicationName());
        return MainWindow();
    }
    bool AwaitApplicationName() const
    {
        return harness::WaitFor([this] { return !installation.Setting(L"Customization", L"ApplicationName").empty(); });
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
    std::optional<harness::Child> browser;
};

} // namespace endtoend
