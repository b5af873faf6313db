#include "ui/win32/Win32Toolkit.h"

#include "platform/Scoped.h"
#include "ui/win32/Dpi.h"
#include "ui/win32/FileChooser.h"
#include "ui/win32/FileOffer.h"
#include "ui/win32/FolderBrowser.h"
#include "ui/win32/FormWindow.h"
#include "ui/win32/Guarded.h"
#include "ui/win32/NativeText.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace ui::win32 {
namespace {

constexpr int AnyLevel = std::numeric_limits<int>::max();
constexpr DWORD LeastBetweenDrawings = 30; ///< milliseconds

struct Areas {
    std::vector<WorkArea> found;
};

BOOL CALLBACK CollectArea(HMONITOR monitor, HDC, LPRECT, LPARAM areas) noexcept
{
    MONITORINFO info{};
    info.cbSize = sizeof(info);
    if (!GetMonitorInfoW(monitor, &info))
        return TRUE;
    auto& found = reinterpret_cast<Areas*>(areas)->found;
    const WorkArea area{ToTwips(info.rcWork, SystemDpi()), double{1} * DpiOf(monitor) / SystemDpi()};
    Guarded([&] { found.insert((info.dwFlags & MONITORINFOF_PRIMARY) != 0 ? found.begin() : found.end(), area); });
    return TRUE;
}

/// Brings the main window of another process of this program to the front, and ends the enumeration.
BOOL CALLBACK ShowIfOtherMain(HWND window, LPARAM) noexcept
{
    wchar_t name[32]{};
    GetClassNameW(window, name, static_cast<int>(std::size(name)));
    DWORD process{};
    GetWindowThreadProcessId(window, &process);
    constexpr LONG_PTR mainWindow = WS_VISIBLE | WS_THICKFRAME;
    if (std::wstring_view{name} != FormWindow::WindowClass() || process == GetCurrentProcessId() ||
        (GetWindowLongPtrW(window, GWL_STYLE) & mainWindow) != mainWindow)
        return TRUE;
    if (IsIconic(window))
        ShowWindowAsync(window, SW_RESTORE); // a process that is busy must not hold this one up
    SetForegroundWindow(GetLastActivePopup(window));
    return FALSE;
}

UINT StyleOf(const MessageBox& message)
{
    constexpr UINT buttons[] = {MB_OK, MB_YESNO, MB_YESNOCANCEL, MB_RETRYCANCEL};
    UINT style = buttons[static_cast<std::size_t>(message.buttons)];
    if (message.buttons == MessageButtons::YesNo && message.proposed == Answer::No)
        style |= MB_DEFBUTTON2;
    switch (message.icon) {
    case Icon::None:
        break;
    case Icon::Information:
        style |= MB_ICONINFORMATION;
        break;
    case Icon::Question:
        style |= MB_ICONQUESTION;
        break;
    case Icon::Critical:
        style |= MB_ICONERROR;
        break;
    }
    return style;
}

} // namespace

Win32Toolkit::Win32Toolkit(HINSTANCE resources) : images{resources}
{
    MSG message;
    PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE); // from now on the thread has a queue that Post can wake
    ownsCom = SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE));
    INITCOMMONCONTROLSEX controls{};
    controls.dwSize = sizeof(controls);
    controls.dwICC = ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES;
    InitCommonControlsEx(&controls);
}

Win32Toolkit::~Win32Toolkit()
{
    Sweep();
    if (ownsCom)
        CoUninitialize();
}

std::unique_ptr<FormPeer> Win32Toolkit::CreatePeer(Form& form)
{
    const HWND owner = form.ComesByItself                       ? MainWindow()
                       : form.GetStyle() == Form::Style::Dialog ? ActiveOwner()
                                                                : nullptr;
    return std::make_unique<FormWindow>(*this, form, owner);
}

HWND Win32Toolkit::MainWindow() const
{
    const auto found = std::ranges::find_if(windows, [](const FormWindow* window) {
        return window->Model().GetStyle() == Form::Style::Sizable && IsWindowVisible(window->Handle());
    });
    return found == windows.end() ? nullptr : (*found)->Handle();
}

HWND Win32Toolkit::ActiveOwner() const
{
    const HWND active = GetActiveWindow();
    HWND last = nullptr;
    for (const FormWindow* window : windows) {
        if (!IsWindowVisible(window->Handle()))
            continue;
        if (window->Handle() == active)
            return active;
        if (IsWindowEnabled(window->Handle()))
            last = window->Handle();
    }
    return last;
}

