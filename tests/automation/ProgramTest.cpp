#include "tests/automation/Harness.h"

#include <gtest/gtest.h>

namespace {

using harness::WaitFor;

constexpr wchar_t ExeName[] = L"TSBrowser.exe";
constexpr wchar_t Settings[] = L"Software\\VB and VBA Program Settings\\Tessaly GWX 1.0";
constexpr wchar_t SettingsBefore[] = L"Software\\TSBrowserTests settings before";

/// The whole program, as a script host drives it: a fresh user with a library of one category.
class ProgramTest : public testing::Test {
protected:
    static void SetUpTestSuite() { ASSERT_EQ(Run(L"/RegServer"), 0u); }
    static void TearDownTestSuite() { EXPECT_EQ(Run(L"/UnregServer"), 0u); }

    ProgramTest()
    {
        wchar_t temporary[MAX_PATH];
        GetTempPathW(MAX_PATH, temporary);
        library = temporary + std::wstring{L"TSBrowser library"};
        CreateDirectoryW(library.c_str(), nullptr);
        CreateDirectoryW((library + L"\\Letters").c_str(), nullptr);
        CloseHandle(CreateFileW((library + L"\\Letters\\Dear.swt").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0,
                                nullptr));
        harness::CopyKey(Settings, SettingsBefore);
        RegDeleteTreeW(HKEY_CURRENT_USER, Settings);
        Set(L"Options", L"MSOVersion", L"XP");
        Set(L"Profiles", L"FirstRun", L"0");
        Set(L"Browser", L"Access HDD_Templates", L"True");
        Set(L"Browser", L"HDD Templates Path", library);
    }
    ~ProgramTest() override
    {
        harness::EndProcesses(ExeName);
        RegDeleteTreeW(HKEY_CURRENT_USER, Settings);
        harness::CopyKey(SettingsBefore, Settings);
        RegDeleteTreeW(HKEY_CURRENT_USER, SettingsBefore);
        DeleteFileW((library + L"\\Letters\\Dear.swt").c_str());
        RemoveDirectoryW((library + L"\\Letters").c_str());
        RemoveDirectoryW(library.c_str());
    }

    static DWORD Run(const wchar_t* arguments)
    {
        return harness::Child{harness::OwnFolder() + L"..\\..\\" + ExeName, arguments}.ExitCode();
    }
    static void Set(const wchar_t* section, const wchar_t* name, const std::wstring& value)
    {
        RegSetKeyValueW(HKEY_CURRENT_USER, (std::wstring{Settings} + L'\\' + section).c_str(), name, REG_SZ,
                        value.c_str(), static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    }

    static std::string StartScript(const std::string& caption)
    {
        return "Set b = CreateObject(\"TSBrowser.clsBrowser\")\r\nk = \"HOST\"\r\nc = \"" + caption +
               "\"\r\nr = b.Start(k, \"C:\\x\", \"3\", 4, c)\r\nWScript.Echo \"[\" & r & \"]\"\r\n";
    }

    /// A message box, or the main window, which is the one that has a menu.
    static HWND Find(const wchar_t* title, bool messageBox)
    {
        HWND window = nullptr;
        while ((window = FindWindowExW(nullptr, window, messageBox ? L"#32770" : nullptr, title)))
            if (IsWindowVisible(window) && (messageBox || GetMenu(window)))
                return window;
        return nullptr;
    }
    static bool Close(const wchar_t* title, bool messageBox)
    {
        if (!WaitFor([=] { return Find(title, messageBox) != nullptr; }))
            return false;
        const HWND window = Find(title, messageBox);
        PostMessageW(window, WM_CLOSE, 0, 0);
        return WaitFor([window] { return !IsWindow(window); });
    }
    static bool IsGone()
    {
        return WaitFor([] { return harness::CountProcesses(ExeName) == 0; });
    }

    std::wstring library;
};

TEST_F(ProgramTest, OpensForAScriptAndEndsWithItsWindow)
{
    EXPECT_EQ(harness::ScriptOutput(StartScript("First")), "[]\n");
    // The script has let go of the object; the window stays and keeps the next browser from opening.
    harness::Script second{StartScript("Second")};
    EXPECT_TRUE(Close(L"Second", true));
    EXPECT_EQ(second.OutputAtEnd(), "[]\n");
    EXPECT_FALSE(Find(L"Second", false));

    EXPECT_TRUE(Close(L"First", false));
    EXPECT_TRUE(IsGone());
}

TEST_F(ProgramTest, OffersTheObjectAgainAfterItsWindowIsClosed)
{
    harness::Script host{StartScript("First") + "c = \"Again\"\r\n" +
                         "Set f = CreateObject(\"Scripting.FileSystemObject\")\r\n" +
                         "Do\r\nLoop Until f.FolderExists(f.GetSpecialFolder(2) & \"\\TSBrowser library\\go\")\r\n" +
                         "WScript.Echo \"[\" & b.Start(k, \"\", \"\", \"\", c) & \"]\"\r\n"};
    ASSERT_TRUE(Close(L"First", false));
    const std::wstring go = library + L"\\go";
    CreateDirectoryW(go.c_str(), nullptr);
    EXPECT_EQ(host.OutputAtEnd(), "[]\n[]\n");
    RemoveDirectoryW(go.c_str());
    EXPECT_TRUE(Close(L"Again", false));
    EXPECT_TRUE(IsGone());
}

TEST_F(ProgramTest, TellsTheUserAndFreesTheHostWhenItCannotRun)
{
    Set(L"Options", L"MSOVersion", L"xp");
    harness::Script host{StartScript("Refused")};
    EXPECT_TRUE(Close(L"Refused", true));
    EXPECT_EQ(host.OutputAtEnd(), "[]\n");
    EXPECT_FALSE(Find(L"Refused", false));
    EXPECT_TRUE(IsGone());
}

TEST_F(ProgramTest, RunsAloneOnceUnderItsOwnCaption)
{
    const std::wstring program = harness::OwnFolder() + L"..\\..\\" + ExeName;
    harness::Child alone{program, L""};
    ASSERT_TRUE(WaitFor([] { return Find(L"Tessaly Desk", false) != nullptr; }));
    harness::Child refused{program, L""};
    EXPECT_TRUE(Close(L"Tessaly Desk", true));
    EXPECT_EQ(refused.ExitCode(), 0u);

    EXPECT_FALSE(alone.HasEnded());
    EXPECT_TRUE(Close(L"Tessaly Desk", false));
    EXPECT_EQ(alone.ExitCode(), 0u);
}

} // namespace
