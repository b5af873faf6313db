#include "ui/win32/ComboBoxPeer.h"

#include <utility>

namespace ui::win32 {
namespace {

constexpr int Width = 2400; ///< twips

} // namespace

ComboBoxPeer::ComboBoxPeer(ComboBox& peerCombo, FormWindow& form, int id)
    : ItemControlPeer{peerCombo, form, {CB_RESETCONTENT, CB_ADDSTRING, CB_SETCURSEL, CB_GETCURSEL}}, combo{peerCombo}
{
    Create(WC_COMBOBOXW, CBS_DROPDOWNLIST | static_cast<DWORD>(WS_VSCROLL), 0, id);
    Sync(Aspect::Items);
}

Size ComboBoxPeer::Preferred(int) const
{
    return {Width, FieldHeight()};
}

void ComboBoxPeer::DpiChanged()
{
    PeerBase::DpiChanged();
    // The field is as high as a text box; the control takes the height of its text and adds its edges.
    RECT outer{};
    GetWindowRect(Handle(), &outer);
    constexpr auto field = static_cast<WPARAM>(-1);
    const auto edges = static_cast<int>(outer.bottom - outer.top) - static_cast<int>(Send(CB_GETITEMHEIGHT, field));
    Send(CB_SETITEMHEIGHT, field, static_cast<LPARAM>(Pixels(FieldHeight()) - edges));
    Send(CB_SETITEMHEIGHT, 0, static_cast<LPARAM>(Measure({}, NormalFont()).cy));
}

void ComboBoxPeer::OnCommand(int code, int)
{
    if (IsByCode())
        return;
    // While the list is open the arrow keys only try lines out: what counts is how it is closed.
    switch (code) {
    case CBN_DROPDOWN:
        cancelled = false;
        break;
    case CBN_SELENDCANCEL:
        cancelled = true;
        break;
    case CBN_CLOSEUP:
        if (std::exchange(cancelled, false)) {
            const ByCode guard{*this};
            Sync(Aspect::Selection);
        } else {
            combo.UserSelects(NativeSelection());
        }
        break;
    case CBN_SELCHANGE:
        if (!Send(CB_GETDROPPEDSTATE))
            combo.UserSelects(NativeSelection());
        break;
    default:
        break;
    }
}

} // namespace ui::win32
