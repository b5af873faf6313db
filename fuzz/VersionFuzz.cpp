// Executables that a user might choose for a solution pack.
#include "fuzz/Check.h"
#include "packs/VersionResource.h"
#include "platform/Text.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    platform::TextSource file{{reinterpret_cast<const char*>(bytes), size}};
    if (const auto version = packs::ProductVersionOf(file))
        fuzz::Check(platform::text::Length(*version) <= 255, "a version fits its buffer");
    return 0;
}
