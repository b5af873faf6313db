// The Find pane in the main window: what the user types, presses and sees.
#include "tests/support/TestMachine.h"

#include <algorithm>

namespace tests {
namespace {

using ui::KeyCode;

class FindPaneTest : public BrowserTest {
protected:
    search::FindControls& Pane() { return Main().findControls; }
    Texts Shown() { return ListTexts(Main().lvListView); }
    std::string Status() { return Main().sbStatusBar.Panels().at(0); }
    void AddDocument(std::string_view path, const std::string& information)
    {
        system.files.AddFile(InLibrary(path), "{\\rtf1{\\info" + information + "}text}");
    }
    /// Starts, selects "Business", opens the pane and lets it read the library.
    void Open()
    {
        Start();
        Main().tvTreeView.UserSelects("Business");
        Main().lvListView.UserSelects(1);
        EXPECT_TRUE(Main().UserPresses(ui::Ctrl('F')));
        system.jobs.FinishAll();
    }
    void Type(std::string_view text)
    {
        Pane().txtLookFor.SelectAll();
        Pane().txtLookFor.UserTypes(text.empty() ? "\b" : text);
        system.jobs.FinishAll();
    }
    bool Press(KeyCode code) { return Pane().txtLookFor.UserPressesCommandKey(ui::Plain(code)); }
    void Ask(int property, std::string_view condition, std::string_view value)
    {
        Pane().cboProperty.UserSelects(property);
        const auto& conditions = Pane().cboCondition.Items();
        Pane().cboCondition.UserSelects(
            static_cast<int>(std::ranges::find(conditions, condition) - conditions.begin()));
        Pane().txtValue.SetText(std::string{value});
    }
};

TEST_F(FindPaneTest, FindsWhileTheUserTypesAndGivesEverythingBack)
{
    Open();
    EXPECT_TRUE(Pane().txtLookFor.HasFocus());
    EXPECT_GT(Pane().txtLookFor.Bounds().width, 0);
    EXPECT_EQ(Main().lvListView.Bounds().top > Pane().cmdClose.Bounds().Bottom(), true);
    EXPECT_EQ(Shown().size(), 5U) << "the category, until something is looked for";
    const std::string selected = Main().List().SelectedPath();

    Type("le");
    EXPECT_EQ(Shown(), (Texts{"Lease", "Complaint", "Memo"})) << "names before folders";
    EXPECT_EQ(Main().Templates().Text(0, browser::TemplateList::FolderColumn), InLibrary("Business\\Contracts"));
    EXPECT_EQ(Pane().lblResult.Caption(), "Found 3 from 8 files.");
    EXPECT_EQ(Status(), "Found 3 from 8 files.");
    EXPECT_EQ(Main().List().Selected()->text, "Lease");
    Type("terms");
    EXPECT_EQ(Shown(), Texts{"Terms"});

    EXPECT_TRUE(Press(KeyCode::Down));
    EXPECT_TRUE(Main().lvListView.HasFocus());
    EXPECT_TRUE(Main().UserPresses(ui::Plain(KeyCode::F3)));
    EXPECT_TRUE(Pane().txtLookFor.HasFocus());
    EXPECT_EQ(Pane().txtLookFor.SelText(), "terms");
    EXPECT_TRUE(Press(KeyCode::Enter));
    EXPECT_EQ(Main().RecentFiles().List(), Texts{InLibrary("Business\\Terms.pdf")});

    EXPECT_TRUE(Press(KeyCode::Escape));
    EXPECT_EQ(Pane().txtLookFor.Text(), "");
    EXPECT_EQ(Main().List().SelectedPath(), selected);
    EXPECT_EQ(Shown().size(), 5U);
    EXPECT_TRUE(Press(KeyCode::Escape));
    EXPECT_FALSE(Main().Find().IsOpen());
    EXPECT_TRUE(Main().lvListView.HasFocus());
    EXPECT_EQ(Main().List().SelectedPath(), selected);
    EXPECT_FALSE(Pane().txtLookFor.Visible());
    EXPECT_EQ(system.jobs.Count(), 0U);
}

TEST_F(FindPaneTest, ResultsComeInAsTheyAreRead)
{
    for (int i = 0; i < 30; ++i)
        AddTemplates({"Folder " + std::to_string(10 + i) + "\\Special.swt"});
    Start();
    Main().UserPresses(ui::Ctrl('F'));
    Pane().txtLookFor.UserTypes("special");
    EXPECT_EQ(Shown(), Texts{});
    EXPECT_EQ(Main().lvListView.EmptyText(), "Searching...");
    EXPECT_TRUE(Pane().cmdStop.Enabled());
    std::vector<std::size_t> counts;
    while (system.jobs.Count() > 0) {
        const std::size_t before = Shown().size();
        const bool rests = !system.timers.Running().empty();
        system.jobs.Finish();
        if (rests && system.jobs.Count() > 0) {
            EXPECT_EQ(Shown().size(), before) << "filled again before it could be painted";
            system.timers.Elapse();
        }
        counts.push_back(Shown().size());
    }
    EXPECT_TRUE(std::ranges::is_sorted(counts));
    EXPECT_GT(counts.size(), 3U);
    EXPECT_GT(counts[1], 0U);
    EXPECT_EQ(counts.back(), 30U);
    EXPECT_FALSE(Pane().cmdStop.Enabled());

    // The library is read again in the middle of it.
    system.files.Remove(InLibrary("Folder 10\\Special.swt"));
    AddTemplates({"Folder 10\\Special too.swt", "Folder 10\\Third special.swt"});
    toolkit.OnYield = [&](int) { system.jobs.Finish(); };
    EXPECT_TRUE(Main().Commands().Run("mnuRefreshTV"));
    toolkit.OnYield = nullptr;
    system.jobs.FinishAll();
    EXPECT_EQ(Shown().size(), 31U);
    EXPECT_EQ(Shown().back(), "Third special");
}

TEST_F(FindPaneTest, WhatTheDocumentsSayIsFoundToo)
{
    AddDocument("Letters\\Plain.swt", "{\\title Annual review}{\\author Zoe}");
    AddDocument("Business\\Other.swt", "{\\subject Zoe}");
    Open();
    Type("review annual");
    EXPECT_EQ(Shown(), Texts{"Plain"});
    Type("zoe");
    EXPECT_EQ(Shown(), Texts{"Plain"}) << "the subject is only asked for by name";

    Type("");
    Ask(1, "Contains", "zo");
    Pane().cmdFindNow.UserClicks();
    EXPECT_TRUE(Pane().cmdStop.Enabled());
    system.jobs.FinishAll();
    EXPECT_EQ(Shown(), Texts{"Other"});
    EXPECT_EQ(Setting("Browser\\Find", "Value"), "zo");
    EXPECT_EQ(Setting("Browser\\Find", "Property"), "Attribution");

    // The next search takes its place at once, also while it runs; Stop leaves what was found.
    Ask(2, "Equals", "zoe");
    Pane().cmdFindNow.UserClicks();
    Ask(0, "Ends with", "review");
    Pane().cmdFindNow.UserClicks();
    system.jobs.FinishAll();
    EXPECT_EQ(Shown(), Texts{"Plain"});
    AddDocument("Business\\Other.swt", "{\\title Last review}");
    Pane().cmdFindNow.UserClicks();
    system.jobs.FinishAll();
    EXPECT_EQ(Shown(), (Texts{"Other", "Plain"})) << "changed since its folder was listed";
    Pane().cmdFindNow.UserClicks();
    Pane().cmdStop.UserClicks();
    EXPECT_EQ(system.jobs.Count(), 0U);
    EXPECT_FALSE(Pane().cmdStop.Enabled());

    Pane().txtValue.SetText(" ");
    toolkit.ExpectMessage(Text(181), Icon::Information);
    Pane().cmdFindNow.UserClicks();
    EXPECT_TRUE(Pane().txtValue.HasFocus());
    Type("zoe");
    Ask(7, "Is after", "yesterday");
    toolkit.ExpectMessage(Text(181), Icon::Information);
    Pane().cmdFindNow.UserClicks();
}

TEST_F(FindPaneTest, WhatWasDroppedHalfReadIsReadWhenItIsWantedAgain)
{
    AddDocument("Letters\\Plain.swt", "{\\title Annual review}");
    Start();
    Main().UserPresses(ui::Ctrl('F'));
    system.jobs.Finish(); // the folders
    Pane().txtLookFor.UserTypes("x");
    EXPECT_TRUE(Press(KeyCode::Escape));
    Type("annual");
    EXPECT_EQ(Shown(), Texts{"Plain"});

    Type("");
    Ask(0, "Contains", "annual");
    Pane().cmdFindNow.UserClicks();
    Pane().cmdStop.UserClicks();
    Type("pla");
    EXPECT_EQ(Shown(), Texts{"Plain"});
}

TEST_F(FindPaneTest, ItSearchesTheCategoryAndTheKindsThatAreChosen)
{
    Open();
    Pane().cboFolder.UserSelects(1);
    Type("t");
    EXPECT_EQ(Shown(), (Texts{"Terms", "Budget", "Photo", "Pitch", "Lease"})) << "the category and those below it";
    EXPECT_EQ(Pane().lblResult.Caption(), "Found 5 from 6 files.");
    Main().tvTreeView.UserSelects("Letters");
    EXPECT_EQ(Shown(), (Texts{"Complaint", "Memo"}));
    Type("inv");
    EXPECT_EQ(Shown(), Texts{});
    EXPECT_EQ(Pane().lblResult.Caption(), Text(179));
    EXPECT_EQ(Main().lvListView.EmptyText(), Text(179));
    ASSERT_TRUE(Pane().cmdAllCategories.Visible());
    EXPECT_EQ(Pane().cmdAllCategories.Caption(), "All Categories (1)");
    Pane().cmdAllCategories.UserClicks();
    EXPECT_EQ(Shown(), Texts{"Invoice"});
    EXPECT_FALSE(Pane().cmdAllCategories.Visible());

    Main().fileTypeTabStrip.UserSelects("Excel");
    EXPECT_EQ(Shown(), Texts{});
    ASSERT_TRUE(Pane().cmdOtherTypes.Visible());
    EXPECT_EQ(Pane().cmdOtherTypes.Caption(), Text(700) + " (1)");
    Pane().cmdOtherTypes.UserClicks();
    EXPECT_EQ(Main().fileTypeTabStrip.Selected(), "All");
    EXPECT_EQ(Shown(), Texts{"Invoice"});
    Pane().chkWord.UserClicks();
    EXPECT_EQ(Shown(), Texts{});
    Pane().cmdOtherTypes.UserClicks();
    EXPECT_TRUE(Pane().chkWord.Checked());
    EXPECT_EQ(Shown(), Texts{"Invoice"});

    // A folder that is chosen while all of them are searched is shown.
    Main().tvTreeView.UserSelects("Business\\Contracts");
    EXPECT_EQ(Shown(), Texts{"Lease"});
    EXPECT_EQ(Pane().txtLookFor.Text(), "");
    Type("memo");
    Pane().cboFolder.UserSelects(1);
    Main().tvTreeView.UserSelects("Get More Templates");
    EXPECT_EQ(Pane().txtLookFor.Text(), "") << "no category to search in";
    Pane().cboFolder.UserSelects(0);
    Main().tvTreeView.UserSelects("Business\\Contracts");
    Type("memo");
    Main().tvTreeView.UserClicksAgain(); // on the folder that the tree has shown as selected all along
    EXPECT_EQ(Shown(), Texts{"Lease"});
}

TEST_F(FindPaneTest, FavoritesAndFoldersAreGuarded)
{
    Start();
    Main().tvTreeView.UserSelects(Text(365));
    toolkit.ExpectMessage(Text(263), Icon::Information);
    EXPECT_TRUE(Main().Commands().Run("mnuEditFind"));
    EXPECT_FALSE(Main().Find().IsOpen());

    Main().tvTreeView.UserSelects("Business\\Contracts");
    Main().Commands().Run("mnuEditFind");
    system.jobs.FinishAll();
    for (const auto& [command, text] : {std::pair{"mnupopRenamefolder", 521}, {"mnupopDeletefolder", 523}}) {
        toolkit.ExpectMessage(Text(text) + "\r" + Text(522), Icon::Information);
        EXPECT_TRUE(Main().Commands().Run(command));
    }
    Type("memo");
    Main().Commands().Run("mnuAddToFavorites");
    EXPECT_EQ(StoredFavorites(), Texts{"Letters\\Memo.swt"});

    Pane().cboFolder.UserSelects(1);
    Main().tvTreeView.UserSelects(Text(365));
    EXPECT_EQ(Shown(), Texts{"Memo"});
    EXPECT_EQ(Pane().lblResult.Caption(), Text(371));
    Type("x");
    EXPECT_EQ(Shown(), Texts{"Memo"});
    toolkit.ExpectMessage(Text(371), Icon::Information);
    Pane().cmdFindNow.UserClicks();
}

TEST_F(FindPaneTest, ResultsSortShowAsThumbnailsAndKeepTheOrderOfFolders)
{
    AddTemplates({"Letters\\Previews\\Memo.jpg"});
    Open();
    auto& list = Main().lvListView;
    list.UserClicksColumn(browser::TemplateList::NameColumn);
    Type("m");
    EXPECT_EQ(list.SortColumn(), -1) << "the best first";
    EXPECT_EQ(Shown().front(), "Memo");
    list.UserClicksColumn(browser::TemplateList::NameColumn);
    list.UserClicksColumn(browser::TemplateList::NameColumn);
    EXPECT_EQ(Shown().back(), "Complaint");
    Main().Commands().Run("mnuViewThumbnails");
    const auto& rows = Main().Templates();
    EXPECT_EQ(rows.ThumbnailOf(rows.Find(InLibrary("Letters\\Memo.swt"))).picture,
              InLibrary("Letters\\Previews\\Memo.jpg"));
    Main().Commands().Run("mnuViewDetails");
    const auto folderWidth = [&] { return list.Columns()[browser::TemplateList::FolderColumn].width; };
    list.UserSizesColumn(browser::TemplateList::FolderColumn, 6000);
    Press(KeyCode::Escape);
    EXPECT_EQ(list.SortColumn(), browser::TemplateList::NameColumn);
    EXPECT_EQ(Shown().front(), "Budget");
    EXPECT_LT(folderWidth(), 6000);
    Type("m");
    EXPECT_EQ(folderWidth(), 6000);
    End();
    EXPECT_EQ(Setting("Browser", "ListViewSortColumn"), "0");
    EXPECT_EQ(Setting("Browser", "ListViewFoundFolderColumnSize"), "6000");
    EXPECT_LT(Setting("Browser", "ListViewFolderColumnSize"), "6000");
}

} // namespace
} // namespace tests
