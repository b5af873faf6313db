// Which keys of a window go where, and what has the keyboard.
#include "ui/win32/FormWindow.h"

#include "ui/Button.h"
#include "ui/win32/Guarded.h"
#include "ui/win32/KeyTranslation.h"
#include "ui/win32/PeerBase.h"

#include <algorithm>
#include <cwchar>
#include <string_view>

namespace ui::win32 {
namespace {

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

    if (focused != nullptr && focused->HasOpenList() && (key == Plain(KeyCode::Enter) || key == Plain(KeyCode::Escape)))
        return false;
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

} // namespace ui::win32
