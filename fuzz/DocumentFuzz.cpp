// Documents of any bytes: a target for each reader, and for what a mutation of a whole file hardly reaches in it.
#include "documents/MeteredSource.h"
#include "documents/Read.h"
#include "documents/Readers.h"
#include "documents/TextOf.h"
#include "fuzz/Check.h"

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

std::string Little(std::uint64_t value, int bytes)
{
    std::string text;
    for (; bytes > 0; --bytes, value >>= 8)
        text += static_cast<char>(value);
    return text;
}

std::string AsItIs(std::string_view bytes)
{
    return std::string{bytes};
}

/// An archive, not packed, of the files whose names and contents take turns: the fuzzer keeps no lengths right.
std::string AsMembers(std::string_view bytes)
{
    std::string file, directory;
    std::size_t count = 0;
    const auto take = [&] {
        const std::string_view text = bytes.substr(0, bytes.find('\x1E'));
        bytes.remove_prefix(std::min(text.size() + 1, bytes.size()));
        return text;
    };
    for (; !bytes.empty() && count < 16; ++count) {
        const std::string_view name = take(), contents = take();
        const std::string common = Little(20, 2) + Little(0, 4) + Little(0, 8) + Little(contents.size(), 4) +
                                   Little(contents.size(), 4) + Little(name.size(), 2);
        directory += "PK\1\2" + Little(20, 2) + common + Little(0, 12) + Little(file.size(), 4);
        directory += name;
        file += "PK\3\4" + common + Little(0, 2);
        (file += name) += contents;
    }
    return file + directory + "PK\5\6" + Little(0, 4) + Little(count, 2) + Little(count, 2) +
           Little(directory.size(), 4) + Little(file.size(), 4) + Little(0, 2);
}

/// A compound file in which both property sets are these bytes.
std::string AsPropertySet(std::string_view bytes)
{
    constexpr std::size_t sector = 4096;
    constexpr std::uint32_t end = 0xFFFFFFFE, none = 0xFFFFFFFF;
    const auto entry = [&](std::string_view name, int type, std::uint32_t left, std::uint32_t child) {
        std::string wide;
        for (const char c : name)
            (wide += c) += '\0';
        const std::size_t nameSize = wide.size() + 2;
        wide.resize(64);
        return wide + Little(nameSize, 2) + static_cast<char>(type) + '\1' + Little(left, 4) + Little(none, 4) +
               Little(child, 4) + std::string(36, '\0') + Little(type == 2 ? 2 : end, 4) + Little(bytes.size(), 8);
    };
    const auto whole = [&](std::string text) {
        text.resize((text.size() + sector - 1) / sector * sector);
        return text;
    };
    const std::string header = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1" + std::string(22, '\0') + Little(12, 2) +
                               Little(6, 2) + std::string(10, '\0') + Little(1, 4) + Little(1, 4) + Little(0, 8) +
                               Little(end, 4) + Little(0, 4) + Little(end, 4) + Little(0, 8);
    std::string table = Little(end, 4) + Little(end, 4);
    for (std::size_t i = 1; i < sector / 4 - 2; ++i)
        table += Little(i * sector < bytes.size() ? i + 2 : end, 4);
    const std::string directory = entry("Root Entry", 5, none, 1) + entry("\5SummaryInformation", 2, 2, none) +
                                  entry("\5DocumentSummaryInformation", 2, none, none);
    return whole(header) + whole(table) + whole(directory) + whole(std::string{bytes});
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
