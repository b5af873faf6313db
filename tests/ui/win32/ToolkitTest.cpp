#include "WindowTest.h"

#include "tests/support/win32/Files.h"
#include "ui/win32/FileOffer.h"

#include <atomic>
#include <chrono>
#include <future>
#include <stdexcept>
#include <thread>

using testing::ElementsAre;

namespace {

// Controls of the system's file dialog (dlgs.h: cmb1 and cmb13).
constexpr int FilterBox = 0x470;
constexpr int FileNameBox = 0x47C;

using ToolkitTest = WindowTest;
using support::SystemDialog;

} // namespace

TEST_F(ToolkitTest, AMessageBoxShowsItsIconGivesTheAnswerAndHoldsTheForm)
{
    DemoForm form{toolkit};
    Open(form);
    struct Case {
        ui::Icon icon;
        const wchar_t* shown;
        ui::MessageButtons buttons;
        WPARAM pressed;
        ui::Answer answer;
    };
    using enum ui::MessageButtons;
    for (const Case& c : {Case{ui::Icon::Information, IDI_INFORMATION, Ok, IDOK, ui::Answer::Ok},
                          Case{ui::Icon::Question, IDI_QUESTION, YesNo, IDYES, ui::Answer::Yes},
                          Case{ui::Icon::Critical, IDI_ERROR, YesNo, IDNO, ui::Answer::No},
                          Case{ui::Icon::Question, IDI_QUESTION, YesNoCancel, IDCANCEL, ui::Answer::Cancel}}) {
        bool held = false;
        acts.Add([&] {
            const HWND box = SystemDialog();
            if (box == nullptr)
                return false;
            held = toolkit.ModalActive() && !IsWindowEnabled(HandleOf(form));
            const LRESULT icon = SendMessageW(support::ChildOf(box, WC_STATICW), STM_GETICON, 0, 0);
            EXPECT_EQ(reinterpret_cast<HICON>(icon), LoadIconW(nullptr, c.shown));
            return PostMessageW(box, WM_COMMAND, c.pressed, 0) != FALSE;
        });
        EXPECT_EQ(toolkit.ShowMessage({"Go on?", "Question", c.icon, c.buttons}), c.answer);
        EXPECT_TRUE(held);
        EXPECT_FALSE(toolkit.ModalActive());
    }
}

TEST_F(ToolkitTest, OtherProgramsAreOfferedTheFileAndItsNameToCopy)
{
    const std::string path = "C:\\Some folder\\Größe 日本.swt";
    const auto copiedText = [] {
        EXPECT_TRUE(OpenClipboard(nullptr));
        const HANDLE text = GetClipboardData(CF_UNICODETEXT);
        const std::string copied = ui::win32::FromNative(static_cast<const wchar_t*>(GlobalLock(text)));
        GlobalUnlock(text);
        CloseClipboard();
        return copied;
    };
    ASSERT_TRUE(toolkit.CopyText("Title\tGröße 日本\r\n"));
    EXPECT_EQ(copiedText(), "Title\tGröße 日本\r\n");
    ASSERT_TRUE(toolkit.CopyToClipboard(path));
    ASSERT_TRUE(OpenClipboard(nullptr));
    wchar_t file[MAX_PATH]{};
    const auto drop = static_cast<HDROP>(GetClipboardData(CF_HDROP));
    EXPECT_EQ(DragQueryFileW(drop, 0xFFFFFFFF, nullptr, 0), 1U);
    DragQueryFileW(drop, 0, file, MAX_PATH);
    EXPECT_EQ(ui::win32::FromNative(file), path);
    CloseClipboard();
    EXPECT_EQ(copiedText(), "Größe 日本.swt");
    EXPECT_EQ(toolkit.PastedFile(), path);
    ASSERT_TRUE(toolkit.CopyText("no file"));
    EXPECT_EQ(toolkit.PastedFile(), std::nullopt);

    // A drag offers the same, and nothing but a copy.
    const auto data = ui::win32::OfferOf(path);
    FORMATETC format{CF_HDROP, nullptr, DVASPECT_CONTENT, -1, TYMED_HGLOBAL};
    STGMEDIUM medium{};
    ASSERT_EQ(data->GetData(&format, &medium), S_OK);
    DragQueryFileW(static_cast<HDROP>(medium.hGlobal), 0, file, MAX_PATH);
    EXPECT_EQ(ui::win32::FromNative(file), path);
    ui::Form target{toolkit, "target", ui::Form::Style::Dialog};
    ui::Image box{target};
    std::string dropped;
    box.Dropped = [&](const std::string& what) { dropped = what; };
    target.Realize();
    EXPECT_NE(GetWindowLongPtrW(HandleOf(box), GWL_EXSTYLE) & WS_EX_ACCEPTFILES, 0);
    SendMessageW(HandleOf(box), WM_DROPFILES, reinterpret_cast<WPARAM>(medium.hGlobal), 0); // lets go of it
    EXPECT_EQ(dropped, path);
    format.cfFormat = static_cast<CLIPFORMAT>(RegisterClipboardFormatW(L"Preferred DropEffect"));
    ASSERT_EQ(data->GetData(&format, &medium), S_OK);
    EXPECT_EQ(*static_cast<const DWORD*>(GlobalLock(medium.hGlobal)), static_cast<DWORD>(DROPEFFECT_COPY));
    GlobalUnlock(medium.hGlobal);
    ReleaseStgMedium(&medium);
    for (const CLIPFORMAT other : {CLIPFORMAT{CF_BITMAP}, CLIPFORMAT{CF_METAFILEPICT}}) {
        format.cfFormat = other;
        EXPECT_EQ(data->QueryGetData(&format), DV_E_FORMATETC);
    }
    IEnumFORMATETC* formats = nullptr;
    ASSERT_EQ(data->EnumFormatEtc(DATADIR_GET, &formats), S_OK);
    int count = 0;
    while (formats->Next(1, &format, nullptr) == S_OK)
        ++count;
    formats->Release();
    EXPECT_EQ(count, 3);
}

