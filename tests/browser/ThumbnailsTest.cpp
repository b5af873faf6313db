// The thumbnail view: which pictures it shows, on which frame, and what its items are good for.
#include "tests/support/TestMachine.h"

namespace tests {
namespace {

class ThumbnailsTest : public BrowserTest {
protected:
    void ShowThumbnails(std::string_view category)
    {
        if (browser.Main() == nullptr) {
            PutSetting("Browser", "ThumbnailViewOn", "True");
            Start();
        }
        Main().tvTreeView.UserSelects(category);
    }
    ui::Thumbnail At(int row) { return Main().Templates().ThumbnailOf(row); }
    bool Run(std::string_view command) { return Main().Commands().Run(command); }
};

TEST_F(ThumbnailsTest, EveryPictureOfTheFolderIsOneItemInDirectoryOrder)
{
    AddTemplates({"Letters\\Memo.prt", "Letters\\Previews\\Old.jpg", "Letters\\Previews\\ memo .JPG",
                  "Letters\\Previews\\Thumbs.db", "Letters\\Previews\\x.jpeg"});
    ShowThumbnails("Letters");
    EXPECT_EQ(ListTexts(Main().lvListView), (Texts{"Old", "Memo"}));
    EXPECT_EQ(At(1).picture, InLibrary("Letters\\Previews\\ memo .JPG"));
    EXPECT_EQ(At(1).fallback, InLibrary("NF.jpg"));
    EXPECT_EQ(Main().lvListView.Selected(), 0);

    // The picture opens its template, of two with one name the first; one whose template is gone says so.
    Main().lvListView.UserActivates(1);
    ASSERT_EQ(system.shell.Opened().size(), 1u);
    EXPECT_EQ(system.shell.Opened()[0], InLibrary("Letters\\Memo.swt"));
    toolkit.ExpectMessage(Text(169), Icon::Information);
    Main().lvListView.UserSelects(0);
    EXPECT_TRUE(Run("mnuAddToFavorites"));

    AddTemplates({"Letters\\Formal\\Deep\\x.swt"});
    Main().RefreshLibrary();
    system.files.Remove(InLibrary("Letters\\Formal\\Complaint.swt"));
    ShowThumbnails("Letters\\Formal");
    EXPECT_EQ(Main().lvListView.Rows(), 0);
    EXPECT_EQ(Main().lvListView.EmptyText(), Text(154));
    EXPECT_FALSE(Run("mnuFileOpen"));
    EXPECT_TRUE(Item("mnuViewThumbnails").Enabled) << "it is the view that shows";
}

TEST_F(ThumbnailsTest, TemplatesWithoutAPictureAreCountedAndShowWhenTheUserWantsThem)
{
    AddTemplates({"Business\\Previews\\Budget.jpg", "Business\\Previews\\Lost.jpg", "Letters\\Note.swt"});
    const Texts pictures{"Budget", "Lost"}, others{"Invoice", "Pitch", "Terms", "Photo"};
    Texts all = pictures;
    all.insert(all.end(), others.begin(), others.end());
    const auto expect = [&](const char* category, const Texts& shown, const char* status) {
        ShowThumbnails(category);
        EXPECT_EQ(ListTexts(Main().lvListView), shown);
        EXPECT_EQ(Main().sbStatusBar.Panels()[0], status);
    };
    expect("Business", pictures, "2 templates available in this folder (4 more without a picture)");
    EXPECT_FALSE(Item("mnuViewWithoutPicture").Checked);
    expect("Letters", {"Memo", "Note"}, "2 templates available in this folder (2 without a picture)");
    EXPECT_TRUE(Item("mnuViewWithoutPicture").Checked) << "where there is no picture at all";
    EXPECT_EQ(At(0).fallback, InLibrary("NF.jpg"));
    Main().lvListView.UserActivates(1);
    EXPECT_EQ(system.shell.Opened(), Texts{InLibrary("Letters\\Note.swt")});

    Run("mnuViewWithoutPicture"); // not there either
    expect("Letters", {}, "0 templates available in this folder (2 more without a picture)");
    EXPECT_EQ(Main().lvListView.EmptyText(), Text(154) + "\r\n" + Text(611));
    Run("mnuViewWithoutPicture"); // everywhere
    expect("Business", all, "6 templates available in this folder (4 without a picture)");
    Restart();
    expect("Business", all, "6 templates available in this folder (4 without a picture)");
    Main().fileTypeTabStrip.UserSelects("Word");
    expect("Letters\\Formal", {"Complaint"}, "1 template available in this folder (1 without a picture)");
    Run("mnuViewDetails");
    EXPECT_EQ(Main().sbStatusBar.Panels()[0], "1 template available in this folder");
    EXPECT_FALSE(Item("mnuViewWithoutPicture").Enabled);
}

TEST_F(ThumbnailsTest, TabsAndExcludedNamesCountHereToo)
{
    PutSetting("Options", "ExcludedTemplates", "Pitch");
    AddTemplates({"Business\\Previews\\Invoice.jpg", "Business\\Previews\\Budget.jpg", "Business\\Previews\\Pitch.jpg",
                  "Business\\Previews\\Lost.jpg"});
    ShowThumbnails("Business");
    const std::pair<const char*, Texts> tabs[] = {
        {"Word", {"Invoice"}}, {"Excel", {"Budget"}}, {"PPT", {}}, {"All", {"Invoice", "Budget", "Lost"}}};
    for (const auto& [tab, expected] : tabs) {
        Main().fileTypeTabStrip.UserSelects(tab);
        EXPECT_EQ(ListTexts(Main().lvListView), expected) << tab;
    }
}

TEST_F(ThumbnailsTest, TheFrameIsLookedForWhereTheTemplatesAreButTakenFromTheHardDisk)
{
    AddTemplates({"Letters\\Previews\\Memo.jpg"});
    PutSetting("Browser", "Access HDD_Templates", "False");
    PutSetting("Browser", "CDROM Templates Path", Templates);
    PutSetting("Browser", "HDD Templates Path", "D:\\Elsewhere");
    PutSetting("Browser\\Favorites", "Letters\\Memo.swt", "");
    system.files.AddFile("D:\\Elsewhere\\background.bmp", "frame");
    ShowThumbnails("Letters");
    EXPECT_EQ(At(0).frame, ""); // there, but not where the templates are

    system.files.AddFile(InLibrary("background.bmp"), "frame");
    ShowThumbnails("My Favorites");
    ASSERT_EQ(ListTexts(Main().lvListView), Texts{"Memo"});
    EXPECT_EQ(At(0).frame, InLibrary("background.bmp")); // favourites take it from where the templates are
    EXPECT_EQ(At(0).picture, InLibrary("Letters\\Previews\\Memo.jpg"));
    ShowThumbnails("Letters");
    EXPECT_EQ(At(0).frame, "D:\\Elsewhere\\background.bmp");
}

TEST_F(ThumbnailsTest, TheViewIsAModeLikeTheOthersAndIsRemembered)
{
    AddTemplates({"Business\\Previews\\Budget.jpg", "Business\\Previews\\Terms.jpg"});
    PutSetting("Browser", "ListViewType", "3");
    Start();
    Main().tvTreeView.UserSelects("Business");
    Main().lvListView.UserSelects(3);
    ASSERT_EQ(Main().List().Selected()->text, "Terms");
    toolkit.Screen = {640, 900};
    toolkit.ExpectMessage(Text(277), Icon::Information);
    EXPECT_TRUE(Run("mnuViewThumbnails"));
    EXPECT_EQ(Main().lvListView.GetView(), ui::ListView::View::Details);

    toolkit.Screen = {800, 600};
    EXPECT_TRUE(Run("mnuViewThumbnails"));
    EXPECT_EQ(Main().lvListView.GetView(), ui::ListView::View::Thumbnails);
    EXPECT_EQ(Main().List().Selected()->text, "Terms");
    Restart();
    EXPECT_EQ(Setting("Browser", "ThumbnailViewOn") + Setting("Browser", "ListViewType"), "True3");
    EXPECT_EQ(ListTexts(Main().lvListView), (Texts{"Budget", "Terms"}));
    Main().lvListView.UserSelects(1);
    EXPECT_TRUE(Run("mnuViewDetails"));
    EXPECT_EQ(Main().lvListView.Rows(), 5);
    EXPECT_EQ(Main().List().Selected()->text, "Terms");
}

TEST_F(ThumbnailsTest, AFolderOfPicturesThatCannotBeReadIsToldAndNothingElseStops)
{
    AddTemplates({"Letters\\Previews\\Memo.jpg"});
    ShowThumbnails("Business");
    system.files.SetUnreadable(InLibrary("Letters\\Previews"));
    toolkit.ExpectMessage(Text(278), Icon::Information);
    ShowThumbnails("Letters");
    EXPECT_EQ(Main().lvListView.Rows(), 0);
}

} // namespace
} // namespace tests
