#include "tests/support/TestMachine.h"

namespace tests {
namespace {

class FavoritesTest : public BrowserTest {
protected:
    const std::string key = std::string{SettingsKey} + "\\Browser\\Favorites";

    void AddFavorites(const Texts& paths)
    {
        for (const std::string& path : paths)
            PutSetting("Browser\\Favorites", path, "");
    }
    library::Favorites Fresh()
    {
        app::Program& program = Program();
        return {program.files, program.settings, program.messages, program.strings, program.state, program.toolkit};
    }
    void ShowFavorites()
    {
        PutSetting("Browser", "LastFolderBrowsed", "My Favorites");
        Start();
    }
};

TEST_F(FavoritesTest, ShowInRegistryOrderWithLowerCaseEndingsAndWithoutDetailsOutsideTheTree)
{
    AddTemplates({"Letters\\LOUD.SWT", "A\\B\\C\\D\\E\\deep.swt"});
    AddFavorites({"Letters\\LOUD.SWT", "A\\B\\C\\D\\E\\deep.swt", "letters\\Memo.swt", "Business\\Budget.ccw"});
    ShowFavorites();
    ASSERT_EQ(ListTexts(Main().lvListView), (Texts{"deep", "Memo", "Budget"}));
    const auto& rows = Main().Templates();
    EXPECT_EQ(rows.Text(0, 1) + rows.Text(0, 2) + rows.Text(0, 3), "");
    EXPECT_EQ(rows.Text(1, 1) + rows.Text(2, browser::TemplateList::SizeColumn), "letters0KB");
    EXPECT_EQ(Main().lvListView.Model()->Icon(2), 2);
    EXPECT_EQ(StoredFavorites().size(), 4u);
}

TEST_F(FavoritesTest, ThoseThatAreNoFileAreForgottenAtTheStart)
{
    AddFavorites({"Letters\\Memo.swt", "Letters\\Gone.swt", "Letters\\Formal", "Letters\\Me?o.swt",
                  InLibrary("Letters\\Memo.swt"), "\\\\server\\share\\x.swt"});
    ShowFavorites();
    EXPECT_EQ(StoredFavorites(), Texts{"Letters\\Memo.swt"});
}

TEST_F(FavoritesTest, ADriveThatIsAwayOrAFileThatCannotBeReadCostsNobodyHisList)
{
    AddFavorites({"Letters\\Memo.swt", "Business\\Budget.ccw"});
    library::Favorites favorites = Fresh();
    Program().state.SettingsAppName = "Tessaly GWX 1.0";
    Program().state.TemplatesPath = "Q:\\Away\\";
    favorites.GetFavoritesFromRegistry();
    EXPECT_EQ(StoredFavorites().size(), 2u);
    EXPECT_EQ(favorites.FavoritesList().size(), 2u);
}

TEST_F(FavoritesTest, AnotherLibraryCostsNobodyHisList)
{
    AddFavorites({"Letters\\Memo.swt", "Business\\Budget.ccw"});
    Start(); // sees them here
    system.files.AddFile("E:\\Other\\Letters\\Memo.swt");
    system.files.AddFile("E:\\Other\\Cards\\Birthday.swt");
    toolkit.FolderChoices = {"E:\\Other", std::string{Templates}};
    Main().Commands().Run("mnuTemplatesPath");
    Main().tvTreeView.UserSelects("Cards");
    Main().UserPresses(ui::Ctrl('D'));
    EXPECT_EQ(Main().Favorites().FavoritesList(), (Texts{"Letters\\Memo.swt", "Cards\\Birthday.swt"}));
    Restart();
    EXPECT_EQ(StoredFavorites().size(), 3u);

    Main().Commands().Run("mnuTemplatesPath"); // back
    EXPECT_EQ(Main().Favorites().FavoritesList(), (Texts{"Letters\\Memo.swt", "Business\\Budget.ccw"}));
    system.files.Remove(InLibrary("Letters\\Memo.swt"));
    Restart();
    EXPECT_EQ(StoredFavorites(), (Texts{"Business\\Budget.ccw", "Cards\\Birthday.swt"})) << "gone from its own library";

    Main().tvTreeView.UserSelects("Letters\\Formal");
    Main().UserPresses(ui::Ctrl('D'));
    Main().Commands().Run("mnupopRenamefolder");
    Main().tvTreeView.UserEndsLabelEdit("Stiff");
    toolkit.FolderChoices = {"E:\\Other"};
    Main().Commands().Run("mnuTemplatesPath");
    EXPECT_EQ(StoredFavorites().size(), 3u) << "renamed with its folder, it is of that library still";
}

TEST_F(FavoritesTest, APathThatIsPartOfAFavouriteIsNotAddedAgain)
{
    AddTemplates({"Letters\\My Memo.swt"});
    Start();
    Main().tvTreeView.UserSelects("Letters");
    EXPECT_TRUE(Item("mnuAddToFavorites").Visible);
    EXPECT_FALSE(Item("mnuRemoveFromFavorites").Visible);
    EXPECT_TRUE(Main().UserPresses(ui::Ctrl('D')));
    EXPECT_EQ(StoredFavorites(), Texts{"Letters\\Memo.swt"});
    EXPECT_EQ(Main().sbStatusBar.Panels()[1], "'Memo' has been added to My Favorites.");
    Main().lvListView.KeyDown(ui::Plain(ui::KeyCode::Delete)); // offers nothing: this list is a category's
    library::Favorites favorites = Fresh();
    favorites.GetFavoritesFromRegistry();
    for (const char* path : {"Letters\\Memo.swt", "letters\\MEMO.swt", "Memo.swt", "s\\M"}) {
        toolkit.ExpectMessage("Memo has already been added to 'My Favorites'.", Icon::Information);
        favorites.AddToFavorites(path, "Memo");
    }
    favorites.AddToFavorites("Letters\\My Memo.swt", "My Memo");
    toolkit.ExpectMessage("Template could not be found.", Icon::Information);
    favorites.AddToFavorites("Letters\\Gone.swt", "Gone");
    system.files.Remove(InLibrary("Letters\\Memo.swt"));
    toolkit.ExpectMessage("Memo has already been added to 'My Favorites'.", Icon::Information);
    favorites.AddToFavorites("Letters\\Memo.swt", "Memo");
    EXPECT_EQ(favorites.FavoritesList(), (Texts{"Letters\\Memo.swt", "Letters\\My Memo.swt"}));
    EXPECT_EQ(StoredFavorites(), favorites.FavoritesList());
    EXPECT_EQ(Setting("Browser\\Favorites", "Letters\\My Memo.swt"), "");
}

TEST_F(FavoritesTest, RemovingAsksForEachMatchFromTheLastOn)
{
    AddTemplates({"Letters\\Memorandum.swt", "Memos\\Other.swt"});
    const Texts all{"Letters\\Memo.swt", "Letters\\Memorandum.swt", "Business\\Budget.ccw", "Memos\\Other.swt"};
    using enum Answer;
    const struct {
        std::vector<Answer> answers;
        Texts left;
    } cases[] = {{{No, No, No}, all},
                 {{Yes, No, No}, {all[0], all[1], all[2]}},
                 {{No, Yes, No}, {all[0], all[2], all[3]}},
                 {{Yes, Yes, Yes}, {all[2]}}};
    for (const auto& which : cases) {
        End();
        system.registry.RemoveKey(Hive::CurrentUser, key);
        AddFavorites(all);
        ShowFavorites();
        EXPECT_FALSE(Item("mnuAddToFavorites").Visible);
        EXPECT_TRUE(Item("mnuRemoveFromFavorites").Visible);
        for (const Answer answer : which.answers)
            toolkit.ExpectMessage(Text(357), Icon::Question, answer);
        Main().lvListView.UserSelects(0);
        EXPECT_TRUE(Main().lvListView.KeyDown(ui::Plain(ui::KeyCode::Delete)));
        EXPECT_EQ(StoredFavorites(), which.left);
        EXPECT_EQ(Main().Favorites().FavoritesList(), which.left);
        EXPECT_EQ(Main().lvListView.Rows(), static_cast<int>(which.left.size()));
    }
}

TEST_F(FavoritesTest, AFavouriteThatSomebodyElseRemovedEmptiesTheListAndLeavesTheStore)
{
    AddFavorites({"Letters\\Memo.swt", "Business\\Budget.ccw"});
    ShowFavorites();
    ASSERT_TRUE(system.registry.DeleteValue(Hive::CurrentUser, key, "Letters\\Memo.swt"));
    toolkit.ExpectMessage(Text(357), Icon::Question, Answer::Yes);
    toolkit.ExpectMessage("Template could not be found.", Icon::Information);
    Main().lvListView.UserSelects(0);
    Main().Commands().Run("mnuRemoveFromFavorites");
    EXPECT_EQ(Main().Favorites().FavoritesList(), Texts{});
    EXPECT_EQ(Main().lvListView.Rows(), 0);
    EXPECT_EQ(Main().imgPreview.File(), "");
    EXPECT_EQ(Main().lvListView.EmptyText(), Text(614)) << "how to fill it";
    EXPECT_EQ(StoredFavorites(), Texts{"Business\\Budget.ccw"});
}

} // namespace
} // namespace tests
