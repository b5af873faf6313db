#include "tests/support/TestMachine.h"

#include "browser/frmOptionsHistory.h"
#include "browser/frmRecentDocuments.h"

#include <algorithm>
#include <functional>

namespace tests {
namespace {

using platform::LocalTime;
using platform::memory::MemoryClock;

class RecentFilesTest : public BrowserTest {
protected:
    std::string Path(int number) { return "C:\\T\\" + std::to_string(number) + ".swt"; }
    browser::RecentFiles Filled(int count)
    {
        Program().state.SettingsAppName = "Tessaly GWX 1.0";
        browser::RecentFiles files{Program().settings, Program().messages};
        for (int i = 1; i <= count; ++i)
            files.AddRecentFileToList(Path(i));
        return files;
    }
};

TEST_F(RecentFilesTest, TheNewestStandsFirstNothingStandsTwiceAndTenAreKept)
{
    PutSetting("Options", "MRUCount", "3");
    browser::RecentFiles files = Filled(12);
    ASSERT_EQ(files.List().size(), 10u);
    EXPECT_EQ(files.List().front() + files.List().back(), Path(12) + Path(3));
    files.AddRecentFileToList("c:\\t\\5.SWT");
    EXPECT_EQ(files.List().size(), 10u);
    EXPECT_EQ(files.List()[8], Path(4));
    for (const char* document : {"C:\\T\\a.doc", "C:\\T\\b.DOC", ".doc"})
        files.AddRecentFileToList(document);
    EXPECT_EQ(files.List().front(), "c:\\t\\5.SWT");
    files.AddRecentFileToList("C:\\T\\a.docx");
    EXPECT_EQ(files.List().front(), "C:\\T\\a.docx");
}

TEST_F(RecentFilesTest, EveryLengthIsStoredAndReadBackButEight)
{
    for (int count = 0; count <= 11; ++count) {
        SCOPED_TRACE(count);
        system.registry.RemoveKey(Hive::CurrentUser, std::string{SettingsKey} + "\\Browser\\Recent Files");
        const browser::RecentFiles files = Filled(count);
        browser::RecentFiles again{Program().settings, Program().messages};
        again.GetRecentFilesFromRegistry();
        Texts expected = files.List();
        if (count == 8)
            expected.erase(expected.begin() + 6); // the eighth took its place
        EXPECT_EQ(again.List(), expected);
    }
}

TEST_F(RecentFilesTest, AListOfEightLeavesTheEighthValueAsItWas)
{
    browser::RecentFiles files = Filled(7);
    PutSetting("Browser\\Recent Files", "File 8", "C:\\T\\old.swt");
    files.AddRecentFileToList(Path(8));
    for (const auto& [value, path] : {std::pair{"File 6", Path(3)}, {"File 7", Path(1)}, {"File 8", "C:\\T\\old.swt"}})
        EXPECT_EQ(Setting("Browser\\Recent Files", value), path);
}

TEST_F(RecentFilesTest, WhatStandsInTheStoreTwiceOrIsNoPathIsLeftOut)
{
    Program().state.SettingsAppName = "Tessaly GWX 1.0";
    const char* stored[] = {"C:\\T\\a.swt", "c:\\t\\A.SWT", "calc.exe", "", "\\\\server\\share\\b.swt"};
    for (std::size_t i = 0; i < std::size(stored); ++i)
        PutSetting("Browser\\Recent Files", "File " + std::to_string(i + 1), stored[i]);
    PutSetting("Browser\\Recent Files", "File 11", "C:\\T\\eleventh.swt");
    browser::RecentFiles files{Program().settings, Program().messages};
    files.GetRecentFilesFromRegistry();
    EXPECT_EQ(files.List(), (Texts{"C:\\T\\a.swt", "\\\\server\\share\\b.swt"}));
}

TEST_F(RecentFilesTest, TheFileMenuListsThemAndOpensThemWithoutMovingThem)
{
    AddTemplates({"Letters\\Q&A.swt"});
    Start();
    EXPECT_FALSE(Item("mnuRecentSeparator").Visible);
    EXPECT_FALSE(Item("mnuFile1").Visible);
    Main().tvTreeView.UserSelects("Letters");
    Main().lvListView.UserActivates(0);
    Main().lvListView.UserActivates(1);
    const Texts both{InLibrary("Letters\\Q&A.swt"), InLibrary("Letters\\Memo.swt")};
    EXPECT_TRUE(Item("mnuRecentSeparator").Visible && Item("mnuRecentSeparator").Separator);
    EXPECT_EQ(Item("mnuFile1").Caption, "1 Q&&A.swt");
    EXPECT_EQ(Item("mnuFile2").Caption, "2 Memo.swt");
    EXPECT_FALSE(Item("mnuFile3").Visible);
    Item("mnuFile2").UserClicks();
    EXPECT_EQ(system.shell.Opened().back(), both[1]);
    EXPECT_EQ(Main().RecentFiles().List(), both);

    system.files.Remove(both[1]);
    toolkit.ExpectMessage("File not found.", Icon::Information);
    Item("mnuFile2").UserClicks();
    toolkit.ExpectMessage("File not found.", Icon::Information);
    system.files.Remove(both[0]);
    Main().lvListView.UserActivates(0);
    EXPECT_EQ(Main().RecentFiles().List(), both);
    Restart();
    EXPECT_EQ(Item("mnuFile2").Caption, "2 Memo.swt");
}

// Recent documents.

TEST(AgeingTest, CountsCalendarMonthsAndLetsTheDayDecideInTheFirstAndTheLast)
{
    const std::tuple<LocalTime, LocalTime, int, bool> cases[] = {
        // clang-format off
        // Twelve months ago: an earlier day of the month is too old, the same day and later ones are not.
        {{2003, 3, 16}, {2004, 3, 17}, 12, true}, {{2003, 3, 17}, {2004, 3, 17}, 12, false},
        {{2003, 3, 31}, {2004, 3, 17}, 12, false}, {{2003, 2, 28}, {2004, 3, 17}, 12, true},
        {{2003, 4, 1}, {2004, 3, 17}, 12, false},
        // Month ends and leap days.
        {{2004, 1, 30}, {2004, 2, 29}, 1, false}, {{2004, 1, 28}, {2004, 2, 29}, 1, true},
        {{2004, 2, 29}, {2004, 3, 31}, 1, true}, {{2004, 2, 29}, {2005, 2, 28}, 12, false},
        {{2003, 2, 28}, {2004, 2, 29}, 12, true}, {{2000, 2, 29}, {2004, 2, 29}, 48, false},
        {{2004, 2, 29}, {2004, 2, 29}, 1, false},
        // Year ends.
        {{2003, 12, 31}, {2004, 1, 1}, 1, false}, {{2003, 12, 31}, {2004, 1, 31}, 1, false},
        {{2003, 11, 30}, {2004, 1, 1}, 1, true}, {{2003, 12, 31}, {2004, 2, 29}, 1, true},
        {{2003, 1, 1}, {2004, 1, 1}, 12, false}, {{2002, 12, 31}, {2004, 1, 1}, 12, true},
        // From the future: later this month and beyond the next year is a wrong clock's.
        {{2004, 3, 18}, {2004, 3, 17}, 12, true}, {{2004, 3, 17}, {2004, 3, 17}, 12, false},
        {{2004, 4, 1}, {2004, 3, 17}, 12, false}, {{2004, 12, 31}, {2004, 12, 30}, 12, true},
        {{2005, 1, 1}, {2004, 12, 31}, 1, false}, {{2005, 12, 31}, {2004, 1, 1}, 12, false},
        {{2006, 1, 1}, {2004, 12, 31}, 12, true}, {{1601, 1, 1}, {2004, 3, 17}, 32767, false},
        // clang-format on
    };
    for (const auto& [document, today, months, isTooOld] : cases)
        EXPECT_EQ(browser::IsTooOld(document, today, months), isTooOld) << testing::PrintToString(
            std::tuple{document.year, document.month, document.day, today.year, today.month, today.day, months});
}

class RecentDocumentsTest : public BrowserTest {
protected:
    const std::string own = std::string{SettingsKey} + "\\Browser\\History List";
    const std::string suite = "Software\\VB and VBA Program Settings\\Tessaly 1.0 GWX\\Browser\\Recent Documents";

