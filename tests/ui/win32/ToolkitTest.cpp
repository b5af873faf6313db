#include "WindowTest.h"

#include "ui/win32/NativeText.h"

#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>

using testing::ElementsAre;

namespace {

// Controls of the system's file dialog (dlgs.h: cmb1 and cmb13).
constexpr int FilterBox = 0x470;
constexpr int FileNameBox = 0x47C;

/// Tries an act again and again, in whatever loop runs, until it succeeds.
class Meanwhile {
public:
    explicit Meanwhile(std::function<bool()> act)
    {
        current = std::move(act);
        timer = SetTimer(nullptr, 0, 10, &Meanwhile::Tick);
    }
    Meanwhile(const Meanwhile&) = delete;
    Meanwhile& operator=(const Meanwhile&) = delete;
    ~Meanwhile() { KillTimer(nullptr, timer); }

private:
    static inline std::function<bool()> current;
    UINT_PTR timer;

    static void CALLBACK Tick(HWND, UINT, UINT_PTR id, DWORD) noexcept
    {
        if (current && current()) {
            KillTimer(nullptr, id);
            current = nullptr;
        }
    }
};

class ToolkitTest : public WindowTest {
protected:
    /// The system's dialog that is open with this title; null when there is none.
    static HWND SystemDialog(const wchar_t* title)
    {
        HWND dialog = FindWindowW(L"#32770", title);
        return dialog != nullptr && IsWindowVisible(dialog) ? dialog : nullptr;
    }
};

} // namespace

TEST_F(ToolkitTest, AMessageBoxGivesTheAnswerAndHoldsTheForm)
{
    DemoForm form{toolkit};
    Open(form);
    struct Case {
        ui::MessageButtons buttons;
        WPARAM pressed;
        ui::Answer answer;
    };
    for (const Case& c :
         {Case{ui::MessageButtons::Ok, IDOK, ui::Answer::Ok}, Case{ui::MessageButtons::YesNo, IDYES, ui::Answer::Yes},
          Case{ui::MessageButtons::YesNo, IDNO, ui::Answer::No}}) {
        bool held = false;
        const Meanwhile meanwhile{[&] {
            const HWND box = SystemDialog(L"Question");
            if (box == nullptr)
                return false;
            held = toolkit.ModalActive() && !IsWindowEnabled(HandleOf(form));
            PostMessageW(box, WM_COMMAND, c.pressed, 0);
            return true;
        }};
        EXPECT_EQ(toolkit.ShowMessage({"Go on?", "Question", ui::Icon::Question, c.buttons}), c.answer);
        EXPECT_TRUE(held);
        EXPECT_FALSE(toolkit.ModalActive());
    }
}

TEST_F(ToolkitTest, CancellingTheFolderDialogGivesNothingAndKeepsTheCurrentFolder)
{
    wchar_t before[MAX_PATH]{};
    GetCurrentDirectoryW(MAX_PATH, before);
    const Meanwhile meanwhile{[] {
        const HWND dialog = SystemDialog(nullptr);
        return dialog != nullptr && PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    }};
    EXPECT_EQ(toolkit.BrowseForFolder("Template Pack Path", "C:\\windows"), std::nullopt);
    wchar_t after[MAX_PATH]{};
    GetCurrentDirectoryW(MAX_PATH, after);
    EXPECT_STREQ(before, after);
}

TEST_F(ToolkitTest, TheFileDialogGivesTheFileAndKeepsTheCurrentFolder)
{
    // Where the dialog starts is not the current folder.
    const std::wstring folder = [] {
        wchar_t path[MAX_PATH]{};
        GetTempPathW(MAX_PATH, path);
        return std::wstring{path} + L"TSFileDialog \u00fc";
    }();
    CreateDirectoryW(folder.c_str(), nullptr);
    const std::wstring file = folder + L"\\picture.gif";
    CloseHandle(CreateFileW(file.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr));
    wchar_t before[MAX_PATH]{};
    GetCurrentDirectoryW(MAX_PATH, before);
    const ui::OpenFileDialog question{"Select an Image", "JPEG Files (*.jpg)|*.jpg|GIF Files (*.gif)|*.gif",
                                      ui::win32::FromNative(folder)};
    const std::pair<WPARAM, std::optional<std::string>> rows[] = {{IDOK, ui::win32::FromNative(file)},
                                                                  {IDCANCEL, std::nullopt}};
    for (const auto& [pressed, answer] : rows) {
        std::string filter;
        const Meanwhile meanwhile{[&] {
            const HWND dialog = SystemDialog(L"Select an Image");
            if (dialog == nullptr || GetDlgItem(dialog, FilterBox) == nullptr)
                return false;
            filter = TextOf(GetDlgItem(dialog, FilterBox));
            SetDlgItemTextW(dialog, FileNameBox, L"picture.gif");
            return PostMessageW(dialog, WM_COMMAND, pressed, 0) != FALSE;
        }};
        EXPECT_EQ(toolkit.OpenFile(question), answer);
        EXPECT_EQ(filter, "JPEG Files (*.jpg)");
        wchar_t after[MAX_PATH]{};
        GetCurrentDirectoryW(MAX_PATH, after);
        EXPECT_STREQ(before, after);
    }
    DeleteFileW(file.c_str());
    EXPECT_TRUE(RemoveDirectoryW(folder.c_str()));
}

