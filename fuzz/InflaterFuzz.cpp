// Deflated streams of any bytes: what comes out, and whether the end is a proper one, is what zlib says.
#include "documents/Inflater.h"
#include "fuzz/Check.h"

#include <zlib.h>

using fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    constexpr std::size_t limit = 1 << 17;
    std::string expected(limit, '\0');
    z_stream stream{};
    inflateInit2(&stream, -MAX_WBITS);
    stream.next_in = const_cast<Bytef*>(bytes);
    stream.avail_in = static_cast<uInt>(size);
    stream.next_out = reinterpret_cast<Bytef*>(expected.data());
    stream.avail_out = static_cast<uInt>(expected.size());
    const bool ended = inflate(&stream, Z_SYNC_FLUSH) == Z_STREAM_END;
    expected.resize(stream.total_out);
    inflateEnd(&stream);

    platform::TextSource source{{reinterpret_cast<const char*>(bytes), size}};
    documents::Inflater inflater{source, 0, size};
    std::string own(limit, '\0');
    own.resize(inflater.Read(own));
    if (own.size() == limit || expected.size() == limit)
        return 0; // there may be more
    Check(inflater.IsFinished() == ended, "it ends where it should");
    Check(own.substr(0, expected.size()) == expected.substr(0, own.size()), "the same bytes come out");
    Check(!ended || own.size() == expected.size(), "all of them come out");
    return 0;
}