TEST_F(ToolkitTest, TasksWithoutEndLeaveMessagesTheirTurn)
{
    bool ended = false;
    int tasks = 0;
    std::function<void()> again = [&] {
        if (!ended && ++tasks < 10'000)
            toolkit.Post(again);
    };
    toolkit.Post(again);
    acts.Add([&] {
        ended = true;
        toolkit.Quit();
        return true;
    });
    toolkit.Run();
    EXPECT_LT(tasks, 100);
}

TEST_F(ToolkitTest, MessagesAreHandledUntilAnotherThreadIsReady)
{
    std::atomic<bool> ready{};
    std::atomic<int> handled{};
    bool waits = true;
    acts.Add([&] { return ++handled > 3; });
    std::thread other{[&] {
        while (handled <= 3)
            std::this_thread::yield();
        ready = true;
        toolkit.Post([&] { EXPECT_FALSE(waits); });
    }};
    EXPECT_TRUE(toolkit.WaitUntil([&] { return ready.load(); }, std::chrono::minutes{1}));
    other.join();
    EXPECT_FALSE(toolkit.WaitUntil([] { return false; }, std::chrono::milliseconds{20}));
    PostQuitMessage(0);
    EXPECT_FALSE(toolkit.WaitUntil([] { return false; }, std::chrono::hours{1})) << "the program ends";
    waits = false;
    toolkit.Run(); // takes the end up
}

TEST_F(ToolkitTest, HeldInputReachesNothingButASplashAndTheFrame)
{
    struct Splash final : ui::Form {
        explicit Splash(ui::Toolkit& toolkit) : Form{toolkit, "Splash", Style::Splash} { Layout(ui::Column(go)); }
        ui::Button go{*this, {}};
    };
    DemoDialog form{toolkit};
    Splash splash{toolkit};
    std::string clicked;
    form.btnNew.Click = [&] { clicked += "form "; };
    splash.go.Click = [&] { clicked += "splash "; };
    Open(form);
    splash.Show();
    const auto act = [&] {
        Click(HandleOf(form.btnNew), {5, 5});
        PostMessageW(HandleOf(form.btnNew), BM_CLICK, 0, 0); // as programs press it for their user
        Click(HandleOf(splash.go), {5, 5});
        toolkit.DoEvents();
        PostMessageW(HandleOf(form), WM_SYSKEYDOWN, VK_F4, 0x20000001);
        toolkit.DoEvents();
    };
    {
        const ui::Toolkit::HoldInput held{toolkit};
        act();
        EXPECT_TRUE(form.IsOpen());
        EXPECT_EQ(std::exchange(clicked, {}), "splash ");
        form.ClosesWhileHeld = true;
        act();
        EXPECT_FALSE(form.IsOpen());
        EXPECT_EQ(clicked, "splash ");
    }
    splash.Unload();
}

TEST_F(ToolkitTest, TheDialogsForFilesAndFoldersGiveTheChoiceAndKeepTheCurrentFolder)
{
    // Where the dialog starts is not the current folder.
    const auto folder = support::TemporaryFile(L" \u00fc");
    const auto file = folder / L"picture.gif";
    support::WriteFile(file);
    const auto before = std::filesystem::current_path();
    const ui::OpenFileDialog question{"Select an Image", "JPEG Files (*.jpg)|*.jpg|GIF Files (*.gif)|*.gif",
                                      ui::win32::FromNative(folder.wstring())};
    const std::pair<WPARAM, std::optional<std::string>> rows[] = {{IDOK, ui::win32::FromNative(file.wstring())},
                                                                  {IDCANCEL, std::nullopt}};
    for (const auto& [pressed, answer] : rows) {
        std::string filter;
        acts.Add([&] {
            const HWND dialog = SystemDialog();
            if (dialog == nullptr || GetDlgItem(dialog, FilterBox) == nullptr)
                return false;
            filter = TextOf(GetDlgItem(dialog, FilterBox));
            SetDlgItemTextW(dialog, FileNameBox, L"picture.gif");
            return PostMessageW(dialog, WM_COMMAND, pressed, 0) != FALSE;
        });
        EXPECT_EQ(toolkit.OpenFile(question), answer);
        EXPECT_EQ(filter, "JPEG Files (*.jpg)");
        EXPECT_EQ(std::filesystem::current_path(), before);
    }
    std::filesystem::remove_all(folder);
    acts.Add([] {
        const HWND dialog = SystemDialog();
        return dialog != nullptr && PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
    });
    EXPECT_EQ(toolkit.BrowseForFolder("Template Pack Path", "C:\\windows"), std::nullopt);
    EXPECT_EQ(std::filesystem::current_path(), before);
}

TEST_F(ToolkitTest, APopUpMenuRunsItsEntryAfterItHasClosed)
{
    DemoForm form{toolkit};
    Open(form);
    bool modalInside = true;
    form.PopupMenu.Find("popDelete")->Click = [&] { modalInside = toolkit.ModalActive(); };
    acts.Add([&] {
        if (FindWindowW(L"#32768", nullptr) == nullptr)
            return false;
        EXPECT_TRUE(toolkit.ModalActive());
        for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RETURN})
            PostMessageW(HandleOf(form), WM_KEYDOWN, key, 1);
        return true;
    });
    form.ShowPopup(form.PopupMenu, {600, 600});
    EXPECT_FALSE(modalInside);
}

