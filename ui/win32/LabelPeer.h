#pragma once

#include "ui/Label.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

/// The system's own label, or one that draws itself where the text is names (`PlainText`).
class LabelPeer final : public PeerBase {
public:
    LabelPeer(Label& peerLabel, FormWindow& form, int id);
    Size Preferred(int width) const override;
    void DpiChanged() override;
    /// The system would send a label's letter on as a message that dialogs of its own alone understand.
    bool UsesMnemonic(wchar_t letter) override;

protected:
    void Sync(Aspect aspect) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    Label& label;

    /// Wrapped; where there is no room for that, in a line each, with dots in place of what is too long.
    void PaintNames() const;
    HFONT Font() const;
};

} // namespace ui::win32
