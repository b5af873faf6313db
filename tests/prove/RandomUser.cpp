#include "tests/prove/RandomUser.h"

#include "tests/support/win32/Windows.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <ranges>

namespace prove {
namespace {

using namespace support;

constexpr std::size_t Remembered = 60;
constexpr wchar_t SystemDialogClass[] = L"#32770", MenuClass[] = L"#32768";
constexpr int TextOfBox = 0xFFFF;

const std::vector<std::wstring> Words{L"Memo",    L"Gr\u00F6\u00DFe",
                                      L"CON",     L"trail.",
                                      L"1",       L"5551234",
                                      L"  ",      L"*",
                                      L"Le",      L"\u65E5\u672C\u8A9E",
                                      L"Invoice", L"-7",
                                      L"a",       std::wstring(300, L'x')};
/// Keys that stay inside the program: nothing that changes to another one or calls the system.
constexpr WORD Keys[] = {VK_TAB,    VK_TAB,    VK_DOWN, VK_DOWN,  VK_UP,      VK_LEFT,   VK_RIGHT,  VK_RETURN,
                         VK_RETURN, VK_HOME,   VK_END,  VK_PRIOR, VK_NEXT,    VK_ESCAPE, VK_ESCAPE, VK_SPACE,
                         VK_DELETE, VK_BACK,   VK_F1,   VK_F2,    VK_F3,      VK_F4,     VK_F5,     VK_F6,
                         VK_F10,    VK_INSERT, VK_APPS, VK_ADD,   VK_MULTIPLY};

std::wstring ClassOf(HWND window)
{
    wchar_t name[100] = L"";
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    return name;
}

std::string Narrow(const std::wstring& text)
{
    std::string narrow;
    for (const wchar_t letter : text)
        narrow += letter < 0x80 ? static_cast<char>(letter) : '?';
    return narrow;
}

std::string Described(HWND window)
{
    return Narrow(ClassOf(window)) + " \"" + Narrow(TextOf(window)) + '"' +
           (IsWindowEnabled(window) ? "" : ", disabled") + (IsIconic(window) ? ", an icon" : "");
}

/// Those in a window, or of the desktop, from the top down.
std::vector<HWND> VisibleIn(HWND parent)
{
    std::vector<HWND> found;
    HWND window = nullptr;
    while ((window = FindWindowExW(parent, window, nullptr, nullptr)) != nullptr)
        if (IsWindowVisible(window))
            found.push_back(window);
    return found;
}

/// Whether a dialog of the system holds texts and buttons alone. One that has no text yet is still being made, and
/// holds more when it is whole.
bool IsMessage(HWND dialog)
{
    return !TextOf(GetDlgItem(dialog, TextOfBox)).empty() && std::ranges::all_of(VisibleIn(dialog), [](HWND child) {
        const std::wstring kind = ClassOf(child);
        return kind == WC_BUTTONW || kind == WC_STATICW;
    });
}

void Send(std::vector<INPUT> inputs)
{
    SendInput(static_cast<UINT>(inputs.size()), inputs.data(), sizeof(INPUT));
}

INPUT KeyInput(WORD key, DWORD flags, wchar_t letter = 0)
{
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = key;
    input.ki.wScan = static_cast<WORD>(letter);
    input.ki.dwFlags = flags;
    return input;
}

INPUT MouseInput(DWORD flags, int data = 0)
{
    INPUT input{};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = static_cast<DWORD>(data);
    return input;
}

void MoveMouse(POINT to)
{
    constexpr int whole = 65536;
    const int width = GetSystemMetrics(SM_CXSCREEN), height = GetSystemMetrics(SM_CYSCREEN);
    INPUT input = MouseInput(MOUSEEVENTF_MOVE | MOUSEEVENTF_ABSOLUTE);
    input.mi.dx = (static_cast<int>(to.x) * whole + width / 2) / width;
    input.mi.dy = (static_cast<int>(to.y) * whole + height / 2) / height;
    Send({input});
}

void PressKeys(const std::vector<WORD>& keys)
{
    std::vector<INPUT> inputs;
    for (const WORD key : keys)
        inputs.push_back(KeyInput(key, 0));
    for (const WORD key : keys | std::views::reverse)
        inputs.push_back(KeyInput(key, KEYEVENTF_KEYUP));
    Send(std::move(inputs));
}

} // namespace

void RandomUser::Note(std::string act)
{
    History.push_back(std::move(act));
    if (History.size() > Remembered)
        History.pop_front();
}

bool RandomUser::IsOurs(HWND window) const
{
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    return owner == process;
}

std::vector<HWND> RandomUser::Visible() const
{
    auto windows = VisibleIn(nullptr);
    std::erase_if(windows, [this](HWND window) { return !IsOurs(window); });
    return windows;
}

HWND RandomUser::Front() const
{
    if (const HWND front = GetForegroundWindow(); front != nullptr && IsOurs(front) && IsWindowEnabled(front))
        return front;
    for (const HWND window : Visible())
        if (IsWindowEnabled(window) && ClassOf(window) != MenuClass) {
            if (IsIconic(window))
                PostMessageW(window, WM_SYSCOMMAND, SC_RESTORE, 0);
            SetForegroundWindow(window);
            return window;
        }
    return nullptr;
}

std::chrono::milliseconds RandomUser::AnswerTime(std::chrono::milliseconds limit) const
{
    const auto start = std::chrono::steady_clock::now();
    DWORD_PTR answer = 0;
    if (const auto windows = Visible(); !windows.empty())
        SendMessageTimeoutW(windows[0], WM_NULL, 0, 0, SMTO_NORMAL, static_cast<UINT>(limit.count()), &answer);
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
}

void RandomUser::Answer(HWND box)
{
    if (!IsMessage(box)) {
        // A dialog of the system leads out of the test's own folders: given up.
        Note("gives up " + Narrow(TextOf(box)));
        PostMessageW(box, WM_COMMAND, IDCANCEL, 0);
        return Sleep(50);
    }
    if (const std::wstring said = TextOf(GetDlgItem(box, TextOfBox));
        box != answered && !said.empty()) { // it may just have gone
        answered = box;
        ++Messages[said];
        Note("reads " + Narrow(said));
    }
    auto buttons = VisibleIn(box);
    std::erase_if(buttons, [](HWND child) { return ClassOf(child) != WC_BUTTONW; });
    if (buttons.empty() || Chance(4))
        return PressKeys({VK_ESCAPE});
    const HWND button = OneOf(buttons);
    SaidYes = SaidYes || GetDlgCtrlID(button) == IDYES;
    Note("answers " + Narrow(TextOf(button)));
    Press(button);
    Sleep(20);
}

void RandomUser::PressAnyKey(HWND front)
{
    std::vector<WORD> keys;
    if (Chance(3)) {
        keys = {static_cast<WORD>(Chance(3) ? VK_MENU : VK_CONTROL), static_cast<WORD>('A' + Below(26))};
    } else {
        if (Chance(8))
            keys.push_back(VK_SHIFT);
        else if (Chance(12))
            keys.push_back(VK_CONTROL);
        keys.push_back(OneOf(Keys));
        if (keys.front() == VK_CONTROL && keys.back() == VK_ESCAPE) // it would open a menu of the desktop
            keys.erase(keys.begin());
    }
    std::string name = "keys";
    for (const WORD key : keys)
        name += ' ' + std::to_string(key);
    Note(name + " in " + Narrow(TextOf(front)));
    PressKeys(keys);
}

void RandomUser::Type()
{
    const std::wstring& word = OneOf(Words);
    Note("types " + Narrow(word).substr(0, 12));
    for (const wchar_t letter : word)
        Send({KeyInput(0, KEYEVENTF_UNICODE, letter), KeyInput(0, KEYEVENTF_UNICODE | KEYEVENTF_KEYUP, letter)});
}

/// A point where the window, or what is in it, is what the mouse would meet.
bool RandomUser::PointIn(HWND window, POINT& point)
{
    RECT bounds{};
    if (!GetWindowRect(window, &bounds) || bounds.right <= bounds.left || bounds.bottom <= bounds.top)
        return false;
    point = {bounds.left + static_cast<LONG>(Below(static_cast<std::size_t>(bounds.right - bounds.left))),
             bounds.top + static_cast<LONG>(Below(static_cast<std::size_t>(bounds.bottom - bounds.top)))};
    const HWND met = WindowFromPoint(point);
    if (met == nullptr || !IsOurs(met))
        return false;
    // Wine's tree of folders crashes when a click meets no line of it; and what is chosen there leads out of the test.
    const HWND top = GetAncestor(met, GA_ROOT);
    return ClassOf(top) != SystemDialogClass || IsMessage(top);
}

void RandomUser::UseMouse()
{
    // A menu that is open, a list that has dropped down, a window, or a control in it.
    const auto windows = Visible();
    if (windows.empty())
        return;
    HWND window = Chance(2) ? windows.front() : OneOf(windows);
    if (const auto controls = VisibleIn(window); !controls.empty() && !Chance(8))
        window = OneOf(controls);
    POINT point{};
    if (!PointIn(window, point))
        return;
    const std::string place = " at " + std::to_string(point.x) + "," + std::to_string(point.y) + " on " +
                              Narrow(ClassOf(window)) + " " + Narrow(TextOf(window)).substr(0, 20);
    MoveMouse(point);
    const std::size_t act = Below(10);
    if (act == 0) {
        Note("wheel" + place);
        return Send({MouseInput(MOUSEEVENTF_WHEEL, Chance(2) ? WHEEL_DELTA : -WHEEL_DELTA)});
    }
    if (POINT target{}; act == 1 && PointIn(OneOf(windows), target)) {
        Note("drag" + place + " to " + std::to_string(target.x) + "," + std::to_string(target.y));
        constexpr int steps = 5;
        Send({MouseInput(MOUSEEVENTF_LEFTDOWN)});
        for (int step = 1; step <= steps; ++step) {
            MoveMouse({point.x + (target.x - point.x) * step / steps, point.y + (target.y - point.y) * step / steps});
            Sleep(10);
        }
        return Send({MouseInput(MOUSEEVENTF_LEFTUP)});
    }
    const bool twice = act == 2 || act == 3, right = act == 4;
    Note((twice ? "double click" : right ? "right click" : "click") + place);
    for (int i = 0; i < (twice ? 2 : 1); ++i)
        Send({MouseInput(right ? MOUSEEVENTF_RIGHTDOWN : MOUSEEVENTF_LEFTDOWN),
              MouseInput(right ? MOUSEEVENTF_RIGHTUP : MOUSEEVENTF_LEFTUP)});
}

void RandomUser::UseMenu()
{
    constexpr WORD menus[] = {'F', 'E', 'V', 'O', 'R', 'T', 'H'};
    const WORD menu = OneOf(menus);
    const std::size_t lines = Below(9);
    Note(std::string{"menu "} + static_cast<char>(menu) + " line " + std::to_string(lines));
    PressKeys({VK_MENU, menu});
    for (std::size_t i = 0; i < lines; ++i)
        PressKeys({VK_DOWN});
    if (Chance(3))
        PressKeys({VK_RIGHT});
    PressKeys({static_cast<WORD>(Chance(8) ? VK_ESCAPE : VK_RETURN)});
}

void RandomUser::MoveWindow(HWND window)
{
    Note("moves " + Narrow(TextOf(window)));
    constexpr int width = 1280, height = 900;
    constexpr WPARAM commands[] = {SC_MAXIMIZE, SC_MINIMIZE, SC_RESTORE};
    if (const std::size_t way = Below(5); way < std::size(commands))
        PostMessageW(window, WM_SYSCOMMAND, commands[way], 0);
    else
        SetWindowPos(window, nullptr, static_cast<int>(Below(width / 2)), static_cast<int>(Below(height / 2)),
                     static_cast<int>(Below(width)), static_cast<int>(Below(height)),
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_ASYNCWINDOWPOS);
}

void RandomUser::Report() const
{
    for (const std::string& done : History)
        std::printf("  %s\n", done.c_str());
    for (const HWND window : Visible())
        std::printf("  open is %s\n", Described(window).c_str());
    const HWND front = GetForegroundWindow();
    std::printf("  in front is %s%s\n", Described(front).c_str(), IsOurs(front) ? "" : " of another program");
}

void RandomUser::Act()
{
    constexpr std::size_t longestPause = 25; // milliseconds
    Sleep(static_cast<DWORD>(Below(longestPause)));
    const HWND front = Front();
    if (front == nullptr)
        return;
    if (ClassOf(front) == SystemDialogClass)
        return Answer(front);
    const std::size_t act = Below(16);
    if (act < 7)
        return UseMouse();
    if (act < 11)
        return PressAnyKey(front);
    if (act < 13)
        return UseMenu();
    if (act == 13)
        return Type();
    if (act == 14 && Chance(4))
        return MoveWindow(front);
    if (act == 15 && Chance(12)) {
        Note("closes " + Narrow(TextOf(front)));
        PressKeys({VK_MENU, VK_F4});
    }
}

void RandomUser::GoHome()
{
    HWND front = Front();
    if (front == nullptr)
        return;
    // A dialog of the system holds all the rest, also what was clicked in front of it since: the window of a load.
    const auto open = Visible();
    const auto dialog = std::ranges::find_if(
        open, [](HWND window) { return ClassOf(window) == SystemDialogClass && IsWindowEnabled(window); });
    if (dialog != open.end() && *dialog != front)
        SetForegroundWindow(front = *dialog);
    if (ClassOf(front) == SystemDialogClass && IsMessage(front))
        return Answer(front);
    if (const std::string act = "leaves " + Described(front); History.empty() || History.back() != act)
        Note(act);
    // A drag whose button was released before its loop began waits for the next move of the mouse.
    if (POINT point{}; PointIn(front, point))
        MoveMouse(point);
    PostMessageW(front, WM_CANCELMODE, 0, 0);
    const bool system = ClassOf(front) == SystemDialogClass;
    PostMessageW(front, system ? WM_COMMAND : WM_CLOSE, system ? IDCANCEL : 0, 0);
}

} // namespace prove
