#include "ui/win32/PixelBuffer.h"

#include <algorithm>
#include <cmath>

namespace ui::win32 {
namespace {

BITMAPINFO DescribeTopDown(int width, int height)
{
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof(info.bmiHeader);
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    return info;
}

/// The source pixels that one new pixel covers, along one axis.
struct Cover {
    int first{};
    std::vector<std::uint32_t> weights; ///< of the pixels from `first` on; each at most WholePixel
    std::uint32_t total{};
};
constexpr std::uint32_t WholePixel = 256;

std::vector<Cover> CoversOf(int source, int target)
{
    std::vector<Cover> covers(static_cast<std::size_t>(target));
    const double step = static_cast<double>(source) / target;
    for (int i = 0; i < target; ++i) {
        Cover& cover = covers[static_cast<std::size_t>(i)];
        const double from = i * step;
        const double to = std::min(from + step, static_cast<double>(source));
        cover.first = std::min(static_cast<int>(from), source - 1);
        for (int at = cover.first; at < to && at < source; ++at) {
            const double overlap = std::min(to, at + 1.0) - std::max(from, static_cast<double>(at));
            const auto weight = static_cast<std::uint32_t>(std::lround(std::max(overlap, 0.0) * WholePixel));
            cover.weights.push_back(weight);
            cover.total += weight;
        }
        if (cover.total == 0) {
            cover.weights.assign(1, WholePixel);
            cover.total = WholePixel;
        }
    }
    return covers;
}

std::uint8_t ToByte(double value)
{
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
}

} // namespace

PixelBuffer::PixelBuffer(int bufferWidth, int bufferHeight)
    : width{bufferWidth}, height{bufferHeight},
      pixels(static_cast<std::size_t>(width) * 4 * static_cast<std::size_t>(height))
{
}

BITMAPINFO PixelBuffer::Description() const
{
    return DescribeTopDown(width, height);
}

PixelBuffer PixelBuffer::FromIcon(HICON icon, int size)
{
    ICONINFO info{};
    if (size <= 0 || !GetIconInfo(icon, &info))
        return {};
    const BitmapHandle colour{info.hbmColor};
    const BitmapHandle mask{info.hbmMask};
    PixelBuffer buffer{size, size};
    std::vector<std::uint32_t> masks(static_cast<std::size_t>(size) * static_cast<std::size_t>(size));
    BITMAPINFO description = DescribeTopDown(size, size);
    HDC screen = GetDC(nullptr);
    const auto rows = static_cast<UINT>(size);
    const bool read = colour && GetDIBits(screen, colour.get(), 0, rows, buffer.Bytes(), &description, DIB_RGB_COLORS);
    description = DescribeTopDown(size, size);
    const bool hasMask = mask && GetDIBits(screen, mask.get(), 0, rows, masks.data(), &description, DIB_RGB_COLORS);
    ReleaseDC(nullptr, screen);
    if (!read)
        return {};

    bool hasAlpha = false;
    for (std::size_t i = 3; i < buffer.pixels.size() && !hasAlpha; i += 4)
        hasAlpha = buffer.pixels[i] != 0;
    for (std::size_t i = 0; i < buffer.pixels.size(); i += 4) {
        std::uint8_t* pixel = &buffer.pixels[i];
        if (!hasAlpha)
            pixel[3] = hasMask && (masks[i / 4] & 0xFFFFFF) != 0 ? 0 : 255;
        for (int channel = 0; channel < 3; ++channel)
            pixel[channel] = static_cast<std::uint8_t>(pixel[channel] * pixel[3] / 255);
    }
    return buffer;
}

PixelBuffer PixelBuffer::ScaledTo(int newWidth, int newHeight) const
{
    if (Empty() || newWidth <= 0 || newHeight <= 0)
        return {};
    PixelBuffer scaled{newWidth, newHeight};
    const std::vector<Cover> columns = CoversOf(width, newWidth);
    const std::vector<Cover> rows = CoversOf(height, newHeight);
    // First the covered rows are added up, then the covered columns: whole numbers, since thumbnails come in hundreds.
    std::vector<std::uint32_t> sums(Stride());
    for (std::size_t y = 0; y < rows.size(); ++y) {
        std::ranges::fill(sums, 0u);
        const std::uint8_t* source = pixels.data() + static_cast<std::size_t>(rows[y].first) * Stride();
        for (const std::uint32_t weight : rows[y].weights) {
            for (std::size_t i = 0; i < sums.size(); ++i)
                sums[i] += weight * source[i];
            source += Stride();
        }
        std::uint8_t* target = scaled.Bytes() + y * scaled.Stride();
        for (const Cover& column : columns) {
            std::uint64_t channels[4]{};
            const std::uint32_t* sum = sums.data() + static_cast<std::size_t>(column.first) * 4;
            for (const std::uint32_t weight : column.weights)
                for (std::uint64_t& channel : channels)
                    channel += std::uint64_t{weight} * *sum++;
            const std::uint64_t area = std::uint64_t{rows[y].total} * column.total;
            for (const std::uint64_t channel : channels)
                *target++ = static_cast<std::uint8_t>((channel + area / 2) / area);
        }
    }
    return scaled;
}

void PixelBuffer::Fade()
{
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        std::uint8_t* pixel = &pixels[i];
        // Weights of the eye for blue, green and red (ITU-R BT.601).
        const double grey = 0.114 * pixel[0] + 0.587 * pixel[1] + 0.299 * pixel[2];
        pixel[0] = pixel[1] = pixel[2] = ToByte(grey / 2);
        pixel[3] = static_cast<std::uint8_t>(pixel[3] / 2);
    }
}

