#include "ui/win32/ButtonPeers.h"

#include "ui/win32/FormWindow.h"

#include <algorithm>

namespace ui::win32 {
namespace {

// Twips.
constexpr int BoxRoom = 330; ///< a check box with the gap to its caption
constexpr int LeastCheckBoxHeight = 255;
constexpr Size LeastButton{1125, 345};
constexpr Size ButtonRoom{360, 150}; ///< around the caption, both sides together

} // namespace

CheckBoxPeer::CheckBoxPeer(CheckBox& box, FormWindow& form, int id) : ClickedPeer{box, form}
{
    // Not an automatic one: the model alone says what the box shows.
    Create(WC_BUTTONW, BS_CHECKBOX | BS_MULTILINE, 0, id);
    Sync(Aspect::Value);
}

Size CheckBoxPeer::Preferred(int width) const
{
    const SIZE text = Measure(model.Caption(), NormalFont(), width > BoxRoom ? Pixels(width - BoxRoom) : 0);
    return {Twips(text.cx) + BoxRoom, std::max(Twips(text.cy), LeastCheckBoxHeight)};
}

void CheckBoxPeer::Sync(Aspect aspect)
{
    if (aspect == Aspect::Value)
        Send(BM_SETCHECK, model.Checked() ? BST_CHECKED : BST_UNCHECKED);
    else
        PeerBase::Sync(aspect);
}

ButtonPeer::ButtonPeer(Button& button, FormWindow& form, int id) : ClickedPeer{button, form}
{
    const Role role = button.GetRole();
    Create(WC_BUTTONW, static_cast<DWORD>(role == Role::Default ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON), 0,
           role == Role::Default  ? IDOK
           : role == Role::Cancel ? IDCANCEL
                                  : id);
}

Size ButtonPeer::Preferred(int) const
{
    const SIZE text = Measure(model.Caption(), NormalFont());
    return {std::max(Twips(text.cx) + ButtonRoom.width, LeastButton.width),
            std::max(Twips(text.cy) + ButtonRoom.height, LeastButton.height)};
}

std::optional<LRESULT> ButtonPeer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message == WM_KILLFOCUS)
        Window().MarkDefaultButton(reinterpret_cast<HWND>(wParam));
    return ClickedPeer::OnMessage(message, wParam, lParam);
}

} // namespace ui::win32