TEST_F(ToolkitTest, APopUpMenuRunsItsEntryAfterItHasClosed)
{
    DemoForm form{toolkit};
    Open(form);
    bool modalInside = true;
    form.PopupMenu.Find("popDelete")->Click = [&] { modalInside = toolkit.ModalActive(); };
    const Meanwhile meanwhile{[&] {
        if (FindWindowW(L"#32768", nullptr) == nullptr)
            return false;
        EXPECT_TRUE(toolkit.ModalActive());
        for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN})
            PostMessageW(HandleOf(form), WM_KEYDOWN, key, 1);
        return true;
    }};
    form.ShowPopup(form.PopupMenu, {600, 600});
    EXPECT_FALSE(modalInside);
}

TEST_F(ToolkitTest, PostedTasksRunInOrderAndNeverInsideTheHandlerThatPostedThem)
{
    DemoDialog dialog{toolkit};
    std::vector<std::string> log;
    dialog.btnRetry.Click = [&] {
        toolkit.Post([&] { log.push_back("first"); });
        toolkit.Post([&] {
            log.push_back("second");
            toolkit.Quit();
        });
        toolkit.DoEvents();
        DemoDialog inner{toolkit};
        inner.Realize();
        PostMessageW(HandleOf(inner.btnCancel), BM_CLICK, 0, 0);
        inner.ShowModal();
        log.push_back("handler");
    };
    dialog.Show();
    PostMessageW(HandleOf(dialog.btnRetry), BM_CLICK, 0, 0);
    toolkit.Run();
    EXPECT_THAT(log, ElementsAre("handler", "first", "second"));
}

TEST_F(ToolkitTest, WhatIsPostedWakesTheLoopThatWaitsFromEveryThread)
{
    DemoDialog dialog{toolkit};
    dialog.Realize();
    std::vector<std::string> log;
    // A message that is sent, not posted, is handled inside the loop's wait, which goes on afterwards.
    dialog.btnRetry.Click = [&] { toolkit.Post([&] { log.emplace_back("posted by a handler"); }); };
    dialog.btnNew.Click = [&] {
        std::thread{[&] {
            toolkit.Post([&] {
                log.emplace_back("posted by a thread");
                dialog.Close();
            });
        }}.join();
    };
    std::promise<void> ended;
    bool slept = false;
    std::thread sender{[&, window = HandleOf(dialog), handles = {HandleOf(dialog.btnRetry), HandleOf(dialog.btnNew)}] {
        for (const HWND button : handles)
            SendMessageW(button, BM_CLICK, 0, 0);
        slept = ended.get_future().wait_for(std::chrono::seconds{10}) == std::future_status::timeout;
        if (slept) // nothing but a message ends its sleep
            PostMessageW(window, WM_CLOSE, 0, 0);
    }};
    dialog.ShowModal();
    ended.set_value();
    sender.join();
    EXPECT_FALSE(slept);
    EXPECT_THAT(log, ElementsAre("posted by a handler", "posted by a thread"));
}

TEST_F(ToolkitTest, YieldingStandsBeingEnteredAgainAndKeepsTheEndOfTheProgram)
{
    DemoDialog dialog{toolkit};
    dialog.Show();
    int depth = 0;
    int deepest = 0;
    dialog.btnRetry.Click = [&] {
        deepest = std::max(deepest, ++depth);
        if (depth < 4) {
            PostMessageW(HandleOf(dialog.btnRetry), BM_CLICK, 0, 0);
            toolkit.DoEvents();
        } else {
            toolkit.Quit();
            toolkit.DoEvents();
        }
        --depth;
    };
    PostMessageW(HandleOf(dialog.btnRetry), BM_CLICK, 0, 0);
    toolkit.DoEvents();
    EXPECT_EQ(deepest, 4);
    toolkit.Run(); // returns: the end was not lost in the yields
}

TEST_F(ToolkitTest, AnExceptionOfAHandlerStopsAtTheWindowAndQuittingEndsTheModalLoops)
{
    DemoDialog dialog{toolkit};
    Open(dialog);
    dialog.btnRetry.Click = [] { throw std::runtime_error{"handler"}; };
    Click(HandleOf(dialog.btnRetry), {5, 5});
    dialog.btnRetry.Click = [&] { toolkit.Quit(); };
    PostMessageW(HandleOf(dialog.btnRetry), BM_CLICK, 0, 0);
    dialog.ShowModal();
    EXPECT_FALSE(toolkit.ModalActive());
    toolkit.Run();
}

TEST_F(ToolkitTest, KnowsTheWorkAreas)
{
    const auto areas = toolkit.WorkAreas();
    ASSERT_FALSE(areas.empty());
    EXPECT_EQ(areas.front().left, 0);
    EXPECT_GT(areas.front().width, 9600);
}
