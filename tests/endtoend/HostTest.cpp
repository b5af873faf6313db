#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

const std::wstring RunsAlready =
    L": A previous instance of the template browser is active. Please close all applications and try again.";

/// The program as a script host creates it.
class EndToEndHostTest : public BrowserTest {
protected:
    EndToEndHostTest() { EXPECT_EQ((Child{installation.program, L"/RegServer"}.ExitCode()), 0u); }
    ~EndToEndHostTest() override
    {
        if (const HWND window = MainWindow())
            PostMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(IsGone());
        EXPECT_EQ((Child{installation.program, L"/UnregServer"}.ExitCode()), 0u);
    }

    static bool IsGone()
    {
        return WaitFor([] { return CountProcesses(ExeName) == 0; });
    }
    static std::string Create() { return "Set b = CreateObject(\"TSBrowser.clsBrowser\")\r\n"; }
    static std::string StartWith(const std::string& caption)
    {
        return "kind = \"HOST\"\r\ncaption = \"" + caption +
               "\"\r\nr = b.Start(kind, \"C:\\Program Files\\Host\", \"3\", 4, caption)\r\n"
               "WScript.Echo \"[\" & r & \"]\"\r\n";
    }
    static constexpr char Release[] = "Set b = Nothing\r\nWScript.Echo \"released\"\r\n";
};

TEST_F(EndToEndHostTest, LeavesItsWindowToTheUserUntilHeExits)
{
    EXPECT_EQ((Script{Create() + StartWith("  My Office ") + Release}.OutputAtEnd()), "[]\nreleased\n");
    const HWND window = MainWindow();
    EXPECT_EQ(TextOf(window), L"My Office");
    EXPECT_EQ(installation.Setting(L"Customization", L"ApplicationName"), L"My Office");

    EXPECT_TRUE(Choose(window, L"fx"));
    EXPECT_TRUE(AwaitGone(window));
    EXPECT_TRUE(IsGone());
}

TEST_F(EndToEndHostTest, RefusesEverySecondStartAndChangesNothing)
{
    Script host{Create() + StartWith("First") + StartWith("Second") + "WScript.Echo \"done\"\r\n"};
    const HWND window = Await(MainWindow);
    ASSERT_TRUE(WaitFor([&] { return host.Output().starts_with("[]\n"); }));
    const auto settings = ReadRegistry(HKEY_CURRENT_USER, L"Software");
    EXPECT_EQ(AnswerBox(), L"Second" + RunsAlready); // the same host
    EXPECT_EQ(host.OutputAtEnd(), "[]\n[]\ndone\n");
    Script other{Create() + StartWith("   ")};
    EXPECT_EQ(AnswerBox(), L"Tessaly Desk" + RunsAlready);
    EXPECT_EQ(other.OutputAtEnd(), "[]\n");
    // A user who starts the program himself: a process of its own, which ends.
    Start();
    EXPECT_EQ(AnswerBox(), L"Tessaly Desk" + RunsAlready);
    EXPECT_EQ(browser->ExitCode(), 0u);

    EXPECT_EQ(MainWindow(), window);
    EXPECT_TRUE(IsWindowEnabled(window));
    EXPECT_EQ(TextOf(window), L"First");
    EXPECT_TRUE(ReadRegistry(HKEY_CURRENT_USER, L"Software") == settings);
}

} // namespace
} // namespace endtoend
