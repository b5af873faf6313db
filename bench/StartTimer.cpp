// Times the start of the browser from the outside, as its user sees it:
//   start_timer PROGRAM [ROUNDS]
// Prints the least times, in milliseconds since the call that creates the process, of
//   a program that does nothing, until it has ended;
//   PROGRAM with an option that it refuses, until it has ended: its libraries are loaded, nothing else is done;
//   PROGRAM, until it shows its first window, its main window, and until that one answers;
//   the longest that it let a message wait in the seconds after that, and how long it took to end when it was closed.
#include "platform/Utf.h"
#include "platform/win32/WindowsHeader.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <stdexcept>
#include <string>

namespace {

using Clock = std::chrono::steady_clock;
constexpr DWORD Patience = 60'000; // milliseconds

class Child {
public:
    Child(const std::wstring& program, const std::wstring& option)
    {
        std::wstring command = L"\"" + program + L"\"" + (option.empty() ? L"" : L" ") + option;
        STARTUPINFOW how{.cb = sizeof how};
        start = Clock::now();
        if (!CreateProcessW(program.c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how, &info))
            throw std::runtime_error{"the program cannot be started"};
    }
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;
    ~Child()
    {
        if (WaitForSingleObject(info.hProcess, 0) != WAIT_OBJECT_0)
            TerminateProcess(info.hProcess, 1);
        CloseHandle(info.hThread);
        CloseHandle(info.hProcess);
    }

    double Milliseconds() const { return std::chrono::duration<double, std::milli>(Clock::now() - start).count(); }
    bool Ended() const { return WaitForSingleObject(info.hProcess, 0) == WAIT_OBJECT_0; }

    double WaitForEnd() const
    {
        if (WaitForSingleObject(info.hProcess, Patience) != WAIT_OBJECT_0)
            throw std::runtime_error{"a program does not end"};
        return Milliseconds();
    }

    /// Waits for a visible and enabled top-level window of the program with these style bits.
    HWND WaitForWindow(LONG_PTR style) const
    {
        Search search{info.dwProcessId, style | WS_VISIBLE, nullptr};
        while (search.found == nullptr) {
            if (Ended() || Milliseconds() > Patience)
                throw std::runtime_error{"the program shows no window"};
            EnumWindows(&Child::Visit, reinterpret_cast<LPARAM>(&search));
            Sleep(1);
        }
        return search.found;
    }

private:
    struct Search {
        DWORD process;
        LONG_PTR style;
        HWND found;
    };

    PROCESS_INFORMATION info{};
    Clock::time_point start;

    static BOOL CALLBACK Visit(HWND window, LPARAM parameter)
    {
        auto& search = *reinterpret_cast<Search*>(parameter);
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
        if (process == search.process && (style & (search.style | WS_DISABLED)) == search.style)
            search.found = window;
        return search.found == nullptr;
    }
};

std::wstring OwnPath()
{
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return path;
}

/// How long a message waited for the window at most, in the two seconds from now.
double LongestWait(HWND window)
{
    const auto end = Clock::now() + std::chrono::seconds{2};
    double longest = 0;
    while (Clock::now() < end) {
        const auto asked = Clock::now();
        DWORD_PTR ignored;
        SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, Patience, &ignored);
        longest = std::max(longest, std::chrono::duration<double, std::milli>(Clock::now() - asked).count());
        Sleep(1);
    }
    return longest;
}

void TimeStarts(const std::wstring& program, int rounds)
{
    constexpr double never = std::numeric_limits<double>::max();
    double nothing = never, refused = never, first = never, main = never, answers = never, waits = never,
           closes = never;
    const auto note = [](double& least, double time) { least = std::min(least, time); };
    for (int round = 0; round < rounds; ++round) {
        note(nothing, Child{OwnPath(), {}}.WaitForEnd());
        note(refused, Child{program, L"/NoSuchOption"}.WaitForEnd());
        const Child browser{program, {}};
        browser.WaitForWindow(0);
        note(first, browser.Milliseconds());
        const HWND window = browser.WaitForWindow(WS_THICKFRAME);
        note(main, browser.Milliseconds());
        DWORD_PTR ignored;
        if (!SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_NORMAL, Patience, &ignored))
            throw std::runtime_error{"the window does not answer"};
        note(answers, browser.Milliseconds());
        note(waits, LongestWait(window));
        const double closing = browser.Milliseconds();
        PostMessageW(window, WM_CLOSE, 0, 0);
        note(closes, browser.WaitForEnd() - closing);
    }
    const auto print = [](const char* what, double time) { std::printf("%-46s %6.0f ms\n", what, time); };
    print("a program that does nothing has ended", nothing);
    print("the browser, refusing its option, has ended", refused);
    print("the browser's first window shows", first);
    print("the main window shows", main);
    print("the main window answers", answers);
    print("the longest wait for an answer", waits);
    print("closed, it has ended after", closes);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return 0; // the program that does nothing
    try {
        TimeStarts(platform::utf::ToUtf16<wchar_t>(argv[1]), argc > 2 ? std::atoi(argv[2]) : 5);
        return 0;
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "start_timer: %s\n", failure.what());
        return 1;
    }
}
