#pragma once

#include "ui/TabStrip.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class TabStripPeer final : public PeerBase {
public:
    TabStripPeer(TabStrip& peerStrip, FormWindow& form, int id);
    Size Preferred(int width) const override;
    void DpiChanged() override;
    std::optional<LRESULT> OnNotify(NMHDR& header) override;
    bool UsesMnemonic(wchar_t letter) override;
    bool OwnsToolTips(HWND toolTips) const override;

protected:
    void Sync(Aspect aspect) override;

private:
    TabStrip& strip;
    ImageListHandle images;
    std::vector<std::string> keys; ///< of the native tabs
    std::wstring toolTip;          ///< the text asked for last; the tool tip keeps no copy

    void SyncItems();
    void SyncSelection();
};

} // namespace ui::win32
