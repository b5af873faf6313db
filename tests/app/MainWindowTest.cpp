#include "tests/support/TestMachine.h"

#include "app/base/StringId.h"
#include "browser/frmRecentDocuments.h"

#include <set>

namespace tests {
namespace {

using ui::Key;
using ui::KeyCode;
using State = ui::Form::WindowState;

class MainWindowTest : public BrowserTest {};

TEST_F(MainWindowTest, AResourceLibraryReachesEveryTextOfTheMenusTheToolbarAndTheRecentDocuments)
{
    platform::memory::MemoryResourceLibrary::Strings texts;
    for (std::uint16_t id = 1; id < 1000; ++id) // but for names of keys and of generations
        if (const auto own = app::StringTable::Own(id);
            own.size() > 2 && id != app::str::SettingsAppName && !own.contains("HKEY"))
            texts[id] = "#" + std::string{own} + "(&Q)";
    system.resources.Add("C:\\Program Files\\Template Browser\\TS_RES.dll", texts);
    Start();
    const auto isReached = [](std::string_view name, std::string_view text) {
        EXPECT_TRUE(text.empty() || text.starts_with('#')) << name << ": " << text;
    };
    const auto check = [&](const ui::Menu& item) {
        isReached(item.Name, item.Caption);
        if (item.Shortcut.ctrl)
            isReached(item.Name, item.ShortcutText);
    };
    Main().MenuBar.ForEach(check);
    for (ui::Menu* popup : Main().Popups)
        popup->ForEach(check);
    for (const ui::ToolBar::Button& button : Main().tbToolBar.Buttons()) {
        isReached(button.key, button.toolTip);
        EXPECT_FALSE(button.toolTip.contains("(Q)")) << "a letter for menus";
    }
    toolkit.OnModal<browser::frmRecentDocuments>("frmRecentDocuments", [&](auto& form) {
        for (const ui::Control* control : form.Controls())
            isReached(control->TypeName(), control->Caption());
        form.Close();
    });
    Main().Commands().Run("mnuRecentDocuments");
    toolkit.ExpectNames(Main());
}

// Placement and splitters.

TEST_F(MainWindowTest, TakesItsPlaceFromTheSettingsAndIsNeverTooNarrow)
{
    Start();
    EXPECT_EQ(Main().Placement(), (ui::Rect{1000, 1000, 9700, 7200}));
    EXPECT_EQ(Main().State(), State::Normal);
    EXPECT_EQ(Main().imgVertSplitter.Bounds().left, 1965);
    auto& last = Main().findControls.chkPowerPoint;
    last.SetCaption("a language of very long words, for each of which there must be room in a row");
    Main().Commands().Run("mnuEditFind");
    EXPECT_LE(last.Bounds().Right(), Main().ClientSize().width);

    const std::pair<const char*, const char*> settings[] = {{"MainLeft", "300"},
                                                            {"MainTop", "400"},
                                                            {"MainWidth", "5000"},
                                                            {"MainHeight", "9000"},
                                                            {"VertSplitterLeft", "3000"},
                                                            {"HorzSplitterTop", "4000"},
                                                            {"ListViewFileColumnSize", "-5"}};
    End();
    for (const auto& [key, value] : settings)
        PutSetting("Browser", key, value);
    Start();
    EXPECT_EQ(Main().Placement(), (ui::Rect{300, 400, 9700, 9000}));
    EXPECT_EQ(Main().imgVertSplitter.Bounds().left, 3000);
    EXPECT_EQ(Main().imgHorzSplitter.Bounds().top, 4000);
    EXPECT_GE(Main().lvListView.Columns()[0].width, 300);
}

TEST_F(MainWindowTest, TheSplittersStayWithinTheirLimits)
{
    Start();
    auto& vertical = Main().imgVertSplitter;
    for (const auto& [wanted, allowed] : {std::pair{100, 300}, {3000, 3000}, {6701, 6700}, {-5, 300}}) {
        vertical.UserDrags(wanted);
        EXPECT_EQ(vertical.Bounds().left, allowed) << wanted;
        EXPECT_EQ(Main().lvListView.Bounds().left, allowed + vertical.Bounds().width);
        EXPECT_EQ(Main().tvTreeView.Bounds().width, allowed);
    }
    auto& horizontal = Main().imgHorzSplitter;
    for (const int wanted : {-5, 3000, 99999}) {
        horizontal.UserDrags(wanted);
        EXPECT_GE(Main().tvTreeView.Bounds().height, 900) << wanted;
        EXPECT_EQ(Main().tvTreeView.Bounds().Bottom(), horizontal.Bounds().top);
        EXPECT_GT(Main().imgPreview.Bounds().height, 0) << wanted;
    }
}

TEST_F(MainWindowTest, ACloseWhileADialogIsOpenWaitsForIt)
{
    const std::pair<const char*, const char*> dialogs[] = {{"mnuRecentDocuments", "frmRecentDocuments"},
                                                           {"mnuProfileEdit", "EnterSenderInformationForm"}};
    int left = 200;
    for (const auto& [command, name] : dialogs) {
        Start();
        toolkit.OnModal(name, [&](ui::Form& form) {
            EXPECT_FALSE(Main().Close()) << name;
            const auto place = std::to_string(++left);
            Main().UserPlaces({left, 300, 10000, 7000}, State::Normal);
            Main().SessionEnds();
            EXPECT_EQ(Setting("Browser", "MainLeft"), place) << "there is no later then";
            form.UserCloses();
        });
        const app::frmMain& main = Main();
        EXPECT_TRUE(main.Commands().Run(command)) << name;
        EXPECT_FALSE(main.IsOpen()) << name;
        toolkit.RunPosted();
    }
}

TEST_F(MainWindowTest, ClosingSavesThePlaceOfTheNormalStateOnly)
{
    Start();
    Main().UserPlaces({200, 300, 10000, 3000}, State::Normal);
    Main().imgVertSplitter.UserDrags(2500);
    End();
    EXPECT_EQ(Setting("Browser", "TSMaximized"), "False");
    EXPECT_EQ(Setting("Browser", "MainLeft") + "," + Setting("Browser", "MainTop") + "," +
                  Setting("Browser", "MainWidth") + "," + Setting("Browser", "MainHeight"),
              "200,300,10000,3000");
    EXPECT_EQ(Setting("Browser", "VertSplitterLeft"), "2500");

    Start();
    EXPECT_EQ(Main().Placement(), (ui::Rect{200, 300, 10000, 3000})) << "as low as the user made it";
    Main().UserPlaces({0, 0, 19200, 15000}, State::Maximized);
    Main().UserResizes({19200, 14500});
    Main().imgVertSplitter.UserDrags(9000); // more than the normal window has room for
    End();
    EXPECT_EQ(Setting("Browser", "TSMaximized"), "True");
    EXPECT_EQ(Setting("Browser", "MainWidth"), "10000");
    EXPECT_EQ(Setting("Browser", "VertSplitterLeft"), "9000");
    EXPECT_EQ(Setting("Browser", "HorzSplitterTop"), "5250");
    Start();
    EXPECT_EQ(Main().State(), State::Maximized);
}

TEST_F(MainWindowTest, ViewColumnsTabAndFolderComeBack)
{
    Start();
    Main().Commands().Run("mnuViewDetails");
    Main().lvListView.UserSizesColumn(2, 1234);
    Main().fileTypeTabStrip.UserSelects("Word");
    Main().lvListView.UserClicksColumn(3);
    Main().lvListView.UserClicksColumn(3);
    Main().tvTreeView.UserExpands("Business");
    Main().tvTreeView.UserSelects("Letters\\Formal");
    Main().Commands().Run("mnuViewPreviewPane");
    Restart();
    EXPECT_TRUE(Main().lvListView.SortColumn() == 3 && !Main().lvListView.SortAscending());
    EXPECT_TRUE(Main().tvTreeView.Find("Business")->expanded);
    EXPECT_FALSE(Main().tvTreeView.Find("Business\\Contracts")->expanded);
    EXPECT_EQ(Main().lvListView.GetView(), ui::ListView::View::Details);
    EXPECT_EQ(Main().lvListView.Columns()[2].width, 1234);
    EXPECT_EQ(Main().fileTypeTabStrip.Selected(), "Word");
    EXPECT_EQ(Main().tvTreeView.Selected()->key, "Letters\\Formal");
    EXPECT_EQ(ListTexts(Main().lvListView), Texts{"Complaint"});
    EXPECT_FALSE(Main().imgPreview.Visible());
}

TEST_F(MainWindowTest, PanesCanBeHiddenAndTheListTakesTheirRoom)
{
    Start();
    const int width = Main().ClientSize().width;
    Main().Commands().Run("mnuViewFolderList");
    EXPECT_FALSE(Main().tvTreeView.Visible());
    EXPECT_TRUE(Main().lvListView.HasFocus());
    EXPECT_TRUE(Main().UserPresses(ui::Plain(KeyCode::F6)));
    EXPECT_TRUE(Main().lvListView.HasFocus()) << "there is no tree to go to";
    EXPECT_TRUE(Main().imgVertSplitter.Visible()) << "the preview still stands on the left";
    Main().Commands().Run("mnuViewPreviewPane");
    EXPECT_FALSE(Main().imgVertSplitter.Visible());
    EXPECT_EQ(Main().lvListView.Bounds().left, 0);
    EXPECT_EQ(Main().lvListView.Bounds().width, width);
    Main().Commands().Run("mnuViewFolderList");
    EXPECT_EQ(Main().tvTreeView.Bounds().Bottom(), Main().sbStatusBar.Bounds().top);
    const int yields = toolkit.Yields();
    Main().UserPlaces({0, 0, 15000, 9000}, State::Normal);
    EXPECT_EQ(Main().lvListView.Bounds().Right(), Main().ClientSize().width);
    EXPECT_EQ(toolkit.Yields(), yields) << "a frame that is dragged runs no messages";
}

TEST_F(MainWindowTest, ASettingThatCannotBeSavedIsToldOnceAndTheWindowCloses)
{
    Start();
    system.registry.SetClosed(Hive::CurrentUser, std::string{SettingsKey} + "\\Browser");
    toolkit.ExpectMessage(Text(173), Icon::Critical);
    EXPECT_TRUE(Main().Close());
}

// Commands.

TEST_F(MainWindowTest, EveryCommandIsInTheMenusAndWorks)
{
    Start();
    Main().lvListView.UserSelects(0);
    Main().MenuOpening();
    std::set<std::string> disabled;
    std::map<std::string, std::string> owners;
    Main().MenuBar.ForEach([&](ui::Menu& item) {
        EXPECT_TRUE(!item.Shortcut || owners.emplace(ui::KeyText(item.Shortcut), item.Name).second)
            << ui::KeyText(item.Shortcut) << " means two things";
        if (!item.Enabled && item.Visible && !item.Separator)
            disabled.insert(item.Name);
        EXPECT_TRUE(item.Separator || !item.Visible || !item.Caption.empty()) << item.Name;
    });
    EXPECT_EQ(owners["F5"] + owners["Alt+Enter"], "mnuRefreshTVmnuFileProperties");
    disabled.erase("mnuViewWithoutPicture"); // it is about the thumbnails, which do not show
    EXPECT_EQ(disabled, std::set<std::string>{});
}

TEST_F(MainWindowTest, TheToolBarSwitchesTheTabs)
{
    Start();
    EXPECT_FALSE(Item("mnuReportABug").Visible);
    PutSetting("Options", "ReportABug", "1");
    EXPECT_TRUE(Item("mnuReportABug").Visible);
    Restart();
    Main().tbToolBar.UserClicks("mnuSettingsXL");
    EXPECT_FALSE(Main().fileTypeTabStrip.Has("Excel") || Main().tbToolBar.Find("mnuSettingsXL")->pressed);
    EXPECT_EQ(Main().tbToolBar.Find("mnuSettingsXL")->toolTip, Text(150));
    EXPECT_EQ(Main().tbToolBar.Find("mnuAddToFavorites")->toolTip, "Add to Favorites (Ctrl+D)");
    EXPECT_EQ(Main().tbToolBar.Find("mnuReportABug")->caption, Text(524));
}

TEST_F(MainWindowTest, ItemCommandsFollowTheList)
{
    Start();
    Main().tvTreeView.UserSelects("Business");
    EXPECT_TRUE(Main().tbToolBar.Find("mnuFileOpen")->enabled);
    EXPECT_TRUE(Main().tbToolBar.Find("mnuFileNew")->enabled) << "the first template is selected";
    Main().lvListView.UserSelects(-1);
    EXPECT_FALSE(Main().tbToolBar.Find("mnuFileNew")->enabled);
    EXPECT_TRUE(Main().tbToolBar.Find("mnuFileOpen")->enabled);
    Main().tvTreeView.UserSelects("Get More Templates");
    EXPECT_FALSE(Main().tbToolBar.Find("mnuFileOpen")->enabled);
    EXPECT_FALSE(Item("mnuFileOpen").Enabled);
    EXPECT_EQ(Main().sbStatusBar.Panels()[0], "");
}

TEST_F(MainWindowTest, HelpDocumentsAndLinksOpenThroughTheLauncher)
{
    PutSetting("Help", "General HTML", "Help\\en\\index.html");
    PutSetting("Help", "Using Find HTML", "C:\\Gone\\find.htm");
    PutSetting("Options", "Installed Path", "C:\\Desk");
    PutSetting("Options", "WebLink", "http://tessaly.example/| |http://tessaly.example/news|News >");
    system.files.AddFile("C:\\Desk\\Help\\en\\index.html");
    Start();
    Main().UserPresses(ui::Plain(KeyCode::F1));
    toolkit.ExpectMessage(Text(367), Icon::Information);
    Item("mnuHelpSearch").UserClicks();
    Item("mnuWebLink http://tessaly.example/news").UserClicks();
    EXPECT_EQ(Item("mnuWebLink News >").Caption, "News >");
    EXPECT_EQ(system.shell.Opened(), (Texts{"C:\\Desk\\Help\\en\\index.html", "http://tessaly.example/news"}));
    PutSetting("Help", "General HTML", "https://tessaly.example/help");
    Main().UserPresses(ui::Plain(KeyCode::F1));
    EXPECT_EQ(system.shell.Opened().back(), "https://tessaly.example/help");
    PutSetting("Help", "General HTML", "  ");
    const std::string ownPage = "C:\\Program Files\\Template Browser\\Help\\en\\index.html";
    system.files.AddFile(ownPage);
    Main().UserPresses(ui::Plain(KeyCode::F1));
    EXPECT_EQ(system.shell.Opened().back(), ownPage);
    system.files.Remove(ownPage);
    toolkit.ExpectMessage(Text(280), Icon::Information);
    Main().UserPresses(ui::Plain(KeyCode::F1));
}

// Keys and clicks.

TEST_F(MainWindowTest, TheUsualKeysDoTheUsualThings)
{
    Start();
    Main().tvTreeView.UserSelects("Letters\\Formal");
    EXPECT_TRUE(Main().tvTreeView.HasFocus());
    EXPECT_TRUE(Main().UserPresses(ui::Plain(KeyCode::F6)));
    EXPECT_TRUE(Main().lvListView.HasFocus());
    EXPECT_EQ(Main().List().Selected()->text, "Complaint");
    EXPECT_TRUE(Main().UserPresses(ui::Ctrl('O')));
    Main().lvListView.UserActivates(-1); // beside the rows
    EXPECT_EQ(system.shell.Opened(), Texts{InLibrary("Letters\\Formal\\Complaint.swt")});
    EXPECT_TRUE(Main().lvListView.KeyDown(ui::Plain(KeyCode::Backspace)));
    EXPECT_EQ(Main().tvTreeView.Selected()->key, "Letters");
    EXPECT_EQ(ListTexts(Main().lvListView), Texts{"Memo"});
    EXPECT_TRUE(Main().tvTreeView.KeyDown(ui::Plain(KeyCode::Backspace)));
    EXPECT_EQ(Main().tvTreeView.Selected()->key, "Letters") << "there is nothing above a top-level folder";
    EXPECT_TRUE(Main().UserPresses(Key{KeyCode::Tab, true}));
    EXPECT_EQ(Main().fileTypeTabStrip.Selected(), "Word");
    EXPECT_TRUE(Main().UserPresses(Key{KeyCode::Tab, true, true}));
    EXPECT_EQ(Main().fileTypeTabStrip.Selected(), "All");
    EXPECT_TRUE(Main().UserPresses(ui::Plain(KeyCode::F6)));
    EXPECT_TRUE(Main().tvTreeView.HasFocus());
    EXPECT_FALSE(Main().UserPresses(ui::Plain(KeyCode::F9)));
    EXPECT_TRUE(Main().UserPresses(Key{KeyCode::F4, false, false, true}));
    EXPECT_FALSE(Main().IsOpen());
}

TEST_F(MainWindowTest, KeysReachWhatStandsInNoMenuBarAndWhatIsNotInTheTree)
{
    Start();
    EXPECT_EQ(Main().fileTypeTabStrip.Tabs()[0].caption + Main().fileTypeTabStrip.Tabs()[2].caption,
              "&Word&PowerPoint");
    Main().tvTreeView.UserSelects("Letters");
    auto& tree = Main().tvTreeView;
    for (const bool open : {true, false}) {
        EXPECT_TRUE(tree.KeyDown(ui::Plain(KeyCode::Enter)));
        EXPECT_EQ(tree.Find("Letters")->expanded, open);
    }
    Main().lvListView.UserSelects(0);
    EXPECT_FALSE(Main().lvListView.KeyDown(ui::Plain(KeyCode::Enter))) << "opens the template";
    EXPECT_TRUE(Main().UserPresses(ui::Ctrl('N')));
    EXPECT_EQ(system.shell.Opened(), Texts{InLibrary("Letters\\Memo.swt")});
    EXPECT_EQ(Main().sbStatusBar.Panels()[1], "The template 'Memo.swt' itself was opened. Save it under another name.");
    Main().tvTreeView.UserSelects("Letters\\Formal");
    EXPECT_TRUE(Main().sbStatusBar.Panels()[1].starts_with("Complaint"));

    Main().Commands().Run("mnuViewFolderList");
    Restart();
    EXPECT_TRUE(Main().lvListView.HasFocus());
}

TEST_F(MainWindowTest, ThePreviewShowsTheTemplatesPictureOrTheLibrarysOwn)
{
    const std::string longName(60, 'w');
    AddTemplates({"Letters\\Previews\\MEMO.jpg", "Letters\\" + longName + ".swt"});
    Start();
    Main().tvTreeView.UserSelects("Letters");
    const auto [facts, picture] = std::pair{&Main().lblPreview, &Main().imgPreview};
    const int height = facts->Bounds().height;
    Main().lvListView.UserSelects(1);
    EXPECT_GT(facts->Bounds().height, height) << "of a name that takes several lines";
    EXPECT_EQ(facts->Bounds().height, facts->PreferredSize(facts->Bounds().width).height) << "the date is not cut off";
    EXPECT_LT(picture->Bounds().Bottom(), facts->Bounds().top);
    Main().lvListView.UserSelects(0);
    EXPECT_EQ(facts->Bounds().height, height);
    EXPECT_EQ(Main().imgPreview.File(), InLibrary("Letters\\Previews\\Memo.jpg"));
    EXPECT_TRUE(Main().lblPreview.Caption().starts_with("Memo\r\nLetters\r\n0KB\r\n")) << Main().lblPreview.Caption();
    EXPECT_EQ(Main().sbStatusBar.Panels()[1].substr(0, 10), "Memo   0KB");
    Main().tvTreeView.UserSelects("Letters\\Formal");
    EXPECT_EQ(Main().imgPreview.File(), InLibrary("NF.jpg"));
    Main().lvListView.UserSelects(-1);
    EXPECT_EQ(Main().imgPreview.File() + Main().lblPreview.Caption(), "");
}

} // namespace
} // namespace tests
