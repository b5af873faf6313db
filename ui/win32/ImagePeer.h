#pragma once

#include "pictures/PixelBuffer.h"
#include "pictures/PixelSize.h"
#include "platform/Ticket.h"
#include "ui/Image.h"
#include "ui/win32/DragOntoTree.h"
#include "ui/win32/PeerBase.h"

#include <functional>
#include <optional>
#include <string>

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
    pictures::PixelSize own;      ///< of the picture itself, where its zoom is used
    pictures::PixelSize askedFor; ///< room that it was asked for
    bool asked{};
    bool awaited{}; ///< neither the picture nor its failure is there yet
    platform::Ticket decoding;
    std::optional<POINT> panFrom; ///< where the pointer was last while it moves the picture

    struct Decoded {
        pictures::PixelBuffer pixels;
        pictures::PixelSize own;
    };
    /// What is decoded before it is asked for.
    struct Ahead {
        std::string file;
        pictures::PixelSize room;
        platform::Ticket decoding;
        std::optional<Decoded> decoded;
    } ahead;

    /// A task that decodes the file for this room, on any thread.
    std::function<Decoded()> Decoder(const std::string& file, pictures::PixelSize room) const;
    /// Has the picture decoded for this room.
    void Ask(pictures::PixelSize room);
    /// What shows through transparent parts: pictures are drawn for paper, and dark ink would be lost on black.
    COLORREF Paper() const;
    std::optional<LRESULT> OnAnyMessage(UINT message);
    /// Of a picture that can be clicked.
    std::optional<LRESULT> OnButtonMessage(UINT message, WPARAM wParam);
    /// Of one that files can be dropped on.
    std::optional<LRESULT> OnTargetMessage(UINT message, WPARAM wParam);
    void AskAhead();
    void Show(const Decoded& decoded);
    void Paint();
    bool IsFitted() const { return image.Zoom() == Image::FitZoom || own.Empty(); }
    pictures::PixelSize ZoomedSize() const;
    /// The size to decode at: what is shown larger than it is, is stretched where it is drawn.
    pictures::PixelSize SizeToDecode(pictures::PixelSize room) const;
    bool IsLarger() const;
    void PanTo(LPARAM place);
    void DrawZoomed(HDC context, const RECT& client);
};

} // namespace ui::win32
