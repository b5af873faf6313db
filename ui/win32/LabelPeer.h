#pragma once

#include "ui/Label.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

/// A label that draws itself. The system's own leaves out whatever does not fit, which may be a whole line of names;
/// and Wine's keeps 12 bytes for each that was ever there, which in an hour of opened dialogs were a tenth of the
/// program.
class LabelPeer final : public PeerBase {
public:
    LabelPeer(Label& peerLabel, FormWindow& form, int id);
    Size Preferred(int width) const override;
    /// The system would send a label's letter on as a message that dialogs of its own alone understand.
    bool UsesMnemonic(wchar_t letter) override;

protected:
    void Sync(Aspect aspect) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    Label& label;

    /// Wrapped; where there is no room for that, in a line each, with dots in place of what is too long.
    void Paint() const;
    /// How the text is measured and drawn (DT_...).
    UINT Flags() const;
    HFONT Font() const;
};

} // namespace ui::win32
