#include "pictures/IconFile.h"

#include <algorithm>
#include <tuple>

namespace pictures {
namespace {

constexpr std::size_t HeaderSize = 6; ///< bytes; then one entry for each picture
constexpr std::size_t EntrySize = 16;

/// Reads an unsigned number, low byte first, that lies inside the text.
std::uint32_t NumberAt(std::string_view text, std::size_t at, std::size_t bytes)
{
    std::uint32_t value = 0;
    while (bytes-- > 0)
        value = value << 8 | static_cast<std::uint8_t>(text[at + bytes]);
    return value;
}

} // namespace

IconPicture FindIconPicture(std::string_view file, int side)
{
    // Reserved, then the type: 1 stands for icons, 2 for pointers.
    if (file.size() < HeaderSize || NumberAt(file, 0, 2) != 0 || NumberAt(file, 2, 2) != 1)
        return {};
    const std::size_t count = std::min<std::size_t>(NumberAt(file, 4, 2), (file.size() - HeaderSize) / EntrySize);
    IconPicture best;
    std::tuple<int, int, std::uint32_t> bestRank;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string_view entry = file.substr(HeaderSize + i * EntrySize, EntrySize);
        const int width = entry[0] == 0 ? 256 : static_cast<std::uint8_t>(entry[0]);
        const std::size_t size = NumberAt(entry, 8, 4);
        const std::size_t offset = NumberAt(entry, 12, 4);
        if (size == 0 || offset > file.size() || size > file.size() - offset)
            continue;
        const std::tuple rank{width >= side ? 1 : 0, width >= side ? -width : width, NumberAt(entry, 6, 2)};
        if (best.side > 0 && rank <= bestRank)
            continue;
        bestRank = rank;
        const std::string_view bytes = file.substr(offset, size);
        best = {width, {bytes.begin(), bytes.end()}};
    }
    return best;
}

} // namespace pictures
