// Hosts that come and go, ask at the wrong time, die and race. TS_STARTS, TS_CALLS, TS_KILLS and TS_RACES say how often
// (the rest of the numbers is for a quick look), TS_SEED repeats a run.
#include "tests/endtoend/BrowserTest.h"
#include "tests/prove/Asked.h"
#include "tests/prove/Host.h"

#include <algorithm>
#include <cstdio>
#include <random>
#include <ranges>
#include <set>
#include <thread>

namespace prove {
namespace {

using namespace endtoend;
using Milliseconds = std::chrono::milliseconds;

constexpr std::chrono::seconds ServerPatience{150}; ///< two minutes, and some for a busy machine
constexpr wchar_t RunsAlready[] =
    L"A previous instance of the template browser is active. Please close all applications and try again.";

std::vector<HWND> MainWindows()
{
    auto found = TopWindows(L"TSBrowserForm");
    std::erase_if(found, [](HWND window) { return GetMenu(window) == nullptr; });
    return found;
}

/// The mark of an open browser.
bool IsMarked()
{
    const HANDLE mark = OpenMutexW(SYNCHRONIZE, FALSE, L"Local\\TSBrowser.SingleInstance");
    if (mark != nullptr)
        CloseHandle(mark);
    return mark != nullptr;
}

struct Seen {
    std::set<std::wstring> texts; ///< of all boxes
    std::size_t mostWindows{};    ///< of how many browsers were open at once
};

/// A user who answers each box at once, and keeps an eye on how many browsers there are.
class Presser {
public:
    /// No more is pressed then.
    const Seen& End()
    {
        thread = {};
        return seen;
    }

private:
    Seen seen;
    std::jthread thread{[this](const std::stop_token& stop) {
        constexpr int textOfBox = 0xFFFF;
        for (; !stop.stop_requested(); Sleep(10)) {
            seen.mostWindows = std::max(seen.mostWindows, MainWindows().size());
            if (const HWND box = SystemDialog(); box != nullptr) {
                if (const std::wstring text = TextOf(GetDlgItem(box, textOfBox)); !text.empty())
                    seen.texts.insert(text);
                Press(ChildOf(box, WC_BUTTONW));
            }
        }
    }};
};

class HostProof : public BrowserTest {
protected:
    HostProof()
    {
        std::printf("seed %u\n", seed);
        CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
        EXPECT_EQ((Child{installation.program, L"/RegServer"}.ExitCode()), 0u);
    }
    ~HostProof() override
    {
        EndAll();
        EXPECT_EQ((Child{installation.program, L"/UnregServer"}.ExitCode()), 0u);
        CoUninitialize();
        std::printf("longest answer %d ms\n", static_cast<int>(longest.count()));
    }

    int Below(int bound) { return static_cast<int>(random() % static_cast<unsigned>(bound)); }
    void Took(Milliseconds time)
    {
        longest = std::max(longest, time);
        EXPECT_LE(time, longestAllowed);
    }
    static bool AllGone()
    {
        return WaitFor([] { return CountProcesses(ExeName) == 0; }) && !IsMarked() && MainWindows().empty();
    }
    /// The mark is taken back just after the window has gone.
    static bool NoneIsOpen()
    {
        return WaitFor([] { return MainWindows().empty() && !IsMarked(); });
    }
    /// The user closes what is open, in one of his ways.
    void CloseWindow()
    {
        const HWND window = MainWindow();
        if (window == nullptr)
            return;
        if (const int way = Below(3); way == 0)
            EXPECT_TRUE(Choose(window, L"fx"));
        else
            PostMessageW(window, way == 1 ? WM_SYSCOMMAND : WM_CLOSE, SC_CLOSE, 0);
        EXPECT_TRUE(AwaitGone(window));
    }
    static void CloseDialog(HWND dialog)
    {
        PostMessageW(dialog, WM_CLOSE, 0, 0);
        EXPECT_TRUE(AwaitGone(dialog));
    }
    /// Where one may still be on its way, there is one browser, and it can be used.
    static bool OneIsOpen()
    {
        return WaitFor([] { return MainWindows().size() == 1 && IsWindowEnabled(MainWindow()); });
    }
    /// As often as the environment says, or until something is wrong. Gives how often.
    static unsigned Repeat(const char* variable, unsigned otherwise, const std::function<void(unsigned)>& act)
    {
        unsigned i = 0;
        for (const unsigned count = Asked(variable, otherwise); i < count && !HasFailure(); ++i) {
            SCOPED_TRACE(i);
            act(i);
        }
        return i;
    }
    /// After a host that died: its references stay until the system takes them back.
    static void EndAll()
    {
        for (const HWND window : MainWindows())
            PostMessageW(window, WM_CLOSE, 0, 0);
        EXPECT_TRUE(NoneIsOpen());
        EndProcesses(ExeName);
        EXPECT_TRUE(AllGone());
    }