    RecentDocumentsTest() { Program().state.SettingsAppName = "Tessaly GWX 1.0"; }
    void AddDocument(const std::string& key, const std::string& path, const std::string& recorded, LocalTime modified)
    {
        system.files.AddFile(path, "text", MemoryClock::At(modified));
        system.registry.PutString(Hive::CurrentUser, key, path, recorded);
    }
    browser::RecentDocuments Documents()
    {
        app::Program& p = Program();
        return {system.registry, p.files, system.clock, p.settings, p.messages, p.strings};
    }
    Texts Paths(const browser::RecentDocuments& documents)
    {
        Texts paths;
        for (const auto& document : documents.List())
            paths.push_back(document.path);
        return paths;
    }
};

TEST_F(RecentDocumentsTest, BothStoresAreReadTheLastRecordedFirst)
{
    AddDocument(own, "C:\\D\\old.ccw", "2004-01-05", {2004, 1, 5});
    AddDocument(own, "C:\\D\\new.ccw", "2004-03-01", {2004, 3, 1});
    AddDocument(suite, "C:\\D\\theirs.doc", "2004-02-01", {2004, 2, 1});
    AddDocument(suite, "c:\\d\\NEW.ccw", "2004-03-02", {2004, 3, 1});
    AddDocument(suite, "C:\\D\\odd.doc", "last week", {2004, 3, 1});
    system.registry.PutString(Hive::CurrentUser, own, "calc.exe", "2004-03-01");
    browser::RecentDocuments documents = Documents();
    for (const char* path : {"C:\\D\\b.ccw", "C:\\D\\c.ccw", "C:\\D\\a.ccw"}) {
        system.files.AddFile(path);
        documents.Add(path);
        system.clock.Sleep(1000);
    }
    documents.GetHistoryListFromRegistry([] {});
    EXPECT_EQ(Paths(documents), (Texts{"C:\\D\\a.ccw", "C:\\D\\c.ccw", "C:\\D\\b.ccw", "C:\\D\\new.ccw",
                                       "C:\\D\\theirs.doc", "C:\\D\\old.ccw", "C:\\D\\odd.doc"}));
    EXPECT_TRUE(documents.Remove("C:\\D\\new.ccw"));
    for (const auto& store : {own, suite})
        EXPECT_EQ(system.registry.StringAt(Hive::CurrentUser, store, "C:\\D\\new.ccw"), "(none)");
    system.registry.SetClosed(Hive::CurrentUser, suite);
    toolkit.ExpectMessage(Text(182), Icon::Critical);
    EXPECT_FALSE(documents.Clear());
    system.registry.SetClosed(Hive::CurrentUser, suite, {});
    EXPECT_TRUE(documents.Clear());
    documents.GetHistoryListFromRegistry([] {});
    EXPECT_EQ(Paths(documents), Texts{});
}

TEST_F(RecentDocumentsTest, WhatIsGoneIsForgottenAndWhatIsAwayAgesByItsRecord)
{
    AddDocument(own, "C:\\D\\here.ccw", "2004-03-09", {2004, 3, 1});
    AddDocument(own, "\\\\server\\live\\here.ccw", "2004-03-08", {2004, 3, 1});
    const std::pair<const char*, const char*> stored[] = {{"C:\\D\\gone.ccw", "2004-03-01"},
                                                          {"C:\\Gone\\gone.ccw", "2004-03-01"},
                                                          {"\\\\server\\live\\gone.ccw", "2004-03-01"},
                                                          {"Q:\\away.ccw", "2004-03-05"},
                                                          {"Q:\\undated.ccw", ""},
                                                          {"Q:\\old.ccw", "2003-03-16"},
                                                          {"\\\\dead\\a\\away.ccw", "2004-03-04"},
                                                          {"\\\\dead\\a\\old.ccw", "2003-03-16"},
                                                          {"\\\\DEAD\\b\\away.ccw", "2004-03-03"}};
    for (const auto& [path, recorded] : stored)
        system.registry.PutString(Hive::CurrentUser, own, path, recorded);
    browser::RecentDocuments documents = Documents();
    system.faults.ForgetCalls();
    documents.GetHistoryListFromRegistry([] {});
    const auto looks = std::ranges::count_if(system.faults.Log(),
                                             [](const std::string& call) { return call.starts_with("FileSystem"); });
    EXPECT_EQ(looks, 2 + 3 + 2 + 2) << "one a document, and two for each that does not answer";
    documents.ValidateFilesFromHistoryList();
    documents.ValidateHistoryTimePeriod();
    documents.ValidateHistoryTimePeriodNew();
    EXPECT_EQ(Paths(documents), (Texts{"C:\\D\\here.ccw", "\\\\server\\live\\here.ccw", "Q:\\away.ccw",
                                       "\\\\dead\\a\\away.ccw", "\\\\DEAD\\b\\away.ccw", "Q:\\undated.ccw"}));
    EXPECT_EQ(system.registry.ValueNames(Hive::CurrentUser, own)->size(), 6u);
}

TEST_F(RecentDocumentsTest, TheOldAreForgottenUnlessTheyWereRecordedLately)
{
    // Today is 2004-03-17.
    AddDocument(own, "C:\\D\\old.ccw", "2003-03-16", {2003, 3, 16});
    AddDocument(own, "C:\\D\\edge.ccw", "2003-03-16", {2003, 3, 17});
    AddDocument(own, "C:\\D\\copied today.ccw", "2004-03-17", {1999, 1, 1});
    AddDocument(own, "C:\\D\\undated.ccw", "", {1999, 1, 1});
    browser::RecentDocuments documents = Documents();
    documents.GetHistoryListFromRegistry([] {});
    documents.ValidateHistoryTimePeriod();
    EXPECT_EQ(Paths(documents), (Texts{"C:\\D\\copied today.ccw", "C:\\D\\edge.ccw"}));
    EXPECT_EQ(system.registry.StringAt(Hive::CurrentUser, own, "C:\\D\\old.ccw"), "(none)");

    for (const auto& [stored, months] :
         {std::pair{"6", 6}, {"", 12}, {"x", 12}, {"0", 1}, {"-5", 1}, {"99999", 32767}}) {
        PutSetting("Options", "History List Time Period", stored);
        EXPECT_EQ(documents.TimePeriod(), months) << stored;
    }
    PutSetting("Options", "History List Time Period", "6");
    documents.ValidateHistoryTimePeriod();
    EXPECT_EQ(Paths(documents), Texts{"C:\\D\\copied today.ccw"});
}

TEST_F(RecentDocumentsTest, TheViewOpensRemovesAndClears)
{
    AddDocument(own, "C:\\D\\a.doc", "2004-03-03", {2004, 3, 3});
    AddDocument(own, "C:\\D\\b.doc", "2004-03-02", {2004, 3, 2});
    AddDocument(own, "C:\\D\\c.doc", "2004-03-01", {2004, 3, 1});
    Start();
    toolkit.OnModal<browser::frmRecentDocuments>("frmRecentDocuments", [&](auto& form) {
        EXPECT_EQ(ListTexts(form.lvDocuments), (Texts{"a.doc", "b.doc", "c.doc"}));
        EXPECT_EQ(form.lvDocuments.GetView(), ui::ListView::View::Details);
        form.mnuViewPopup.Items()[2]->UserClicks();
        EXPECT_EQ(form.lvDocuments.Model()->Text(1, 1), "C:\\D");
        EXPECT_EQ(form.lvDocuments.Model()->Text(1, 2).substr(0, 8), "3/2/2004");
        form.cmdRemove.UserClicks();
        EXPECT_EQ(ListTexts(form.lvDocuments), (Texts{"b.doc", "c.doc"}));
        system.files.Remove("C:\\D\\b.doc");
        toolkit.ExpectMessage("Unable to launch the selected document.", Icon::Information);
        form.lvDocuments.UserActivates(0);
        EXPECT_TRUE(form.IsOpen());
        form.lvDocuments.UserActivates(1);
        EXPECT_FALSE(form.IsOpen());
    });
    Main().Commands().Run("mnuRecentDocuments");
    EXPECT_EQ(system.shell.Opened(), Texts{"C:\\D\\c.doc"});
    EXPECT_EQ(system.registry.StringAt(Hive::CurrentUser, own, "C:\\D\\c.doc"), "2004-03-17 15:04:05");
    EXPECT_EQ(system.registry.StringAt(Hive::CurrentUser, own, "C:\\D\\a.doc"), "(none)");

    for (const Answer answer : {Answer::No, Answer::Yes}) {
        toolkit.OnModal<browser::frmRecentDocuments>("frmRecentDocuments", [&](auto& form) {
            toolkit.ExpectMessage("Are you sure you want to remove all documents from this list? The documents "
                                  "themselves are not deleted.",
                                  Icon::Question, answer);
            EXPECT_EQ(form.lvDocuments.GetView(), ui::ListView::View::List) << "as it was left";
            form.cmdClear.UserClicks();
            EXPECT_EQ(form.lvDocuments.Rows(), answer == Answer::No ? 1 : 0);
            EXPECT_EQ(form.cmdOpen.Enabled(), answer == Answer::No);
            form.cmdClose.UserClicks();
        });
        Main().Commands().Run("mnuRecentDocuments");
    }
    EXPECT_TRUE(system.files.Exists("C:\\D\\c.doc"));
}

TEST_F(RecentDocumentsTest, TheTimePeriodIsSavedByOkAloneAndOnlyWhenItIsANumber)
{
    PutSetting("Help", "Recent Documents HTML", "C:\\Help\\recent.htm");
    Start();
    const auto show = [&](const std::function<void(browser::frmOptionsHistory&)>& act) {
        toolkit.OnModal<browser::frmOptionsHistory>("frmOptionsHistory", act);
        Main().Commands().Run("mnuHistory");
    };
    show([&](auto& form) {
        EXPECT_EQ(form.txtNoOfMonthsForHistoryList.Text(), "12");
        form.UpDownMonths.UserSteps(1);
        form.cmdCancel.UserClicks();
    });
    EXPECT_FALSE(HasSetting("Options", "History List Time Period"));
    show([&](auto& form) {
        for (const char* typed : {"", "x", "0", "-3", "1.5", "32768", "99999"}) {
            toolkit.ExpectMessage("Enter a valid number.", Icon::Information);
            form.txtNoOfMonthsForHistoryList.SetText(typed);
            form.cmdOK.UserClicks();
            EXPECT_TRUE(form.IsOpen() && form.txtNoOfMonthsForHistoryList.HasFocus()) << typed;
        }
        form.txtNoOfMonthsForHistoryList.SetText("32766");
        form.UpDownMonths.UserSteps(1);
        form.UpDownMonths.UserSteps(1);
        toolkit.ExpectMessage("Unable to load the specified help document/URL.", Icon::Information);
        form.cmdHelp.UserClicks();
        form.cmdOK.UserClicks();
    });
    EXPECT_EQ(Setting("Options", "History List Time Period"), "32767");
}

TEST_F(RecentDocumentsTest, TheCopyOfASpreadsheetTemplateIsRecorded)
{
    system.registry.PutString(Hive::LocalMachine, "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\CLC.EXE",
                              "", "C:\\Calc\\clc.exe");
    system.files.AddFile("C:\\Calc\\clc.exe");
    system.files.AddFolder("C:\\Users\\User\\Documents");
    Start();
    Main().tvTreeView.UserSelects("Business");
    Main().fileTypeTabStrip.UserSelects("Excel");
    Main().lvListView.UserSelects(0);
    Main().Commands().Run("mnuFileNew");
    EXPECT_EQ(system.registry.StringAt(Hive::CurrentUser, own, "C:\\Users\\User\\Documents\\Budget.ccw"),
              "2004-03-17 15:04:05");
    EXPECT_EQ(Main().RecentFiles().List(), Texts{InLibrary("Business\\Budget.ccw")});
    Main().lvListView.UserActivates(0);
    EXPECT_EQ(system.registry.ValueNames(Hive::CurrentUser, own)->size(), 1u) << "a template is no document";

    toolkit.OnModal<browser::frmRecentDocuments>("frmRecentDocuments",
                                                 [](auto& form) { form.lvDocuments.UserActivates(0); });
    Main().Commands().Run("mnuRecentDocuments");
    EXPECT_EQ(system.shell.Runs().size(), 3u) << "by its own program, as in the list";
    EXPECT_EQ(system.shell.Opened(), Texts{});
}

} // namespace
} // namespace tests
