#include "ui/win32/ProgressBarPeer.h"

namespace ui::win32 {

ProgressBarPeer::ProgressBarPeer(ProgressBar& peerBar, FormWindow& form, int id) : PeerBase{peerBar, form}, bar{peerBar}
{
    Create(PROGRESS_CLASSW, PBS_SMOOTH, 0, id);
    Send(PBM_SETRANGE32, 0, 100);
    Sync(Aspect::Value);
}

Size ProgressBarPeer::Preferred(int) const
{
    return {3600, 255};
}

void ProgressBarPeer::Sync(Aspect aspect)
{
    if (aspect != Aspect::Value)
        return;
    // The bar glides to a higher value and would show the last step too late; a step back is drawn at once.
    if (bar.Value() < 100)
        Send(PBM_SETPOS, static_cast<WPARAM>(bar.Value() + 1));
    Send(PBM_SETPOS, static_cast<WPARAM>(bar.Value()));
    UpdateWindow(Handle());
}

} // namespace ui::win32
