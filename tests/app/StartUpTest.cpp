#include "profiles/frmProfileInformation.h"
#include "tests/support/TestMachine.h"

#include "platform/Text.h"

namespace tests {
namespace {

using platform::Hive;
using ui::Icon;

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
    EXPECT_TRUE(state.MainLoaded);
    EXPECT_TRUE(state.BrowserReady);
    EXPECT_EQ(Setting("Customization", "ApplicationName"), "My Desk");
}

TEST_F(StartUpTest, ABlankCaptionBecomesTheProductsOwn)
{
    Start("   ");
    EXPECT_EQ(Program().state.ProductCaption, "Tessaly Desk");
}

TEST_F(StartUpTest, IsRefusedWhileAnotherProcessHasABrowser)
{
    system.process.HoldByAnotherProcess(true);
    const auto registry = system.registry.Snapshot();
    toolkit.ExpectMessage(Text(140), Icon::Information);

    Start("My Desk");

    EXPECT_EQ(toolkit.Messages.at(0).title, "My Desk");
    EXPECT_FALSE(browser.IsRunning());
    EXPECT_EQ(browser.Main(), nullptr);
    EXPECT_EQ(system.registry.Snapshot(), registry);
}

TEST_F(StartUpTest, ASecondStartInTheSameProcessChangesNothing)
{
    Start("First");
    toolkit.ExpectMessage(Text(140), Icon::Information);
    browser.Start("HOST", "a", "b", "c", "Second");

    EXPECT_EQ(Program().state.ProductCaption, "First");
    EXPECT_EQ(Program().state.HostKind, "EXE");
    EXPECT_TRUE(Main().IsVisible());
}

TEST_F(StartUpTest, ASecondStartInTheMiddleOfTheLoadIsRefused)
{
    toolkit.ExpectMessage(Text(140), Icon::Information);
    toolkit.OnYield = [&](int yield) {
        if (yield == 9)
            browser.Start("HOST", "", "", "", "Second");
    };
    Start("First");
    EXPECT_EQ(toolkit.Messages.size(), 1u);
    EXPECT_EQ(Program().state.ProductCaption, "First");
    EXPECT_TRUE(Main().IsVisible());
}

TEST_F(StartUpTest, CanBeStartedAgainOnceTheWindowIsClosed)
{
    int ended = 0;
    browser.Closed = [&] { ++ended; };
    Start();
    EXPECT_TRUE(Main().Close());
    EXPECT_TRUE(browser.IsRunning()) << "the window's own handlers are still on the stack";
    toolkit.RunPosted();
    EXPECT_FALSE(browser.IsRunning());
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(system.process.IsClaimed());

    Start();
    EXPECT_TRUE(Main().IsVisible());
}

struct Generation {
    const char* value;
    bool accepted;
};
class OfficeGenerationTest : public StartUpTest, public ::testing::WithParamInterface<Generation> {};

TEST_P(OfficeGenerationTest, IsComparedLetterForLetter)
{
    PutSetting("Options", "MSOVersion", GetParam().value);
    if (!GetParam().accepted)
        toolkit.ExpectMessage(CannotRun, Icon::Critical);
    Start();
    EXPECT_EQ(browser.Main() != nullptr, GetParam().accepted);
    EXPECT_EQ(Program().state.MsoVersion, GetParam().accepted ? GetParam().value : "");
}
INSTANTIATE_TEST_SUITE_P(Values, OfficeGenerationTest,
                         ::testing::Values(Generation{"2K", true}, Generation{"97", true}, Generation{"XP", true},
                                           Generation{"11", true}, Generation{"xp", false}, Generation{"2003", false},
                                           Generation{"XP ", false}, Generation{"", false}));

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

    EXPECT_EQ(browser.Main(), nullptr);
    EXPECT_TRUE(toolkit.Forms().empty());
    EXPECT_EQ(system.shell.Runs().size(), 1u);
    EXPECT_EQ(Setting("Customization", "ApplicationName"), "Tessaly Desk");
    EXPECT_EQ(ended, 1) << "a process without a window has nothing to stay for";
}

struct Converter {
    platform::Result<> outcome;
    bool installs;
};
class PdfConverterTest : public StartUpTest, public ::testing::WithParamInterface<Converter> {};

