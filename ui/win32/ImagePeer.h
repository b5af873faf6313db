#pragma once

#include "pictures/PixelBuffer.h"
#include "pictures/PixelSize.h"
#include "platform/Ticket.h"
#include "ui/Image.h"
#include "ui/win32/DragOntoTree.h"
#include "ui/win32/PeerBase.h"

namespace ui::win32 {

class ImagePeer final : public PeerBase {
public:
    ImagePeer(Image& peerImage, FormWindow& form, int id);
    Size Preferred(int width) const override;

    bool UsesKey(const Key& key) override;

protected:
    void Sync(Aspect aspect) override;
    std::optional<LRESULT> OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    Image& image;
    DragOntoTree drag{image};
    BitmapHandle bitmap;
    pictures::PixelSize shown;    ///< of the bitmap
    pictures::PixelSize askedFor; ///< room that it was asked for
    bool asked{};
    bool awaited{}; ///< neither the picture nor its failure is there yet
    platform::Ticket decoding;

    /// Has the picture decoded for this room.
    void Ask(pictures::PixelSize room);
    void Show(const pictures::PixelBuffer& pixels);
    /// What shows through transparent parts: pictures are drawn for paper, and dark ink would be lost on black.
    COLORREF Paper() const;
    void Paint();
    std::optional<LRESULT> OnAnyMessage(UINT message);
    /// Of a picture that can be clicked.
    std::optional<LRESULT> OnButtonMessage(UINT message, WPARAM wParam);
};

} // namespace ui::win32
