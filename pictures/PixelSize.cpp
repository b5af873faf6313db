#include "pictures/PixelSize.h"

#include <algorithm>
#include <cmath>

namespace pictures {

PixelSize Fitted(PixelSize picture, PixelSize room, int enlargement)
{
    if (picture.Empty() || room.Empty())
        return {};
    const double scale = std::min({static_cast<double>(enlargement), static_cast<double>(room.width) / picture.width,
                                   static_cast<double>(room.height) / picture.height});
    const auto side = [&](int own) { return std::max(1, static_cast<int>(std::lround(own * scale))); };
    return {side(picture.width), side(picture.height)};
}

} // namespace pictures
