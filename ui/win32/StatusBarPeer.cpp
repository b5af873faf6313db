#include "ui/win32/StatusBarPeer.h"

#include "ui/win32/NativeText.h"

#include <algorithm>
#include <vector>

namespace ui::win32 {
namespace {

// Twips.
constexpr int TextRoom = 240; ///< beside a panel's text
constexpr int LineRoom = 120; ///< above and below it

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
    std::vector<std::wstring> texts;
    for (const std::string& panel : panels)
        texts.push_back(ToNative(panel));
    const int room = client.right - SystemMetric(SM_CXVSCROLL, Dpi());
    if (count > 1) {
        int left = room - Pixels(TextRoom);
        for (std::size_t i = 0; i + 1 < count; ++i)
            left -= WidthOf(texts[i]) + Pixels(TextRoom);
        texts.back() = left > 0 ? Shortened(texts.back(), left) : std::wstring{};
        if (left <= 0)
            texts.front() = Shortened(texts.front(), room - 2 * Pixels(TextRoom));
    }
    std::vector<int> edges(count);
    int edge = room;
    for (std::size_t i = count; i-- > 0;) {
        edges[i] = edge;
        edge -= i < texts.size() ? WidthOf(texts[i]) + Pixels(TextRoom) : 0;
    }
    // The last edge runs under the size grip to the window's own.
    edges.back() = -1;
    Send(SB_SETPARTS, count, edges.data());
    for (std::size_t i = 0; i < texts.size(); ++i)
        Send(SB_SETTEXTW, i, texts[i].c_str());
}

std::wstring StatusBarPeer::Shortened(const std::wstring& text, int width) const
{
    return ShortenedInTheMiddle(text, [&](const std::wstring& part) { return WidthOf(part) <= width; });
}

int StatusBarPeer::WidthOf(const std::wstring& text) const
{
    return Measure(FromNative(text), NormalFont()).cx;
}

} // namespace ui::win32
