#include "documents/Read.h"

#include "documents/Readers.h"
#include "documents/TextOf.h"

#include <array>

namespace documents {
namespace {

using Reader = Facts (*)(platform::ByteSource& bytes, const TextDecoder& decode);

struct Format {
    std::string_view begins; ///< with these bytes
    Reader read;
};
constexpr Format formats[] = {
    {"{\\rtf", ReadRtf},
};

} // namespace

Facts Read(platform::ByteSource& bytes, const TextDecoder& decode)
{
    std::array<char, 8> start{};
    const std::string_view begin{start.data(), bytes.Read(0, start)};
    Facts facts;
    for (const Format& format : formats)
        if (begin.starts_with(format.begins))
            facts = format.read(bytes, decode);
    for (std::string* text : {&facts.title, &facts.subject, &facts.author, &facts.keywords, &facts.comments,
                              &facts.company, &facts.manager, &facts.category})
        *text = Clean(*text);
    return facts;
}

} // namespace documents
