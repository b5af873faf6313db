// Documents of any bytes, read by the reader that the first byte chooses, or as a part of an archive.
#include "documents/MeteredSource.h"
#include "documents/Read.h"
#include "documents/Readers.h"
#include "documents/TextOf.h"
#include "fuzz/Check.h"

#include <array>

using documents::Facts;
using fuzz::Check;

namespace {

std::string Little(std::uint64_t value, int bytes)
{
    std::string text;
    for (; bytes > 0; --bytes, value >>= 8)
        text += static_cast<char>(value);
    return text;
}

/// An archive with this one file in it, not packed: the fuzzer knows nothing of packing.
std::string Archive(const std::string& name, std::string_view contents)
{
    const std::string common = Little(20, 2) + Little(0, 4) + Little(0, 8) + Little(contents.size(), 4) +
                               Little(contents.size(), 4) + Little(name.size(), 2);
    std::string file = "PK\3\4" + common + Little(0, 2) + name;
    file += contents;
    const std::string directory = "PK\1\2" + Little(20, 2) + common + Little(0, 12) + Little(0, 4) + name;
    return file + directory + "PK\5\6" + Little(0, 4) + Little(1, 2) + Little(1, 2) + Little(directory.size(), 4) +
           Little(file.size(), 4) + Little(0, 2);
}

constexpr auto readers = std::to_array<Facts (*)(platform::ByteSource&, const documents::TextDecoder&)>(
    {documents::ReadRtf, documents::ReadArchive, documents::ReadCompound, documents::ReadPdf, documents::ReadOpenXml});
constexpr const char* parts[] = {"_rels/.rels", "docProps/core.xml", "META-INF/container.xml", "meta.xml"};

Facts ReadAs(std::uint8_t choice, std::string_view bytes)
{
    const auto latin = [](std::uint32_t codePage, std::string_view text) -> std::optional<std::string> {
        return codePage == documents::WesternCodePage ? std::nullopt : std::optional{std::string{text}};
    };
    if (choice < readers.size()) {
        platform::TextSource source{bytes};
        documents::MeteredSource metered{source};
        return readers[choice](metered, latin);
    }
    const std::size_t part = choice - readers.size();
    const std::string file = part < std::size(parts) ? Archive(parts[part], bytes) : std::string{bytes};
    platform::TextSource source{file};
    return documents::Read(source, latin);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    if (size == 0)
        return 0;
    const std::string_view rest{reinterpret_cast<const char*>(bytes + 1), size - 1};
    const auto choice = static_cast<std::uint8_t>(bytes[0] % (readers.size() + std::size(parts) + 1));
    const Facts facts = ReadAs(choice, rest);
    Check(facts == ReadAs(choice, rest), "the same bytes say the same");
    Check(facts.pages >= 0, "no document has less than no page");
    for (const std::string* text : {&facts.title, &facts.subject, &facts.author, &facts.keywords, &facts.comments,
                                    &facts.company, &facts.manager, &facts.category}) {
        const std::string clean = documents::Clean(*text);
        Check(clean.size() <= Facts::MostText && documents::Clean(clean) == clean, "clean once is clean");
        Check(choice < readers.size() || clean == *text, "texts come clean");
    }
    return 0;
}
