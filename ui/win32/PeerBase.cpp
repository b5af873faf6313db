#include "ui/win32/PeerBase.h"

#include "ui/Form.h"
#include "ui/win32/Accessible.h"
#include "ui/win32/FormWindow.h"
#include "ui/win32/Guarded.h"
#include "ui/win32/NativeText.h"

namespace ui::win32 {
namespace {

/// Leads from a control's window to its peer, also where others have put themselves before its procedure.
constexpr wchar_t PeerProperty[] = L"TSBrowserPeer";

bool IsOurs(HWND window)
{
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    return process == GetCurrentProcessId();
}

/// What the control's own class makes of a message.
LRESULT ByClass(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    return CallWindowProcW(reinterpret_cast<WNDPROC>(GetClassLongPtrW(window, GCLP_WNDPROC)), window, message, wParam,
                           lParam);
}

} // namespace

PeerBase::PeerBase(Control& peerControl, FormWindow& peerForm) : control{peerControl}, form{peerForm} {}

PeerBase::~PeerBase()
{
    // The native control goes with the whole window.
    if (window == nullptr)
        return;
    RemovePropW(window, PeerProperty);
    SetWindowLongPtrW(window, GWLP_USERDATA, 0); // the procedure stays: others may stand before it
}

bool PeerBase::IsGone() const
{
    return !form.Serves();
}

void PeerBase::Create(const wchar_t* windowClass, DWORD style, DWORD extendedStyle, int id)
{
    DWORD full = style | WS_CHILD | WS_CLIPSIBLINGS;
    if (control.Visible())
        full |= WS_VISIBLE;
    if (!control.Enabled())
        full |= WS_DISABLED;
    if (control.IsTabStop())
        full |= WS_TABSTOP;
    const ByCode guard{*this};
    window = CreateWindowExW(extendedStyle, windowClass, ToNative(control.Caption()).c_str(), full, 0, 0, 0, 0,
                             form.Handle(), reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)),
                             GetModuleHandleW(nullptr), nullptr);
    if (window == nullptr)
        return;
    // Not by SetWindowSubclass: that looks up a property of the window three times a message, and Wine asks its server
    // for each, hundreds of times for a list that is filled.
    SetWindowLongPtrW(window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&PeerBase::Procedure));
    SetPropW(window, PeerProperty, this);
    form.SetToolTip(window, control.ToolTipText);
    NameForReaders(window, control.Name);
}

PeerBase* PeerBase::Of(HWND window)
{
    // Another browser's windows have such a property, too.
    return window != nullptr && IsOurs(window) ? static_cast<PeerBase*>(GetPropW(window, PeerProperty)) : nullptr;
}

void PeerBase::Update(Aspect aspect)
{
    const ByCode guard{*this};
    switch (aspect) {
    case Aspect::Bounds:
        Place();
        break;
    case Aspect::Visible:
        // Windows leaves the focus in a hidden control, where keys would go nowhere.
        if (!control.Visible() && GetFocus() == window)
            SetFocus(form.Handle());
        ShowWindow(window, control.Visible() ? SW_SHOWNA : SW_HIDE);
        break;
    case Aspect::Enabled:
        // A disabled window that keeps the focus swallows every key; the form holds it until the control is back.
        if (!control.Enabled() && GetFocus() == window)
            SetFocus(form.Handle());
        EnableWindow(window, control.Enabled());
        if (control.Enabled() && control.HasFocus())
            form.FocusActiveControl();
        break;
    case Aspect::Focus:
        form.FocusActiveControl();
        break;
    case Aspect::ToolTip:
        form.SetToolTip(window, control.ToolTipText);
        Sync(aspect);
        break;
    default:
        Sync(aspect);
        break;
    }
}

void PeerBase::Sync(Aspect aspect)
{
    if (aspect == Aspect::Caption)
        SetWindowTextW(window, ToNative(control.Caption()).c_str());
}