void Win32Toolkit::RunModal(Form& form)
{
    auto* window = static_cast<FormWindow*>(form.Peer());
    Modal modal{window, {}, GetFocus(), false};
    for (const FormWindow* other : windows) {
        // Those that are hidden as well: they can be shown or closed from outside meanwhile.
        if (other == window || !IsWindowEnabled(other->Handle()))
            continue;
        modal.disabled.push_back(other->Handle());
        EnableWindow(other->Handle(), FALSE);
    }
    modals.push_back(&modal);
    struct Over {
        Win32Toolkit& toolkit;
        const FormWindow& window;
        ~Over() { toolkit.EndModal(window); }
    } const over{*this, *window};
    const Yield yield{*this};
    const platform::Scoped deeper{level, level + 1};
    window->Show();
    while (!modal.ended && Step()) {
    }
    Sweep();
}

HWND Win32Toolkit::EndModal(const FormWindow& window)
{
    const auto found = std::ranges::find(modals, &window, &Modal::window);
    if (found == modals.end())
        return nullptr;
    Modal& modal = **found;
    modals.erase(found);
    modal.ended = true;
    for (const HWND other : modal.disabled)
        EnableWindow(other, TRUE);
    return modal.focus;
}

void Win32Toolkit::ShowOtherInstance()
{
    // All at one moment: going from one to the next ends at a window that goes meanwhile, as those of a start do.
    EnumWindows(&ShowIfOtherMain, 0);
}

Answer Win32Toolkit::ShowMessage(const MessageBox& message)
{
    const HWND owner = ActiveOwner();
    const UINT style = StyleOf(message) | (owner == nullptr ? MB_TASKMODAL | MB_SETFOREGROUND : 0u);
    const NativeModal modal{*this};
    switch (MessageBoxW(owner, ToNative(message.text).c_str(), ToNative(message.title).c_str(), style)) {
    case IDYES:
        return Answer::Yes;
    case IDNO:
        return Answer::No;
    case IDRETRY:
        return Answer::Retry;
    default:
        return Otherwise(message.buttons);
    }
}

std::optional<std::string> Win32Toolkit::BrowseForFolder(const std::string& prompt, const std::string& initial)
{
    const NativeModal modal{*this};
    return ChooseFolder(ActiveOwner(), prompt, initial);
}

std::optional<std::string> Win32Toolkit::OpenFile(const OpenFileDialog& dialog)
{
    const NativeModal modal{*this};
    return ChooseFile(ActiveOwner(), dialog);
}

void Win32Toolkit::Run()
{
    while (Step()) {
    }
}

void Win32Toolkit::Quit()
{
    PostQuitMessage(0);
}

bool Win32Toolkit::Step()
{
    static const HWND threadMessages = reinterpret_cast<HWND>(-1); // those of no window (PeekMessage)
    // One at a time: a task may close the form that a modal loop runs for, which must look before it waits. By turns
    // with the messages: jobs that bring one result after the other must not keep keys and painting waiting.
    taskRanLast = !taskRanLast && RunTask();
    if (taskRanLast)
        return true;
    // Messages that are sent, not posted, are handled inside the wait and may have closed a form in the last one.
    Sweep();
    MSG message{};
    bool ends = false;
    if (HasTask()) {
        // What woke the loop for the tasks would stand before painting. Timers of no window come along with it.
        while (message.message != WM_QUIT && PeekMessageW(&message, threadMessages, WM_NULL, WM_NULL, PM_REMOVE))
            if (message.message != WM_NULL && message.message != WM_QUIT)
                DispatchMessageW(&message);
        if (message.message != WM_QUIT && !PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            return true;
        ends = message.message == WM_QUIT;
    } else {
        ends = GetMessageW(&message, nullptr, 0, 0) <= 0;
    }
    if (ends) {
        // The loops around this one must end as well.
        if (level > 0)
            PostQuitMessage(static_cast<int>(message.wParam));
        return false;
    }
    Dispatch(message);
    return true;
}

bool Win32Toolkit::CopyToClipboard(const std::string& file)
{
    return CopyFileToClipboard(ActiveOwner(), file);
}

std::optional<std::string> Win32Toolkit::PastedFile()
{
    std::string file = FileOnClipboard(ActiveOwner());
    return file.empty() ? std::nullopt : std::optional{std::move(file)};
}

void Win32Toolkit::DoEvents()
{
    // Who yields at every step of a long work would spend most of it with drawing what no eye can follow.
    HandleMessages(GetTickCount() - drawn >= LeastBetweenDrawings);
}

void Win32Toolkit::HandleMessages(bool draws)
{
    const Yield yield{*this};
    const platform::Scoped deeper{level, level + 1};
    MSG message{};
    const UINT which = draws ? 0u : PM_QS_INPUT | PM_QS_POSTMESSAGE | PM_QS_SENDMESSAGE;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE | which)) {
        if (message.message == WM_PAINT)
            drawn = GetTickCount();
        if (message.message == WM_QUIT) {
            PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        if (!InputHeld() || !IsHeldBack(message))
            Dispatch(message);
    }
    Sweep();
}

