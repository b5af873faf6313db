#include "documents/MeteredSource.h"

#include <algorithm>

namespace documents {

std::size_t MeteredSource::Read(std::uint64_t offset, std::span<char> room)
{
    left -= CostOfCall + static_cast<std::int64_t>(std::min<std::size_t>(room.size(), Budget));
    if (left < 0 || offset >= file.Size())
        return 0;
    if (room.size() >= PageSize)
        return file.Read(offset, room);
    std::size_t filled = 0;
    while (filled < room.size()) {
        const std::uint64_t number = (offset + filled) / PageSize;
        Page& page = pages[static_cast<std::size_t>(number % PageCount)];
        if (page.number != number) {
            left -= static_cast<std::int64_t>(PageSize);
            page.size = file.Read(number * PageSize, page.bytes);
            page.number = number;
        }
        const auto inPage = static_cast<std::size_t>((offset + filled) % PageSize);
        if (inPage >= page.size)
            break;
        const std::size_t count = std::min(room.size() - filled, page.size - inPage);
        std::copy_n(page.bytes.begin() + static_cast<std::ptrdiff_t>(inPage), count,
                    room.begin() + static_cast<std::ptrdiff_t>(filled));
        filled += count;
    }
    return filled;
}

} // namespace documents
