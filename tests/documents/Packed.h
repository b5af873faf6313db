#pragma once

#include "tests/support/Bytes.h"

#include <string>
#include <string_view>
#include <utility>

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

/// What zlib makes of a deflated stream: what came out, `most` bytes at the most, and whether it came to its end.
inline std::pair<std::string, bool> Unpacked(std::string_view packed, std::size_t most)
{
    z_stream stream{};
    inflateInit2(&stream, -MAX_WBITS);
    std::string text(most, '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(text.data());
    stream.avail_out = static_cast<uInt>(text.size());
    const bool hasEnded = inflate(&stream, Z_SYNC_FLUSH) == Z_STREAM_END;
    text.resize(stream.total_out);
    inflateEnd(&stream);
    return {text, hasEnded};
}

using tests::Number;
inline std::string Short(std::uint64_t value)
{
    return Number(value, 2);
}
inline std::string Long(std::uint64_t value)
{
    return Number(value, 4);
}

} // namespace documents