void PeerBase::Place()
{
    const RECT place = ToPixels(control.Bounds(), Dpi());
    SetWindowPos(window, nullptr, place.left, place.top, place.right - place.left, place.bottom - place.top,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

void PeerBase::DpiChanged()
{
    const ByCode guard{*this};
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(NormalFont()), TRUE);
    Place();
}

void PeerBase::OnCommand(int, int) {}

std::optional<LRESULT> PeerBase::OnNotify(NMHDR&)
{
    return std::nullopt;
}

bool PeerBase::UsesKey(const Key&)
{
    return false;
}

bool PeerBase::UsesMnemonic(wchar_t)
{
    return false;
}

bool PeerBase::OwnsToolTips(HWND) const
{
    return false;
}

std::optional<LRESULT> PeerBase::OnMessage(UINT, WPARAM, LPARAM)
{
    return std::nullopt;
}

LRESULT PeerBase::Default(UINT message, WPARAM wParam, LPARAM lParam)
{
    return ByClass(window, message, wParam, lParam);
}

LRESULT PeerBase::Send(UINT message, WPARAM wParam, LPARAM lParam) const
{
    return SendMessageW(window, message, wParam, lParam);
}

int PeerBase::Dpi() const
{
    return form.Dpi();
}

HFONT PeerBase::NormalFont() const
{
    return form.WindowFonts().normal.get();
}

int PeerBase::FieldHeight() const
{
    // A native box writes its text just below its upper edge, at any dpi: more room would all go below the text, and
    // labels beside it would stand lower.
    constexpr int room = 7;
    return Twips(Measure({}, NormalFont()).cy + room);
}

bool PeerBase::HasMnemonic(wchar_t letter) const
{
    return MnemonicOf(ToNative(control.Caption())) == letter;
}

bool PeerBase::TakesFocus() const
{
    const Watch watch{*this};
    SetFocus(window);
    return !watch.Gone() && GetFocus() == window;
}

LRESULT PeerBase::PressIfFocused(WPARAM wParam, LPARAM lParam)
{
    const Watch watch{*this};
    const LRESULT answer = Default(WM_LBUTTONDOWN, wParam, lParam);
    if (!watch.Gone() && GetCapture() == window && GetFocus() != window)
        ReleaseCapture();
    return answer;
}

Point PeerBase::InForm(POINT point) const
{
    MapWindowPoints(window, form.Handle(), &point, 1);
    return {ToTwips(point.x, Dpi()), ToTwips(point.y, Dpi())};
}

SIZE PeerBase::Measure(const std::string& text, HFONT font, int width, UINT flags) const
{
    const std::wstring native = ToNative(text);
    HDC context = GetDC(window);
    const HGDIOBJ before = SelectObject(context, font);
    RECT rect{0, 0, width > 0 ? width : 0x7FFF, 0};
    DrawTextW(context, native.c_str(), static_cast<int>(native.size()), &rect,
              DT_CALCRECT | DT_EXPANDTABS | flags | (width > 0 ? DT_WORDBREAK : 0u));
    if (native.empty()) {
        TEXTMETRICW metrics{};
        GetTextMetricsW(context, &metrics);
        rect = {0, 0, 0, metrics.tmHeight};
    }
    SelectObject(context, before);
    ReleaseDC(window, context);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

LRESULT CALLBACK PeerBase::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept
{
    if (message == WM_DESTROY)
        ForgetForReaders(window);
    auto* self = reinterpret_cast<PeerBase*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (self == nullptr || self->IsGone())
        return ByClass(window, message, wParam, lParam);
    const Form::Use use{self->form.Model()};
    const auto answer = Guarded([&]() -> std::optional<LRESULT> {
        auto result = self->OnMessage(message, wParam, lParam);
        if (message == WM_SETFOCUS) {
            // After the native control took it, since a handler may move the focus on at once.
            if (!result)
                result = self->Default(message, wParam, lParam);
            if (!self->IsGone())
                self->control.UserFocuses();
            if (!self->IsGone())
                self->form.MarkDefaultButton(GetFocus());
        }
        return result;
    });
    return answer ? *answer : ByClass(window, message, wParam, lParam);
}

} // namespace ui::win32
