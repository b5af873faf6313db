#include "pictures/IconFile.h"

#include "platform/LittleEndian.h"

#include <algorithm>
#include <tuple>

namespace pictures {
namespace {

constexpr std::size_t HeaderSize = 6; ///< bytes; then one entry for each picture
constexpr std::size_t EntrySize = 16;

constexpr auto Number16 = platform::LittleEndian<std::uint16_t>;
constexpr auto Number32 = platform::LittleEndian<std::uint32_t>;

} // namespace

IconPicture FindIconPicture(std::string_view file, int side)
{
    // Reserved, then the type: 1 stands for icons, 2 for pointers.
    if (file.size() < HeaderSize || Number16(file, 0) != 0 || Number16(file, 2) != 1)
        return {};
    const std::size_t count = std::min<std::size_t>(Number16(file, 4), (file.size() - HeaderSize) / EntrySize);
    IconPicture best;
    std::tuple<int, int, std::uint16_t> bestRank;
    for (std::size_t i = 0; i < count; ++i) {
        const std::string_view entry = file.substr(HeaderSize + i * EntrySize, EntrySize);
        const int width = entry[0] == 0 ? 256 : static_cast<std::uint8_t>(entry[0]);
        const std::size_t size = Number32(entry, 8);
        const std::size_t offset = Number32(entry, 12);
        if (size == 0 || offset > file.size() || size > file.size() - offset)
            continue;
        const std::tuple rank{width >= side ? 1 : 0, width >= side ? -width : width, Number16(entry, 6)};
        if (best.side > 0 && rank <= bestRank)
            continue;
        bestRank = rank;
        const std::string_view bytes = file.substr(offset, size);
        best = {width, {bytes.begin(), bytes.end()}};
    }
    return best;
}

} // namespace pictures
