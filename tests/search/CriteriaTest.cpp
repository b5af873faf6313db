// Conditions on what documents say of themselves.
#include "tests/support/TestMachine.h"

#include "documents/Dates.h"
#include "search/Criteria.h"

namespace tests {
namespace {

using search::Condition;
using search::Criteria;
using enum search::Condition;

class CriteriaTest : public testing::Test, public TestMachine {
protected:
    /// 'y', 'n', or '?' when they are incomplete.
    char Ask(std::size_t property, Condition condition, const char* value, const documents::Facts& facts)
    {
        const auto criteria = Criteria::Of(search::Properties.at(property), condition, value, system.locale);
        return !criteria ? '?' : criteria->Fits(facts, system.clock, system.locale) ? 'y' : 'n';
    }
};

TEST_F(CriteriaTest, EachConditionHoldsForTheTextsThatItSays)
{
    const struct {
        Condition condition;
        const char *value, *text;
        char answer;
    } rows[] = {
        // clang-format off
        {BeginsWith, "the ANNUAL", "The annual report", 'y'}, {BeginsWith, "annual", "The annual report", 'n'},
        {EndsWith, "Report", "The annual report", 'y'},       {EndsWith, "annual", "The annual report", 'n'},
        {Contains, "nual rep", "The annual report", 'y'},     {Contains, "manual", "The annual report", 'n'},
        {Contains, "grusse", "Viele Grüße", 'y'},             {Contains, "請求", "東京都請求書", 'y'},
        {IncludesWords, "report annual", "The annual report", 'y'},
        {IncludesWords, "report annua", "The annual report", 'n'},
        {IncludesPhrases, "annual report", "The annual report", 'y'},
        {IncludesPhrases, "report annual", "The annual report", 'n'},
        {IncludesPhrases, "nual report", "The annual report", 'n'},
        {Equals, "the annual report", "The annual report", 'y'}, {Equals, "the annual", "The annual report", 'n'},
        {Contains, "x", "", 'n'},                             {Contains, "", "text", '?'}, {Contains, "  ", "text", '?'},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(Ask(0, row.condition, row.value, {.title = row.text}), row.answer) << row.value << " | " << row.text;
}

TEST_F(CriteriaTest, EachPropertyIsItsOwn)
{
    documents::Facts facts{"title", "subject", "author", "keywords", "comments", "company", "manager", "category"};
    const char* words[] = {"title", "subject", "author", "company", "category", "keywords", "comments", "", "manager"};
    for (std::size_t property = 0; property < search::Properties.size(); ++property)
        for (std::size_t word = 0; word < std::size(words); ++word) {
            if (*words[word] == '\0' || *words[property] == '\0')
                continue; // the date
            EXPECT_EQ(Ask(property, Equals, words[word], facts), property == word ? 'y' : 'n') << words[word];
        }
}

TEST_F(CriteriaTest, DaysAreTheUsersOwn)
{
    system.clock.SetOffsetMinutes(120);
    constexpr std::size_t creationDate = 7;
    // Late in the evening of UTC, which is the next day here.
    const documents::Facts utc{.created = documents::ParseIsoDate("2004-03-07T23:30:00Z")};
    const documents::Facts local{.created = documents::ParseIsoDate("2004-03-07T23:30:00")};
    const struct {
        Condition condition;
        const char* value;
        char ofUtc, ofLocal;
    } rows[] = {{Equals, "3/8/2004", 'y', 'n'},       {Equals, "3/7/04", 'n', 'y'},    {Equals, "2004-03-08", 'y', 'n'},
                {IsBefore, "3/8/2004", 'n', 'y'},     {IsAfter, "3/7/2004", 'y', 'n'}, {IsAfter, "3/8/2004", 'n', 'n'},
                {Equals, "soon", '?', '?'},           {Equals, "2/30/2004", '?', '?'}, {Equals, "3/2004", '?', '?'},
                {Equals, "99999999999/1/1", '?', '?'}};
    for (const auto& row : rows) {
        EXPECT_EQ(Ask(creationDate, row.condition, row.value, utc), row.ofUtc) << row.value;
        EXPECT_EQ(Ask(creationDate, row.condition, row.value, local), row.ofLocal) << row.value;
    }
    EXPECT_EQ(Ask(creationDate, IsBefore, "3/8/2004", {}), 'n') << "it does not say";
}

TEST_F(BrowserTest, TheLastCriteriaAreRememberedWhateverStandsInTheRegistry)
{
    Start();
    auto& settings = Program().settings;
    for (const bool value : {true, false}) {
        ASSERT_TRUE(search::Save({value, 7, IsAfter, "1/2/2004", value, !value, value}, settings));
        const search::Remembered read = search::ReadRemembered(settings);
        EXPECT_EQ(read.isSelectedCategory, value);
        EXPECT_EQ(read.property, 7U);
        EXPECT_EQ(read.condition, IsAfter);
        EXPECT_EQ(read.value, "1/2/2004");
        EXPECT_EQ(read.excel, !value);
    }
    EXPECT_EQ(Setting("Browser\\Find", "FolderSelected"), "All Categories");
    EXPECT_EQ(Setting("Browser\\Find", "Property"), "Creation date");
    EXPECT_EQ(Setting("Browser\\Find", "Condition"), "Is after");
    EXPECT_EQ(Setting("Browser\\Find", "MSOApplicationWord"), "False");
    PutSetting("Browser\\Find", "Property", "Keywords"); // of which no day is asked
    EXPECT_EQ(search::ReadRemembered(settings).condition, BeginsWith);
    PutSetting("Browser\\Find", "Property", "x");
    EXPECT_EQ(search::ReadRemembered(settings).property, 0U);
}

} // namespace
} // namespace tests