TEST_P(PdfConverterTest, IsInstalledSilentlyOnlyWhenItsClassIsMissing)
{
    PutSetting("Options", "Installed Path", "C:\\My Desk");
    system.files.AddFile("C:\\My Desk\\PDF Component\\Install.exe");
    system.automation.Register("CDIntf.CDIntf", GetParam().outcome);
    Start();
    const std::vector<platform::memory::MemoryShell::Started> install{
        {"C:\\My Desk\\PDF Component\\Install.exe",
         "\"C:\\My Desk\\PDF Component\\Install.exe\" \"TSPro 3.0 PDF Converter\" /s",
         platform::WindowStyle::MinimizedFocus}};
    EXPECT_EQ(system.shell.Runs(), GetParam().installs ? install : decltype(install){});
}
TEST_F(StartUpTest, AnInstallerThatNeedsAnAdministratorIsStartedAgainAsOne)
{
    PutSetting("Options", "Installed Path", "C:\\My Desk");
    system.files.AddFile("C:\\My Desk\\PDF Component\\Install.exe");
    system.automation.Register("CDIntf.CDIntf", std::unexpected{platform::error::CannotCreateObject});
    system.shell.OnRun([](const auto& program) {
        return program.elevated ? platform::Result<>{} : std::unexpected{platform::error::ElevationRequired};
    });
    Start();
    ASSERT_EQ(system.shell.Runs().size(), 2u);
    EXPECT_TRUE(system.shell.Runs()[1].elevated);
    EXPECT_EQ(system.shell.Runs()[1].commandLine, system.shell.Runs()[0].commandLine);
}
INSTANTIATE_TEST_SUITE_P(Outcomes, PdfConverterTest,
                         ::testing::Values(Converter{{}, false},
                                           Converter{std::unexpected{platform::error::CannotCreateObject}, true},
                                           Converter{std::unexpected{platform::error::AutomationModuleNotFound}, true},
                                           Converter{std::unexpected{platform::error::AccessDenied}, false}));

TEST_F(StartUpTest, KeepsTheTemplatesPathWithOneMoreSeparator)
{
    const std::pair<const char*, const char*> paths[] = {{"C:\\Templates", "C:\\Templates\\"},
                                                         {"C:\\Templates\\", "C:\\Templates\\\\"}};
    for (const auto& [stored, expected] : paths) {
        SetTemplatesPath(stored);
        Start();
        EXPECT_EQ(Program().state.TemplatesPath, expected);
        EXPECT_NE(Main().tvTreeView.Find("Letters\\Formal"), nullptr);
        Main().Close();
        toolkit.RunPosted();
    }
}

TEST_F(StartUpTest, ReadsFromTheCdUnlessTheHardDiskIsChosen)
{
    system.files.AddFile("D:\\Cd\\Cards\\Birthday.swt");
    PutSetting("Browser", "CDROM Templates Path", "D:\\Cd");
    for (const char* value : {"False", "garbage", ""}) {
        PutSetting("Browser", "Access HDD_Templates", value);
        Start();
        EXPECT_NE(Main().tvTreeView.Find("Cards"), nullptr) << value;
        Main().Close();
        toolkit.RunPosted();
    }
}