void PixelBuffer::Flatten(COLORREF background)
{
    const int colours[] = {GetBValue(background), GetGValue(background), GetRValue(background)};
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        std::uint8_t* pixel = &pixels[i];
        for (int channel = 0; channel < 3; ++channel)
            pixel[channel] =
                static_cast<std::uint8_t>(std::min(255, pixel[channel] + colours[channel] * (255 - pixel[3]) / 255));
        pixel[3] = 255;
    }
}

BitmapHandle PixelBuffer::ToBitmap() const
{
    if (Empty())
        return nullptr;
    const BITMAPINFO description = DescribeTopDown(width, height);
    void* bits = nullptr;
    BitmapHandle bitmap{CreateDIBSection(nullptr, &description, DIB_RGB_COLORS, &bits, nullptr, 0)};
    if (bitmap && bits != nullptr)
        std::ranges::copy(pixels, static_cast<std::uint8_t*>(bits));
    return bitmap;
}

IconHandle PixelBuffer::ToIcon() const
{
    // Icons keep their colours unmultiplied.
    PixelBuffer plain = *this;
    for (std::size_t i = 0; i < plain.pixels.size(); i += 4) {
        std::uint8_t* pixel = &plain.pixels[i];
        for (int channel = 0; channel < 3 && pixel[3] > 0; ++channel)
            pixel[channel] = static_cast<std::uint8_t>(std::min(255, pixel[channel] * 255 / pixel[3]));
    }
    const BitmapHandle colour = plain.ToBitmap();
    if (!colour)
        return nullptr;
    // One bit a pixel, rows of whole 16-bit words: set where the picture is transparent, for what ignores alpha.
    const std::size_t stride = (static_cast<std::size_t>(width) + 15) / 16 * 2;
    std::vector<std::uint8_t> bits(stride * static_cast<std::size_t>(height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x) {
            const auto column = static_cast<std::size_t>(x);
            const auto row = static_cast<std::size_t>(y);
            if (pixels[row * Stride() + column * 4 + 3] == 0)
                bits[row * stride + column / 8] |= static_cast<std::uint8_t>(0x80 >> (column % 8));
        }
    const BitmapHandle mask{CreateBitmap(width, height, 1, 1, bits.data())};
    ICONINFO info{};
    info.fIcon = TRUE;
    info.hbmColor = colour.get();
    info.hbmMask = mask.get();
    return IconHandle{CreateIconIndirect(&info)};
}

} // namespace ui::win32
