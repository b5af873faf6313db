#pragma once

#include "ui/win32/PixelBuffer.h"

#include <string>

namespace ui::win32 {

/// Reads picture files of every kind that the system decodes. A hostile or broken file gives no picture; the file is
/// not held open afterwards.
class PictureLoader {
public:
    /// The picture with its proportions inside `bounds` (pixels), never larger than it is. Empty when there is none.
    static PixelBuffer Load(const std::string& path, SIZE bounds);
    /// The picture's own size in pixels, without decoding it; 0 x 0 when there is none.
    static SIZE NaturalSize(const std::string& path);
};

} // namespace ui::win32
