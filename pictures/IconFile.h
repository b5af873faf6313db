#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

namespace pictures {

/// One of the pictures that an icon file holds.
struct IconPicture {
    int side{};                      ///< pixels; 0 when there is none
    std::vector<std::uint8_t> bytes; ///< as the system makes icons of them
};

/// The picture that is shown best at `side` pixels: the smallest that is not smaller, else the largest; of several the
/// one with the most colours. None for a file that is no icon.
IconPicture FindIconPicture(std::string_view file, int side);

} // namespace pictures
