#include "tests/documents/Packed.h"
#include "tests/documents/ReadText.h"

#include <map>

namespace documents {
namespace {

constexpr const char* information =
    "<</Title(A \\(nested \\(title\\)\\)\\040\\\r\nx)/Author<FEFF65E5D83DDE00>/Subject 5 0 R/Keywords(one, two)"
    "/CreationDate(D:20040307170709Z)/ModDate(D:20040308000000+00'00')/Company(C)/Other[1 0 R<</Title(no)>>(])]>>";
const Facts fromInformation{.title = "A (nested (title)) x",
                            .subject = "S • ›",
                            .author = "日😀",
                            .keywords = "one, two",
                            .company = "C",
                            .created = Date{At(67, 17, 7, 9)},
                            .saved = Date{At(68, 0, 0)},
                            .pages = 12};
const std::map<int, std::string> objects{{1, "<</Type/Catalog/Pages 2 0 R/Metadata 9 0 R>>"},
                                         {2, "<</Count 12/Kids[]/Type/Pages>>"},
                                         {3, information},
                                         {5, "(S \\200 \211)"}};
constexpr const char* trailer = "/Root 1 0 R/Info 3 0 R/Size 12";

std::string Object(int number, const std::string& body)
{
    return std::to_string(number) + " 0 obj\n" + body + "\nendobj\n";
}

std::string Padded(std::size_t number, std::size_t digits)
{
    std::string text = std::to_string(number);
    return std::string(digits - text.size(), '0') + text;
}

/// A file with a plain table.
std::string Plain(const std::map<int, std::string>& bodies, const std::string& inTrailer = trailer,
                  const std::string& before = "")
{
    std::string file = "%PDF-1.4\n", table;
    for (const auto& [number, body] : bodies) {
        table += std::to_string(number) + " 1\n" + Padded(file.size(), 10) + " 00000 n\r\n";
        file += Object(number, body);
    }
    return before + file + "xref\n0 1\n0000000000 65535 f\r\n" + table + "trailer\n<<" + inTrailer + ">>\nstartxref\n" +
           std::to_string(file.size()) + "\n%%EOF\n";
}

std::string Stream(const std::string& dictionary, const std::string& data)
{
    return "<<" + dictionary + "/Length " + std::to_string(data.size()) + ">>stream\r\n" + data + "\nendstream";
}

/// The same with the objects packed into a stream, and a packed table whose rows are differences, as most programs
/// write them.
std::string Modern()
{
    std::string pairs, bodies;
    for (const auto& [number, body] : objects) {
        pairs += std::to_string(number) + " " + std::to_string(bodies.size()) + " ";
        bodies += body + "\n";
    }
    std::string file = "%PDF-1.5\n";
    const std::size_t streamAt = file.size();
    file += Object(7, Stream("/Type/ObjStm/Filter[/FlateDecode]/N 4/First " + std::to_string(pairs.size()),
                             Packed(pairs + bodies, true)));
    std::string rows, above(4, '\0');
    for (int number = 1; number <= 7; ++number) {
        const std::size_t second = number == 7 ? streamAt : 7;
        const std::string row =
            Number(number == 7 ? 1 : 2, 1) + Number(second >> 8, 1) + Number(second & 0xFF, 1) + Number(0, 1);
        rows += '\2';
        for (std::size_t i = 0; i < 4; ++i)
            rows += static_cast<char>(row[i] - above[i]);
        above = row;
    }
    const std::size_t tableAt = file.size();
    file += Object(8, Stream(std::string{"/Type/XRef/W[1 2 1]/Index[1 7]/Filter/FlateDecode/DecodeParms<</Predictor 12"
                                         "/Columns 4>>"} +
                                 trailer,
                             Packed(rows, true)));
    return file + "startxref\n" + std::to_string(tableAt) + "\n%%EOF\n";
}

TEST(PdfTest, ReadsTheInformationDictionaryOfOldAndNewFiles)
{
    EXPECT_EQ(FactsOf(Plain(objects)), fromInformation);
    EXPECT_EQ(FactsOf(Modern()), fromInformation);
    EXPECT_EQ(FactsOf(Plain(objects, trailer, "something before it\n")), fromInformation);
}

TEST(PdfTest, TheNewestChangeCounts)
{
    const std::string first = Plain(objects);
    const std::string start = first.substr(first.rfind("startxref") + 10);
    const std::size_t changed = first.size();
    const std::string second = first + Object(5, "(newer)");
    const std::string file = second + "xref\n5 1\n" + Padded(changed, 10) + " 00000 n\r\ntrailer\n<<" + trailer +
                             "/Prev " + start.substr(0, start.find('\n')) + ">>\nstartxref\n" +
                             std::to_string(second.size()) + "\n%%EOF\n";
    EXPECT_EQ(FactsOf(file).subject, "newer");
    EXPECT_EQ(FactsOf(file).title, fromInformation.title);
}

TEST(PdfTest, ThePacketFillsWhatTheDictionaryLeavesOut)
{
    const std::string packet =
        "<?xpacket begin=''?><x:xmpmeta><rdf:RDF><rdf:Description xmp:CreateDate='2004-03-07T17:07:09Z' "
        "pdf:Keywords=''>"
        "<dc:title><rdf:Alt><rdf:li xml:lang='x-default'>T</rdf:li><rdf:li "
        "xml:lang='de'>U</rdf:li></rdf:Alt></dc:title>"
        "<dc:creator><rdf:Seq><rdf:li>Ann</rdf:li><rdf:li>Bob</rdf:li></rdf:Seq></dc:creator>"
        "<dc:subject><rdf:Bag><rdf:li>one</rdf:li><rdf:li>two</rdf:li></rdf:Bag></dc:subject></rdf:Description>";
    std::map<int, std::string> bodies = objects;
    bodies[9] = Stream("/Type/Metadata/Subtype/XML", packet);
    bodies[3] = "<</Subject(S)>>";
    const Facts expected{.title = "T",
                         .subject = "S",
                         .author = "Ann, Bob",
                         .keywords = "one, two",
                         .created = Date{At(67, 17, 7, 9)},
                         .pages = 12};
    EXPECT_EQ(FactsOf(Plain(bodies)), expected);
    bodies[9] = Stream("/Filter/FlateDecode", Packed(packet, true));
    EXPECT_EQ(FactsOf(Plain(bodies)), expected);
    // Texts of an encrypted file are no texts; how many pages it has is legible.
    EXPECT_EQ(FactsOf(Plain(objects, std::string{trailer} + "/Encrypt 8 0 R")), (Facts{.pages = 12}));
}

TEST(PdfTest, LoopsAndBombsEndTheReading)
{
    std::map<int, std::string> bodies = objects;
    bodies[3] = "<</Title 3 0 R/Author " + std::string(100'000, '[');
    EXPECT_EQ(FactsOf(Plain(bodies)).title, "");
    const std::string file = Plain(objects);
    EXPECT_EQ(FactsOf(Plain(objects, std::string{trailer} + "/Prev " + std::to_string(file.find("xref\n")))),
              fromInformation);
    bodies[9] = Stream("/Filter/FlateDecode", Packed(std::string(20'000'000, '<'), true));
    bodies[3] = information;
    EXPECT_EQ(FactsOf(Plain(bodies)), fromInformation);
    EXPECT_EQ(FactsOf("%PDF-1.4\nstartxref\n99999999999999999999\n"), Facts{});
}

} // namespace
} // namespace documents
