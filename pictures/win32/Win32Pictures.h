#pragma once

#include "pictures/Pictures.h"

namespace pictures::win32 {

/// What the system's imaging component decodes. It needs no window and no set-up of the thread; a file is not held
/// open afterwards.
class Win32Pictures final : public Pictures {
public:
    PixelSize SizeOf(const std::string& path) const override;
    PixelBuffer Decode(const std::string& path, PixelSize room, int enlargement = 1) const override;
    std::uint64_t Stamp(const std::string& path) const override;
};

} // namespace pictures::win32