TEST_F(ToolkitTest, AWindowThatIsClosedInALoopOfTheSystemsEndsIt)
{
    struct Loop {
        WPARAM command;
        wchar_t letter;
        bool opensMenu;
    };
    for (const auto& [command, letter, opensMenu] :
         {Loop{SC_KEYMENU, L'\0', false}, Loop{SC_KEYMENU, L'f', true}, Loop{SC_MOVE, L'\0', false}}) {
        DemoForm form{toolkit};
        Open(form);
        const HWND window = HandleOf(form);
        constexpr int most = 200;
        int waited = 0;
        bool isOver = false;
        const auto isInLoop = [&] {
            GUITHREADINFO thread{};
            thread.cbSize = sizeof thread;
            return GetGUIThreadInfo(GetCurrentThreadId(), &thread) &&
                   (thread.hwndMenuOwner == window || thread.hwndMoveSize == window) &&
                   (!opensMenu || FindWindowW(L"#32768", nullptr) != nullptr);
        };
        const auto waitForEnd = [&] {
            if (++waited == most) { // so that the test ends
                PostThreadMessageW(GetCurrentThreadId(), WM_CANCELMODE, 0, 0);
                PostThreadMessageW(GetCurrentThreadId(), WM_KEYDOWN, VK_ESCAPE, 1);
            }
            return isOver = waited > most || (!form.IsOpen() && !isInLoop());
        };
        acts.Add([&] {
            if (!isInLoop())
                return false;
            acts.Add(waitForEnd);
            return PostMessageW(window, WM_CLOSE, 0, 0) != FALSE;
        });
        SendMessageW(window, WM_SYSCOMMAND, command, letter);
        EXPECT_TRUE(PumpUntil([&] { return isOver; }));
        EXPECT_LT(waited, most) << command;
    }
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
    int depth = 0;
    const std::function<bool()> act = [&] {
        if (++depth < 4)
            acts.Add(act);
        else
            toolkit.Quit();
        toolkit.DoEvents();
        return true;
    };
    acts.Add(act);
    toolkit.DoEvents();
    EXPECT_EQ(depth, 4);
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
