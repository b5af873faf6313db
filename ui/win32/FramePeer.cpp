#include "ui/win32/FramePeer.h"

namespace ui::win32 {
namespace {

constexpr int TitleSides = 270; ///< twips, both sides together
constexpr int BelowTitle = 75;  ///< twips

} // namespace

FramePeer::FramePeer(Frame& peerFrame, FormWindow& form, int id) : PeerBase{peerFrame, form}, frame{peerFrame}
{
    Create(WC_BUTTONW, BS_GROUPBOX, 0, id);
}

void FramePeer::Update(Aspect aspect)
{
    PeerBase::Update(aspect);
    // Behind the controls that it holds, which it would cover otherwise.
    if (aspect == Aspect::Bounds)
        SetWindowPos(Handle(), HWND_BOTTOM, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE | SWP_NOACTIVATE);
}

Size FramePeer::Preferred(int) const
{
    const SIZE text = Measure(frame.Caption(), NormalFont());
    return {Twips(text.cx) + TitleSides, Twips(text.cy) + BelowTitle};
}

std::optional<LRESULT> FramePeer::OnMessage(UINT message, WPARAM wParam, LPARAM)
{
    if (message != WM_ERASEBKGND)
        return std::nullopt;
    // The native box draws its lines only, and the form leaves out what its controls cover.
    RECT client{};
    GetClientRect(Handle(), &client);
    FillRect(reinterpret_cast<HDC>(wParam), &client, GetSysColorBrush(COLOR_3DFACE));
    return TRUE;
}

} // namespace ui::win32
