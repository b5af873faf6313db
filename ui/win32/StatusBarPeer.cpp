#include "ui/win32/StatusBarPeer.h"

#include "ui/win32/NativeText.h"

#include <algorithm>
#include <vector>

namespace ui::win32 {
namespace {

constexpr int TextRoom = 240; ///< twips beside a panel's text
constexpr int LineRoom = 120; ///< twips above and below it

} // namespace

StatusBarPeer::StatusBarPeer(StatusBar& peerBar, FormWindow& form, int id) : PeerBase{peerBar, form}, bar{peerBar}
{
    Create(STATUSCLASSNAMEW, SBARS_SIZEGRIP | CCS_NOPARENTALIGN | CCS_NORESIZE | CCS_NODIVIDER, 0, id);
    SetParts();
}

Size StatusBarPeer::Preferred(int width) const
{
    return {width, Twips(Measure("", NormalFont()).cy) + LineRoom};
}

void StatusBarPeer::DpiChanged()
{
    PeerBase::DpiChanged();
    SetParts();
}

void StatusBarPeer::Sync(Aspect aspect)
{
    if (aspect == Aspect::Items)
        SetParts();
}

std::optional<LRESULT> StatusBarPeer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (message != WM_SIZE)
        return std::nullopt;
    const LRESULT result = Default(message, wParam, lParam);
    SetParts();
    return result;
}

void StatusBarPeer::SetParts()
{
    const auto& panels = bar.Panels();
    RECT client{};
    GetClientRect(Handle(), &client);
    const std::size_t count = std::max<std::size_t>(panels.size(), 1);
    std::vector<int> edges(count);
    int edge = client.right - SystemMetric(SM_CXVSCROLL, Dpi());
    for (std::size_t i = count; i-- > 0;) {
        edges[i] = edge;
        edge -= i < panels.size() ? Measure(panels[i], NormalFont()).cx + Pixels(TextRoom) : 0;
    }
    // The last edge runs under the size grip to the window's own.
    edges.back() = -1;
    Send(SB_SETPARTS, count, edges.data());
    for (std::size_t i = 0; i < panels.size(); ++i)
        Send(SB_SETTEXTW, i, ToNative(panels[i]).c_str());
}

} // namespace ui::win32
