#include "ui/win32/LabelPeer.h"

#include "ui/win32/FormWindow.h"

namespace ui::win32 {

LabelPeer::LabelPeer(Label& peerLabel, FormWindow& form, int id) : PeerBase{peerLabel, form}, label{peerLabel}
{
    Create(WC_STATICW, SS_LEFT, 0, id);
}

HFONT LabelPeer::Font() const
{
    return label.Heading ? Window().WindowFonts().heading.get() : NormalFont();
}

Size LabelPeer::Preferred(int width) const
{
    const SIZE text = Measure(label.Caption(), Font(), ToPixels(width, Dpi()));
    return {Twips(text.cx + 1), Twips(text.cy)};
}

void LabelPeer::DpiChanged()
{
    PeerBase::DpiChanged();
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(Font()), TRUE);
}

} // namespace ui::win32
