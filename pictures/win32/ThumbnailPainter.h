#pragma once

#include "pictures/Pictures.h"
#include "pictures/Thumbnail.h"

#include <memory>
#include <mutex>
#include <string>

namespace pictures::win32 {

/// Composes thumbnails of one size: the picture alone, or drawn onto a frame. Any thread may ask.
class ThumbnailPainter {
public:
    /// `cell`: what a thumbnail may have; `enlargement`: how many times its size a picture may get for it.
    ThumbnailPainter(const Pictures& pictures, PixelSize cell, int enlargement)
        : pictures{pictures}, cell{cell}, enlargement{enlargement}
    {
    }

    /// Empty when neither the picture nor what stands in for it can be decoded.
    PixelBuffer Paint(const Thumbnail& thumbnail);
    /// Another number whenever Paint may give another thumbnail. The frame is taken not to change.
    std::uint64_t Stamp(const Thumbnail& thumbnail) const;

private:
    const Pictures& pictures;
    PixelSize cell;
    int enlargement;
    std::mutex mutex;
    std::string frameFile;                    ///< of `frame`
    std::shared_ptr<const PixelBuffer> frame; ///< scaled to the cell; empty when it cannot be decoded

    std::shared_ptr<const PixelBuffer> Frame(const std::string& file);
    PixelBuffer PictureOf(const Thumbnail& thumbnail, PixelSize room) const;
};

} // namespace pictures::win32
