#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <zlib.h>

namespace documents {

/// What zlib makes of a text: a deflated stream, or with its own head and tail.
inline std::string Packed(std::string_view text, bool withHead = false, int level = 9,
                          int strategy = Z_DEFAULT_STRATEGY)
{
    z_stream stream{};
    deflateInit2(&stream, level, Z_DEFLATED, withHead ? MAX_WBITS : -MAX_WBITS, 8, strategy);
    std::string packed(deflateBound(&stream, static_cast<uLong>(text.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(text.data()));
    stream.avail_in = static_cast<uInt>(text.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FINISH);
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

/// Numbers with the low byte first.
inline std::string Number(std::uint64_t value, int bytes)
{
    std::string text;
    for (; bytes > 0; --bytes, value >>= 8)
        text += static_cast<char>(value);
    return text;
}
inline std::string Short(std::uint64_t value)
{
    return Number(value, 2);
}
inline std::string Long(std::uint64_t value)
{
    return Number(value, 4);
}

} // namespace documents
