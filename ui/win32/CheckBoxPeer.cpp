#include "ui/win32/CheckBoxPeer.h"

#include <algorithm>

namespace ui::win32 {
namespace {

// The box with the gap to its caption, and the least height, in twips at any dpi.
constexpr int BoxRoom = 330;
constexpr int LeastHeight = 255;

} // namespace

CheckBoxPeer::CheckBoxPeer(CheckBox& peerBox, FormWindow& form, int id) : PeerBase{peerBox, form}, box{peerBox}
{
    // Not an automatic one: the model alone says what the box shows.
    Create(WC_BUTTONW, BS_CHECKBOX | BS_MULTILINE, 0, id);
    Sync(Aspect::Value);
}

Size CheckBoxPeer::Preferred(int width) const
{
    const SIZE text = Measure(box.Caption(), NormalFont(), width > BoxRoom ? Pixels(width - BoxRoom) : 0);
    return {Twips(text.cx) + BoxRoom, std::max(Twips(text.cy), LeastHeight)};
}

void CheckBoxPeer::Sync(Aspect aspect)
{
    if (aspect == Aspect::Value)
        Send(BM_SETCHECK, box.Checked() ? BST_CHECKED : BST_UNCHECKED);
    else
        PeerBase::Sync(aspect);
}

void CheckBoxPeer::OnCommand(int code, int)
{
    if (code == BN_CLICKED && !IsByCode())
        box.UserClicks();
}

bool CheckBoxPeer::UsesMnemonic(wchar_t letter)
{
    if (!HasMnemonic(letter))
        return false;
    if (TakesFocus())
        box.UserClicks();
    return true;
}

std::optional<LRESULT> CheckBoxPeer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_LBUTTONDOWN)
        return PressIfFocused(wParam, lParam);
    return std::nullopt;
}

} // namespace ui::win32
