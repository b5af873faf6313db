#include "ui/win32/TabStripPeer.h"

#include "ui/win32/FormWindow.h"
#include "ui/win32/NativeText.h"

#include <algorithm>

namespace ui::win32 {
namespace {

constexpr int ImageSide = 240; ///< twips: 16 pixels at 96 dpi
constexpr int SideRoom = 90;   ///< twips left and right of a tab's picture and caption
constexpr int TopRoom = 45;

} // namespace

TabStripPeer::TabStripPeer(TabStrip& peerStrip, FormWindow& form, int id) : PeerBase{peerStrip, form}, strip{peerStrip}
{
    Create(WC_TABCONTROLW, TCS_TOOLTIPS, 0, id);
}

Size TabStripPeer::Preferred(int width) const
{
    RECT tab{};
    if (Send(TCM_GETITEMRECT, 0, &tab) == 0)
        tab.bottom = Measure("", NormalFont()).cy + 2 * Pixels(TopRoom);
    return {width, Twips(tab.bottom + 2)};
}

void TabStripPeer::DpiChanged()
{
    PeerBase::DpiChanged();
    const ByCode guard{*this};
    Send(TCM_SETPADDING, 0, MAKELPARAM(Pixels(SideRoom), Pixels(TopRoom)));
    ImageListHandle fresh = Window().Images().Build(strip.Images.Pictures(), Pixels(ImageSide));
    Send(TCM_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(fresh.get()));
    images = std::move(fresh);
    keys.clear();
    SyncItems();
}

void TabStripPeer::Sync(Aspect aspect)
{
    if (aspect == Aspect::Items)
        SyncItems();
    else if (aspect == Aspect::Selection)
        SyncSelection();
}

void TabStripPeer::SyncItems()
{
    const auto& tabs = strip.Tabs();
    const bool same = std::ranges::equal(tabs, keys, {}, &TabStrip::Tab::key);
    if (!same) {
        Send(TCM_DELETEALLITEMS);
        keys.clear();
    }
    for (std::size_t i = 0; i < tabs.size(); ++i) {
        std::wstring caption = ToNative(tabs[i].caption);
        TCITEMW item{};
        item.mask = TCIF_TEXT | TCIF_IMAGE;
        item.pszText = caption.data();
        item.iImage = tabs[i].image;
        Send(same ? TCM_SETITEMW : TCM_INSERTITEMW, i, &item);
        if (!same)
            keys.push_back(tabs[i].key);
    }
    SyncSelection();
    InvalidateRect(Handle(), nullptr, TRUE);
}

void TabStripPeer::SyncSelection()
{
    const auto selected = std::ranges::find(keys, strip.Selected());
    if (selected != keys.end())
        Send(TCM_SETCURSEL, static_cast<WPARAM>(selected - keys.begin()));
}

std::optional<LRESULT> TabStripPeer::OnNotify(NMHDR& header)
{
    if (header.code == TTN_GETDISPINFOW) {
        auto& info = reinterpret_cast<NMTTDISPINFOW&>(header);
        const auto index = static_cast<std::size_t>(header.idFrom);
        toolTip = index < strip.Tabs().size() ? ToNative(strip.Tabs()[index].toolTip) : std::wstring{};
        info.lpszText = toolTip.data();
        return 0;
    }
    if (header.code == TCN_SELCHANGE && !IsByCode()) {
        const auto index = static_cast<std::size_t>(Send(TCM_GETCURSEL));
        if (index < keys.size())
            strip.UserSelects(std::string{keys[index]});
        return 0;
    }
    return std::nullopt;
}

bool TabStripPeer::UsesMnemonic(wchar_t letter)
{
    const auto& tabs = strip.Tabs();
    const auto hit = std::ranges::find_if(
        tabs, [&](const TabStrip::Tab& tab) { return MnemonicOf(ToNative(tab.caption)) == letter; });
    if (hit == tabs.end())
        return false;
    strip.UserSelects(std::string{hit->key});
    return true;
}

bool TabStripPeer::OwnsToolTips(HWND toolTips) const
{
    return reinterpret_cast<HWND>(Send(TCM_GETTOOLTIPS)) == toolTips;
}

} // namespace ui::win32
