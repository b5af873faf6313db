// Paths of any bytes, and of those that mean something in a path.
#include "fuzz/Check.h"
#include "platform/Path.h"

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>

namespace path = platform::path;
using fuzz::Check;

namespace {

std::string TakePath(FuzzedDataProvider& input)
{
    const bool plain = input.ConsumeBool();
    std::string text = input.ConsumeRandomLengthString(300);
    constexpr std::string_view meaningful = "\\\\\\/:.?* aACxs";
    if (plain)
        std::ranges::transform(text, text.begin(),
                               [=](char c) { return meaningful[static_cast<unsigned char>(c) % meaningful.size()]; });
    return text;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    FuzzedDataProvider input{bytes, size};
    const std::string a = TakePath(input);
    const std::string b = TakePath(input);

    const std::string normalized = path::Normalized(a);
    Check(path::Normalized(normalized) == normalized, "normalized twice is normalized once");
    Check(path::Same(a, normalized), "a path is its normalized self");
    Check(path::Same(a, b) == path::Same(b, a), "the order does not matter");
    Check(normalized.find('/') == std::string::npos && normalized.find("\\\\", 1) == std::string::npos,
          "one separator");
    if (path::IsAbsolute(a)) {
        Check(path::IsAbsolute(normalized), "a normalized path stays absolute");
        Check(path::IsAbsolute(path::Join(a, b)), "a path below an absolute one is absolute");
        Check(path::Same(a, a + "\\"), "a separator at the end does not count");
        const bool isDrive = normalized.size() <= 3;
        Check(isDrive || path::Same(path::Join(path::Parent(normalized), path::Name(normalized)), normalized),
              "parent and name");
    }
    Check(path::Name(a).find('\\') == std::string_view::npos, "a name has no separator");
    Check(!path::Parent(a).ends_with('\\'), "a parent has no separator at its end");
    Check(a.size() <= 4 || std::string{path::WithoutLastFour(a)}.append(path::LastFour(a)) == a, "name and ending");
    return 0;
}
