#include "PlatformUnderTest.h"

#include "platform/NaturalOrder.h"
#include "platform/Path.h"

#include <gtest/gtest.h>

using namespace platform;

namespace {

class SystemContract : public testing::Test {
protected:
    std::unique_ptr<PlatformUnderTest> under{PlatformUnderTest::Make()};
    Platform system{under->Get()};

    std::string At(std::string_view name) const { return path::Join(under->Folder(), name); }
};

TEST_F(SystemContract, IniFilesGiveTheFirstValueWithoutItsQuotes)
{
    under->WriteFile(At("a.ini"), "; first\r\n[One]\r\nplain = some text \r\nquoted=\" kept \"\r\nsingle='s'\r\n"
                                  "half=\"open\r\nempty=\r\n;out=x\r\ntwice=1\r\ntwice=2\r\n"
                                  "[ Two ]\r\nPlain=two=2\r\n[One]\r\nlater=x\r\n");
    const struct {
        const char *section, *key, *expected;
        int buffer = 2048;
    } rows[] = {
        // clang-format off
        {"One", "plain", "some text"}, {"ONE", "PLAIN", "some text"}, {"One", "quoted", " kept "},
        {"One", "single", "s"},        {"One", "half", "\"open"},     {"One", "empty", ""},
        {"One", "out", ""},            {"One", "twice", "1"},         {"Two", "plain", "two=2"},
        {"Three", "plain", ""},        {"One", "plain", "some", 5},   {"One", "missing", ""},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(system.ini.Read(row.section, row.key, At("a.ini"), row.buffer), row.expected) << row.key;
    EXPECT_EQ(system.ini.Read("One", "plain", At("missing.ini"), 2048), "");
    EXPECT_EQ(system.ini.Read("One", "plain", "a.ini", 2048), "") << "never searched for";
}

TEST_F(SystemContract, ResourceStringsComeFromTheLoadedLibraryCutAtTheBuffer)
{
    ResourceLibrary& resources = system.resources;
    EXPECT_EQ(resources.LoadString(101, 512), "") << "nothing is loaded";
    ASSERT_TRUE(resources.Load(under->ResourceLibraryPath()));
    EXPECT_EQ(resources.LoadString(101, 512), "One");
    EXPECT_EQ(resources.LoadString(102, 512), "Größe €");
    EXPECT_EQ(resources.LoadString(103, 512), std::string(511, 'x'));
    EXPECT_EQ(resources.LoadString(101, 3), "On");
    EXPECT_EQ(resources.LoadString(104, 512), "");
    EXPECT_FALSE(resources.Load(path::Name(under->ResourceLibraryPath()))) << "never searched for";
    EXPECT_EQ(resources.LoadString(101, 512), "") << "the earlier library is released";
    EXPECT_FALSE(resources.Load(At("missing.dll")));
}

TEST_F(SystemContract, OpeningSaysWhatWentWrong)
{
    under->WriteFile(At("a.unknownending"), "x");
    under->WriteFile(At("a.txt"), "x");
    EXPECT_EQ(system.shell.Open(At("a.unknownending"), Verb::Open), 31);
    EXPECT_EQ(system.shell.Open(At("a.txt"), Verb::New), 31) << "a text has no verb for a new one";
    EXPECT_EQ(system.shell.Open(At("missing.txt"), Verb::Open), 2);
}

TEST_F(SystemContract, VariablesAreFilledInAndUnknownOnesStay)
{
    const std::string windows = system.shell.FolderPath(KnownFolder::Windows).value();
    EXPECT_TRUE(path::Same(system.shell.Expanded("%SystemRoot%\\a ü"), windows + "\\a ü"));
    for (const char* text : {"", "50 %", "%TSNoSuchVariable%\\x"})
        EXPECT_EQ(system.shell.Expanded(text), text);
}

TEST_F(SystemContract, ProgramsAreNeverSearchedFor)
{
    const auto codeOf = [&](std::string_view application) {
        const auto started = system.shell.Run(application, "x", WindowStyle::Normal);
        const auto waited = system.shell.RunAndWait(application, "x", WindowStyle::Normal, 1000);
        EXPECT_EQ(waited.has_value(), started.has_value());
        return started ? 0 : started.error().code;
    };
    EXPECT_EQ(codeOf("cmd.exe"), error::InvalidName.code);
    EXPECT_EQ(codeOf(""), error::InvalidName.code);
    EXPECT_EQ(codeOf(At("missing.exe")), error::FileNotFound.code);
}

TEST_F(SystemContract, FoldersByRoleAreAbsoluteWithoutATrailingSeparator)
{
    for (const KnownFolder folder :
         {KnownFolder::Personal, KnownFolder::ProgramFolder, KnownFolder::Windows, KnownFolder::Temporary}) {
        const std::string path = system.shell.FolderPath(folder).value();
        EXPECT_TRUE(path::IsAbsolute(path)) << path;
        EXPECT_EQ(path, path::Normalized(path));
    }
}

TEST_F(SystemContract, FormatsTimesAsTheUserReadsThem) // in the United States, where this test runs
{
    EXPECT_EQ(system.locale.ShortDate({2004, 3, 7, 17, 7, 9}), "3/7/2004");
    const struct {
        int hour, minute;
        const char* expected;
    } rows[] = {{0, 0, "12:00 AM"}, {9, 5, "09:05 AM"}, {12, 30, "12:30 PM"}, {23, 59, "11:59 PM"}};
    for (const auto& row : rows)
        EXPECT_EQ(system.locale.MediumTime({2004, 3, 7, row.hour, row.minute, 0}), row.expected);
    EXPECT_EQ(system.locale.DecimalSeparator(), '.');
}

TEST_F(SystemContract, TextGoesThroughTheOldCodePageUnchangedOrNotAtAll)
{
    for (const char* text : {"", "plain", "Größe é"}) {
        const auto bytes = system.locale.ToAnsi(text);
        ASSERT_TRUE(bytes) << text;
        EXPECT_EQ(system.locale.FromAnsi(*bytes), text);
    }
    for (const char* text : {"日本", "a\u2153", "😀", "\xFF"})
        EXPECT_FALSE(system.locale.ToAnsi(text)) << text;
}

TEST_F(SystemContract, ReadsTextInACodePageByItsNumber)
{
    EXPECT_EQ(system.locale.FromCodePage(1252, "a\xE4 \x80\x93"), "aä €“");
    EXPECT_EQ(system.locale.FromCodePage(65001, "日本"), "日本");
    EXPECT_EQ(system.locale.FromCodePage(1252, ""), "");
    EXPECT_EQ(system.locale.FromCodePage(12345, "a"), std::nullopt);
}

TEST_F(SystemContract, TheSearchFormHasNoCaseAccentsOrWidth)
{
    const struct {
        const char *text, *form;
    } rows[] = {
        // clang-format off
        {"", ""},                     {"Letter 2", "letter 2"},   {"ÄRGER", "arger"},        {"Crème Brûlée", "creme brulee"},
        {"e\u0301", "e"},             {"Żółć", "zołc"},           {"ΆΝΘΡΩΠΟΣ", "ανθρωποσ"},  {"Ёлка", "елка"},
        {"Ｌｅｔｔｅｒ　１", "letter 1"}, {"ﾌﾟﾗﾝ ｶﾞ", "プラン ガ"},     {"プラン", "プラン"},      {"請求書", "請求書"},
        {"한국어", "한국어"},         {"שָׁלוֹם", "שלום"},           {"مُحَمَّد", "محمد"},        {"หนังสือ", "หนังสือ"},
        {"İstanbul", "istanbul"},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(system.locale.SearchForm(row.text), row.form) << row.text;
    const std::string half = "A\xED\xA0\x80"; // a name may hold half a pair
    EXPECT_EQ(system.locale.SearchForm(half), "a\xED\xA0\x80");
}

TEST_F(SystemContract, SortsNamesAsTheUsersLanguageDoes)
{
    const struct {
        const char *a, *b;
        int expected;
    } rows[] = {
        // clang-format off
        {"letter", "LETTER", 0},   {"ärger", "ÄRGER", 0},     {"a", "B", -1},            {"Äpfel", "Banana", -1},
        {"Zebra", "äpfel", 1},     {"a", "ab", -1},           {"_x", "1", -1},           {"1", "a", -1},
        {"", "a", -1},             {"résumé", "resume", 1},   {"resume", "résumés", -1}, {"10", "9", -1},
        // clang-format on
    };
    for (const auto& row : rows) {
        const std::string a = system.locale.SortKey(row.a), b = system.locale.SortKey(row.b);
        EXPECT_EQ((a > b) - (a < b), row.expected) << row.a << " " << row.b;
        EXPECT_TRUE(a == b || a.empty() || !b.starts_with(a)) << "others stand behind a key in a name's";
    }
}

TEST_F(SystemContract, NumbersInNamesCountByTheirValue)
{
    const char* inOrder[] = {
        // clang-format off
        "", "_1", "01", "1", "2", "10", "a", "a 2 b", "a 10 a", "a 10 b", "b", "z2", "z10", "z10 2", "Z010 10",
        "z99999999999999999999", "z100000000000000000000",
        // clang-format on
    };
    const NaturalOrder order{system.locale};
    for (std::size_t i = 0; i < std::size(inOrder); ++i)
        for (std::size_t j = 0; j < std::size(inOrder); ++j) {
            const std::string a = order.KeyOf(inOrder[i]), b = order.KeyOf(inOrder[j]);
            EXPECT_EQ((a > b) - (a < b), (i > j) - (i < j)) << inOrder[i] << " " << inOrder[j];
        }
}

TEST_F(SystemContract, WallClockTimesAreRead)
{
    // Noon of 2004-06-15 UTC; whatever the zone, the minute is in the same hour or shifted by a quarter's multiple.
    const LocalTime local = system.clock.ToLocal(127'317'744'070'000'000);
    EXPECT_EQ(local.year, 2004);
    EXPECT_EQ(local.month, 6);
    EXPECT_NEAR(local.day, 15, 1);
    EXPECT_EQ(local.minute % 15, 0);
    EXPECT_EQ(local.second, 7);
    EXPECT_GT(system.clock.Now(), 127'000'000'000'000'000);
}

TEST_F(SystemContract, OneBrowserAtATime)
{
    ASSERT_TRUE(system.process.ClaimSingleInstance());
    EXPECT_FALSE(system.process.ClaimSingleInstance());
    system.process.ReleaseSingleInstance();
    system.process.ReleaseSingleInstance();
    EXPECT_TRUE(system.process.ClaimSingleInstance());
    system.process.ReleaseSingleInstance();
}

TEST_F(SystemContract, AutomationTellsWhetherAClassCanBeCreated)
{
    EXPECT_EQ(system.automation.TryCreate(GoodClass), Result<>{});
    for (const char* name : {"No.SuchClass", "", "{not a class}"})
        EXPECT_EQ(system.automation.TryCreate(name), Result<>{std::unexpected{error::CannotCreateObject}}) << name;
}

} // namespace
