#include "pictures/win32/pcMemDC.h"

#include "pictures/win32/NativePixels.h"

namespace pictures::win32 {

void pcMemDC::Create(int newWidth, int newHeight)
{
    Release();
    width = newWidth;
    height = newHeight;
    if (width <= 0 || height <= 0)
        return;
    const HDC display = CreateDCW(L"DISPLAY", nullptr, nullptr, nullptr);
    context = CreateCompatibleDC(display);
    bitmap.reset(CreateCompatibleBitmap(display, width, height));
    DeleteDC(display);
    if (context != nullptr && bitmap) {
        formerBitmap = SelectObject(context, bitmap.get());
        PatBlt(context, 0, 0, width, height, BLACKNESS);
    } else {
        Release();
    }
}

void pcMemDC::Release()
{
    if (context != nullptr) {
        if (formerBitmap != nullptr)
            SelectObject(context, formerBitmap);
        DeleteDC(context);
    }
    context = nullptr;
    formerBitmap = nullptr;
    bitmap.reset();
    width = height = 0;
}

void pcMemDC::CreateFromPicture(const PixelBuffer& picture)
{
    Create(picture.Size().width, picture.Size().height);
    PaintPicture(picture, {0, 0, width, height}, SRCCOPY);
}

void pcMemDC::CreateFromHBitmap(HBITMAP picture)
{
    BITMAP size{};
    if (GetObjectW(picture, sizeof(size), &size) == 0)
        size = {};
    Create(size.bmWidth, size.bmHeight);
    if (context == nullptr)
        return;
    const HDC source = CreateCompatibleDC(context);
    const HGDIOBJ before = SelectObject(source, picture);
    BitBlt(context, 0, 0, width, height, source, 0, 0, SRCCOPY);
    SelectObject(source, before);
    DeleteDC(source);
}

void pcMemDC::PaintPicture(const PixelBuffer& picture, const RECT& place, DWORD operation)
{
    if (context == nullptr || picture.Empty())
        return;
    SetStretchBltMode(context, HALFTONE);
    SetBrushOrgEx(context, 0, 0, nullptr); // halftone stretching asks for it
    const BITMAPINFO description = DescriptionOf(picture.Size());
    StretchDIBits(context, place.left, place.top, place.right - place.left, place.bottom - place.top, 0, 0,
                  picture.Size().width, picture.Size().height, picture.Bytes().data(), &description, DIB_RGB_COLORS,
                  operation);
}

PixelBuffer pcMemDC::Picture() const
{
    if (context == nullptr)
        return {};
    PixelBuffer picture{{width, height}};
    BITMAPINFO description = DescriptionOf(picture.Size());
    // The bitmap must not be selected while it is read.
    SelectObject(context, formerBitmap);
    const int rows = GetDIBits(context, bitmap.get(), 0, static_cast<UINT>(height), picture.Bytes().data(),
                               &description, DIB_RGB_COLORS);
    SelectObject(context, bitmap.get());
    if (rows != height)
        return {};
    picture.Flatten({}); // the screen's bitmaps have no alpha
    return picture;
}

} // namespace pictures::win32
