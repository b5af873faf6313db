// Deflated streams of any bytes: what comes out, and whether the end is a proper one, is what zlib says.
#include "documents/Inflater.h"
#include "fuzz/Check.h"
#include "tests/documents/Packed.h"

using fuzz::Check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    constexpr std::size_t limit = 1 << 17;
    const std::string_view packed{reinterpret_cast<const char*>(bytes), size};
    const auto [expected, ended] = documents::Unpacked(packed, limit);
    platform::TextSource source{packed};
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
