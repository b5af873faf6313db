#include "tests/endtoend/BrowserTest.h"

namespace endtoend {
namespace {

const std::wstring RunsAlready =
    L"A previous instance of the template browser is active. Please close all applications and try again.";

/// The program as a script host creates it.
class EndToEndHostTest : public BrowserTest {
protected:
    EndToEndHostTest() { EXPECT_EQ((harness::Child{installation.program.wstring(), L"/RegServer"}.ExitCode()), 0u); }
    ~EndToEndHostTest() override
    {
        if (const HWND window = MainWindow())
            PostMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(IsGone());
        EXPECT_EQ((harness::Child{installation.program.wstring(), L"/UnregServer"}.ExitCode()), 0u);
    }

    static bool IsGone()
    {
        return harness::WaitFor([] { return harness::CountProcesses(ExeName) == 0; });
    }
    static std::string Create() { return "Set b = CreateObject(\"TSBrowser.clsBrowser\")\r\n"; }
    static std::string StartWith(const std::string& caption)
    {
        return "kind = \"HOST\"\r\ncaption = \"" + caption +
               "\"\r\nr = b.Start(kind, \"C:\\Program Files\\Host\", \"3\", \"4\", caption)\r\nWScript.Echo \"[\" & r "
               "& "
               "\"]\"\r\n";
    }
};

TEST_F(EndToEndHostTest, LeavesItsWindowToTheUserUntilHeExits)
{
    harness::Script host{Create() + StartWith("  My Office ") + "Set b = Nothing\r\nWScript.Echo \"released\"\r\n"};
    EXPECT_EQ(host.OutputAtEnd(), "[]\nreleased\n");
    const HWND window = MainWindow();
    EXPECT_EQ(TextOf(window), L"My Office");
    EXPECT_EQ(installation.Setting(L"Customization", L"ApplicationName"), L"My Office");

    EXPECT_TRUE(Choose(window, L"fx"));
    EXPECT_TRUE(AwaitGone(window));
    EXPECT_TRUE(IsGone());
}

TEST_F(EndToEndHostTest, IsNotKeptWaitingByTheQuestionToANewUser)
{
    installation.Remove(L"Profiles", L"FirstRun");
    harness::Script host{Create() + StartWith("") + "Set b = Nothing\r\nWScript.Echo \"released\"\r\n"};
    EXPECT_EQ(host.OutputAtEnd(), "[]\nreleased\n");
    const HWND question = Await(Dialog);
    EXPECT_EQ(TextOf(question), L"Enter Initial Profile");
    EXPECT_FALSE(IsWindowEnabled(MainWindow()));
    Press(ButtonOf(question, L"&Close"));
    EXPECT_TRUE(AwaitGone(question));
}

TEST_F(EndToEndHostTest, RefusesEverySecondStartAndChangesNothing)
{
    harness::Script host{Create() + StartWith("First") + StartWith("Second") + "WScript.Echo \"done\"\r\n"};
    const HWND window = Await(MainWindow);
    ASSERT_TRUE(harness::WaitFor([&] { return host.Output().starts_with("[]\n"); }));
    const auto settings = harness::RegistryTree(HKEY_CURRENT_USER, L"Software");
    // The same host.
    EXPECT_EQ(AnswerBox(), (Box{L"Second", RunsAlready, Box::Icon::Information}));
    EXPECT_EQ(host.OutputAtEnd(), "[]\n[]\ndone\n");
    {
        harness::Script other{Create() + StartWith("   ")};
        EXPECT_EQ(AnswerBox(), (Box{L"Tessaly Desk", RunsAlready, Box::Icon::Information}));
        EXPECT_EQ(other.OutputAtEnd(), "[]\n");
    }
    // A user who starts the program himself: a process of its own, which ends.
    Start();
    EXPECT_EQ(AnswerBox(), (Box{L"Tessaly Desk", RunsAlready, Box::Icon::Information}));
    EXPECT_EQ(browser->ExitCode(), 0u);

    EXPECT_EQ(MainWindow(), window);
    EXPECT_TRUE(IsWindowEnabled(window));
    EXPECT_EQ(TextOf(window), L"First");
    EXPECT_EQ(harness::RegistryTree(HKEY_CURRENT_USER, L"Software"), settings);
}

TEST_F(BrowserTest, OpensOnceForTwoStartsAtATime)
{
    Start();
    harness::Child other{installation.program.wstring(), L""};
    EXPECT_EQ(AnswerBox(), (Box{L"Tessaly Desk", RunsAlready, Box::Icon::Information}));
    EXPECT_TRUE(AwaitApplicationName());
    EXPECT_TRUE(harness::WaitFor([&] { return browser->HasEnded() != other.HasEnded(); }));
    PostMessageW(MainWindow(), WM_CLOSE, 0, 0);
    EXPECT_EQ(other.ExitCode(), 0u);
    ExpectEnd();
}

} // namespace
} // namespace endtoend
