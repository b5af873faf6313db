#include "ui/win32/FormWindow.h"

#include "platform/Scoped.h"
#include "ui/Button.h"
#include "ui/win32/Guarded.h"
#include "ui/win32/KeyTranslation.h"
#include "ui/win32/NativeText.h"
#include "ui/win32/PeerBase.h"
#include "ui/win32/PeerFactory.h"
#include "ui/win32/Win32Toolkit.h"

#include <algorithm>
#include <cwchar>
#include <string_view>
#include <utility>

namespace ui::win32 {
namespace {

/// The program's own icon in its resources.
constexpr WORD ProgramIcon = 1;
constexpr int WidestToolTip = 6000; ///< twips
constexpr Size FirstSize{15000, 10500};

struct WindowStyle {
    DWORD style;
    DWORD extended;
};

WindowStyle StyleOf(const Form& form, bool isOwned)
{
    switch (form.GetStyle()) {
    case Form::Style::Sizable:
        return {WS_OVERLAPPEDWINDOW | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
    case Form::Style::Dialog:
        // Without an owner it would have no taskbar button to find it by.
        return {WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN,
                WS_EX_CONTROLPARENT | (form.IconFile().empty() ? static_cast<DWORD>(WS_EX_DLGMODALFRAME) : 0u) |
                    (isOwned ? 0u : static_cast<DWORD>(WS_EX_APPWINDOW))}; // that frame shows no icon
    case Form::Style::Splash:
        break;
    }
    return {WS_POPUP | WS_CAPTION | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT};
}

/// Moves `outer` to the middle of `around`, inside the work area of its monitor.
RECT Centred(SIZE outer, const RECT& around)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    GetMonitorInfoW(MonitorFromRect(&around, MONITOR_DEFAULTTONEAREST), &monitor);
    const RECT& work = monitor.rcWork;
    const LONG left = std::max(std::min((around.left + around.right - outer.cx) / 2, work.right - outer.cx), work.left);
    const LONG top = std::max(std::min((around.top + around.bottom - outer.cy) / 2, work.bottom - outer.cy), work.top);
    return {left, top, left + outer.cx, top + outer.cy};
}

RECT WorkAreaOf(HWND window)
{
    MONITORINFO monitor{};
    monitor.cbSize = sizeof(monitor);
    GetMonitorInfoW(MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
    return monitor.rcWork;
}

bool IsButton(const Control& control)
{
    return dynamic_cast<const Button*>(&control) != nullptr;
}

bool IsFunctionKey(const Key& key)
{
    return key.code >= KeyCode::F1 && key.code <= KeyCode::F10;
}

/// A key that a text box, or the dialog for it, has a use for; the others stay commands where the user types, too.
bool IsEditingKey(const Key& key)
{
    if (IsFunctionKey(key))
        return false;
    if (key.alt)
        return key.code != KeyCode::Enter;
    if (!key.ctrl)
        return true;
    const bool isText = key.code >= KeyCode::Letter0 && key.code < KeyCode::F1;
    return isText ? std::string_view{"ACVXYZ"}.contains(static_cast<char>(key.code)) : key.code != KeyCode::Tab;
}

bool IsEdit(HWND window)
{
    wchar_t name[16]{};
    GetClassNameW(window, name, 16);
    return _wcsicmp(name, L"Edit") == 0;
}

} // namespace

FormWindow::FormWindow(Win32Toolkit& windowToolkit, ui::Form& windowForm, HWND owner)
    : toolkit{windowToolkit}, form{windowForm}, dpi{SystemDpi()}, fonts{dpi}
{
    const WindowStyle style = StyleOf(form, owner != nullptr);
    window = CreateWindowExW(style.extended, WindowClass(), ToNative(form.Caption()).c_str(), style.style,
                             CW_USEDEFAULT, CW_USEDEFAULT, ToPixels(FirstSize.width, dpi),
                             ToPixels(FirstSize.height, dpi), owner, nullptr, GetModuleHandleW(nullptr), nullptr);
    SetWindowLongPtrW(Handle(), GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    try {
        Build();
    } catch (...) {
        TearDown();
        throw;
    }
    ready = true;
}

FormWindow::~FormWindow()
{
    TearDown();
}

void FormWindow::Build()
{
    toolkit.Attach(*this);
    if (const int own = DpiOf(Handle()); own != dpi) {
        dpi = own;
        fonts = Fonts{dpi};
    }
    ApplyIcon();
    ApplyMenu();
    if (form.Placement().width > 0)
        ApplyPlacement();
    int id = 100;
    for (Control* control : form.Controls())
        control->SetPeer(CreateControlPeer(*control, *this, id++));
}

void FormWindow::TearDown()
{
    toolkit.EndModal(*this);
    for (Control* control : form.Controls())
        control->SetPeer(nullptr);
    SetWindowLongPtrW(Handle(), GWLP_USERDATA, 0);
    // A visible window costs two seconds to destroy where there is no window manager.
    ShowWindow(Handle(), SW_HIDE);
    toolkit.Detach(*this);
    toolkit.Bury(Handle());
}

const wchar_t* FormWindow::WindowClass()
{
    static const wchar_t* const name = L"TSBrowserForm";
    static const ATOM registered = [] {
        WNDCLASSEXW windowClass{};
        windowClass.cbSize = sizeof(windowClass);
        windowClass.lpfnWndProc = &FormWindow::Procedure;
        windowClass.hInstance = GetModuleHandleW(nullptr);
        windowClass.hCursor = LoadCursorW(nullptr, IDC_ARROW);
        windowClass.hbrBackground = GetSysColorBrush(COLOR_3DFACE);
        windowClass.lpszClassName = name;
        return RegisterClassExW(&windowClass);
    }();
    return registered != 0 ? name : L"";
}

const pictures::win32::ImageLoader& FormWindow::Images() const
{
    return toolkit.Images();
}

const pictures::Pictures& FormWindow::Pictures() const
{
    return toolkit.Pictures();
}

platform::Jobs& FormWindow::Jobs() const
{
    return toolkit.Jobs();
}

void FormWindow::Update(Aspect aspect)
{
    switch (aspect) {
    case Aspect::Caption:
        SetWindowTextW(Handle(), ToNative(form.Caption()).c_str());
        break;
    case Aspect::Icon:
        ApplyIcon();
        break;
    case Aspect::Placement:
        ApplyPlacement();
        break;
    case Aspect::State:
        if (form.IsVisible())
            Show();
        break;
    case Aspect::Menu:
        if (!menus.IsCurrent(form.MenuBar))
            ApplyMenu();
        break;
    case Aspect::Enabled:
        break;
    }
}

void FormWindow::ApplyPlacement()
{
    const auto pixels = [this] {
        const Rect& place = form.Placement();
        const POINT corner{ToPixels(place.left, SystemDpi()), ToPixels(place.top, SystemDpi())};
        return RECT{corner.x, corner.y, corner.x + ToPixels(place.width, dpi), corner.y + ToPixels(place.height, dpi)};
    };
    const platform::Scoped guard{byCode, true};
    if (IsIconic(Handle()) || IsZoomed(Handle())) {
        WINDOWPLACEMENT placement{};
        placement.length = sizeof(placement);
        GetWindowPlacement(Handle(), &placement);
        placement.rcNormalPosition = pixels();
        SetWindowPlacement(Handle(), &placement);
    } else {
        const auto move = [&] {
            const RECT place = pixels();
            SetWindowPos(Handle(), nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                         SWP_NOZORDER | SWP_NOACTIVATE);
        };
        const int before = dpi;
        move();
        if (dpi != before) // on its way it has come to a monitor on which the size is another one in pixels
            move();
    }
}

void FormWindow::ApplyIcon()
{
    if (form.GetStyle() == Form::Style::Dialog && form.IconFile().empty())
        return;
    const auto load = [&](int metric) {
        const int size = SystemMetric(metric, dpi);
        IconHandle icon = form.IconFile().empty() ? nullptr : Images().FromFile(form.IconFile(), size);
        return icon ? std::move(icon) : Images().FromResource(MAKEINTRESOURCEW(ProgramIcon), size);
    };
    IconHandle large = load(SM_CXICON);
    IconHandle small = load(SM_CXSMICON);
    SendMessageW(Handle(), WM_SETICON, ICON_BIG, reinterpret_cast<LPARAM>(large.get()));
    SendMessageW(Handle(), WM_SETICON, ICON_SMALL, reinterpret_cast<LPARAM>(small.get()));
    largeIcon = std::move(large);
    smallIcon = std::move(small);
}

void FormWindow::ApplyMenu()
{
    if (form.GetStyle() != Form::Style::Sizable)
        return;
    HMENU before = GetMenu(Handle());
    // The window owns its bar from here on.
    SetMenu(Handle(), menus.BuildBar(form.MenuBar).release());
    if (before != nullptr)
        DestroyMenu(before);
}

void FormWindow::Show()
{
    if (!menus.IsCurrent(form.MenuBar))
        ApplyMenu();
    int how = form.ComesByItself ? SW_SHOWNOACTIVATE : SW_SHOWNORMAL;
    if (form.State() == Form::WindowState::Maximized)
        how = SW_SHOWMAXIMIZED;
    else if (form.State() == Form::WindowState::Minimized)
        how = SW_SHOWMINIMIZED;
    {
        const platform::Scoped guard{byCode, true};
        if (!resized && (how == SW_SHOWNORMAL || how == SW_SHOWNOACTIVATE))
            form.UserResizes(ClientSize());
        if (form.IsOpen())
            ShowWindow(Handle(), how);
    }
    if (form.GetStyle() == Form::Style::Sizable)
        toolkit.KeepSplashAbove(Handle());
    if (form.IsOpen())
        FocusActiveControl();
}

void FormWindow::Hide()
{
    // The others must be able to take the activation before this window gives it up.
    const HWND focus = toolkit.EndModal(*this);
    if (!IsWindowVisible(Handle()))
        return;
    {
        const platform::Scoped guard{byCode, true};
        ShowWindow(Handle(), SW_HIDE);
    }
    if (focus != nullptr && IsWindow(focus))
        SetFocus(focus);
}

Size FormWindow::ClientSize() const
{
    RECT client{};
    GetClientRect(Handle(), &client);
    return {ToTwips(client.right, dpi), ToTwips(client.bottom, dpi)};
}

void FormWindow::FitClient(Size client)
{
    const SIZE pixels{ToPixels(client.width + 14, dpi), ToPixels(client.height + 14, dpi)};
    const auto style = static_cast<DWORD>(GetWindowLongPtrW(Handle(), GWL_STYLE));
    const auto extended = static_cast<DWORD>(GetWindowLongPtrW(Handle(), GWL_EXSTYLE));
    const SIZE outer = OuterSize(pixels, style, extended, GetMenu(Handle()) != nullptr, dpi);
    RECT around{};
    const HWND owner = GetWindow(Handle(), GW_OWNER);
    if (owner == nullptr || !IsWindowVisible(owner) || IsIconic(owner) || !GetWindowRect(owner, &around))
        around = WorkAreaOf(Handle());
    const RECT place = Centred(outer, around);
    const platform::Scoped guard{byCode, true};
    SetWindowPos(Handle(), nullptr, place.left, place.top, outer.cx, outer.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

void FormWindow::ShowPopup(Menu& menu, Point at)
{
    POINT point{ToPixels(at.x, dpi), ToPixels(at.y, dpi)};
    ClientToScreen(Handle(), &point);
    const MenuHandle popup = menus.BuildPopup(menu);
    int command = 0;
    {
        const Win32Toolkit::NativeModal modal{toolkit};
        const UINT flags = TPM_RETURNCMD | TPM_NONOTIFY | TPM_RIGHTBUTTON |
                           (GetSystemMetrics(SM_MENUDROPALIGNMENT) != 0 ? TPM_RIGHTALIGN : TPM_LEFTALIGN);
        command = TrackPopupMenuEx(popup.get(), flags, point.x, point.y, Handle(), nullptr);
    }
    if (!form.IsOpen())
        return;
    Menu* chosen = menus.Find(menu, command);
    menus.Restart();
    if (chosen != nullptr)
        chosen->UserClicks();
}

void FormWindow::BringToFront()
{
    if (IsIconic(Handle()))
        ShowWindow(Handle(), SW_RESTORE);
    SetForegroundWindow(Handle());
}

void FormWindow::FocusActiveControl()
{
    // Taking the focus would activate a window that waits behind another.
    if (GetActiveWindow() != Handle())
        return;
    const auto isShown = [](const Control* control) { return control->Peer() != nullptr && control->Visible(); };
    Control* target = form.ActiveControl();
    if (target != nullptr && isShown(target) && !target->Enabled())
        return;
    if (target == nullptr || !isShown(target)) {
        const auto& controls = form.Controls();
        const auto first = std::ranges::find_if(controls, [&](const Control* control) {
            return control->IsTabStop() && isShown(control) && control->Enabled();
        });
        target = first == controls.end() ? nullptr : *first;
    }
    if (target != nullptr)
        SetFocus(static_cast<PeerBase*>(target->Peer())->Handle());
}

void FormWindow::SetToolTip(HWND control, const std::string& text)
{
    if (toolTips == nullptr) {
        if (text.empty())
            return;
        toolTips = CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0,
                                   0, 0, 0, Handle(), nullptr, GetModuleHandleW(nullptr), nullptr);
        SendMessageW(toolTips, TTM_SETMAXTIPWIDTH, 0, ToPixels(WidestToolTip, dpi));
    }
    std::wstring native = ToNative(text);
    TTTOOLINFOW tool{};
    tool.cbSize = sizeof(tool);
    tool.uFlags = TTF_SUBCLASS | TTF_IDISHWND;
    tool.hwnd = Handle();
    tool.uId = reinterpret_cast<UINT_PTR>(control);
    tool.lpszText = native.data();
    SendMessageW(toolTips, TTM_DELTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
    if (!text.empty())
        SendMessageW(toolTips, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
}

bool FormWindow::Translate(MSG& message)
{
    if (!form.IsOpen())
        return true;
    const Form::Use use{form};
    const bool isKeyDown = message.message == WM_KEYDOWN || message.message == WM_SYSKEYDOWN;
    const auto used = Guarded([&] {
        return (isKeyDown && TranslateKey(message)) || (message.message == WM_SYSCHAR && TranslateMnemonic(message));
    });
    if (used || !form.IsOpen())
        return true;
    const bool handled = IsDialogMessageW(Handle(), &message) != 0;
    // The system takes the mark off every button when the keyboard goes to a check box.
    if (handled && isKeyDown && form.IsOpen())
        MarkDefaultButton(GetFocus());
    return handled;
}

bool FormWindow::TranslateKey(const MSG& message)
{
    const Key key = KeyOf(message.wParam);
    if (!key)
        return false;
    if (PeerBase* captured = PeerBase::Of(GetCapture()); captured != nullptr && captured->UsesKey(key))
        return true;

    PeerBase* focused = PeerBase::Of(message.hwnd);
    if (IsEdit(message.hwnd) && (focused == nullptr ? !IsFunctionKey(key) : IsEditingKey(key)))
        return focused != nullptr && focused->UsesKey(key);

    if (focused != nullptr && focused->UsesKey(key))
        return true;
    if (!form.IsOpen())
        return true;
    const bool pressesButton = key == Plain(KeyCode::Enter) && focused != nullptr && IsButton(focused->Model());
    return !pressesButton && form.UserPresses(key);
}

bool FormWindow::TranslateMnemonic(const MSG& message)
{
    wchar_t letter = static_cast<wchar_t>(message.wParam);
    CharUpperBuffW(&letter, 1);
    if (menus.HasMnemonic(form.MenuBar, letter))
        return false;
    return std::ranges::any_of(form.Controls(), [&](const Control* control) {
        auto* peer = static_cast<PeerBase*>(control->Peer());
        return peer != nullptr && control->Visible() && control->Enabled() && peer->UsesMnemonic(letter);
    });
}

PeerBase* FormWindow::DefaultButton() const
{
    const PeerBase* focused = PeerBase::Of(GetFocus());
    const Button* button = form.DefaultButton(focused != nullptr ? &focused->Model() : nullptr);
    return button != nullptr ? static_cast<PeerBase*>(button->Peer()) : nullptr;
}

PeerBase* FormWindow::CancelButton() const
{
    for (Control* control : form.Controls())
        if (const auto* button = dynamic_cast<const Button*>(control);
            button != nullptr && button->GetRole() == Role::Cancel && button->Peer() != nullptr)
            return static_cast<PeerBase*>(button->Peer());
    return nullptr;
}

void FormWindow::MarkDefaultButton(HWND focus)
{
    const PeerBase* focused = PeerBase::Of(focus);
    const Button* marked = form.DefaultButton(focused != nullptr ? &focused->Model() : nullptr);
    for (const Control* control : form.Controls()) {
        const auto* button = dynamic_cast<const Button*>(control);
        if (button == nullptr || button->Peer() == nullptr)
            continue;
        const HWND handle = static_cast<PeerBase*>(button->Peer())->Handle();
        const LONG_PTR wanted = button == marked ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON;
        if ((GetWindowLongPtrW(handle, GWL_STYLE) & BS_TYPEMASK) != wanted)
            SendMessageW(handle, BM_SETSTYLE, static_cast<WPARAM>(wanted), TRUE);
    }
}

LRESULT FormWindow::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const int id = LOWORD(wParam);
    const int code = HIWORD(wParam);
    PeerBase* peer = PeerBase::Of(reinterpret_cast<HWND>(lParam));
    if (peer == nullptr && id == IDOK)
        peer = DefaultButton();
    if (peer == nullptr && id == IDCANCEL) {
        peer = CancelButton();
        if (peer == nullptr && form.GetStyle() == Form::Style::Dialog) {
            form.UserCloses();
            return 0;
        }
    }
    if (peer != nullptr)
        peer->OnCommand(code, id);
    else if (Menu* chosen = menus.Find(form.MenuBar, id))
        chosen->UserClicks();
    return 0;
}

std::optional<LRESULT> FormWindow::OnNotify(NMHDR& header)
{
    if (PeerBase* peer = PeerBase::Of(header.hwndFrom))
        return peer->OnNotify(header);
    if (header.code == TTN_GETDISPINFOW)
        for (Control* control : form.Controls())
            if (auto* peer = static_cast<PeerBase*>(control->Peer()); peer && peer->OwnsToolTips(header.hwndFrom))
                return peer->OnNotify(header);
    return std::nullopt;
}

void FormWindow::OnPlaced()
{
    WINDOWPLACEMENT placement{};
    placement.length = sizeof(placement);
    if (!GetWindowPlacement(Handle(), &placement))
        return;
    RECT outer = placement.rcNormalPosition;
    auto state = Form::WindowState::Normal;
    if (IsIconic(Handle()))
        state = Form::WindowState::Minimized;
    else if (IsZoomed(Handle()))
        state = Form::WindowState::Maximized;
    if (state == Form::WindowState::Normal) {
        GetWindowRect(Handle(), &outer);
    } else {
        // The normal place of a window is kept relative to the work area, not to the monitor.
        MONITORINFO monitor{};
        monitor.cbSize = sizeof(monitor);
        GetMonitorInfoW(MonitorFromRect(&outer, MONITOR_DEFAULTTONEAREST), &monitor);
        OffsetRect(&outer, monitor.rcWork.left - monitor.rcMonitor.left, monitor.rcWork.top - monitor.rcMonitor.top);
    }
    form.UserPlaces({ToTwips(outer.left, SystemDpi()), ToTwips(outer.top, SystemDpi()),
                     ToTwips(outer.right - outer.left, dpi), ToTwips(outer.bottom - outer.top, dpi)},
                    state);
}

void FormWindow::OnDpiChanged(int newDpi, const RECT& suggested)
{
    dpi = newDpi;
    Fonts before = std::exchange(fonts, Fonts{dpi});
    ApplyIcon();
    for (Control* control : form.Controls())
        if (auto* peer = static_cast<PeerBase*>(control->Peer()))
            peer->DpiChanged();
    SetWindowPos(Handle(), nullptr, suggested.left, suggested.top, suggested.right - suggested.left,
                 suggested.bottom - suggested.top, SWP_NOZORDER | SWP_NOACTIVATE);
    form.UserResizes(ClientSize());
}

std::optional<LRESULT> FormWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    constexpr UINT dpiChanged = 0x02E0; // WM_DPICHANGED, newer than the oldest system's headers
    switch (message) {
    case WM_COMMAND:
        return OnCommand(wParam, lParam);
    case WM_NOTIFY:
        return OnNotify(*reinterpret_cast<NMHDR*>(lParam));
    case WM_WINDOWPOSCHANGED:
        if (ready && !byCode && IsWindowVisible(Handle()))
            OnPlaced();
        break;
    case WM_ENTERSIZEMOVE:
    case WM_EXITSIZEMOVE:
        frameIsDragged = message == WM_ENTERSIZEMOVE;
        break;
    case WM_GETMINMAXINFO:
        if (frameIsDragged) {
            POINT& smallest = reinterpret_cast<MINMAXINFO*>(lParam)->ptMinTrackSize;
            smallest.x = std::max<LONG>(smallest.x, ToPixels(form.Smallest.width, dpi));
            smallest.y = std::max<LONG>(smallest.y, ToPixels(form.Smallest.height, dpi));
            return 0;
        }
        break;
    case WM_SIZE:
        if (ready && wParam != SIZE_MINIMIZED) {
            resized = true;
            form.UserResizes(ClientSize());
        }
        return 0;
    case WM_MOUSEWHEEL:
        if (!form.MouseWheel)
            break;
        // Fine wheels send parts of a notch.
        wheel += GET_WHEEL_DELTA_WPARAM(wParam);
        if (const int notches = wheel / WHEEL_DELTA; notches != 0) {
            wheel -= notches * WHEEL_DELTA;
            form.MouseWheel(notches);
        }
        return 0;
    case WM_ERASEBKGND:
        // A theme with transparent parts asks a control's parent for what lies behind them.
        if (auto* context = reinterpret_cast<HDC>(wParam); const PeerBase* peer = PeerBase::Of(WindowFromDC(context))) {
            RECT all{};
            GetClipBox(context, &all);
            FillRect(context, &all, GetSysColorBrush(peer->BackgroundColour()));
            return TRUE;
        }
        break;
    case WM_SETFOCUS:
        FocusActiveControl();
        return 0;
    case WM_INITMENU:
        menus.Restart();
        break;
    case WM_INITMENUPOPUP:
        if (HIWORD(lParam) == 0) {
            if (form.MenuOpening)
                form.MenuOpening();
            menus.FillBarPopup(form.MenuBar, reinterpret_cast<HMENU>(wParam), LOWORD(lParam));
            return 0;
        }
        break;
    case WM_EXITMENULOOP:
        if (!wParam && !menus.IsCurrent(form.MenuBar))
            ApplyMenu();
        break;
    case WM_SETCURSOR:
        if (toolkit.IsBusy()) {
            SetCursor(LoadCursorW(nullptr, IDC_WAIT));
            return TRUE;
        }
        break;
    case DM_GETDEFID:
        if (const PeerBase* button = DefaultButton())
            return MAKELRESULT(GetDlgCtrlID(button->Handle()), DC_HASDEFID);
        return 0;
    case dpiChanged:
        OnDpiChanged(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
        return 0;
    case WM_CLOSE:
        form.UserCloses();
        return 0;
    case WM_QUERYENDSESSION:
        return TRUE;
    case WM_ENDSESSION:
        if (wParam && form.SessionEnds)
            form.SessionEnds();
        if (wParam && form.GetStyle() == Form::Style::Sizable)
            form.UserCloses();
        return 0;
    default:
        break;
    }
    return std::nullopt;
}

LRESULT CALLBACK FormWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    auto* self = reinterpret_cast<FormWindow*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr || !self->Serves())
        return DefWindowProcW(window, message, wParam, lParam);
    const Form::Use use{self->form};
    const auto answer = Guarded([&] { return self->OnMessage(message, wParam, lParam); });
    return answer ? *answer : DefWindowProcW(window, message, wParam, lParam);
}

} // namespace ui::win32
