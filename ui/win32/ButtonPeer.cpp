#include "ui/win32/ButtonPeer.h"

#include "ui/win32/FormWindow.h"

#include <algorithm>

namespace ui::win32 {
namespace {

// The least size of a push button and the room around its caption, in twips at any dpi.
constexpr int LeastWidth = 1125;
constexpr int LeastHeight = 345;
constexpr int SideRoom = 360;
constexpr int TopRoom = 150;

int IdOf(const Button& button, int otherwise)
{
    switch (button.GetRole()) {
    case Role::Default:
        return IDOK;
    case Role::Cancel:
        return IDCANCEL;
    case Role::Plain:
        break;
    }
    return otherwise;
}

} // namespace

ButtonPeer::ButtonPeer(Button& peerButton, FormWindow& form, int id) : PeerBase{peerButton, form}, button{peerButton}
{
    Create(WC_BUTTONW, static_cast<DWORD>(button.GetRole() == Role::Default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON), 0,
           IdOf(button, id));
}

Size ButtonPeer::Preferred(int) const
{
    const SIZE text = Measure(button.Caption(), NormalFont());
    return {std::max(Twips(text.cx) + SideRoom, LeastWidth), std::max(Twips(text.cy) + TopRoom, LeastHeight)};
}

void ButtonPeer::OnCommand(int code, int)
{
    if (code == BN_CLICKED && !IsByCode())
        button.UserClicks();
}

bool ButtonPeer::UsesMnemonic(wchar_t letter)
{
    if (!HasMnemonic(letter))
        return false;
    if (TakesFocus())
        button.UserClicks();
    return true;
}

std::optional<LRESULT> ButtonPeer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_LBUTTONDOWN)
        return PressIfFocused(wParam, lParam);
    if (message == WM_SETFOCUS)
        Window().MarkDefaultButton(Handle());
    else if (message == WM_KILLFOCUS)
        Window().MarkDefaultButton(reinterpret_cast<HWND>(wParam));
    return std::nullopt;
}

} // namespace ui::win32
