#include "ui/win32/FormWindow.h"

#include "platform/Scoped.h"
#include "ui/win32/Canvas.h"
#include "ui/win32/Guarded.h"
#include "ui/win32/NativeText.h"
#include "ui/win32/PeerBase.h"
#include "ui/win32/PeerFactory.h"
#include "ui/win32/Win32Toolkit.h"

#include <algorithm>
#include <utility>

namespace ui::win32 {
namespace {

/// The program's own icon in its resources.
constexpr WORD ProgramIcon = 1;
constexpr int WidestToolTip = 6000; ///< twips
constexpr int FirstControlId = 100; ///< beyond IDOK, IDCANCEL and their like
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

} // namespace

FormWindow::FormWindow(Win32Toolkit& windowToolkit, ui::Form& windowForm, HWND owner)
    : toolkit{windowToolkit}, form{windowForm}, dpi{SystemDpi()}, fonts{dpi}
{
    const WindowStyle style = StyleOf(form, owner != nullptr);
    // On the owner's monitor, so that everything is measured at its dpi; a pop-up knows no place by default.
    RECT place{CW_USEDEFAULT, CW_USEDEFAULT, 0, 0};
    if (owner != nullptr && IsWindowVisible(owner) && !IsIconic(owner))
        GetWindowRect(owner, &place);
    window = CreateWindowExW(style.extended, WindowClass(), ToNative(form.Caption()).c_str(), style.style, place.left,
                             place.top, ToPixels(FirstSize.width, dpi), ToPixels(FirstSize.height, dpi), owner, nullptr,
                             GetModuleHandleW(nullptr), nullptr);
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
    int id = FirstControlId;
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
    static const bool registered = RegisterPlainClass(name, 0, &FormWindow::Procedure);
    return registered ? name : L"";
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
    CancelLoops();
    {
        const platform::Scoped guard{byCode, true};
        ShowWindow(Handle(), SW_HIDE);
    }
    if (focus != nullptr && IsWindow(focus))
        SetFocus(focus);
}

void FormWindow::CancelLoops() const
{
    GUITHREADINFO thread{};
    thread.cbSize = sizeof thread;
    if (!GetGUIThreadInfo(GetCurrentThreadId(), &thread))
        return;
    if (thread.hwndMenuOwner == Handle() || IsChild(Handle(), thread.hwndMenuOwner))
        PostMessageW(Handle(), WM_CANCELMODE, 0, 0);
    if (thread.hwndMoveSize == Handle())
        PostMessageW(Handle(), WM_KEYDOWN, VK_ESCAPE, 1);
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

bool FormWindow::HoldsInput() const
{
    return toolkit.InputHeld() && form.GetStyle() != Form::Style::Splash;
}

LRESULT FormWindow::OnCommand(WPARAM wParam, LPARAM lParam)
{
    const int id = LOWORD(wParam);
    const int code = HIWORD(wParam);
    if (code == BN_CLICKED && HoldsInput())
        return 0; // pressed by a program for its user: no key and no click that could be held
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

std::optional<LRESULT> FormWindow::OnMouseWheel(int turned)
{
    if (!form.MouseWheel)
        return std::nullopt;
    // Fine wheels send parts of a notch.
    wheel += turned;
    if (const int notches = wheel / WHEEL_DELTA; notches != 0) {
        wheel -= notches * WHEEL_DELTA;
        form.MouseWheel(notches);
    }
    return 0;
}

std::optional<LRESULT> FormWindow::OnErase(HDC context)
{
    const PeerBase* peer = PeerBase::Of(WindowFromDC(context));
    if (peer == nullptr)
        return std::nullopt;
    // A theme with transparent parts asks a control's parent for what lies behind them.
    RECT all{};
    GetClipBox(context, &all);
    FillRect(context, &all, GetSysColorBrush(peer->BackgroundColour()));
    return TRUE;
}

void FormWindow::OnColoursChanged()
{
    // The system tells top-level windows only; what is in them keeps the old colours until it hears.
    for (const Control* control : form.Controls())
        if (const auto* peer = static_cast<const PeerBase*>(control->Peer()))
            SendMessageW(peer->Handle(), WM_SYSCOLORCHANGE, 0, 0);
    InvalidateRect(Handle(), nullptr, TRUE);
}

void FormWindow::OnMenuPopup(HMENU popup, int index)
{
    if (form.MenuOpening)
        form.MenuOpening();
    menus.FillBarPopup(form.MenuBar, popup, index);
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
        return OnMouseWheel(GET_WHEEL_DELTA_WPARAM(wParam));
    case WM_SYSCOLORCHANGE:
        OnColoursChanged();
        return 0;
    case WM_ERASEBKGND:
        return OnErase(reinterpret_cast<HDC>(wParam));
    case WM_SETFOCUS:
        FocusActiveControl();
        return 0;
    case WM_INITMENU:
        menus.Restart();
        break;
    case WM_INITMENUPOPUP:
        if (HIWORD(lParam) == 0) {
            OnMenuPopup(reinterpret_cast<HMENU>(wParam), LOWORD(lParam));
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
