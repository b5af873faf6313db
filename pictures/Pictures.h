#pragma once

#include "pictures/PixelBuffer.h"
#include "pictures/PixelSize.h"

#include <cstdint>
#include <string>

namespace pictures {

/// Picture files of every kind that the system decodes, within bounds: a hostile or broken file is no picture. The
/// answers depend on nothing but the file, so any thread may ask.
class Pictures {
public:
    virtual ~Pictures() = default;

    /// The picture's own size, without decoding it; empty when there is none.
    virtual PixelSize SizeOf(const std::string& path) const = 0;
    /// The picture as large as `Fitted` says. Empty when there is none.
    virtual PixelBuffer Decode(const std::string& path, PixelSize room, int enlargement = 1) const = 0;

    /// Another number whenever the file has changed, by its time and size; 0 for a file that is not there.
    virtual std::uint64_t Stamp(const std::string& path) const = 0;

    bool CanShow(const std::string& path) const { return !Decode(path, {1, 1}).Empty(); }
    /// The first of the two that can be shown.
    PixelBuffer DecodeEither(const std::string& path, const std::string& fallback, PixelSize room,
                             int enlargement = 1) const;
};

} // namespace pictures
