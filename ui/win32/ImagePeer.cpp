#include "ui/win32/ImagePeer.h"

#include "pictures/win32/NativePixels.h"
#include "pictures/win32/Win32Pictures.h"
#include "ui/win32/Canvas.h"
#include "ui/win32/FormWindow.h"

#include <algorithm>
#include <utility>

namespace ui::win32 {

ImagePeer::ImagePeer(Image& peerImage, FormWindow& form, int id) : PeerBase{peerImage, form}, image{peerImage}
{
    Create(CanvasClass(), 0, 0, id);
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
    if (aspect != Aspect::Picture)
        return;
    asked = false;
    bitmap.reset();
    InvalidateRect(Handle(), nullptr, TRUE);
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
    switch (message) {
    case WM_LBUTTONDOWN: {
        POINT press{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
        ClientToScreen(Handle(), &press);
        if (image.DropTarget != nullptr && !image.File().empty() && DragDetect(Handle(), press))
            drag.Begin(Handle());
        return 0;
    }
    case WM_MOUSEMOVE:
        if (drag.Running())
            drag.Move(lParam);
        return 0;
    case WM_TIMER:
        drag.Mark();
        return 0;
    case WM_LBUTTONUP:
        if (drag.Running()) {
            drag.Move(lParam);
            if (const std::string key = drag.End(); !key.empty())
                image.DropTarget->UserDrops(key, image);
        }
        return 0;
    case WM_CAPTURECHANGED:
        // Another window took the mouse: the drag counts as given up.
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

void ImagePeer::Ask(pictures::PixelSize room)
{
    asked = true;
    askedFor = room;
    awaited = !image.File().empty() || !image.FallbackFile().empty();
    decoding.Drop();
    if (!awaited)
        return;
    const COLORREF paper = Paper();
    auto decode = [file = image.File(), fallback = image.FallbackFile(), room, enlargement = PictureEnlargement(Dpi()),
                   paper] {
        pictures::PixelBuffer pixels = pictures::win32::Win32Pictures{}.DecodeEither(file, fallback, room, enlargement);
        pixels.Flatten({GetRValue(paper), GetGValue(paper), GetBValue(paper)});
        return pixels;
    };
    if (image.AtOnce) {
        Show(decode());
        return;
    }
    decoding = Window().Jobs().Start(
        [decode = std::move(decode)](const platform::Cancelled&) -> platform::Result<pictures::PixelBuffer> {
            return decode();
        },
        [this](const platform::Result<pictures::PixelBuffer>& pixels) {
            Show(pixels.value_or(pictures::PixelBuffer{}));
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

void ImagePeer::Show(const pictures::PixelBuffer& pixels)
{
    awaited = false;
    bitmap = pictures::win32::ToBitmap(pixels);
    shown = pixels.Size();
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

void ImagePeer::Paint()
{
    RECT client{};
    GetClientRect(Handle(), &client);
    const int edge = image.Box.width > 0 ? 1 : 0;
    const pictures::PixelSize room{client.right - 2 * edge, client.bottom - 2 * edge};
    // Asked for here, so that pictures nobody sees cost nothing and a drag of the frame decodes once a size.
    if (!asked || room != askedFor)
        Ask(room);
    PAINTSTRUCT paint{};
    HDC context = BeginPaint(Handle(), &paint);
    if (edge > 0) {
        FillRect(context, &client, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
        FrameRect(context, &client, GetSysColorBrush(COLOR_3DSHADOW));
    }
    if (bitmap) {
        pictures::win32::DrawCentred(context, bitmap.get(), shown, client);
    } else if (!awaited && !image.FallbackText().empty()) {
        const SIZE size = Measure(image.FallbackText(), NormalFont(), std::max(1, static_cast<int>(client.right)));
        client.top = std::max(0L, (client.bottom - size.cy) / 2);
        DrawNote(context, image.FallbackText(), NormalFont(), client);
    }
    if (image.Click && GetFocus() == Handle())
        DrawFocusRect(context, &client);
    EndPaint(Handle(), &paint);
}

} // namespace ui::win32