    const unsigned seed = Asked("TS_SEED", static_cast<unsigned>(GetTickCount() % 100'000));
    std::mt19937 random{seed};
    Milliseconds longest{};
    const Milliseconds longestAllowed{Asked("TS_ANSWER", 1000)}; ///< more on a busy machine
};

/// The names of all settings: what grows from one start to the next.
Names SettingNames()
{
    const auto tree = ReadRegistry(HKEY_CURRENT_USER, SettingsKey);
    const auto names = std::views::keys(tree);
    return {names.begin(), names.end()};
}

TEST_F(HostProof, StartsAndEndsLeaveNothing)
{
    Names settings;
    const unsigned starts = Repeat("TS_STARTS", 20, [&](unsigned i) {
        const std::wstring caption = L"Start " + std::to_wstring(i);
        Host host;
        ASSERT_EQ(host.Created(), S_OK);
        ASSERT_EQ(CountProcesses(ExeName), 1);
        const auto answer = host.Start(caption.c_str());
        EXPECT_EQ(answer.outcome, S_OK);
        EXPECT_EQ(answer.text, L"");
        if (i > 0) // the first one loads the system's libraries as well
            Took(answer.took);
        const HWND window = MainWindow();
        ASSERT_TRUE(window);
        EXPECT_EQ(TextOf(window), caption);
        if (Below(2) == 0) // the host goes first
            host.Release();
        CloseWindow();
        host.Release();
        EXPECT_TRUE(AllGone());
        if (i == 1)
            settings = SettingNames();
        EXPECT_TRUE(i < 2 || SettingNames() == settings);
    });
    std::printf("%u starts and ends\n", starts);
}

TEST_F(HostProof, CallsWhileWindowsAndDialogsAreOpenAreAnsweredAtOnce)
{
    // What is open: a dialog of the browser, or of the system, puts calls off; with the window alone, or a menu, they
    // are refused with a message.
    constexpr struct {
        const wchar_t* letters;
        bool dialog;
    } rows[] = {{L"", false},         {L"fp", true}, {L"fr", true}, {L"od", true}, {L"re", true},
                {L"r\x2193\r", true}, {L"ri", true}, {L"tm", true}, {L"ha", true}, {L"f", false}};
    installation.Set(L"Browser", L"LastFolderBrowsed", L"Business");
    Host host;
    ASSERT_EQ(host.Start(L"Open").outcome, S_OK);
    const HWND window = MainWindow();
    ASSERT_TRUE(window);
    Presser presser;
    const unsigned calls = Asked("TS_CALLS", 20);
    unsigned call = 0;
    while (call < calls && !HasFailure())
        for (const auto& [letters, dialog] : rows) {
            SCOPED_TRACE(fs::path{letters}.string());
            HWND opened = nullptr;
            if (dialog) {
                EXPECT_TRUE(Choose(window, letters));
                ASSERT_TRUE(opened = Await(Dialog));
            } else if (*letters != L'\0') {
                PostMessageW(window, WM_SYSCOMMAND, SC_KEYMENU, *letters);
                ASSERT_TRUE(WaitFor([] { return FindTop(L"#32768") != nullptr; }));
            }
            for (int again = 0; again < 2; ++again, ++call) {
                const auto answer = host.Start(L"Again");
                EXPECT_EQ(answer.outcome, dialog ? RPC_E_SERVERCALL_RETRYLATER : S_OK);
                EXPECT_EQ(answer.text, L"");
                Took(answer.took);
            }
            EXPECT_EQ(MainWindow(), window);
            EXPECT_EQ(TextOf(window), L"Open");
            if (opened != nullptr)
                CloseDialog(opened);
            PostMessageW(window, WM_CANCELMODE, 0, 0);
            EXPECT_TRUE(WaitFor([] { return FindTop(L"#32768") == nullptr; }));
        }
    EXPECT_EQ(presser.End().texts, std::set<std::wstring>{RunsAlready});
    EXPECT_EQ(presser.End().mostWindows, 1u);
    CloseWindow();
    host.Release();
    EXPECT_TRUE(AllGone());
    std::printf("%u calls\n", call);
}

TEST_F(HostProof, HostsThatDieAtAnyMomentHarmNobody)
{
    constexpr const wchar_t* acts[] = {L"", L"fp", L"re", L"ri", L"ha", L"ef"};
    constexpr int longestLife = 1500; // milliseconds: creating, starting and using the browser lie in it
    installation.Set(L"Browser", L"LastFolderBrowsed", L"Business");
    const unsigned kills = Repeat("TS_KILLS", 10, [&](unsigned) {
        const int life = Below(longestLife);
        const wchar_t* const act = acts[Below(static_cast<int>(std::size(acts)))];
        const bool uses = Below(2) == 0;
        SCOPED_TRACE("killed after " + std::to_string(life) + " ms");
        {
            Presser presser;
            Child doomed{OwnFolder() / L"prove_host.exe", L"60000"};
            const auto end = GetTickCount64() + static_cast<unsigned>(life);
            while (uses && GetTickCount64() < end && MainWindow() == nullptr)
                Sleep(10);
            if (const HWND window = MainWindow(); window != nullptr && *act != L'\0') {
                Choose(window, act);
                PressKey(TreeOf(window), VK_F5);
            }
            while (GetTickCount64() < end)
                Sleep(5);
        }
        // Whoever comes next is served, whether the dead host's browser is there or not.
        Presser presser;
        if (const HWND dialog = Dialog(); dialog != nullptr)
            CloseDialog(dialog);
        {
            Host next;
            EXPECT_EQ(next.Created(), S_OK);
            auto answer = next.Start(L"Next");
            if (answer.outcome == RPC_E_SERVERCALL_RETRYLATER) {
                // The dialog that the dead host had asked for was still on its way.
                ASSERT_TRUE(WaitFor([] { return Dialog() != nullptr; }));
                CloseDialog(Dialog());
                answer = next.Start(L"Next");
            }
            EXPECT_EQ(answer.outcome, S_OK);
            Took(answer.took);
            EXPECT_TRUE(OneIsOpen());
        }
        EXPECT_LE(presser.End().mostWindows, 1u);
        EndAll();
    });
    std::printf("%u hosts killed\n", kills);
}

TEST_F(HostProof, TwoHostsAndTheProgramRaceForOneBrowser)
{
    constexpr int head = 400; // milliseconds by which one may be ahead of another
    int surplus = 0, more = 0;
    const unsigned races = Repeat("TS_RACES", 10, [&](unsigned) {
        Presser presser;
        std::optional<Child> racers[3];
        int order[] = {0, 1, 2};
        std::ranges::shuffle(order, random);
        for (const int racer : order) {
            const bool isHost = racer != 2;
            racers[racer].emplace(isHost ? OwnFolder() / L"prove_host.exe" : installation.program, isHost ? L"0" : L"");
            Sleep(static_cast<DWORD>(Below(2) * Below(head)));
        }
        for (const int host : {0, 1}) {
            EXPECT_EQ(racers[host]->ExitCode(), 0u);
            unsigned long created = 1, answer = 1;
            int attempts = 0, took = 0;
            const std::string output = racers[host]->Output();
            const int read =
                std::sscanf(output.c_str(), "created %lx %d answer %lx %d", &created, &attempts, &answer, &took);
            EXPECT_EQ(read, 4) << output;
            more += attempts - 1;
            EXPECT_EQ(created, 0u);
            // Put off when it came while the other one's message was open.
            EXPECT_TRUE(answer == 0 || answer == static_cast<unsigned long>(RPC_E_SERVERCALL_RETRYLATER)) << answer;
            Took(Milliseconds{took});
        }
        EXPECT_TRUE(OneIsOpen());
        CloseWindow();
        // Some systems start a server for each of two hosts that come together: the one to which none came goes by
        // itself when the system would have given up on it.
        EXPECT_TRUE(WaitFor([] { return CountProcesses(ExeName) <= 1; }));
        surplus += CountProcesses(ExeName);
        EXPECT_TRUE(NoneIsOpen());
        EXPECT_LE(presser.End().mostWindows, 1u);
        for (const std::wstring& text : presser.End().texts)
            EXPECT_EQ(text, RunsAlready);
    });
    EXPECT_TRUE(WaitFor([] { return CountProcesses(ExeName) == 0; }, ServerPatience));
    std::printf("%u races, after %d of them a server that had not been needed, %d times asked again\n", races, surplus,
                more);
}

} // namespace
} // namespace prove
