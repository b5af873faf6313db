#include "pictures/PixelBuffer.h"

#include <algorithm>
#include <cmath>

namespace pictures {
namespace {

/// The source pixels that one new pixel covers, along one axis.
struct Cover {
    int first{};
    std::vector<std::uint32_t> weights; ///< of the pixels from `first` on; each at most WholePixel
    std::uint32_t total{};
};
constexpr std::uint32_t WholePixel = 256;

/// Where the axis gets longer: the two pixels whose centres lie around the new pixel's own.
std::vector<Cover> NeighboursOf(int source, int target)
{
    std::vector<Cover> covers;
    const double step = static_cast<double>(source) / target;
    for (int i = 0; i < target; ++i) {
        const double centre = std::clamp((i + 0.5) * step - 0.5, 0.0, source - 1.0);
        const int first = std::min(static_cast<int>(centre), std::max(0, source - 2));
        const auto second = static_cast<std::uint32_t>(std::lround((centre - first) * WholePixel));
        covers.push_back({first, {WholePixel - second}, WholePixel});
        if (second > 0)
            covers.back().weights.push_back(second);
    }
    return covers;
}

std::vector<Cover> CoversOf(int source, int target)
{
    if (target > source)
        return NeighboursOf(source, target);
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

PixelBuffer::PixelBuffer(PixelSize bufferSize)
{
    if (bufferSize.Empty())
        return;
    size = bufferSize;
    pixels.resize(Stride() * static_cast<std::size_t>(size.height));
}

PixelBuffer PixelBuffer::ScaledTo(PixelSize newSize) const
{
    return Scaled(size, newSize, Channels::ColoursAndAlpha,
                  [this](int y) { return pixels.data() + static_cast<std::size_t>(y) * Stride(); });
}

PixelBuffer PixelBuffer::Scaled(PixelSize size, PixelSize newSize, Channels channels,
                                const std::function<const std::uint8_t*(int y)>& row)
{
    if (size.Empty() || newSize.Empty())
        return {};
    PixelBuffer scaled{newSize};
    const auto perPixel = static_cast<std::size_t>(channels);
    const std::vector<Cover> columns = CoversOf(size.width, newSize.width);
    const std::vector<Cover> rows = CoversOf(size.height, newSize.height);
    // First the covered rows are added up, then the covered columns: whole numbers, since thumbnails come in hundreds.
    std::vector<std::uint32_t> sums(static_cast<std::size_t>(size.width) * perPixel);
    for (std::size_t y = 0; y < rows.size(); ++y) {
        std::ranges::fill(sums, 0u);
        int at = rows[y].first;
        for (const std::uint32_t weight : rows[y].weights) {
            const std::uint8_t* source = row(at++);
            if (source == nullptr)
                return {};
            for (std::size_t i = 0; i < sums.size(); ++i)
                sums[i] += weight * source[i];
        }
        std::uint8_t* target = scaled.pixels.data() + y * scaled.Stride();
        for (const Cover& column : columns) {
            double totals[4]{}; // 32-bit processors divide 64-bit integers slowly
            const std::uint32_t* sum = sums.data() + static_cast<std::size_t>(column.first) * perPixel;
            for (const std::uint32_t weight : column.weights)
                for (std::size_t channel = 0; channel < perPixel; ++channel)
                    totals[channel] += static_cast<double>(weight) * *sum++;
            const double area = static_cast<double>(rows[y].total) * column.total;
            if (channels == Channels::Colours)
                totals[3] = 255 * area;
            for (const double total : totals)
                *target++ = static_cast<std::uint8_t>((total + area / 2) / area);
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

void PixelBuffer::Flatten(Colour background)
{
    const int colours[] = {background.blue, background.green, background.red};
    for (std::size_t i = 0; i < pixels.size(); i += 4) {
        std::uint8_t* pixel = &pixels[i];
        for (int channel = 0; channel < 3; ++channel)
            pixel[channel] =
                static_cast<std::uint8_t>(std::min(255, pixel[channel] + colours[channel] * (255 - pixel[3]) / 255));
        pixel[3] = 255;
    }
}

} // namespace pictures
