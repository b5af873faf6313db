#include "pictures/win32/NativePixels.h"

#include <algorithm>
#include <utility>

namespace pictures::win32 {
namespace {

/// A picture as the system's icons and image lists have them: colours that are not multiplied by alpha, and one bit a
/// pixel, set where it is transparent, for what ignores alpha.
struct Layers {
    BitmapHandle colour, mask;

    /// None of an empty picture.
    explicit Layers(PixelBuffer picture)
    {
        std::vector<std::uint8_t>& pixels = picture.Bytes();
        const auto [width, height] = picture.Size();
        const std::size_t stride = (static_cast<std::size_t>(width) + 15) / 16 * 2; // bytes: whole 16-bit words
        std::vector<std::uint8_t> bits(stride * static_cast<std::size_t>(height));
        for (std::size_t i = 0; i < pixels.size(); i += 4) {
            std::uint8_t* pixel = &pixels[i];
            for (int channel = 0; channel < 3 && pixel[3] > 0; ++channel)
                pixel[channel] = static_cast<std::uint8_t>(std::min(255, pixel[channel] * 255 / pixel[3]));
            const std::size_t x = i % picture.Stride() / 4;
            if (pixel[3] == 0)
                bits[i / picture.Stride() * stride + x / 8] |= static_cast<std::uint8_t>(0x80 >> (x % 8));
        }
        colour = ToBitmap(picture);
        if (colour)
            mask = BitmapHandle{CreateBitmap(width, height, 1, 1, bits.data())};
    }
};

} // namespace

BITMAPINFO DescriptionOf(PixelSize size)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = size.width;
    info.bmiHeader.biHeight = -size.height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

PixelBuffer FromIcon(HICON icon, int side)
{
    ICONINFO info{};
    if (side <= 0 || !GetIconInfo(icon, &info))
        return {};
    const BitmapHandle colour{info.hbmColor};
    const BitmapHandle mask{info.hbmMask};
    PixelBuffer buffer{{side, side}};
    std::vector<std::uint8_t>& pixels = buffer.Bytes();
    std::vector<std::uint32_t> masks(pixels.size() / 4);
    BITMAPINFO description = DescriptionOf(buffer.Size());
    HDC screen = GetDC(nullptr);
    const auto rows = static_cast<UINT>(side);
    const bool read = colour && GetDIBits(screen, colour.get(), 0, rows, pixels.data(), &description, DIB_RGB_COLORS);
    description = DescriptionOf(buffer.Size());
    const bool hasMask = mask && GetDIBits(screen, mask.get(), 0, rows, masks.data(), &description, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    if (!read)
        return {};

    bool hasAlpha = false;
    for (std::size_t i = 3; i < pixels.size() && !hasAlpha; i += 4)
        hasAlpha = pixels[i] != 0;
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        std::uint8_t* pixel = &pixels[i];
        if (!hasAlpha)
            pixel[3] = hasMask && (masks[i / 4] & 0xFFFFFF) != 0 ? 0 : 255;
        for (int channel = 0; channel < 3; ++channel)
            pixel[channel] = static_cast<std::uint8_t>(pixel[channel] * pixel[3] / 255);
    }
    return buffer;
}

BitmapHandle ToBitmap(const PixelBuffer& picture)
{
    if (picture.Empty())
        return nullptr;
    const BITMAPINFO description = DescriptionOf(picture.Size());
    void* bits = nullptr;
    BitmapHandle bitmap{CreateDIBSection(nullptr, &description, DIB_RGB_COLORS, &bits, nullptr, 0)};
    if (bitmap && bits != nullptr)
        std::ranges::copy(picture.Bytes(), static_cast<std::uint8_t*>(bits));
    return bitmap;
}

IconHandle ToIcon(const PixelBuffer& picture)
{
    const Layers layers{picture};
    if (!layers.colour)
        return nullptr;
    ICONINFO info{};
    info.fIcon = TRUE;
    info.hbmColor = layers.colour.get();
    info.hbmMask = layers.mask.get();
    return IconHandle{CreateIconIndirect(&info)};
}

ImageListHandle ToImageList(const std::vector<PixelBuffer>& icons, int side)
{
    const int count = std::max(1, static_cast<int>(icons.size()));
    PixelBuffer strip{{side * count, side}};
    for (std::size_t i = 0; i < icons.size(); ++i) {
        if (icons[i].Size() != PixelSize{side, side})
            continue;
        auto row = icons[i].Bytes().begin();
        for (std::size_t y = 0; y < static_cast<std::size_t>(side); ++y)
            std::copy_n(std::exchange(row, row + static_cast<std::ptrdiff_t>(icons[i].Stride())), icons[i].Stride(),
                        strip.Bytes().begin() +
                            static_cast<std::ptrdiff_t>(y * strip.Stride() + i * icons[i].Stride()));
    }
    const Layers layers{strip};
    ImageListHandle list{ImageList_Create(side, side, ILC_COLOR32 | ILC_MASK, count, 4)};
    ImageList_Add(list.get(), layers.colour.get(), layers.mask.get());
    return list;
}

void DrawStretched(HDC context, HBITMAP bitmap, PixelSize size, const RECT& into)
{
    const HDC memory = CreateCompatibleDC(context);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    SetStretchBltMode(context, HALFTONE);
    StretchBlt(context, into.left, into.top, into.right - into.left, into.bottom - into.top, memory, 0, 0, size.width,
               size.height, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
}

void DrawCentred(HDC context, HBITMAP bitmap, PixelSize size, const RECT& room)
{
    const HDC memory = CreateCompatibleDC(context);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(context, (room.left + room.right - size.width) / 2, (room.top + room.bottom - size.height) / 2, size.width,
           size.height, memory, 0, 0, SRCCOPY);
    SelectObject(memory, before);
    DeleteDC(memory);
}

} // namespace pictures::win32
