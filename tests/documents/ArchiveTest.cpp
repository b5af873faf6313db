#include "tests/documents/Containers.h"
#include "tests/documents/ReadText.h"

#include <vector>

namespace documents {
namespace {

const std::string core = "<cp:coreProperties><dc:title>T &amp; t</dc:title><dc:subject>S</dc:subject>"
                         "<dc:creator>Ann</dc:creator><cp:keywords>one, <cp:value>two</cp:value></cp:keywords>"
                         "<dc:description> D_x000d_\nE </dc:description><cp:lastModifiedBy>Bob</cp:lastModifiedBy>"
                         "<dcterms:created>2004-03-07T17:07:09Z</dcterms:created><cp:category>K</cp:category>"
                         "<dcterms:modified>2004-03-08T00:00:00Z</dcterms:modified></cp:coreProperties>";
const std::string extended = "<Properties><Company>C</Company><Manager>M</Manager><Pages>12</Pages></Properties>";
const Facts officeFacts{.title = "T & t",
                        .subject = "S",
                        .author = "Ann",
                        .keywords = "one, two",
                        .comments = "D\nE",
                        .company = "C",
                        .manager = "M",
                        .category = "K",
                        .created = Date{At(67, 17, 7, 9)},
                        .saved = Date{At(68, 0, 0)},
                        .pages = 12};

std::vector<Member> Office(const std::string& coreTarget, const std::string& coreName)
{
    return {{"[Content_Types].xml", "<Types/>"},
            {"_rels/.rels", "<Relationships><Relationship Target='word/document.xml' Type='http://x/officeDocument'/>"
                            "<Relationship Target='" +
                                coreTarget +
                                "' Type='http://x/metadata/core-properties'/>"
                                "</Relationships>"},
            {coreName, core},
            {"docProps/APP.xml", extended, false}};
}

TEST(ArchiveTest, ReadsOfficeDocumentsWhereverTheirPartsLie)
{
    EXPECT_EQ(FactsOf(Zip(Office("docProps/core.xml", "docProps/core.xml"))), officeFacts);
    EXPECT_EQ(FactsOf(Zip(Office("/package/1.psmdcp", "package/1.psmdcp"))), officeFacts);
    EXPECT_EQ(FactsOf(Zip(Office("docProps/core.xml", "docProps/core.xml"), "PK\3\4 before", "PK\5\6 behind")),
              officeFacts);
    std::vector<Member> utf16 = Office("docProps/core.xml", "docProps/core.xml");
    std::string wide = "\xFF\xFE";
    for (const char c : utf16[2].contents)
        wide += Short(static_cast<unsigned char>(c));
    utf16[2].contents = wide;
    EXPECT_EQ(FactsOf(Zip(utf16)), officeFacts);
}

const std::string meta = "<office:meta><meta:initial-creator>Ann</meta:initial-creator><dc:creator>Bob</dc:creator>"
                         "<dc:title>T</dc:title><meta:keyword>one</meta:keyword><meta:keyword>two</meta:keyword>"
                         "<meta:creation-date>2004-03-07T17:07:09.25</meta:creation-date><dc:date>2004-03-08</dc:date>"
                         "<meta:user-defined meta:name='Company'>C</meta:user-defined>"
                         "<meta:document-statistic meta:page-count='12'/></office:meta>";
const Facts openFacts{.title = "T",
                      .author = "Ann",
                      .keywords = "one, two",
                      .company = "C",
                      .created = Date{At(67, 17, 7, 9), true},
                      .saved = Date{At(68, 0, 0), true},
                      .pages = 12};

TEST(ArchiveTest, ReadsOpenDocumentsPackedAndAsOneText)
{
    EXPECT_EQ(FactsOf(Zip({{"mimetype", "application/vnd.oasis.opendocument.text", false}, {"meta.xml", meta}})),
              openFacts);
    EXPECT_EQ(FactsOf("<?xml version='1.0'?><office:document>" + meta + "<dc:title>in the text</dc:title>"), openFacts);
    EXPECT_EQ(FactsOf("<?xml version='1.0'?><other><dc:title>T</dc:title></other>"), Facts{});
    EXPECT_EQ(FactsOf(Zip({{"meta.xml", "<dc:creator>Bob</dc:creator>"}})).author, "Bob");
}

TEST(ArchiveTest, ReadsBooks)
{
    const std::string package = "<package><metadata><dc:title>T</dc:title><dc:creator>Ann</dc:creator>"
                                "<dc:creator>Bob</dc:creator><dc:subject>one</dc:subject><dc:subject>two</dc:subject>"
                                "<dc:publisher>P</dc:publisher><dc:date>2004</dc:date></metadata></package>";
    EXPECT_EQ(FactsOf(Zip({{"META-INF/container.xml", "<rootfile full-path='a/b.opf'/>"}, {"a/b.opf", package}})),
              (Facts{.title = "T",
                     .author = "Ann, Bob",
                     .keywords = "one, two",
                     .company = "P",
                     .created = Date{At(1, 0, 0), true}}));
}

TEST(ArchiveTest, OfHostileArchivesNothingIsMadeUp)
{
    std::vector<Member> many(70'000, {"a", "", false});
    many.push_back({"meta.xml", meta});
    for (const std::vector<Member>& members :
         {{{"meta.xml", meta + std::string(200'000, ' ')}}, // a bomb
          many,
          {{"META-INF/container.xml", "<rootfile full-path='META-INF/container.xml'/>"}},
          {{"meta.xml", std::string(20'000, '<') + "dc:title>T"}}})
        EXPECT_EQ(FactsOf(Zip(members)), Facts{}) << members.front().name;
}

} // namespace
} // namespace documents
