#pragma once

#include "ui/ListView.h"
#include "ui/win32/PixelBuffer.h"

#include <string>

namespace ui::win32 {

/// Composes thumbnails of one size: the picture alone, or drawn onto a frame.
class ThumbnailPainter {
public:
    /// `wholeCell`: pixels that a thumbnail may have. Pictures are made smaller for it, never larger.
    explicit ThumbnailPainter(SIZE wholeCell = {}) : cell{wholeCell} {}

    /// Empty when neither the picture nor what stands in for it can be decoded.
    PixelBuffer Paint(const Thumbnail& thumbnail);

private:
    SIZE cell;
    std::string frameFile; ///< of `frame`
    PixelBuffer frame;     ///< scaled to the cell; empty when it cannot be decoded

    const PixelBuffer& Frame(const std::string& file);
};

} // namespace ui::win32
