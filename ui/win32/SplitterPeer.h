#pragma once

#include "ui/Splitter.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class SplitterPeer final : public PeerBase {
public:
    SplitterPeer(Splitter& peerSplitter, FormWindow& form, int id);
    ~SplitterPeer() override;
    Size Preferred(int width) const override;
    bool UsesKey(const Key& key) override;

protected:
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    Splitter& splitter;
    HWND bar{};     ///< follows the pointer during a drag
    int grip{};     ///< pixels from the splitter's edge to where it was taken
    int position{}; ///< twips, allowed; where the bar is

    bool IsVertical() const { return splitter.GetDirection() == Splitter::Direction::LeftRight; }
    void Begin(POINT point);
    void MoveTo(POINT point);
    void End();
    void ShowBar();
};

} // namespace ui::win32