TEST_F(StartUpTest, CountsTheLoadInTheProductsWordsAndNeverPastAHundred)
{
    for (int i = 0; i < 150; ++i)
        AddTemplates({"Category " + std::to_string(i) + "\\A.swt"});
    std::vector<std::string> labels;
    toolkit.OnYield = [&](int) {
        const auto* form =
            dynamic_cast<app::frmTSOCXLoadProgressIndicator*>(toolkit.Find("frmTSOCXLoadProgressIndicator"));
        if (form != nullptr && (labels.empty() || labels.back() != form->lblProgress.Caption()))
            labels.push_back(form->lblProgress.Caption());
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
    Main().Close();
    toolkit.RunPosted();
    Start("Other");
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

// The templates path cannot be read.

struct Trouble {
    const char* hddAccess;
    const char* path;
    int reason;
};
class TemplatesPathTroubleTest : public StartUpTest, public ::testing::WithParamInterface<Trouble> {};

TEST_P(TemplatesPathTroubleTest, IsExplainedAndCancelQuits)
{
    PutSetting("Browser", "Access HDD_Templates", GetParam().hddAccess);
    PutSetting("Browser", "HDD Templates Path", GetParam().path);
    PutSetting("Browser", "CDROM Templates Path", GetParam().path);
    toolkit.OnModal("frmTemplatesPath", [&](ui::Form& form) {
        auto& dialog = dynamic_cast<app::frmTemplatesPath&>(form);
        EXPECT_EQ(form.Caption(), Text(339));
        EXPECT_TRUE(dialog.lblReason.Caption().starts_with(Text(GetParam().reason))) << dialog.lblReason.Caption();
        EXPECT_EQ(dialog.lblQuit.Caption(), Text(337));
        EXPECT_EQ(dialog.cmdRetry.Caption() + dialog.cmdNew.Caption() + dialog.cmdCancel.Caption(),
                  "RetryNew...&Cancel");
        dialog.cmdCancel.UserClicks();
    });
    int ended = 0;
    browser.Closed = [&] { ++ended; };
    Start();
    toolkit.RunPosted();
    EXPECT_EQ(browser.Main(), nullptr);
    EXPECT_FALSE(HasSetting("Customization", "ApplicationName"));
    EXPECT_EQ(ended, 1);
}
INSTANTIATE_TEST_SUITE_P(Reasons, TemplatesPathTroubleTest,
                         ::testing::Values(Trouble{"True", "Q:\\Templates", 272},
                                           Trouble{"False", "Q:\\Templates", 336}, Trouble{"True", "Templates", 273},
                                           Trouble{"True", "", 512}, Trouble{"False", "", 512}));

TEST_F(StartUpTest, RetryGoesOnOnceTheDriveIsBack)
{
    SetTemplatesPath("E:\\Library");
    toolkit.OnModal("frmTemplatesPath", [&](ui::Form& form) {
        auto& dialog = dynamic_cast<app::frmTemplatesPath&>(form);
        dialog.cmdRetry.UserClicks();
        EXPECT_TRUE(form.IsOpen());
        system.files.AddFile("E:\\Library\\Cards\\Birthday.swt");
        dialog.cmdRetry.UserClicks();
    });
    Start();
    EXPECT_NE(Main().tvTreeView.Find("Cards"), nullptr);
    EXPECT_EQ(Setting("Browser", "HDD Templates Path"), "E:\\Library");
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
        toolkit.FolderChoices = {std::nullopt, "S:\\NotThere", std::string{Templates}};
        toolkit.ExpectMessage(Text(338), Icon::Information);
        toolkit.OnModal("frmTemplatesPath", [&](ui::Form& form) {
            auto& dialog = dynamic_cast<app::frmTemplatesPath&>(form);
            dialog.cmdNew.UserClicks(); // the user gives the folder chooser up
            EXPECT_TRUE(form.IsOpen());
            dialog.cmdNew.UserClicks(); // and now chooses a folder that is gone
            EXPECT_TRUE(form.IsOpen());
            dialog.cmdNew.UserClicks();
        });
        Start();
        EXPECT_NE(Main().tvTreeView.Find("Letters"), nullptr);
        EXPECT_EQ(Setting("Browser", "HDD Templates Path"), hdd ? "C:\\Templates" : "Q:\\Old");
        EXPECT_EQ(Setting("Browser", "CDROM Templates Path"), hdd ? "R:\\Old" : "C:\\Templates");
        Main().Close();
        toolkit.RunPosted();
    }
}

TEST_F(StartUpTest, AnEmptyLibraryLeavesTheWindowOpenAndEmpty)
{
    SetTemplatesPath("C:\\Empty");
    system.files.AddFolder("C:\\Empty");
    toolkit.ExpectMessage(Text(279), Icon::Critical);
    Start();
    EXPECT_TRUE(Main().IsVisible());
    EXPECT_EQ(Main().tvTreeView.Count(), 0u);
    EXPECT_EQ(Main().lvListView.Rows(), 0);
    EXPECT_TRUE(Main().Library().NoFoldersFound);
}

TEST_F(StartUpTest, SpeaksTheLanguageOfTheResourceLibrary)
{
    system.resources.Add("C:\\Program Files\\Template Browser\\TS_RES.dll",
                         {{101, "&Datei"}, {365, "Meine Favoriten"}, {362, ""}, {218, std::string(600, 'n')}});
    Start();
    EXPECT_EQ(Main().MenuBar.Items().front()->Caption, "&Datei");
    EXPECT_EQ(TreeTexts(Main().tvTreeView).front(), "Meine Favoriten");
    EXPECT_EQ(Main().lvListView.Columns().front().text, std::string(511, 'n'));
    EXPECT_EQ(Main().MenuBar.Items().back()->Caption, "&Help") << "what the library lacks is the program's own";
    EXPECT_EQ(Program().state.SettingsAppName, "Tessaly GWX 1.0");
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
        Start();
        EXPECT_EQ(Program().state.ProductCaption, "Desk");
        EXPECT_EQ(Program().state.SettingsAppName, "Other");
        const auto found = Main().Favorites().FavoritesList().size();
        system.registry.PutString(Hive::CurrentUser, other + "Browser\\Favorites", favorite, "");
        EXPECT_EQ(found, favorite == std::string_view{"Letters\\Memo.swt"} ? 1u : 0u);
        Main().Close();
        toolkit.RunPosted();
    }
}

// The invitation to enter a profile.

class FirstRunTest : public BrowserTest {
protected:
    FirstRunTest() { PutSetting("Profiles", "FirstRun", ""); }
    void OnPrompt(std::function<void(profiles::frmProfileInformation&)> act)
    {
        toolkit.OnModal("frmProfileInformation",
                        [act](ui::Form& form) { act(static_cast<profiles::frmProfileInformation&>(form)); });
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
        Main().Close();
        toolkit.RunPosted();
    }
    Start();
    toolkit.RunPosted();
}

TEST_F(FirstRunTest, AsksNobodyWhoHasClosedTheWindowOrCannotBeRememberedTwice)
{
    Start();
    Main().Close();
    toolkit.RunPosted();

    Start();
    OnPrompt([&](auto& prompt) {
        prompt.chkDontRemind.UserClicks();
        system.registry.SetClosed(platform::Hive::CurrentUser, std::string{SettingsKey} + "\\Profiles");
        toolkit.ExpectMessage(Text(173), ui::Icon::Critical);
        prompt.btnClose.UserClicks();
        EXPECT_FALSE(prompt.IsOpen());
    });
    toolkit.RunPosted();
}

} // namespace
} // namespace tests
