#pragma once

#include "ui/ToolBar.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class ToolBarPeer final : public PeerBase {
public:
    ToolBarPeer(ToolBar& peerBar, FormWindow& form, int id);
    /// A bar that is too narrow for its buttons wraps, so the height depends on the width.
    Size Preferred(int width) const override;
    void DpiChanged() override;
    void OnCommand(int code, int id) override;
    std::optional<LRESULT> OnNotify(NMHDR& header) override;

protected:
    void Sync(Aspect aspect) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    ToolBar& bar;
    ImageListHandle images;
    ImageListHandle disabledImages;
    std::vector<ToolBar::Button> shown; ///< as the native buttons are
    /// How the native buttons stand now: finding that out anew costs some hundred messages.
    struct Broken {
        int width;
        SIZE needed;
    };
    mutable std::optional<Broken> broken;

    /// Breaks between groups of buttons so that no row is wider than `width` pixels (0: no bound); the size needed.
    SIZE BreakIntoRows(int width) const;
    void SyncButtons();
    void SyncStates();
    void BuildImages();
    bool SameLook() const;
};

} // namespace ui::win32
