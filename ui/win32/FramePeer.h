#pragma once

#include "ui/Frame.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class FramePeer final : public PeerBase {
public:
    FramePeer(Frame& peerFrame, FormWindow& form, int id);
    void Update(Aspect aspect) override;
    /// The room that the title needs; the height reaches to what the frame holds.
    Size Preferred(int width) const override;

protected:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    Frame& frame;
};

} // namespace ui::win32
