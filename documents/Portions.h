#pragma once

#include "platform/ByteSource.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace documents {

/// Reads a file from one place on, byte by byte, with one portion of it in memory.
class Portions {
public:
    explicit Portions(platform::ByteSource& source, std::uint64_t from = 0) : bytes{source}, start{from} {}

    std::uint64_t Position() const { return start + next; }
    void Seek(std::uint64_t position)
    {
        if (position >= start && position <= start + filled) {
            next = static_cast<std::size_t>(position - start);
        } else {
            start = position;
            next = filled = 0;
        }
    }
    /// The byte at the position, and goes on to the next one; -1 at the end.
    int Get()
    {
        const int byte = Peek();
        next += byte >= 0 ? 1 : 0;
        return byte;
    }
    int Peek()
    {
        if (next == filled) {
            start += filled;
            next = 0;
            filled = bytes.Read(start, portion);
            if (filled == 0)
                return -1;
        }
        return static_cast<unsigned char>(portion[next]);
    }

private:
    platform::ByteSource& bytes;
    std::uint64_t start; ///< of the portion in the file
    std::size_t next{};
    std::size_t filled{};
    std::array<char, 4096> portion;
};

} // namespace documents
