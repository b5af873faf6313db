#include "ui/win32/ImagePeer.h"

#include "pictures/win32/NativePixels.h"
#include "pictures/win32/Win32Pictures.h"
#include "ui/win32/Canvas.h"
#include "ui/win32/FileOffer.h"
#include "ui/win32/FormWindow.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace ui::win32 {
namespace {

/// Pixels; a picture of more is stretched from so many. As bits of the screen it takes 64 MB, of the two gigabytes that
/// the process has.
constexpr double MostDecoded = 16.0 * 1024 * 1024;

} // namespace

ImagePeer::ImagePeer(Image& peerImage, FormWindow& form, int id) : PeerBase{peerImage, form}, image{peerImage}
{
    Create(CanvasClass(), 0, 0, id);
    DragAcceptFiles(Handle(), image.Dropped != nullptr);
}

Size ImagePeer::Preferred(int) const
{
    if (image.Box.width > 0)
        return image.Box;
    const pictures::PixelSize size = Window().Pictures().SizeOf(image.File());
    return {Twips(size.width), Twips(size.height)};
}

void ImagePeer::Sync(Aspect aspect)
{
    if (aspect == Aspect::Picture) {
        decoding.Drop(); // what comes late is of the picture before
        asked = false;
        bitmap.reset();
        own = {};
    } else if (aspect != Aspect::View) {
        return;
    }
    InvalidateRect(Handle(), nullptr, IsFitted());
}

bool ImagePeer::UsesKey(const Key& key)
{
    if (image.Click && key == Plain(KeyCode::Enter)) {
        image.UserClicks();
        return true;
    }
    if (!drag.Running() || key != Plain(KeyCode::Escape))
        return false;
    drag.End();
    return true;
}

