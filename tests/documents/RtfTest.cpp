#include "tests/documents/ReadText.h"

namespace documents {
namespace {

/// The title that this information group gives.
std::string Title(std::string_view group)
{
    return FactsOf("{\\rtf1\\ansi{\\fonttbl{\\f0 Arial;}}{\\info" + std::string{group} + "}text}").title;
}

TEST(RtfTest, ReadsTheInformationGroup)
{
    const Facts facts = FactsOf("{\\rtf1\\ansi\\ansicpg1252\\uc1{\\fonttbl{\\f0\\fswiss Title;}}\r\n"
                                "{\\info{\\title A \\{title\\}}{\\subject S}{\\author Ann}{\\manager M}{\\*\\company C}"
                                "{\\operator O}{\\category K}{\\keywords one, two}{\\comment no}{\\doccomm a\\line b}"
                                "{\\creatim\\yr2004\\mo3\\dy7\\hr17\\min7\\sec9}{\\revtim\\yr2004\\mo3\\dy8}\\version1"
                                "{\\nofpages12}{\\nofwords9}}{\\title of the text}}");
    EXPECT_EQ(facts, (Facts{.title = "A {title}",
                            .subject = "S",
                            .author = "Ann",
                            .keywords = "one, two",
                            .comments = "a\nb",
                            .company = "C",
                            .manager = "M",
                            .category = "K",
                            .created = Date{At(67, 17, 7, 9), true},
                            .saved = Date{At(68, 0, 0), true},
                            .pages = 12}));
}

TEST(RtfTest, DecodesCharactersOfEveryKind)
{
    const std::pair<const char*, const char*> cases[] = {
        {"{\\title \\u26085?\\u-10179?\\u-8704?x}", "日😀x"},
        {"{\\title \\uc2\\u26085\\'93\\'fay}", "日y"},
        {"{\\title\\uc0\\u26085 y}", "日y"},
        {"{\\title {\\u26085 }?y}", "日?y"},
        {"{\\title x\\emdash y\\rquote s\\_z\\u8217\\rquote t}", "x—y’s-z’t"},
        {"{\\upr{\\title ?}{\\*\\ud{\\title \\u26085}}}", "日"},
        {"\\uc1{\\upr{\\title ? x}{\\*\\ud\\uc0{\\title \\u26085 x}}}", "日x"},
        {"{\\subject {\\uc2\\u26085 ab}}{\\title \\u26085?xy}", "日xy"},
        {"{\\title one}{\\title two}", "one"},
        {"{\\title \\u55357?a\\u56832?}", "a"},
        {"{\\title a\\~b\\zzz1 c}", "a bc"},
        {"{\\title \\'e4}", "ä"},
        {"{\\title a\\bin3 \\}}b}", "ab"},
    };
    for (const auto& [group, expected] : cases)
        EXPECT_EQ(Title(group), expected) << group;
    EXPECT_EQ(FactsOf("{\\rtf1\\ansi\\ansicpg932{\\info{\\title \\'93\\'fa}}}").title, "日");
}

TEST(RtfTest, OutOfBrokenDocumentsComesWhatWasWhole)
{
    const std::pair<std::string, std::string> cases[] = {
        {"{\\rtf1{\\info{\\title a}{\\subject b", "a"},
        {"{\\rtf1{\\info}{\\title a}}", ""},
        {"{\\rtf1" + std::string(100'000, '{') + "\\info{\\title deep}", "deep"},
        {"{\\rtf1{\\*\\x\\bin2000000000 }{\\info{\\title behind the end}}}", ""},
        {"{\\rtf1\\info{\\title \\u99999999999999999999?a\\", ""},
        {"{\\rtf1{\\info{\\title " + std::string(100'000, 'x') + "}}", std::string(Facts::MostText, 'x')},
    };
    for (const auto& [document, expected] : cases)
        EXPECT_EQ(FactsOf(document).title, expected) << document.substr(0, 60);
    EXPECT_EQ(FactsOf("{\\rtf1{\\info{\\creatim\\yr2004\\mo2\\dy30}}}").created, std::nullopt);
}

} // namespace
} // namespace documents
