#include "ui/win32/UpDownPeer.h"

#include "ui/win32/FormWindow.h"

namespace ui::win32 {
namespace {

constexpr int Width = 240; ///< twips
/// The number is the model's: the native one stays in the middle of a range that it never leaves.
constexpr int Range = 1000000;

} // namespace

UpDownPeer::UpDownPeer(UpDown& peerArrows, FormWindow& form, int id) : PeerBase{peerArrows, form}, arrows{peerArrows}
{
    Create(UPDOWN_CLASSW, UDS_ARROWKEYS, 0, id);
    Send(UDM_SETRANGE32, static_cast<WPARAM>(-Range), static_cast<LPARAM>(Range));
    if (const auto* box = static_cast<const PeerBase*>(arrows.Buddy().Peer()))
        Send(UDM_SETBUDDY, reinterpret_cast<WPARAM>(box->Handle()));
}

Size UpDownPeer::Preferred(int) const
{
    return {Width, FieldHeight()};
}

std::optional<LRESULT> UpDownPeer::OnNotify(NMHDR& header)
{
    if (header.code != static_cast<UINT>(UDN_DELTAPOS))
        return std::nullopt;
    if (!IsByCode())
        arrows.UserSteps(reinterpret_cast<const NMUPDOWN&>(header).iDelta);
    return 1;
}

} // namespace ui::win32
