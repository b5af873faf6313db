#include "ui/win32/ListBoxPeer.h"

namespace ui::win32 {
namespace {

constexpr int Width = 2400; ///< twips
constexpr int Lines = 6;    ///< in sight

} // namespace

ListBoxPeer::ListBoxPeer(ListBox& peerList, FormWindow& form, int id)
    : ItemControlPeer{peerList, form, {LB_RESETCONTENT, LB_ADDSTRING, LB_SETCURSEL, LB_GETCURSEL}}, list{peerList}
{
    Create(WC_LISTBOXW, LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | static_cast<DWORD>(WS_VSCROLL), WS_EX_CLIENTEDGE, id);
    Sync(Aspect::Items);
}

void ListBoxPeer::Update(Aspect aspect)
{
    ItemControlPeer::Update(aspect);
    if (aspect != Aspect::Bounds)
        return;
    // Selecting in a list that had no size yet scrolled the lines above out of sight.
    const ByCode guard{*this};
    Send(LB_SETTOPINDEX, 0);
    Sync(Aspect::Selection);
}

Size ListBoxPeer::Preferred(int) const
{
    return {Width, Twips(Lines * Measure({}, NormalFont()).cy + 2 * SystemMetric(SM_CYEDGE, Dpi()))};
}

void ListBoxPeer::DpiChanged()
{
    PeerBase::DpiChanged();
    // The control measures its lines once, with the font it had first.
    Send(LB_SETITEMHEIGHT, 0, MAKELPARAM(Measure({}, NormalFont()).cy, 0));
}

void ListBoxPeer::OnCommand(int code, int)
{
    if (IsByCode())
        return;
    if (code == LBN_SELCHANGE)
        list.UserSelects(NativeSelection());
    else if (code == LBN_DBLCLK)
        list.UserActivates(NativeSelection());
}

} // namespace ui::win32
