#include "profiles/frmProfileInformation.h"
#include "tests/support/TestMachine.h"

#include "platform/Text.h"

namespace tests {
namespace {

const std::string CannotRun = "The application is currently unable to run.\r\nPlease reinstall the application.";

class StartUpTest : public BrowserTest {
protected:
    void SetTemplatesPath(std::string_view path) { PutSetting("Browser", "HDD Templates Path", path); }
};

TEST_F(StartUpTest, OpensTheMainWindowAndRemembersItsCaption)
{
    EXPECT_EQ(browser.Start("WORD", "two", "three", "four", "  My Desk "), "");

    ASSERT_TRUE(browser.IsRunning());
    EXPECT_TRUE(Main().IsVisible());
    EXPECT_EQ(Main().Caption(), "My Desk");
    EXPECT_EQ(toolkit.Find("frmTSOCXLoadProgressIndicator"), nullptr);
    const auto& state = Program().state;
    EXPECT_EQ(state.HostKind, "WORD");
    EXPECT_EQ(state.StartArg2 + state.StartArg3 + state.StartArg4, "twothreefour");
    EXPECT_TRUE(state.MainLoaded && state.BrowserReady);
    EXPECT_EQ(Setting("Customization", "ApplicationName"), "My Desk");
    Restart("   ");
    EXPECT_EQ(Program().state.ProductCaption, "Tessaly Desk");
}

TEST_F(StartUpTest, IsRefusedWhileAnotherProcessHasABrowser)
{
    system.process.HoldByAnotherProcess(true);
    const auto registry = system.registry.Snapshot();
    toolkit.ExpectMessage(Text(140), Icon::Information);

    Start("My Desk");

    EXPECT_EQ(toolkit.Messages.at(0).title, "My Desk");
    EXPECT_TRUE(toolkit.OtherInstanceShown);
    EXPECT_FALSE(browser.IsRunning());
    EXPECT_EQ(system.registry.Snapshot(), registry);
}

TEST_F(StartUpTest, ASecondStartInTheSameProcessChangesNothing)
{
    const auto startAgain = [&] {
        toolkit.ExpectMessage(Text(140), Icon::Information);
        browser.Start("HOST", "a", "b", "c", "Second");
        EXPECT_EQ(Program().state.ProductCaption + Program().state.HostKind, "FirstEXE");
    };
    toolkit.OnYield = [&](int yield) {
        if (yield == 9) // in the middle of the load
            startAgain();
    };
    Start("First");
    EXPECT_EQ(toolkit.Messages.size(), 1u);
    startAgain();
    EXPECT_TRUE(Main().IsVisible() && Main().Close());
    EXPECT_TRUE(browser.IsRunning()) << "the window's own handlers are still on the stack";
    toolkit.RunPosted();
    EXPECT_FALSE(browser.IsRunning() || system.process.IsClaimed());
}

TEST_F(StartUpTest, TheOfficeGenerationIsComparedLetterForLetter)
{
    const std::pair<const char*, bool> rows[] = {{"2K", true},  {"97", true},    {"XP", true},   {"11", true},
                                                 {"xp", false}, {"2003", false}, {"XP ", false}, {"", false}};
    for (const auto& [value, accepted] : rows) {
        SCOPED_TRACE(value);
        PutSetting("Options", "MSOVersion", value);
        if (!accepted)
            toolkit.ExpectMessage(CannotRun, Icon::Critical);
        Restart();
        EXPECT_EQ(browser.Main() != nullptr, accepted);
        EXPECT_EQ(Program().state.MsoVersion, accepted ? value : "");
    }
}

TEST_F(StartUpTest, WithoutAnOfficeGenerationOnlyThePdfConverterIsSeenTo)
{
    system.registry.RemoveKey(Hive::CurrentUser, std::string{SettingsKey} + "\\Options");
    PutSetting("Options", "Installed Path", "C:\\Desk");
    system.files.AddFile("C:\\Desk\\PDF Component\\Install.exe");
    system.automation.Register("CDIntf.CDIntf", std::unexpected{platform::error::CannotCreateObject});
    toolkit.ExpectMessage(CannotRun, Icon::Critical);

    int ended = 0;
    browser.Closed = [&] { ++ended; };
    Start();
    toolkit.RunPosted();

    EXPECT_TRUE(toolkit.Forms().empty());
    EXPECT_EQ(system.shell.Runs().size(), 1u);
    EXPECT_EQ(Setting("Customization", "ApplicationName"), "Tessaly Desk");
    EXPECT_EQ(ended, 1) << "a process without a window has nothing to stay for";
}

TEST_F(StartUpTest, ThePdfConverterIsInstalledSilentlyOnlyWhenItsClassIsMissing)
{
    const std::string installer = "C:\\My Desk\\PDF Component\\Install.exe";
    PutSetting("Options", "Installed Path", "C:\\My Desk");
    system.files.AddFile(installer);
    const std::pair<platform::Result<>, std::size_t> rows[] = {
        {{}, 0},
        {std::unexpected{platform::error::AccessDenied}, 0},
        {std::unexpected{platform::error::CannotCreateObject}, 1},
        {std::unexpected{platform::error::AutomationModuleNotFound}, 2}};
    for (const auto& [outcome, runs] : rows) {
        system.automation.Register("CDIntf.CDIntf", outcome);
        Restart();
        ASSERT_EQ(system.shell.Runs().size(), runs);
    }
    EXPECT_EQ(system.shell.Runs()[0],
              (platform::memory::MemoryShell::Started{installer, "\"" + installer + "\" \"TSPro 3.0 PDF Converter\" /s",
                                                      platform::WindowStyle::MinimizedFocus}));

    system.shell.OnRun([](const auto& program) {
        return program.elevated ? platform::Result<>{} : std::unexpected{platform::error::ElevationRequired};
    });
    Restart();
    ASSERT_EQ(system.shell.Runs().size(), 4u) << "one that needs an administrator is started again as one";
    EXPECT_TRUE(system.shell.Runs()[3].elevated);
    EXPECT_EQ(system.shell.Runs()[3].commandLine, system.shell.Runs()[0].commandLine);
}

TEST_F(StartUpTest, KeepsTheTemplatesPathWithOneMoreSeparator)
{
    const std::pair<const char*, const char*> paths[] = {{"C:\\Templates", "C:\\Templates\\"},
                                                         {"C:\\Templates\\", "C:\\Templates\\\\"}};
    for (const auto& [stored, expected] : paths) {
        SetTemplatesPath(stored);
        Restart();
        EXPECT_EQ(Program().state.TemplatesPath, expected);
        EXPECT_NE(Main().tvTreeView.Find("Letters\\Formal"), nullptr);
    }
}

TEST_F(StartUpTest, ReadsFromTheCdUnlessTheHardDiskIsChosen)
{
    system.files.AddFile("D:\\Cd\\Cards\\Birthday.swt");
    PutSetting("Browser", "CDROM Templates Path", "D:\\Cd");
    for (const char* value : {"False", "garbage", ""}) {
        PutSetting("Browser", "Access HDD_Templates", value);
        Restart();
        EXPECT_NE(Main().tvTreeView.Find("Cards"), nullptr) << value;
    }
}

TEST_F(StartUpTest, CountsTheLoadInTheProductsWordsAndNeverPastAHundred)
{
    for (int i = 0; i < 150; ++i)
        AddTemplates({"Category " + std::to_string(i) + "\\A.swt"});
    Texts labels;
    toolkit.OnYield = [&](int) {
        auto* form = dynamic_cast<app::frmTSOCXLoadProgressIndicator*>(toolkit.Find("frmTSOCXLoadProgressIndicator"));
        if (form != nullptr && (labels.empty() || labels.back() != form->lblProgress.Caption()))
            labels.push_back(form->lblProgress.Caption());
        if (form != nullptr)
            form->UserCloses(); // in vain
    };
    Start();
    ASSERT_EQ(labels.size(), 101u);
    EXPECT_EQ(labels[7], "Please wait while the Tessaly Desk Browser loads - 7% done.");
    EXPECT_EQ(labels.back(), "Please wait while the Tessaly Desk Browser loads - 100% done.");
}

TEST_F(StartUpTest, TakesItsPicturesFromTheSupportFolder)
{
    const std::string support = "C:\\Program Files\\Template Browser\\Support";
    system.files.AddFile(support + "\\Support.ini",
                         "[Tessaly Desk]\r\nIcon_16x16=small.ico\r\nIcon_32x32=large.ico\r\nSplash_IMG=gone.bmp\r\n"
                         "[Other]\r\nIcon_16x16=other.ico\r\n");
    for (const char* icon : {"small.ico", "large.ico", "other.ico"})
        system.files.AddFile(support + "\\" + icon);
    std::string progressIcon;
    bool splashShown = true;
    toolkit.OnYield = [&](int) {
        if (auto* form =
                dynamic_cast<app::frmTSOCXLoadProgressIndicator*>(toolkit.Find("frmTSOCXLoadProgressIndicator"))) {
            progressIcon = form->IconFile();
            splashShown = form->imgSplash.Visible();
        }
    };
    Start();
    EXPECT_EQ(Main().IconFile(), support + "\\small.ico");
    EXPECT_EQ(progressIcon, support + "\\large.ico");
    EXPECT_FALSE(splashShown) << "a picture that is not there leaves no hole";
    Restart("Other");
    EXPECT_EQ(Main().IconFile(), support + "\\other.ico");
}

TEST_F(StartUpTest, AskedToCloseInTheMiddleOfTheLoadItEndsWithoutATrace)
{
    bool acted = false;
    toolkit.OnYield = [&](int) {
        if (browser.Main() != nullptr && browser.Main()->Library().Loading() && !std::exchange(acted, true))
            browser.Main()->UserCloses();
    };
    int ended = 0;
    browser.Closed = [&] { ++ended; };
    Start();
    toolkit.RunPosted();
    EXPECT_TRUE(acted);
    EXPECT_FALSE(HasSetting("Customization", "ApplicationName"));
    EXPECT_FALSE(HasSetting("Browser", "MainLeft"));
    EXPECT_EQ(browser.Main(), nullptr);
    EXPECT_EQ(ended, 1);
}

TEST_F(StartUpTest, TheFindPaneThatIsOpenedInTheMiddleOfTheLoadStays)
{
    bool acted = false;
    toolkit.OnYield = [&](int) {
        if (browser.Main() != nullptr && browser.Main()->Library().Loading() && !std::exchange(acted, true))
            browser.Main()->Commands().Run("mnuEditFind");
    };
    Start();
    EXPECT_TRUE(acted && Main().Find().IsOpen());
    Main().findControls.cmdClose.UserClicks();
    EXPECT_FALSE(Main().Find().IsOpen());
}

// The templates path cannot be read.

TEST_F(StartUpTest, ATemplatesPathThatCannotBeReadIsExplainedAndCancelQuits)
{
    const struct {
        const char *hddAccess, *path;
        int reason;
    } rows[] = {{"True", "Q:\\Templates", 272},
                {"False", "Q:\\Templates", 336},
                {"True", "Templates", 273},
                {"True", "", 512},
                {"False", "", 512}};
    int ended = 0;
    browser.Closed = [&] { ++ended; };
    for (const auto& row : rows) {
        PutSetting("Browser", "Access HDD_Templates", row.hddAccess);
        PutSetting("Browser", "HDD Templates Path", row.path);
        PutSetting("Browser", "CDROM Templates Path", row.path);
        toolkit.OnModal<app::frmTemplatesPath>("frmTemplatesPath", [&](auto& dialog) {
            EXPECT_EQ(dialog.Caption(), Text(339));
            EXPECT_TRUE(dialog.lblReason.Caption().starts_with(Text(row.reason))) << dialog.lblReason.Caption();
            dialog.cmdCancel.UserClicks();
        });
        Restart();
    }
    End();
    EXPECT_EQ(browser.Main(), nullptr);
    EXPECT_FALSE(HasSetting("Customization", "ApplicationName"));
    EXPECT_EQ(ended, 5);
}

TEST_F(StartUpTest, TheMainWindowStaysUntilItsLoadIsDoneWhenTheSessionEndsInTheMiddle)
{
    SetTemplatesPath("E:\\Library");
    toolkit.OnModal("frmTemplatesPath", [&](ui::Form& form) {
        toolkit.Find("frmMain")->UserCloses();
        toolkit.RunPosted();
        EXPECT_NE(browser.Main(), nullptr);
        system.files.AddFile("E:\\Library\\Cards\\Birthday.swt");
        dynamic_cast<app::frmTemplatesPath&>(form).cmdRetry.UserClicks();
    });
    Start();
    toolkit.RunPosted();
    EXPECT_EQ(browser.Main(), nullptr);
    EXPECT_FALSE(browser.IsRunning());
}

TEST_F(StartUpTest, ANewPathIsStoredForTheLocationInUse)
{
    for (const bool hdd : {true, false}) {
        SCOPED_TRACE(hdd);
        PutSetting("Browser", "Access HDD_Templates", hdd ? "True" : "False");
        PutSetting("Browser", "HDD Templates Path", "Q:\\Old");
        PutSetting("Browser", "CDROM Templates Path", "R:\\Old");
        system.files.AddFile("C:\\Windows\\Fonts\\readme.txt");
        system.files.AddFile("C:\\Windows\\A\\B\\C\\D\\E\\deeper than the walk.swt");
        system.files.AddFile("C:\\Windows\\of no category.swt");
        system.files.AddFolder("C:\\Windows\\Empty");
        toolkit.FolderChoices = {std::nullopt, "S:\\NotThere", "C:\\Windows", std::string{Templates}};
        toolkit.ExpectMessage(Text(338), Icon::Information);
        toolkit.ExpectMessage(Text(338), Icon::Information);
        toolkit.OnModal<app::frmTemplatesPath>("frmTemplatesPath", [&](auto& dialog) {
            dialog.cmdRetry.UserClicks(); // which changes nothing
            dialog.cmdNew.UserClicks();   // the user gives the folder chooser up
            EXPECT_TRUE(dialog.IsOpen());
            dialog.cmdNew.UserClicks(); // and now chooses a folder that is gone
            EXPECT_TRUE(dialog.IsOpen());
            dialog.cmdNew.UserClicks(); // or is no library
            EXPECT_TRUE(Setting("Browser", hdd ? "HDD Templates Path" : "CDROM Templates Path").ends_with("Old"));
            dialog.cmdNew.UserClicks();
        });
        Restart();
        EXPECT_NE(Main().tvTreeView.Find("Letters"), nullptr);
        EXPECT_EQ(Setting("Browser", "HDD Templates Path"), hdd ? "C:\\Templates" : "Q:\\Old");
        EXPECT_EQ(Setting("Browser", "CDROM Templates Path"), hdd ? "R:\\Old" : "C:\\Templates");
        EXPECT_TRUE(system.files.Exists("C:\\Windows\\Empty"));
    }
}

TEST_F(StartUpTest, ALibraryWithoutTemplatesIsAskedAboutOnceAndAnotherOneCanBeChosen)
{
    const std::string question = "There are no templates in 'E:\\Pictures'. Do you want to choose another folder?";
    SetTemplatesPath("E:\\Pictures");
    system.files.AddFile("E:\\Pictures\\Summer\\beach.jpg");
    for (const bool first : {true, false}) {
        Restart();
        if (first)
            toolkit.ExpectMessage(question, Icon::Question, Answer::No);
        toolkit.RunPosted();
    }
    toolkit.FolderChoices = {std::string{Templates}};
    EXPECT_TRUE(Main().Commands().Run("mnuTemplatesPath"));
    EXPECT_EQ(Setting("Browser", "HDD Templates Path"), "C:\\Templates");
    EXPECT_NE(Main().tvTreeView.Find("Letters\\Formal"), nullptr);
}

TEST_F(StartUpTest, AnEmptyLibraryLeavesTheWindowOpenAndEmpty)
{
    SetTemplatesPath("C:\\Empty");
    system.files.AddFolder("C:\\Empty");
    PutSetting("Browser", "OpenFolders", "Letters");
    toolkit.ExpectMessage(Text(279), Icon::Critical);
    Start();
    EXPECT_TRUE(Main().IsVisible());
    EXPECT_EQ(Main().tvTreeView.Count(), 0u);
    EXPECT_EQ(Main().lvListView.Rows(), 0);
    EXPECT_TRUE(Main().Library().NoFoldersFound);
    End();
    EXPECT_EQ(Setting("Browser", "OpenFolders"), "Letters") << "for the day when it answers";
}

TEST_F(StartUpTest, EveryStartOfAProcessReadsTheSettingsThatTheResourceLibraryNames)
{
    system.resources.Add("C:\\Program Files\\Template Browser\\TS_RES.dll",
                         {{360, "Desk"}, {362, "Other"}, {364, "\\HKEY_CURRENT_USER\\Software\\Elsewhere"}});
    const std::string other = "Software\\VB and VBA Program Settings\\Other\\";
    for (const auto& [section, key, value] :
         {std::array{"Options", "MSOVersion", "XP"}, std::array{"Profiles", "FirstRun", "0"},
          std::array{"Browser", "Access HDD_Templates", "True"},
          std::array{"Browser", "HDD Templates Path", "C:\\Templates"}})
        system.registry.PutString(Hive::CurrentUser, other + section, key, value);
    for (const char* favorite : {"Business\\Budget.ccw", "Letters\\Memo.swt"}) {
        Restart();
        EXPECT_EQ(Program().state.ProductCaption, "Desk");
        EXPECT_EQ(Program().state.SettingsAppName, "Other");
        const auto found = Main().Favorites().FavoritesList().size();
        system.registry.PutString(Hive::CurrentUser, other + "Browser\\Favorites", favorite, "");
        EXPECT_EQ(found, favorite == std::string_view{"Letters\\Memo.swt"} ? 1u : 0u);
    }
}

// The invitation to enter a profile.

class FirstRunTest : public BrowserTest {
protected:
    FirstRunTest() { PutSetting("Profiles", "FirstRun", ""); }
    void OnPrompt(const std::function<void(profiles::frmProfileInformation&)>& act)
    {
        toolkit.OnModal<profiles::frmProfileInformation>("frmProfileInformation", act);
    }
};

TEST_F(FirstRunTest, AsksAfterEachStartUntilTheUserDoesNotWantToBeAsked)
{
    const struct {
        bool dontRemind, edit, closeBox;
    } rows[] = {{false, false, false}, {false, true, false}, {true, false, true}};
    for (const auto& row : rows) {
        Start(); // an unexpected dialog fails the test: none opens before the start is through
        int asked = 0;
        OnPrompt([&](auto& prompt) {
            ++asked;
            EXPECT_TRUE(Main().IsVisible() && prompt.btnEditProfile.HasFocus());
            EXPECT_FALSE(prompt.chkDontRemind.Checked());
            if (row.dontRemind)
                prompt.chkDontRemind.UserClicks();
            if (row.edit)
                toolkit.OnModal("EnterSenderInformationForm", [&](ui::Form& editor) {
                    EXPECT_FALSE(prompt.IsOpen());
                    editor.UserCloses();
                });
            if (row.closeBox)
                prompt.UserCloses();
            else
                (row.edit ? prompt.btnEditProfile : prompt.btnClose).UserClicks();
        });
        toolkit.RunPosted();
        EXPECT_EQ(asked, 1);
        EXPECT_EQ(Setting("Profiles", "FirstRun"), row.dontRemind ? "0" : "");
        End();
    }
    Start();
    toolkit.RunPosted();
}

TEST_F(FirstRunTest, AsksNobodyWhoHasClosedTheWindowOrCannotBeRememberedTwice)
{
    Start();
    Restart();
    OnPrompt([&](auto& prompt) {
        prompt.chkDontRemind.UserClicks();
        system.registry.SetClosed(Hive::CurrentUser, std::string{SettingsKey} + "\\Profiles");
        toolkit.ExpectMessage(Text(173), Icon::Critical);
        prompt.btnClose.UserClicks();
        EXPECT_FALSE(prompt.IsOpen());
    });
    toolkit.RunPosted();
}

} // namespace
} // namespace tests
