// The two places in which PDF documents tell of themselves: the information dictionary and the XMP packet.
#include "documents/Dates.h"
#include "documents/PdfFile.h"
#include "documents/PdfSyntax.h"
#include "documents/Readers.h"
#include "documents/XmlFacts.h"
#include "documents/XmlScanner.h"

#include <algorithm>
#include <limits>

namespace documents {
namespace {

using pdf::Lookup;

constexpr std::pair<std::string_view, std::string Facts::*> texts[] = {
    {"/Title", &Facts::title},       {"/Subject", &Facts::subject},   {"/Author", &Facts::author},
    {"/Keywords", &Facts::keywords}, {"/Company", &Facts::company},   {"/Category", &Facts::category},
    {"/Manager", &Facts::manager},   {"/Comments", &Facts::comments},
};
constexpr std::pair<std::string_view, std::optional<Date> Facts::*> dates[] = {{"/CreationDate", &Facts::created},
                                                                               {"/ModDate", &Facts::saved}};

/// What stands for which entry of the dictionary is laid down in ISO 19005.
constexpr XmlField packetFields[] = {
    {"dc:title", &Facts::title},        {"dc:creator", &Facts::author, true}, {"dc:description", &Facts::subject},
    {"pdf:Keywords", &Facts::keywords}, {"xmp:CreateDate", &Facts::created},  {"xmp:ModifyDate", &Facts::saved},
};
/// Keywords one by one count where they do not stand in one text.
constexpr XmlField packetSubjects[] = {{"dc:subject", &Facts::keywords, true}};

} // namespace

Facts ReadPdf(platform::ByteSource& bytes, const TextDecoder&)
{
    PdfFile file{bytes};
    Facts facts;
    // The texts of an encrypted file are not legible without its key; its numbers and most of its packets are.
    if (file.Trailer("/Encrypt").empty()) {
        const std::string info = file.Resolved(file.Trailer("/Info"));
        for (const auto& [key, fact] : texts)
            facts.*fact = pdf::StringText(file.Resolved(Lookup(info, key)));
        for (const auto& [key, fact] : dates)
            facts.*fact = ParsePdfDate(pdf::StringText(file.Resolved(Lookup(info, key))));
    }
    const std::string catalog = file.Resolved(file.Trailer("/Root"));
    const std::string pages = file.Resolved(Lookup(catalog, "/Pages"));
    constexpr std::uint64_t most = std::numeric_limits<int>::max();
    facts.pages = static_cast<int>(std::min(pdf::Number(file.Resolved(Lookup(pages, "/Count"))).value_or(0), most));
    if (const auto metadata = pdf::Reference(Lookup(catalog, "/Metadata"))) {
        const std::string packet = XmlText(file.Stream(*metadata));
        AddXmlFacts(facts, packet, packetFields);
        AddXmlFacts(facts, packet, packetSubjects);
    }
    return facts;
}

} // namespace documents
