#include "documents/Read.h"

#include "documents/MeteredSource.h"
#include "documents/Readers.h"
#include "documents/TextOf.h"
#include "platform/ByteSource.h"

#include <algorithm>

namespace documents {
namespace {

using Reader = Facts (*)(platform::ByteSource& bytes, const TextDecoder& decode);

constexpr std::string_view PdfBegins = "%PDF-";
constexpr std::size_t StartSize = 1024;

struct Format {
    std::string_view begins; ///< with these bytes
    Reader read;
};
constexpr Format formats[] = {
    {"{\\rtf", ReadRtf},  {"PK\3\4", ReadArchive}, {"\xD0\xCF\x11\xE0", ReadCompound},
    {PdfBegins, ReadPdf}, {"<?xml", ReadOpenXml},
};

} // namespace

Facts Read(platform::ByteSource& file, const TextDecoder& decode)
{
    MeteredSource bytes{file};
    const std::string start = ReadBytes(bytes, 0, StartSize);
    const auto format = std::ranges::find_if(formats, [&](const Format& f) { return start.starts_with(f.begins); });
    Facts facts;
    if (format != std::end(formats))
        facts = format->read(bytes, decode);
    else if (start.find(PdfBegins) != std::string::npos) // some programs put something of theirs before it
        facts = ReadPdf(bytes, decode);
    for (std::string* text : {&facts.title, &facts.subject, &facts.author, &facts.keywords, &facts.comments,
                              &facts.company, &facts.manager, &facts.category})
        *text = Clean(*text);
    return facts;
}

} // namespace documents
