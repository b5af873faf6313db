// Documents of any bytes: a target for each reader, and for what a mutation of a whole file hardly reaches in it.
#include "documents/MeteredSource.h"
#include "documents/Read.h"
#include "documents/Readers.h"
#include "documents/TextOf.h"
#include "fuzz/Check.h"
#include "tests/documents/Containers.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

using documents::Facts;
using fuzz::Check;

namespace {

thread_local std::size_t inUse, mostInUse; ///< bytes of memory on this thread

} // namespace

// Those of arrays call these. Inlined, the compiler would see memory of malloc that is deleted, and warn.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    if (void* const block = operator new(size, std::nothrow))
        return block;
    throw std::bad_alloc{};
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    void* const block = std::malloc(size > 0 ? size : 1);
    inUse += malloc_usable_size(block);
    mostInUse = std::max(mostInUse, inUse);
    return block;
}
[[gnu::noinline]] void operator delete(void* block) noexcept
{
    inUse -= malloc_usable_size(block);
    std::free(block);
}
void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

namespace {

std::string AsItIs(std::string_view bytes)
{
    return std::string{bytes};
}

/// An archive, not packed, of the files whose names and contents take turns: the fuzzer keeps no lengths right.
std::string AsMembers(std::string_view bytes)
{
    std::vector<documents::Member> members;
    const auto take = [&] {
        const std::string_view text = bytes.substr(0, bytes.find('\x1E'));
        bytes.remove_prefix(std::min(text.size() + 1, bytes.size()));
        return std::string{text};
    };
    while (!bytes.empty() && members.size() < 16)
        members.push_back({take(), take(), false});
    return documents::Zip(members);
}

/// A compound file in which both property sets are these bytes.
std::string AsPropertySet(std::string_view bytes)
{
    constexpr std::size_t mostInMiniSectors = 4095;
    return documents::Compound(std::string{bytes.substr(0, mostInMiniSectors)}, std::string{bytes});
}

struct Target {
    std::string_view name;
    Facts (*read)(platform::ByteSource&, const documents::TextDecoder&);
    std::string (*file)(std::string_view bytes) = AsItIs;
};
constexpr Target targets[] = {
    {"RtfFuzz", documents::ReadRtf},
    {"ArchiveFuzz", documents::ReadArchive},
    {"OfficeFuzz", documents::ReadArchive, AsMembers},
    {"OpenXmlFuzz", documents::ReadOpenXml},
    {"CompoundFuzz", documents::ReadCompound},
    {"PropertySetFuzz", documents::ReadCompound, AsPropertySet},
    {"PdfFuzz", documents::ReadPdf},
};
constexpr Target target = *std::ranges::find(targets, std::string_view{TS_TARGET}, &Target::name);

Facts ReadFile(std::string_view file)
{
    platform::TextSource source{file};
    documents::MeteredSource metered{source};
    return target.read(metered, [](std::uint32_t codePage, std::string_view text) -> std::optional<std::string> {
        return codePage == documents::WesternCodePage ? std::nullopt : std::optional{std::string{text}};
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    const std::string file = target.file({reinterpret_cast<const char*>(bytes), size});
    const std::size_t before = mostInUse = inUse;
    const Facts facts = ReadFile(file);
    Check(mostInUse - before < std::size_t{1} << 20, "less than 1 MiB is in use at any time");
    Check(facts == ReadFile(file), "the same bytes say the same");
    Check(facts.pages >= 0, "no document has less than no page");
    for (const std::string* text : {&facts.title, &facts.subject, &facts.author, &facts.keywords, &facts.comments,
                                    &facts.company, &facts.manager, &facts.category}) {
        const std::string clean = documents::Clean(*text);
        Check(clean.size() <= Facts::MostText && documents::Clean(clean) == clean, "clean once is clean");
    }
    return 0;
}
