#pragma once

#include "pictures/PixelSize.h"
#include "tests/support/Bytes.h"

#include <string>
#include <vector>

inline std::string NumberBytes(int value, int count)
{
    return tests::Number(static_cast<std::uint64_t>(value), count);
}

/// What bitmaps and icons begin with.
inline std::string BitmapHeader(pictures::PixelSize size, int bitsPerPixel)
{
    return NumberBytes(40, 4) + NumberBytes(size.width, 4) + NumberBytes(size.height, 4) + NumberBytes(1, 2) +
           NumberBytes(bitsPerPixel, 2) + NumberBytes(0, 24);
}

/// A 24-bit BMP with `shade` in every byte of its pixels; the header may claim another size than the pixels have.
inline std::string Bitmap(pictures::PixelSize size, pictures::PixelSize claimed, char shade = '\x40')
{
    const int stride = (size.width * 3 + 3) / 4 * 4;
    const std::string pixels(static_cast<std::size_t>(stride * size.height), shade);
    return "BM" + NumberBytes(54 + stride * size.height, 4) + NumberBytes(0, 4) + NumberBytes(54, 4) +
           BitmapHeader(claimed, 24) + pixels;
}

struct IconEntry {
    int side; ///< pixels; 256 at the most
    int bitsPerPixel;
    std::string bytes;
};

/// An icon file.
inline std::string IconFile(const std::vector<IconEntry>& entries)
{
    std::string file = NumberBytes(0, 2) + NumberBytes(1, 2) + NumberBytes(static_cast<int>(entries.size()), 2);
    std::string contents;
    for (const IconEntry& entry : entries) {
        const auto offset = static_cast<int>(6 + 16 * entries.size() + contents.size());
        file += NumberBytes(entry.side, 1) + NumberBytes(entry.side, 1) + NumberBytes(0, 2) + NumberBytes(1, 2) +
                NumberBytes(entry.bitsPerPixel, 2) + NumberBytes(static_cast<int>(entry.bytes.size()), 4) +
                NumberBytes(offset, 4);
        contents += entry.bytes;
    }
    return file + contents;
}
