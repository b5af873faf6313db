#include "platform/Text.h"

#include "platform/Utf.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

using namespace platform;
using testing::ElementsAre;

TEST(TextTest, TrimsBlanksOnlySplitsAndReplaces)
{
    EXPECT_EQ(text::Trimmed("  a b\t "), "a b\t");
    EXPECT_EQ(text::Trimmed("   "), "");
    EXPECT_THAT(text::Split("a||b|", '|'), ElementsAre("a", "", "b", ""));
    EXPECT_THAT(text::Split("", '|'), ElementsAre(""));
    EXPECT_EQ(text::Replaced("aaa", "a", "aa"), "aaaaaa");
    EXPECT_EQ(text::Replaced("x&y&", "&", ""), "xy");
}

TEST(TextTest, FoldsTheLettersOfFourScripts)
{
    EXPECT_EQ(text::Folded("ABCXYZ[_"), "abcxyz[_");
    EXPECT_EQ(text::Folded("ÀÖ×ØÞß ĀŽŸ ΑΩΆΏ АЯЁ ԱՖ ẠỸ Ⱥ"), "àö×øþß āžÿ αωάώ аяё աֆ ạỹ ⱥ");
    EXPECT_EQ(text::Folded("İıſς中😀"), "İıſς中😀") << "no simple small letter of their own";
    EXPECT_EQ(text::Folded("A\xC3(\xFF"), "a\xC3(\xFF") << "malformed bytes stay";
}

TEST(TextTest, FoldingNeverJoinsTwoCapitals)
{
    std::set<std::string> seen;
    for (char32_t c = 'A'; c < 0x2000; ++c) {
        std::string letter;
        utf::Append(letter, c);
        const std::string folded = text::Folded(letter);
        if (folded == letter)
            continue;
        EXPECT_EQ(text::Folded(folded), folded) << letter;
        const bool titleCase = c == 0x1C5 || c == 0x1C8 || c == 0x1CB || c == 0x1F2; // "Dž" between "DŽ" and "dž"
        EXPECT_TRUE(seen.insert(folded).second || titleCase) << letter;
    }
    EXPECT_GT(seen.size(), 500u);
}

TEST(TextTest, ComparesWithoutCase)
{
    EXPECT_TRUE(text::EqualIgnoringCase("STRASSE Ä", "strasse ä"));
    EXPECT_FALSE(text::EqualIgnoringCase("a", "ab"));
    EXPECT_FALSE(text::EqualIgnoringCase("ab", "a"));
    EXPECT_FALSE(text::EqualIgnoringCase("\xFF", "\xFE"));
    EXPECT_FALSE(text::EqualIgnoringCase("\xFF", "\xEF\xBF\xBD"));
    EXPECT_TRUE(text::ContainsIgnoringCase("Über alles", "ER A"));
    EXPECT_TRUE(text::EndsWithIgnoringCase("a.SWT", ".swt"));
    EXPECT_FALSE(text::EndsWithIgnoringCase("a.swtx", ".swt"));
}

TEST(TextTest, CountsInUnitsOfTheSystemsBuffers)
{
    const struct {
        const char* text;
        std::size_t length, units;
        const char* left;
    } rows[] = {
        // clang-format off
        {"abc", 3, 2, "ab"},            {"aü€", 3, 2, "aü"},            {"a😀b", 4, 2, "a"},
        {"a😀b", 4, 3, "a😀"},            {"\xFF\xC3", 2, 1, "\xFF"},     {"", 0, 5, ""},
        {"\xE2\x82", 2, 9, "\xE2\x82"},
        // clang-format on
    };
    for (const auto& row : rows) {
        EXPECT_EQ(text::Length(row.text), row.length) << row.text;
        EXPECT_EQ(text::Left(row.text, row.units), row.left) << row.text;
    }
}

TEST(TextTest, KnowsNumbers)
{
    for (const char* number : {"2004", " 12 ", "-1", "1-", "+ 3", "1.5", ".5", "5.", "0"})
        EXPECT_TRUE(text::IsNumeric(number)) << number;
    for (const char* other : {"", " ", "-", ".", "1.2.3", "-1-", "--1", "1 2", "1e5", "a", "1a", "1,5", "\t1"})
        EXPECT_FALSE(text::IsNumeric(other)) << other;
    EXPECT_TRUE(text::IsNumeric("1,5", ','));
    EXPECT_FALSE(text::IsNumeric("1.5", ','));
}

TEST(TextTest, ReadsSettingsIntoTheirRange)
{
    const struct {
        const char* text;
        int expected;
    } rows[] = {
        // clang-format off
        {"7", 7},                       {" 8 ", 8},                     {"+9", 9},
        {"-5", -5},                     {"12px", 12},                   {"", 3},
        {"abc", 3},                     {"--4", 3},                     {"- 4", 3},
        {"0x10", 0},                    {"100", 50},                    {"-100", -10},
        {"99999999999999999999", 50},   {"-99999999999999999999", -10},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(text::ToInt(row.text, 3, -10, 50), row.expected) << row.text;
    EXPECT_EQ(text::ToInt("", 99, 0, 50), 50) << "the default too";
}

TEST(TextTest, ReadsBooleans)
{
    for (const char* yes : {"True", "TRUE", " true ", "1", "-1", "0.5"})
        EXPECT_TRUE(text::ToBool(yes, false)) << yes;
    for (const char* no : {"False", "fALSE", "0", "0.0", "-0"})
        EXPECT_FALSE(text::ToBool(no, true)) << no;
    for (const char* other : {"", "yes", "Tru", "1a"}) {
        EXPECT_TRUE(text::ToBool(other, true)) << other;
        EXPECT_FALSE(text::ToBool(other, false)) << other;
    }
}

TEST(UtfTest, EveryUtf16TextComesBackUnchanged)
{
    for (const std::u16string& sample :
         {std::u16string{u"aü€中😀"}, std::u16string{0xD800, u'a'}, std::u16string{u'a', 0xDC00, 0xD800},
          std::u16string{0xDBFF, 0xDFFF}, std::u16string{u'\0', 0xFFFF}}) {
        const std::string bytes = utf::ToUtf8<char16_t>(sample);
        EXPECT_EQ(utf::ToUtf16<char16_t>(bytes), sample);
        EXPECT_EQ(text::Length(bytes), sample.size());
    }
}

TEST(UtfTest, MalformedBytesBecomeOneReplacementEach)
{
    for (const char* bytes :
         {"\x80", "\xC0\xAF", "\xE0\x80\x80", "\xF4\x90\x80\x80", "\xF8", "\xE2\x82", "\xF0\x9F\x98"})
        EXPECT_EQ(utf::ToUtf16<char16_t>(bytes), std::u16string(std::string_view{bytes}.size(), 0xFFFD)) << bytes;
}
