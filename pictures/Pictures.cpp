#include "pictures/Pictures.h"

namespace pictures {

PixelBuffer Pictures::DecodeEither(const std::string& path, const std::string& fallback, PixelSize room,
                                   int enlargement) const
{
    PixelBuffer picture = Decode(path, room, enlargement);
    if (picture.Empty() && fallback != path)
        picture = Decode(fallback, room, enlargement);
    return picture;
}

} // namespace pictures
