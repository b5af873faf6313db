#include "tests/support/TestMachine.h"

#include "platform/Path.h"

namespace tests {
namespace {

using platform::Hive;
using Texts = std::vector<std::string>;

class FavoritesTest : public BrowserTest {
protected:
    const std::string key = std::string{SettingsKey} + "\\Browser\\Favorites";

    void AddFavorites(const Texts& paths)
    {
        for (const std::string& path : paths)
            system.registry.PutString(Hive::CurrentUser, key, path, "");
    }
    Texts Stored()
    {
        return system.registry.ValueNames(Hive::CurrentUser, key).value_or(Texts{});
    }
    void ShowFavorites()
    {
        PutSetting("Browser", "LastFolderBrowsed", "My Favorites");
        Start();
    }
};

TEST_F(FavoritesTest, ListInRegistryOrderWithSizeAndFolder)
{
    AddFavorites({"Letters\\Memo.swt", "Business\\Budget.ccw"});
    ShowFavorites();
    ASSERT_EQ(ListTexts(Main().lvListView), (Texts{"Memo", "Budget"}));
    EXPECT_EQ(Main().Templates().Text(1, browser::TemplateList::FolderColumn), "Business");
    EXPECT_EQ(Main().Templates().Text(1, browser::TemplateList::SizeColumn), "0KB");
    EXPECT_EQ(Main().lvListView.Model()->Icon(1), 2);
}

TEST_F(FavoritesTest, OnlyLowerCaseEndingsShowAndAFolderOutsideTheTreeHasNoDetails)
{
    AddTemplates({"Letters\\LOUD.SWT", "A\\B\\C\\D\\E\\deep.swt"});
    AddFavorites({"Letters\\LOUD.SWT", "A\\B\\C\\D\\E\\deep.swt", "letters\\Memo.swt"});
    ShowFavorites();
    ASSERT_EQ(ListTexts(Main().lvListView), (Texts{"deep", "Memo"}));
    for (const int column : {1, 2, 3})
        EXPECT_EQ(Main().Templates().Text(0, column), "") << column;
    EXPECT_EQ(Main().Templates().Text(1, 1), "letters");
    EXPECT_EQ(Stored().size(), 3u);
}

TEST_F(FavoritesTest, ThoseWhoseFileIsGoneAreForgottenAtTheStart)
{
    AddFavorites({"Letters\\Memo.swt", "Letters\\Gone.swt", "Letters\\Formal"});
    ShowFavorites();
    EXPECT_EQ(Stored(), Texts{"Letters\\Memo.swt"});
}

TEST_F(FavoritesTest, ADriveThatIsAwayOrAFileThatCannotBeReadCostsNobodyHisList)
{
    AddFavorites({"Letters\\Memo.swt", "Business\\Budget.ccw"});
    library::Favorites favorites{Program()};
    Program().state.SettingsAppName = "Tessaly GWX 1.0";
    Program().state.TemplatesPath = "Q:\\Away\\";
    favorites.GetFavoritesFromRegistry();
    EXPECT_EQ(Stored().size(), 2u);
    EXPECT_EQ(favorites.List().size(), 2u);
}

} // namespace
} // namespace tests
