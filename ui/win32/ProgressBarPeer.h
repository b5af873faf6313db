#pragma once

#include "ui/ProgressBar.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class ProgressBarPeer final : public PeerBase {
public:
    ProgressBarPeer(ProgressBar& peerBar, FormWindow& form, int id);
    Size Preferred(int width) const override;

protected:
    void Sync(Aspect aspect) override;

private:
    ProgressBar& bar;
};

} // namespace ui::win32