bool Win32Toolkit::IsHeldBack(const MSG& message) const
{
    const auto isOne = [&](UINT first, UINT last) { return message.message >= first && message.message <= last; };
    const bool isOnFrame = isOne(WM_NCMOUSEMOVE, WM_NCXBUTTONDBLCLK);
    if (!isOnFrame && !isOne(WM_KEYFIRST, WM_KEYLAST) && !isOne(WM_MOUSEFIRST, WM_MOUSELAST))
        return false;
    const HWND top = GetAncestor(message.hwnd, GA_ROOT);
    const auto window = std::ranges::find(windows, top, &FormWindow::Handle);
    if (window != windows.end() && (*window)->Model().GetStyle() == Form::Style::Splash)
        return false;
    constexpr WPARAM frame[] = {HTCAPTION, HTCLOSE, HTMINBUTTON, HTMAXBUTTON};
    const bool closes = message.message == WM_SYSKEYDOWN && message.wParam == VK_F4;
    return !closes && !(isOnFrame && std::ranges::find(frame, message.wParam) != std::end(frame));
}

bool Win32Toolkit::WaitUntil(const std::function<bool()>& ended, std::chrono::milliseconds atMost)
{
    const auto end = std::chrono::steady_clock::now() + atMost;
    while (!ended()) {
        HandleMessages(true);
        MSG quit;
        if (ended() || PeekMessageW(&quit, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE))
            break;
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(end - std::chrono::steady_clock::now()).count();
        if (left <= 0)
            break;
        MsgWaitForMultipleObjectsEx(0, nullptr, static_cast<DWORD>(left), QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    }
    return ended();
}

void Win32Toolkit::Dispatch(MSG& message)
{
    const HWND top = message.hwnd != nullptr ? GetAncestor(message.hwnd, GA_ROOT) : nullptr;
    const auto window = std::ranges::find(windows, top, &FormWindow::Handle);
    if (window == windows.end() || !(*window)->Translate(message)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    Sweep();
}

void Win32Toolkit::Post(std::function<void()> task)
{
    {
        const std::lock_guard lock{taskMutex};
        // Another thread knows of no handler: any loop may run what it brings.
        tasks.push_back({GetCurrentThreadId() == thread ? level : AnyLevel, std::move(task)});
    }
    // The loop may be waiting, or be handling a message inside its wait. Lost when the queue is full: then it does not
    // wait.
    PostThreadMessageW(thread, WM_NULL, 0, 0);
}

std::deque<Win32Toolkit::Task>::iterator Win32Toolkit::NextTask()
{
    return std::ranges::find_if(tasks, [&](const Task& task) { return task.level >= level; });
}

bool Win32Toolkit::HasTask()
{
    const std::lock_guard lock{taskMutex};
    return NextTask() != tasks.end();
}

bool Win32Toolkit::RunTask()
{
    std::function<void()> run;
    {
        const std::lock_guard lock{taskMutex};
        const auto next = NextTask();
        if (next == tasks.end())
            return false;
        run = std::move(next->run);
        tasks.erase(next);
    }
    Guarded([&] { run(); });
    return true;
}

void Win32Toolkit::Bury(HWND window)
{
    graves.push_back(window);
}

void Win32Toolkit::Sweep()
{
    // Destroying a window sends messages, which may bring new graves.
    while (!graves.empty()) {
        const HWND window = graves.back();
        graves.pop_back();
        DestroyWindow(window);
    }
}

std::vector<WorkArea> Win32Toolkit::WorkAreas() const
{
    Areas areas;
    EnumDisplayMonitors(nullptr, nullptr, &CollectArea, reinterpret_cast<LPARAM>(&areas));
    return std::move(areas.found);
}

Size Win32Toolkit::ScreenSize() const
{
    return {GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN)};
}

bool Win32Toolkit::CopyText(const std::string& text)
{
    return CopyTextToClipboard(ActiveOwner(), text);
}

void Win32Toolkit::SetBusy(bool isBusy)
{
    busy = isBusy;
    SetCursor(LoadCursorW(nullptr, busy ? IDC_WAIT : IDC_ARROW));
}

void Win32Toolkit::Attach(FormWindow& window)
{
    windows.push_back(&window);
    // Burying it must not fail.
    graves.reserve(graves.size() + windows.size());
}

void Win32Toolkit::KeepSplashAbove(HWND window)
{
    for (const FormWindow* other : windows)
        if (other->Model().GetStyle() == Form::Style::Splash && IsWindowVisible(other->Handle())) {
            SetWindowLongPtrW(other->Handle(), GWLP_HWNDPARENT, reinterpret_cast<LONG_PTR>(window));
            SetWindowPos(other->Handle(), HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
        }
}

void Win32Toolkit::Detach(FormWindow& window)
{
    std::erase(windows, &window);
}

} // namespace ui::win32
