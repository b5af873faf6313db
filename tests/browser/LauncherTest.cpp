#include "tests/support/TestMachine.h"

namespace tests {
namespace {

using platform::memory::MemoryShell;

constexpr std::string_view AppPath = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\CLC.EXE";
constexpr std::string_view Calcora = "C:\\Program Files\\Calcora\\clc.exe";

class LauncherTest : public ::testing::Test, public TestMachine {
protected:
    app::Program program{system.AsPlatform(), toolkit, pictures};
    browser::Launcher launcher{program.platform.shell, program.files, program.registry, program.messages, toolkit,
                               program.strings,        program.state};
    browser::SpreadsheetFolder spreadsheets{program.files, program.platform.shell, program.registry};
    browser::TemplateOpener opener{launcher, spreadsheets, program.files, program.messages, program.strings};

    LauncherTest() { program.state.ProductCaption = "Desk"; }

    void InstallCalcora()
    {
        system.registry.PutString(Hive::LocalMachine, AppPath, "", Calcora);
        system.files.AddFile(Calcora);
    }
};

constexpr char NotFound[] = "File not found.";
constexpr char NoHelp[] = "Unable to load the specified help document/URL.";

TEST_F(LauncherTest, AFailureIsReportedInTheProgramsWords)
{
    const auto missing = [](const std::string& file, const std::string& program) {
        return "Unable to launch '" + file + "'.\r\n" + program + " is not installed on the system.";
    };
    const struct {
        const char* target;
        int code; ///< what the shell answers
        int result;
        std::string text; ///< "" when it stays silent
    } rows[] = {
        // clang-format off
        {"C:\\T\\a.swt", 2, 1, NotFound}, {"C:\\T\\a.PRT", 3, 1, NotFound}, {"C:\\T\\a.b.ccw", 2, 1, NotFound},
        {"C:\\T\\help.htm", 2, 1, NoHelp}, {"http://nowhere.example/", 3, 1, NoHelp},
        {"C:\\T\\a.swt", 31, 1, missing("a.swt", "Scrivello")}, {"C:\\T\\a.b.ccw", 31, 1, missing("a.b.ccw", "Calcora")},
        {"C:\\T\\a.MST", 31, 1, missing("a.MST", "Vistrel")}, {"C:\\T\\a.prt", 31, 1, missing("a.prt", "Vistrel")},
        {"C:\\x\\report.final.pdf", 31, 1, missing("report.final.pdf", "The associated application")},
        {"C:\\T\\help.htm", 31, 0, ""}, {"C:\\T\\a.swt", 5, 0, ""}, {"C:\\T\\a.swt", 42, 0, ""},
        // clang-format on
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string{row.target} + " " + std::to_string(row.code));
        system.shell.SetOpenResult(row.code);
        if (!std::string_view{row.target}.starts_with("http"))
            system.files.AddFile(row.target);
        toolkit.Messages.clear();
        if (!row.text.empty())
            toolkit.ExpectMessage(row.text, row.code == 31 ? Icon::None : Icon::Information);
        toolkit.SetBusy(true);
        const auto outcome = launcher.Launch({.name = row.target});
        EXPECT_EQ(outcome.result, row.result);
        EXPECT_FALSE(outcome.raised);
        for (const auto& message : toolkit.Messages)
            EXPECT_EQ(message.title, "Desk");
        EXPECT_EQ(toolkit.Messages.empty(), row.text.empty());
        EXPECT_EQ(toolkit.Busy, row.code != 31 || row.result == 0) << "an arrow again before that box shows";
    }
}

TEST_F(LauncherTest, StartsTheSpreadsheetWithItsOwnCommandLine)
{
    InstallCalcora();
    system.shell.SetVariable("ProgramFiles", "C:\\Program Files");
    for (const char* registered : {"C:\\Program Files\\Calcora\\clc.exe", "\"C:\\Program Files\\Calcora\\clc.exe\"",
                                   " \"%programfiles%\\Calcora\\clc.exe\" /x", "%ProgramFiles%\\Calcora\\clc.exe"}) {
        system.registry.PutString(Hive::LocalMachine, AppPath, "", registered);
        system.shell.Forget();
        const auto outcome = launcher.Launch({.name = "C:\\My Templates\\Budget.CCW"});
        EXPECT_TRUE(outcome.opened && outcome.result == 0) << registered;
        EXPECT_EQ(
            system.shell.Runs(),
            (std::vector<MemoryShell::Started>{
                {std::string{Calcora}, "\"C:\\Program Files\\Calcora\\clc.exe\" /+  \"C:\\My Templates\\Budget.CCW\"",
                 platform::WindowStyle::MinimizedFocus}}));
    }
    EXPECT_TRUE(system.shell.Opened().empty());
    system.files.Remove(Calcora);
    toolkit.ExpectMessage(NotFound, Icon::Information);
    EXPECT_EQ(launcher.Launch({.name = "C:\\T\\b.ccw"}).result, 0) << "it is registered, and gone";
}

TEST_F(LauncherTest, WhatTheGateRefusesAndWhatIsGoneIsToldAndNeverReachesTheSystem)
{
    InstallCalcora();
    system.files.AddFile("C:\\T\\evil.exe");
    const std::pair<const char*, const char*> rows[] = {{"C:\\T\\evil.exe", NoHelp},
                                                        {"file:///C:/T/evil.exe", NoHelp},
                                                        {"C:\\T\\gone.htm", NoHelp},
                                                        {"C:\\T\\gone.swt", NotFound},
                                                        {"\\\\elsewhere\\share\\a.ccw", NotFound},
                                                        {"C:\\a\" /run \"C:\\b.ccw", NotFound}};
    for (const auto& [target, message] : rows) {
        toolkit.ExpectMessage(message, Icon::Information);
        EXPECT_EQ(launcher.Launch({.name = target}).result, 1) << target;
    }
    EXPECT_TRUE(system.shell.Opened().empty() && system.shell.Runs().empty());
}

// The spreadsheet's working directory.

constexpr char FileOptions[] = "\\HKEY_CURRENT_USER\\Software\\Quenby\\Calcora\\12\\Properties\\File Options";

TEST_F(LauncherTest, TheWorkingDirectoryIsTheSpreadsheetsOwnWhenItIsAFolder)
{
    system.files.AddFolder("D:\\Sheets");
    system.files.AddFile("D:\\File");
    const std::string documents = "C:\\Users\\User\\Documents";
    const std::pair<const char*, std::string> cases[] = {
        {"D:\\Sheets", "D:\\Sheets"}, {"", documents}, {"D:\\Gone", documents}, {"D:\\File", documents}};
    for (const auto& [stored, expected] : cases) {
        system.registry.PutString(Hive::CurrentUser, std::string_view{FileOptions}.substr(19), "Working Dir", stored);
        spreadsheets.GetQuenbyFileOption(FileOptions, "Working Dir");
        EXPECT_EQ(spreadsheets.WorkingDirectory(), expected) << stored;
    }
}

TEST_F(LauncherTest, CopiesASpreadsheetUnderTheFirstFreeName)
{
    system.files.AddFile("C:\\T\\budget.ccw", "the template");
    for (const char* taken : {"budget.ccw", "Budget1.CCW", "budget3.ccw"})
        system.files.AddFile(std::string{"D:\\Sheets\\"} + taken, "the user's");
    spreadsheets.SetWorkingDirectory("D:\\Sheets");
    EXPECT_EQ(spreadsheets.SaveFile("budget.ccw", "C:\\T"), "D:\\Sheets\\budget2.ccw");
    EXPECT_EQ(system.files.Contents("D:\\Sheets\\budget2.ccw"), "the template");
    EXPECT_EQ(spreadsheets.SaveFile("budget.ccw", "C:\\T"), "D:\\Sheets\\budget4.ccw");
    EXPECT_EQ(system.files.Contents("D:\\Sheets\\budget3.ccw"), "the user's");
    EXPECT_EQ(spreadsheets.SaveFile("letter.swt", "C:\\T"), "");
    // Between the look for a free name and the copy somebody else takes it.
    system.faults.ForgetCalls();
    system.faults.ChangeBefore(8, [this] { system.files.AddFile("D:\\Sheets\\budget5.ccw", "the user's"); });
    EXPECT_EQ(spreadsheets.SaveFile("budget.ccw", "C:\\T"), "D:\\Sheets\\budget6.ccw");
    EXPECT_EQ(system.files.Contents("D:\\Sheets\\budget5.ccw"), "the user's");
}

TEST_F(LauncherTest, NewMakesTheUserWorkOnACopyOfASpreadsheet)
{
    InstallCalcora();
    system.files.AddFolder("D:\\Sheets");
    spreadsheets.SetWorkingDirectory("D:\\Sheets");
    Texts remembered;
    opener.Opened = [&](const std::string& path) { remembered.push_back(path); };

    opener.CreateDocument(InLibrary("Business\\Budget.ccw"));
    ASSERT_EQ(system.shell.Runs().size(), 1u);
    EXPECT_TRUE(system.shell.Runs()[0].commandLine.ends_with("\"D:\\Sheets\\Budget.ccw\""));
    EXPECT_EQ(remembered, Texts{InLibrary("Business\\Budget.ccw")});

    Texts openedThemselves;
    opener.OpenedItself = [&](const std::string& path) { openedThemselves.push_back(path); };
    opener.CreateDocument(InLibrary("Letters\\Memo.swt"));
    EXPECT_EQ(system.shell.Opened(), Texts{InLibrary("Letters\\Memo.swt")});
    EXPECT_EQ(openedThemselves, Texts{InLibrary("Letters\\Memo.swt")});

    system.shell.AddNewVerb(".swt"); // "open" would let the user overwrite the template
    opener.CreateDocument(InLibrary("Letters\\Memo.swt"));
    EXPECT_EQ(system.shell.OpenedForNew(), Texts{InLibrary("Letters\\Memo.swt")});
    EXPECT_EQ(openedThemselves.size(), 1u) << "a fresh document";

    toolkit.ExpectMessage(NotFound, Icon::Information);
    opener.CreateDocument(InLibrary("Business\\Gone.ccw"));
    EXPECT_EQ(system.shell.Runs().size(), 1u);
}

TEST_F(LauncherTest, ANewSpreadsheetIsWritableAndGoesToTheDocumentsWhenItsFolderIsGone)
{
    InstallCalcora();
    system.files.SetAttributes(InLibrary("Business\\Budget.ccw"), platform::attribute::ReadOnly);
    const std::string documents = "C:\\Users\\User\\Documents";
    system.files.AddFolder(documents);
    spreadsheets.SetWorkingDirectory("Q:\\Away");
    opener.CreateDocument(InLibrary("Business\\Budget.ccw"));
    EXPECT_EQ(system.files.Stat(documents + "\\Budget.ccw")->attributes & platform::attribute::ReadOnly, 0u);
    EXPECT_EQ(system.shell.Runs().size(), 1u);
}

TEST_F(LauncherTest, ANewDocumentThatDoesNotOpenLeavesNothingBehind)
{
    system.files.AddFolder("D:\\Sheets");
    spreadsheets.SetWorkingDirectory("D:\\Sheets");
    system.files.SetAttributes(InLibrary("Business\\Budget.ccw"), platform::attribute::ReadOnly);
    opener.Opened = opener.Created = [](const std::string& path) { ADD_FAILURE() << path; };
    const std::function<void()> faults[] = {
        [&] { // no spreadsheet
            toolkit.ExpectMessage("Unable to launch 'Budget.ccw'.\r\nCalcora is not installed on the system.",
                                  Icon::None);
        },
        [&] { // registered, and gone
            system.registry.PutString(Hive::LocalMachine, AppPath, "", Calcora);
            toolkit.ExpectMessage(NotFound, Icon::Information);
        },
        [&] { // it does not start
            system.files.AddFile(Calcora);
            system.shell.OnRun(
                [](const auto&) { return platform::Result<>{std::unexpected{platform::error::DiskFull}}; });
            toolkit.ExpectMessage("Unable to launch 'Budget.ccw'. Please check if the associated application to launch "
                                  "the file is installed on the machine and try again",
                                  Icon::Information);
        },
    };
    for (const auto& fault : faults) {
        fault();
        opener.CreateDocument(InLibrary("Business\\Budget.ccw"));
        EXPECT_EQ(system.files.AllPaths("D:\\Sheets"), Texts{});
    }
    system.shell.SetOpenResult(5); // a failure that stays silent
    opener.CreateDocument(InLibrary("Letters\\Memo.swt"));
}

} // namespace
} // namespace tests
