#pragma once

#include "ui/UpDown.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class UpDownPeer final : public PeerBase {
public:
    UpDownPeer(UpDown& peerArrows, FormWindow& form, int id);
    Size Preferred(int width) const override;
    std::optional<LRESULT> OnNotify(NMHDR& header) override;

private:
    UpDown& arrows;
};

} // namespace ui::win32
