#include "ui/win32/ItemPeers.h"

#include "ui/win32/FormWindow.h"
#include "ui/win32/NativeText.h"

#include <algorithm>
#include <utility>

namespace ui::win32 {
namespace {

constexpr int Width = 2400; ///< twips, where nobody asks for another

} // namespace

ItemControlPeer::ItemControlPeer(ItemControl& peerItems, FormWindow& form, const Messages& nativeMessages)
    : PeerBase{peerItems, form}, items{peerItems}, messages{nativeMessages}
{
}

void ItemControlPeer::Sync(Aspect aspect)
{
    if (aspect == Aspect::Items) {
        const DrawnLater drawing{*this};
        Send(messages.clear);
        for (const std::string& item : items.Items())
            Send(messages.add, 0, Fitted(item).c_str());
    }
    if (aspect == Aspect::Items || aspect == Aspect::Selection)
        Send(messages.select, static_cast<WPARAM>(items.Selected()));
}

std::optional<LRESULT> ItemControlPeer::OnMessage(UINT message, WPARAM, LPARAM lParam)
{
    if (message == WM_MOUSEMOVE)
        ShowToolTip(LineAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)}));
    return std::nullopt;
}

int ItemControlPeer::Room() const
{
    constexpr int sides = 10;
    RECT client{};
    GetClientRect(Handle(), &client);
    return std::max(0, static_cast<int>(client.right) - sides);
}

std::wstring ItemControlPeer::Fitted(const std::string& item) const
{
    const int room = Room();
    return ShortenedInTheMiddle(ToNative(item), [&](const std::wstring& text) {
        return room == 0 || Measure(FromNative(text), NormalFont()).cx <= room;
    });
}

void ItemControlPeer::ShowToolTip(int line)
{
    const auto& all = items.Items();
    const bool isLine = line >= 0 && line < static_cast<int>(all.size());
    const std::string& item = isLine ? all[static_cast<std::size_t>(line)] : std::string{};
    const bool isShortened = isLine && Fitted(item) != ToNative(item);
    const std::string& toolTip = isShortened ? item : items.ToolTipText;
    if (toolTip == shownToolTip)
        return;
    shownToolTip = toolTip;
    Window().SetToolTip(Handle(), toolTip);
}

ListBoxPeer::ListBoxPeer(ListBox& peerList, FormWindow& form, int id)
    : ItemControlPeer{peerList, form, {LB_RESETCONTENT, LB_ADDSTRING, LB_SETCURSEL, LB_GETCURSEL}}, list{peerList}
{
    Create(WC_LISTBOXW, LBS_NOTIFY | LBS_NOINTEGRALHEIGHT | static_cast<DWORD>(WS_VSCROLL), WS_EX_CLIENTEDGE, id);
    Sync(Aspect::Items);
}

void ListBoxPeer::Update(Aspect aspect)
{
    PeerBase::Update(aspect);
    if (aspect != Aspect::Bounds)
        return;
    // Selecting in a list that had no size yet scrolled the lines above out of sight.
    const ByCode guard{*this};
    Sync(Aspect::Items);
    Send(LB_SETTOPINDEX, 0);
    Sync(Aspect::Selection);
}

Size ListBoxPeer::Preferred(int) const
{
    constexpr int linesInSight = 6;
    return {Width, Twips(linesInSight * Measure({}, NormalFont()).cy + 2 * SystemMetric(SM_CYEDGE, Dpi()))};
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

int ListBoxPeer::LineAt(POINT point) const
{
    const LRESULT line = Send(LB_ITEMFROMPOINT, 0, MAKELPARAM(point.x, point.y));
    return HIWORD(line) == 0 ? LOWORD(line) : -1;
}

ComboBoxPeer::ComboBoxPeer(ComboBox& peerCombo, FormWindow& form, int id)
    : ItemControlPeer{peerCombo, form, {CB_RESETCONTENT, CB_ADDSTRING, CB_SETCURSEL, CB_GETCURSEL}}, combo{peerCombo}
{
    Create(WC_COMBOBOXW, CBS_DROPDOWNLIST | static_cast<DWORD>(WS_VSCROLL), 0, id);
    Sync(Aspect::Items);
}

void ComboBoxPeer::Update(Aspect aspect)
{
    PeerBase::Update(aspect);
    if (aspect != Aspect::Bounds)
        return;
    const ByCode guard{*this};
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

int ComboBoxPeer::Room() const
{
    return std::max(0, ItemControlPeer::Room() - SystemMetric(SM_CXVSCROLL, Dpi()));
}

} // namespace ui::win32
