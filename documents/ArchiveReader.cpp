// Documents that are zip archives of XML texts: office documents of both families, and e-books.
#include "documents/Readers.h"
#include "documents/XmlFacts.h"
#include "documents/XmlScanner.h"
#include "documents/Zip.h"
#include "platform/ByteSource.h"
#include "platform/Text.h"

namespace documents {
namespace {

// Office documents with relations between parts (ISO/IEC 29500-2).
constexpr XmlField coreFields[] = {
    {"title", &Facts::title},       {"subject", &Facts::subject},   {"creator", &Facts::author},
    {"keywords", &Facts::keywords}, {"category", &Facts::category}, {"description", &Facts::comments},
    {"created", &Facts::created},   {"modified", &Facts::saved},
};
constexpr XmlField extendedFields[] = {
    {"Company", &Facts::company}, {"Manager", &Facts::manager}, {"Pages", &Facts::pages}, {"Slides", &Facts::pages}};

struct Part {
    std::string_view relation; ///< how the type of the relation ends that leads to it
    std::string_view usual;    ///< where it lies when no relation tells
    std::span<const XmlField> fields;
};
constexpr Part parts[] = {
    {"/core-properties", "docProps/core.xml", coreFields},
    {"/extended-properties", "docProps/app.xml", extendedFields},
};

std::string TargetOf(std::string_view relations, std::string_view typeEnding)
{
    XmlScanner scanner{relations};
    for (auto piece = scanner.Next(); piece != XmlScanner::Piece::End; piece = scanner.Next()) {
        if (piece != XmlScanner::Piece::Open || scanner.LocalName() != "Relationship" ||
            !scanner.Attribute("Type").ends_with(typeEnding))
            continue;
        const std::string target = scanner.Attribute("Target");
        return target.starts_with('/') ? target.substr(1) : target;
    }
    return {};
}

/// Office programs write what XML has no character for by its number (ST_Xstring): the first half of a line's end.
std::string WithLineBreaks(std::string xml)
{
    for (const char* escaped : {"_x000d_", "_x000D_"})
        xml = platform::text::Replaced(std::move(xml), escaped, "\r");
    return xml;
}

Facts ReadOffice(const ZipArchive& archive, std::string relations)
{
    relations = XmlText(std::move(relations));
    Facts facts;
    for (const Part& part : parts) {
        const std::string target = TargetOf(relations, part.relation);
        if (auto xml = archive.Member(target.empty() ? part.usual : std::string_view{target}))
            AddXmlFacts(facts, WithLineBreaks(XmlText(*std::move(xml))), part.fields);
    }
    return facts;
}

// Open documents (OASIS), and their ancestors with the same words.
constexpr XmlField openFields[] = {
    {"title", &Facts::title},
    {"subject", &Facts::subject},
    {"initial-creator", &Facts::author},
    {"keyword", &Facts::keywords, true},
    {"description", &Facts::comments},
    {"creation-date", &Facts::created},
    {"dc:date", &Facts::saved},
};
/// Who saved it last stands for the author of a document that names none.
constexpr XmlField lastCreator[] = {{"creator", &Facts::author}};
/// What office documents say beyond that, other programs keep under names that the user could have given too.
constexpr std::pair<std::string_view, std::string Facts::*> userFields[] = {
    {"Company", &Facts::company}, {"Manager", &Facts::manager}, {"category", &Facts::category}};

void AddOpenFacts(Facts& facts, std::string_view xml)
{
    AddXmlFacts(facts, xml, openFields);
    AddXmlFacts(facts, xml, lastCreator);
    XmlScanner scanner{xml};
    std::string Facts::* fact = nullptr;
    for (auto piece = scanner.Next(); piece != XmlScanner::Piece::End; piece = scanner.Next()) {
        if (piece == XmlScanner::Piece::Text) {
            if (fact != nullptr && (facts.*fact).empty())
                facts.*fact = scanner.Text();
            continue;
        }
        fact = nullptr;
        if (piece != XmlScanner::Piece::Open)
            continue;
        if (scanner.LocalName() == "document-statistic") {
            const std::string count = scanner.Attribute("page-count");
            facts.pages = platform::text::ToInt(count, 0, 0, 1 << 30);
        } else if (scanner.LocalName() == "user-defined") {
            const std::string name = scanner.Attribute("name");
            for (const auto& [known, field] : userFields)
                if (platform::text::EqualIgnoringCase(name, known))
                    fact = field;
        }
    }
}

// E-books (IDPF).
constexpr XmlField bookFields[] = {
    {"title", &Facts::title},          {"creator", &Facts::author, true}, {"subject", &Facts::keywords, true},
    {"description", &Facts::comments}, {"publisher", &Facts::company},    {"date", &Facts::created},
};

Facts ReadBook(const ZipArchive& archive, std::string container)
{
    Facts facts;
    container = XmlText(std::move(container));
    XmlScanner scanner{container};
    for (auto piece = scanner.Next(); piece != XmlScanner::Piece::End; piece = scanner.Next())
        if (piece == XmlScanner::Piece::Open && scanner.LocalName() == "rootfile") {
            if (auto package = archive.Member(scanner.Attribute("full-path")))
                AddXmlFacts(facts, XmlText(*std::move(package)), bookFields);
            break;
        }
    return facts;
}

} // namespace

Facts ReadArchive(platform::ByteSource& bytes, const TextDecoder&)
{
    const ZipArchive archive{bytes};
    if (auto relations = archive.Member("_rels/.rels"))
        return ReadOffice(archive, *std::move(relations));
    if (auto container = archive.Member("META-INF/container.xml"))
        return ReadBook(archive, *std::move(container));
    Facts facts;
    if (auto meta = archive.Member("meta.xml"))
        AddOpenFacts(facts, XmlText(*std::move(meta)));
    return facts;
}

Facts ReadOpenXml(platform::ByteSource& bytes, const TextDecoder&)
{
    const std::string start = XmlText(ReadBytes(bytes, 0, ZipArchive::MostBytes));
    Facts facts;
    if (start.find("<office:document") != std::string::npos)
        AddOpenFacts(facts, std::string_view{start}.substr(0, start.find("</office:meta>")));
    return facts;
}

} // namespace documents