std::optional<LRESULT> ImagePeer::OnMessage(UINT message, WPARAM wParam, LPARAM lParam)
{
    if (image.Click)
        return OnButtonMessage(message, wParam);
    if (image.Dropped)
        return OnTargetMessage(message, wParam);
    switch (message) {
    case WM_LBUTTONDOWN: {
        POINT press{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        ClientToScreen(Handle(), &press);
        if (IsLarger()) {
            panFrom = POINT{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
            SetCapture(Handle());
        } else if ((image.DropTarget != nullptr || image.DragFile) && !image.File().empty() &&
                   DragDetect(Handle(), press)) {
            drag.Begin(Handle());
        }
        return 0;
    }
    case WM_MOUSEMOVE:
        if (panFrom)
            PanTo(lParam);
        if (drag.Running())
            drag.Move(lParam);
        return 0;
    case WM_TIMER:
        drag.Mark();
        return 0;
    case WM_LBUTTONUP:
        if (panFrom)
            ReleaseCapture();
        if (drag.Running()) {
            drag.Move(lParam);
            if (const std::string key = drag.End(); !key.empty())
                image.DropTarget->UserDrops(key, image);
        }
        return 0;
    case WM_CAPTURECHANGED:
        // Another window took the mouse: the drag counts as given up.
        panFrom.reset();
        if (reinterpret_cast<HWND>(lParam) != Handle())
            drag.End();
        return 0;
    default:
        break;
    }
    return OnAnyMessage(message);
}

std::optional<LRESULT> ImagePeer::OnAnyMessage(UINT message)
{
    if (message == WM_PAINT) {
        Paint();
        return 0;
    }
    if (message == WM_SYSCOLORCHANGE)
        asked = false;
    return std::nullopt;
}

std::function<ImagePeer::Decoded()> ImagePeer::Decoder(const std::string& file, pictures::PixelSize room) const
{
    const COLORREF paper = Paper();
    return [file, fallback = image.FallbackFile(), room, paper, enlargement = PictureEnlargement(Dpi()),
            isZoomable = image.Zoomable] {
        const pictures::win32::Win32Pictures pictures;
        Decoded decoded;
        decoded.pixels = pictures.DecodeEither(file, fallback, room, enlargement);
        decoded.pixels.Flatten({GetRValue(paper), GetGValue(paper), GetBValue(paper)});
        if (isZoomable) {
            decoded.own = pictures.SizeOf(file);
            if (decoded.own.Empty())
                decoded.own = pictures.SizeOf(fallback);
        }
        return decoded;
    };
}

void ImagePeer::Ask(pictures::PixelSize room)
{
    asked = true;
    askedFor = room;
    awaited = !image.File().empty() || !image.FallbackFile().empty();
    decoding.Drop();
    if (!awaited)
        return;
    if (ahead.decoded && ahead.file == image.File() && ahead.room == room) {
        Show(*ahead.decoded);
        return;
    }
    auto decode = Decoder(image.File(), room);
    if (image.AtOnce) {
        Show(decode());
        return;
    }
    decoding = Window().Jobs().Start(
        [decode = std::move(decode)](const platform::Cancelled&) -> platform::Result<Decoded> { return decode(); },
        [this](const platform::Result<Decoded>& decoded) {
            // A failure keeps the size, or it would be asked for in turns with the one that fits.
            Show(decoded ? *decoded : Decoded{{}, own});
            InvalidateRect(Handle(), nullptr, TRUE);
        });
}

COLORREF ImagePeer::Paper() const
{
    HIGHCONTRASTW contrast{};
    contrast.cbSize = sizeof(contrast);
    const bool isHigh = SystemParametersInfoW(SPI_GETHIGHCONTRAST, sizeof(contrast), &contrast, 0) &&
                        (contrast.dwFlags & HCF_HIGHCONTRASTON) != 0;
    return isHigh || image.Box.width > 0 ? RGB(255, 255, 255) : GetSysColor(COLOR_3DFACE);
}

void ImagePeer::AskAhead()
{
    if (image.NextFile().empty() || (ahead.file == image.NextFile() && ahead.room == askedFor))
        return;
    ahead = {image.NextFile(), askedFor, {}, {}};
    ahead.decoding =
        Window().Jobs().Start([decode = Decoder(ahead.file, ahead.room)](
                                  const platform::Cancelled&) -> platform::Result<Decoded> { return decode(); },
                              [this](platform::Result<Decoded> decoded) {
                                  if (decoded)
                                      ahead.decoded = *std::move(decoded);
                              });
}

void ImagePeer::Show(const Decoded& decoded)
{
    awaited = false;
    bitmap = pictures::win32::ToBitmap(decoded.pixels);
    shown = decoded.pixels.Size();
    own = decoded.own;
    if (image.Zoom() != Image::FitZoom)
        return;
    if (!own.Empty() && !shown.Empty())
        image.Fitted(std::max(MulDiv(shown.width, 100, own.width), 1));
    AskAhead();
}

pictures::PixelSize ImagePeer::ZoomedSize() const
{
    const auto side = [this](int pixels) { return std::max(MulDiv(pixels, image.Zoom(), 100), 1); };
    return {side(own.width), side(own.height)};
}

pictures::PixelSize ImagePeer::SizeToDecode(pictures::PixelSize room) const
{
    if (IsFitted())
        return room;
    const pictures::PixelSize wanted = image.Zoom() < 100 ? ZoomedSize() : own;
    const double total = static_cast<double>(wanted.width) * wanted.height;
    if (total <= MostDecoded)
        return wanted;
    const double part = std::sqrt(MostDecoded / total);
    return {std::max(1, static_cast<int>(wanted.width * part)), std::max(1, static_cast<int>(wanted.height * part))};
}

bool ImagePeer::IsLarger() const
{
    RECT client{};
    GetClientRect(Handle(), &client);
    return !IsFitted() && (ZoomedSize().width > client.right || ZoomedSize().height > client.bottom);
}

void ImagePeer::PanTo(LPARAM place)
{
    const POINT to{GET_X_LPARAM(place), GET_Y_LPARAM(place)};
    image.Pan({Twips(to.x - panFrom->x), Twips(to.y - panFrom->y)});
    panFrom = to;
}

void ImagePeer::DrawZoomed(HDC context, const RECT& client)
{
    const pictures::PixelSize size = ZoomedSize();
    const auto most = [](int picture, LONG room) { return std::max((picture - static_cast<int>(room)) / 2, 0); };
    image.Limit({Twips(most(size.width, client.right)), Twips(most(size.height, client.bottom))});
    const int left = (client.right - size.width) / 2 + ToPixels(image.Offset().x, Dpi());
    const int top = (client.bottom - size.height) / 2 + ToPixels(image.Offset().y, Dpi());
    pictures::win32::DrawStretched(context, bitmap.get(), shown, {left, top, left + size.width, top + size.height});
    ExcludeClipRect(context, left, top, left + size.width, top + size.height);
    FillRect(context, &client, GetSysColorBrush(COLOR_3DFACE));
}

std::optional<LRESULT> ImagePeer::OnButtonMessage(UINT message, WPARAM wParam)
{
    switch (message) {
    case WM_SETCURSOR:
        SetCursor(LoadCursorW(nullptr, IDC_HAND));
        return TRUE;
    case WM_LBUTTONDOWN:
        ::SetFocus(Handle());
        return 0;
    case WM_LBUTTONUP:
        image.UserClicks();
        return 0;
    case WM_KEYDOWN:
        if (wParam == VK_SPACE)
            image.UserClicks();
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(Handle(), nullptr, TRUE);
        return std::nullopt;
    default:
        return OnAnyMessage(message);
    }
}

std::optional<LRESULT> ImagePeer::OnTargetMessage(UINT message, WPARAM wParam)
{
    switch (message) {
    case WM_DROPFILES: {
        const std::string file = TakeDroppedFile(reinterpret_cast<HDROP>(wParam));
        // What waits behind a dialog or a message takes nothing.
        if (!file.empty() && IsWindowEnabled(Window().Handle()) && !Window().HoldsInput())
            image.UserDrops(file);
        return 0;
    }
    case WM_LBUTTONDOWN:
        ::SetFocus(Handle());
        return 0;
    case WM_SETFOCUS:
    case WM_KILLFOCUS:
        InvalidateRect(Handle(), nullptr, TRUE);
        return std::nullopt;
    default:
        return OnAnyMessage(message);
    }
}

void ImagePeer::Paint()
{
    RECT client{};
    GetClientRect(Handle(), &client);
    const int edge = image.Box.width > 0 ? 1 : 0;
    const pictures::PixelSize room{client.right - 2 * edge, client.bottom - 2 * edge};
    // Asked for here, so that pictures nobody sees cost nothing and a drag of the frame decodes once a size.
    if (const pictures::PixelSize wanted = SizeToDecode(room); !asked || wanted != askedFor)
        Ask(wanted);
    PAINTSTRUCT paint{};
    HDC context = BeginPaint(Handle(), &paint);
    if (edge > 0) {
        FillRect(context, &client, GetSysColorBrush(COLOR_WINDOW));
        FrameRect(context, &client, GetSysColorBrush(COLOR_3DSHADOW));
    }
    if (bitmap && !IsFitted()) {
        DrawZoomed(context, client);
    } else if (bitmap) {
        pictures::win32::DrawCentred(context, bitmap.get(), shown, client);
    } else if (!awaited && !image.FallbackText().empty()) {
        const SIZE size = Measure(image.FallbackText(), NormalFont(), std::max(1, static_cast<int>(client.right)));
        client.top = std::max(0L, (client.bottom - size.cy) / 2);
        DrawNote(context, image.FallbackText(), NormalFont(), client);
    }
    if (image.IsTabStop() && GetFocus() == Handle())
        DrawFocusRect(context, &client);
    EndPaint(Handle(), &paint);
}

} // namespace ui::win32
