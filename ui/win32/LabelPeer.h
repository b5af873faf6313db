#pragma once

#include "ui/Label.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class LabelPeer final : public PeerBase {
public:
    LabelPeer(Label& peerLabel, FormWindow& form, int id);
    Size Preferred(int width) const override;
    void DpiChanged() override;

private:
    Label& label;
    HFONT Font() const;
};

} // namespace ui::win32
