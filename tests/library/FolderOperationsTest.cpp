#include "tests/support/TestMachine.h"

#include "library/FolderRemoval.h"

#include <algorithm>
#include <functional>

namespace tests {
namespace {

class FolderTest : public BrowserTest {
protected:
    ui::TreeView& Tree() { return Main().tvTreeView; }
    void Select(std::string_view path)
    {
        Tree().UserSelects(path);
        ASSERT_EQ(Tree().Selected()->key, path);
    }
    void Rename(std::string_view path, const std::string& name)
    {
        Select(path);
        ASSERT_TRUE(Main().Commands().Run("mnupopRenamefolder"));
        ASSERT_TRUE(Tree().EditedLabel());
        Tree().UserEndsLabelEdit(name);
    }
    void ExpectDeleteQuestion(const std::string& name, const std::string& count, Answer answer = Answer::Yes)
    {
        toolkit.ExpectMessage("Are you sure you want to delete \"" + name + "\" and all its contents?" +
                                  (count.empty() ? "" : "\r\n\r\n" + count + " will be deleted."),
                              Icon::Question, answer);
    }
    std::string Selected() { return Tree().Selected() != nullptr ? Tree().Selected()->key : std::string{}; }
};

// Rename.

TEST_F(FolderTest, ANewNameIsRefusedInTheOrderOfItsFaults)
{
    AddTemplates({"Letters\\Family\\a.swt"});
    const std::string taken =
        "Cannot rename Formal: A folder with the name you specified already exists. Specify a different folder name.";
    const std::string characters =
        "A folder name cannot contain any of the following characters:\r\n\\ / : * ? \" < > |";
    const std::string tooLong = "Folder name cannot exceed more than 40 characters.";
    const std::pair<std::string, std::string> cases[] = {
        // clang-format off
        {"My Favorites", taken}, {"Get More Templates", taken}, {"Family", taken}, {"fAMILY", taken},
        {"Previews", taken}, {"Create New", taken}, {"", "Enter a folder name."}, {std::string(41, 'x'), tooLong},
        {std::string(40, 'x') + ":", tooLong}, {std::string(40, 'x') + "\xC3\xA4", tooLong}, {".a?", characters},
        {".hidden", "A folder name cannot start with a ."}, {"..", "A folder name cannot start with a ."},
        {"a\\b", characters}, {"tab\tbed", characters},
        {"trail ", "A folder name cannot end with a dot or a blank."}, {"trail.", "A folder name cannot end with a dot or a blank."},
        {"com2.x", "The name 'com2.x' belongs to a device of the system. Specify a different folder name."},
        // clang-format on
    };
    Start();
    const auto disk = system.files.Snapshot();
    for (const auto& [name, message] : cases) {
        SCOPED_TRACE("<" + name + ">");
        toolkit.ExpectMessage(message, Icon::Information);
        Rename("Letters\\Formal", name);
        EXPECT_EQ(Selected(), "Letters\\Formal");
        ASSERT_TRUE(Tree().EditedLabel());
        EXPECT_EQ(Tree().EditedLabel()->text, name) << "to be mended";
        EXPECT_EQ(Tree().Find("Letters\\Formal")->text, "Formal");
        EXPECT_EQ(system.files.Snapshot(), disk);
        ASSERT_EQ(toolkit.NotAsScripted(), Texts{});
    }
}

TEST_F(FolderTest, ANameUnderWhichTheFolderWouldNotBeFoundIsAskedAbout)
{
    system.files.SetSorted();
    AddTemplates({"Letters\\Previews\\Memo.jpg", "Letters\\Formal\\Previews\\Complaint.jpg",
                  "Letters\\Formal\\A\\a.swt", "Letters\\Formal\\A\\B\\b.swt", "Letters\\Formal\\A\\cover.jpg"});
    const auto question = [](const std::string& name, const std::string& stopper) {
        return "Under the name '" + name + "' the folder would not be shown any more, because it would stand behind '" +
               stopper + "'. Do you want to choose another name?";
    };
    Start();
    toolkit.ExpectMessage(question("Zoo", "Previews"), Icon::Question, Answer::Yes);
    Rename("Letters\\Formal", "Zoo");
    ASSERT_TRUE(Tree().EditedLabel());
    EXPECT_EQ(Tree().EditedLabel()->text, "Zoo");
    Tree().UserEndsLabelEdit("official");
    EXPECT_EQ(Selected(), "Letters\\official");
    Rename("Letters\\official\\A", "Z"); // this level is listed to its end
    EXPECT_EQ(Selected(), "Letters\\official\\Z");
    toolkit.ExpectMessage(question("D", "cover.jpg"), Icon::Question, Answer::No);
    Rename("Letters\\official\\Z\\B", "D"); // the user's own will
    EXPECT_TRUE(system.files.Exists(InLibrary("Letters\\official\\Z\\D\\b.swt")));
    EXPECT_EQ(Tree().Find("Letters\\official\\Z\\D"), nullptr);
}

TEST_F(FolderTest, ANameOfFortyCharactersAndOddButHonestOnesAreTaken)
{
    Start();
    std::string path = "Letters\\Formal";
    for (const std::string& name :
         {std::string(38, 'y') + "\xC3\xA4z", std::string{" a.b"}, std::string{"com10"}, std::string{"\xE6\x97\xA5"}}) {
        SCOPED_TRACE(name);
        Rename(path, name);
        path = "Letters\\" + name;
        EXPECT_EQ(Selected(), path);
        EXPECT_TRUE(system.files.Exists(InLibrary(path + "\\Complaint.swt")));
        EXPECT_EQ(ListTexts(Main().lvListView), Texts{"Complaint"});
    }
}

TEST_F(FolderTest, ARenamedFolderKeepsItsPlaceItsFavouritesAndItsRecentFiles)
{
    AddTemplates({"Letters\\Formal\\Deep\\x.swt", "Letters\\Formality\\y.swt"});
    for (const char* favorite :
         {"Letters\\Formal\\Complaint.swt", "letters\\formal\\Deep\\x.swt", "Letters\\Formality\\y.swt"})
        PutSetting("Browser\\Favorites", favorite, "");
    Start();
    Select("Letters\\Formal");
    Main().lvListView.UserActivates(0);
    Rename("Letters\\Formal", "Casual");
    EXPECT_EQ(TreeTexts(Tree()), (Texts{"My Favorites", "Business", "  Contracts", "Letters", "  Casual", "    Deep",
                                        "  Formality", "", "Get More Templates"}));
    EXPECT_EQ(Selected(), "Letters\\Casual");
    EXPECT_EQ(ListTexts(Main().lvListView), Texts{"Complaint"});
    EXPECT_EQ(Main().Favorites().FavoritesList(),
              (Texts{"Letters\\Casual\\Complaint.swt", "Letters\\Casual\\Deep\\x.swt", "Letters\\Formality\\y.swt"}));
    Texts stored = StoredFavorites();
    std::ranges::sort(stored);
    EXPECT_EQ(stored, Main().Favorites().FavoritesList());
    EXPECT_EQ(Setting("Browser\\Recent Files", "File 1"), InLibrary("Letters\\Casual\\Complaint.swt"));
    EXPECT_EQ(Main().RecentFiles().List(), Texts{InLibrary("Letters\\Casual\\Complaint.swt")});
}

TEST_F(FolderTest, AFolderInUseKeepsItsNameAndItsFavourites)
{
    PutSetting("Browser\\Favorites", "Letters\\Formal\\Complaint.swt", "");
    system.files.SetHeldOpen(InLibrary("Letters\\Formal\\Complaint.swt"));
    Start();
    toolkit.ExpectMessage("Cannot rename folder, templates may be in use.\r\nClose the template(s) and try again.",
                          Icon::Information);
    Rename("Letters\\Formal", "Casual");
    EXPECT_EQ(Selected(), "Letters\\Formal");
    EXPECT_EQ(StoredFavorites(), Texts{"Letters\\Formal\\Complaint.swt"});
    EXPECT_EQ(Main().Favorites().FavoritesList(), Texts{"Letters\\Formal\\Complaint.swt"});
    EXPECT_EQ(Tree().EditedLabel()->text, "Casual");

    system.clock.OnSleep = [&] { system.files.SetHeldOpen(InLibrary("Letters\\Formal\\Complaint.swt"), false); };
    Rename("Letters\\Formal", "Casual");
    EXPECT_EQ(Selected(), "Letters\\Casual") << "held for a moment only";
    EXPECT_EQ(Main().Favorites().FavoritesList(), Texts{"Letters\\Casual\\Complaint.swt"});

    system.files.Remove(InLibrary("Letters\\Casual"));
    toolkit.ExpectMessage(Text(519) + "\r\n" + Text(516), Icon::Information);
    Rename("Letters\\Casual", "Formal");
    EXPECT_EQ(Tree().Find("Letters\\Casual"), nullptr) << "it is gone, and the tree says so";
}

TEST_F(FolderTest, TheLabelOffersTheFoldersOwnNameAndKeepingItChangesNothing)
{
    AddTemplates({"Business\\Guides\\a.pdf"});
    Start();
    Select("Business\\Guides| eBook");
    Main().Commands().Run("mnupopRenamefolder");
    ASSERT_TRUE(Tree().EditedLabel());
    EXPECT_EQ(Tree().EditedLabel()->text, "Guides");
    Tree().UserEndsLabelEdit("Guides");
    Tree().UserEndsLabelEdit("Twice");
    Main().Commands().Run("mnupopRenamefolder");
    Tree().UserCancelsLabelEdit();
    Tree().UserEndsLabelEdit("Late");
    EXPECT_TRUE(system.files.Exists(InLibrary("Business\\Guides\\a.pdf")));
    Rename("Business\\Guides| eBook", "Manuals");
    EXPECT_EQ(Selected(), "Business\\Manuals| eBook");
    EXPECT_TRUE(system.files.Exists(InLibrary("Business\\Manuals\\a.pdf")));
}

TEST_F(FolderTest, TopLevelFoldersAndAnOpenFindPaneRefuseBoth)
{
    Start();
    for (const char* node : {"Letters", "My Favorites"}) {
        Select(node);
        EXPECT_FALSE(Tree().UserStartsLabelEdit(node));
        EXPECT_EQ(Item("mnupopRenamefolder").Enabled, node == std::string{"Letters"})
            << "the entry of a category tells why";
        toolkit.ExpectMessage("You cannot rename top-level folders.", Icon::Information);
        Main().UserPresses(ui::Plain(ui::KeyCode::F2));
        toolkit.ExpectMessage("You cannot delete top-level folders.", Icon::Information);
        Tree().KeyDown(ui::Plain(ui::KeyCode::Delete));
    }
    Select("Letters\\Formal");
    EXPECT_TRUE(Main().lvListView.KeyDown(ui::Plain(ui::KeyCode::F2))); // about the folder, not while in the list
    EXPECT_FALSE(Tree().EditedLabel());
    Main().UserPresses(ui::Plain(ui::KeyCode::F2));
    ASSERT_TRUE(Tree().EditedLabel());
    EXPECT_TRUE(Main().Commands().Run("mnupopDeletefolder") && Main().Commands().Run("mnuRefreshTV"));
    EXPECT_TRUE(Tree().EditedLabel()) << "what is being typed is in nobody's way";
    Program().state.FindPaneOpen = true;
    const char* refused = "Cannot rename folders when Find pane is open.\rClose the Find pane and try again.";
    toolkit.ExpectMessage(refused, Icon::Information);
    Tree().UserEndsLabelEdit("Other");
    EXPECT_FALSE(Tree().UserStartsLabelEdit("Letters\\Formal"));
    toolkit.ExpectMessage(refused, Icon::Information);
    Main().UserPresses(ui::Plain(ui::KeyCode::F2));
    toolkit.ExpectMessage("Cannot delete folders when Find pane is open.\rClose the Find pane and try again.",
                          Icon::Information);
    Tree().KeyDown(ui::Plain(ui::KeyCode::Delete));
    EXPECT_FALSE(Tree().EditedLabel());
    EXPECT_TRUE(system.files.Exists(InLibrary("Letters\\Formal\\Complaint.swt")));
}

TEST_F(FolderTest, OpenBranchesStayOpenHoweverTheTreeIsBuiltAgain)
{
    AddTemplates({"Letters\\Formal\\Deep\\x.swt"});
    Start();
    Tree().UserExpands("Business");
    Select("Letters\\Formal");
    const auto isOpen = [&](const char* path) { return Tree().Find(path)->expanded; };
    toolkit.ExpectMessage("Enter a folder name.", Icon::Information);
    Rename("Letters\\Formal", "");
    EXPECT_TRUE(isOpen("Business") && isOpen("Letters") && !isOpen("Letters\\Formal"));
    Tree().UserCancelsLabelEdit();

    system.files.SetHeldOpen(InLibrary("Letters\\Formal\\Complaint.swt"));
    system.files.Remove(InLibrary("Business\\Contracts"));
    ExpectDeleteQuestion("Formal", "2 templates");
    toolkit.ExpectMessage(Text(515) + "\r" + Text(516), Icon::Critical);
    Main().Commands().Run("mnupopDeletefolder");
    EXPECT_TRUE(isOpen("Letters")) << "what could not be deleted is in sight";
    EXPECT_FALSE(isOpen("Business")) << "nothing is left in it";
}

// Delete.

TEST_F(FolderTest, DeletingAsksAndTakesTheTemplatesThePreviewsAndTheFoldersOfAnyDepth)
{
    AddTemplates({"Letters\\Formal\\A\\B\\C\\D\\E\\deep.swt", "Letters\\Formal\\A\\LOUD.CCW",
                  "Letters\\Formal\\previews\\Complaint.jpg", "Letters\\Formal\\A\\Previews\\odd.txt"});
    PutSetting("Browser\\Favorites", "Letters\\Formal\\Complaint.swt", "");
    PutSetting("Browser\\Favorites", "Letters\\Memo.swt", "");
    Start();
    Main().fileTypeTabStrip.UserSelects("Word");
    Select("Letters\\Formal");
    ExpectDeleteQuestion("Formal", "3 templates", Answer::No);
    Tree().KeyDown(ui::Plain(ui::KeyCode::Delete));
    EXPECT_TRUE(system.files.Exists(InLibrary("Letters\\Formal\\Complaint.swt")));
    EXPECT_EQ(ListTexts(Main().lvListView), Texts{"Complaint"});

    EXPECT_EQ(toolkit.Messages.back().proposed, Answer::No) << "Enter deletes nothing";
    ExpectDeleteQuestion("Formal", "3 templates");
    PutSetting("Browser", "LastTabSelected", "");
    Main().Commands().Run("mnupopDeletefolder");
    EXPECT_FALSE(system.files.Exists(InLibrary("Letters\\Formal")));
    EXPECT_TRUE(system.files.Exists(InLibrary("Letters\\Memo.swt")));
    EXPECT_EQ(Selected(), "Letters");
    EXPECT_EQ(Setting("Browser", "LastFolderBrowsed"), "Letters");
    EXPECT_EQ(Setting("Browser", "LastTabSelected"), "Word");
    EXPECT_EQ(TreeTexts(Tree()),
              (Texts{"My Favorites", "Business", "  Contracts", "Letters", "", "Get More Templates"}));
    EXPECT_EQ(ListTexts(Main().lvListView), Texts{"Memo"});
    EXPECT_EQ(StoredFavorites(), Texts{"Letters\\Memo.swt"});
    EXPECT_EQ(Main().Favorites().FavoritesList(), Texts{"Letters\\Memo.swt"});
}

TEST_F(FolderTest, TheViewsLetGoOfTheFilesBeforeTheFirstOneIsDeleted)
{
    Start();
    Select("Letters\\Formal");
    ExpectDeleteQuestion("Formal", "1 template");
    int rowsAtDeletion = -1;
    std::string pictureAtDeletion = "?";
    const std::size_t countingCalls = 5;
    system.faults.ForgetCalls();
    system.faults.ChangeBefore(countingCalls + 3, [&] {
        rowsAtDeletion = Main().lvListView.Rows();
        pictureAtDeletion = Main().imgPreview.File();
    });
    Main().Commands().Run("mnupopDeletefolder");
    EXPECT_EQ(rowsAtDeletion, 0);
    EXPECT_EQ(pictureAtDeletion, "");
}

TEST_F(FolderTest, WhatCannotBeDeletedIsToldAndTheRestIsGone)
{
    const std::string failed = "Cannot delete folder, templates may be in use.\rClose the template(s) and try again.";
    const struct {
        const char* what;
        std::function<void()> prepare;
        Texts left;
        const char* count = "2 templates";
    } cases[] = {
        {"a text file",
         [&] { system.files.AddFile(InLibrary("Letters\\Formal\\Sub\\read.me"), "mine"); },
         {"Sub", "Sub\\read.me"}},
        {"in use", [&] { system.files.SetHeldOpen(InLibrary("Letters\\Formal\\Complaint.swt")); }, {"Complaint.swt"}},
        {"read-only",
         [&] { system.files.SetAttributes(InLibrary("Letters\\Formal\\Sub\\b.swt"), platform::attribute::ReadOnly); },
         {"Sub", "Sub\\b.swt"}},
        {"a folder that cannot be listed: nothing goes",
         [&] { system.files.SetUnreadable(InLibrary("Letters\\Formal\\Sub")); },
         {"Complaint.swt", "Sub", "Sub\\b.swt"},
         ""},
        {"a name that leads to the neighbour: nothing goes",
         [&] { system.files.AddShortenedFolder(InLibrary("Letters\\Formal"), "Sub."); },
         {"Complaint.swt", "Sub", "Sub.", "Sub\\b.swt"},
         ""},
        {"in use where there is a recycle bin: nothing goes",
         [&] {
             system.shell.SetRecycleBin();
             system.files.SetHeldOpen(InLibrary("Letters\\Formal\\Sub\\b.swt"));
         },
         {"Complaint.swt", "Sub", "Sub\\b.swt"}},
    };
    for (const auto& which : cases) {
        SCOPED_TRACE(which.what);
        system.files.Remove(InLibrary("Letters\\Formal"));
        AddTemplates({"Letters\\Formal\\Complaint.swt", "Letters\\Formal\\Sub\\b.swt"});
        which.prepare();
        Restart();
        Select("Letters\\Formal");
        ExpectDeleteQuestion("Formal", which.count);
        toolkit.ExpectMessage(failed, Icon::Critical);
        Main().Commands().Run("mnupopDeletefolder");
        Texts left;
        for (const std::string& path : system.files.AllPaths(InLibrary("Letters\\Formal")))
            if (path.size() > InLibrary("Letters\\Formal\\").size())
                left.push_back(path.substr(InLibrary("Letters\\Formal\\").size()));
        EXPECT_EQ(left, which.left);
        EXPECT_EQ(Selected(), "Letters");
        EXPECT_EQ(ListTexts(Main().lvListView), Texts{"Memo"});
    }
}

TEST_F(FolderTest, AFolderGoesToTheRecycleBinAsOneUnlessSomethingInItMustNotGo)
{
    system.shell.SetRecycleBin();
    AddTemplates({"Letters\\Formal\\Sub\\b.swt", "Letters\\Formal\\Previews\\odd.txt", "Letters\\Mixed\\c.swt",
                  "Letters\\Mixed\\read.me", "Letters\\Linked\\d.swt",
                  "Letters\\Beyond the shell\\" + std::string(230, 'x') + ".swt"});
    system.files.AddFile("C:\\Outside\\precious.swt");
    system.files.AddLink(InLibrary("Letters\\Linked\\Away"), "C:\\Outside");
    library::FolderRemoval removal{Program().files, system.shell, std::string{Templates} + "\\"};
    EXPECT_EQ(removal.CountTemplates("Letters\\Formal"), 2u);
    EXPECT_TRUE(removal.Remove("Letters\\Formal"));
    EXPECT_FALSE(system.files.Exists(InLibrary("Letters\\Formal")));
    EXPECT_FALSE(removal.Remove("Letters\\Mixed"));
    EXPECT_TRUE(system.files.Exists(InLibrary("Letters\\Mixed\\read.me")));
    EXPECT_TRUE(removal.Remove("Letters\\Linked"));
    EXPECT_TRUE(removal.Remove("Letters\\Beyond the shell"));
    EXPECT_TRUE(system.files.Exists("C:\\Outside\\precious.swt"));
    EXPECT_EQ(system.shell.Recycled(), Texts{InLibrary("Letters\\Formal")});
}

TEST_F(FolderTest, WhoKeepsAFolderThatTheRecycleBinHasNoRoomForIsNotToldThatItFailed)
{
    system.shell.SetRecycleBin();
    Start();
    Select("Letters\\Formal");
    ExpectDeleteQuestion("Formal", "1 template");
    system.faults.OnCall = [this](std::string_view call, std::string_view) {
        if (call == "Shell.Recycle")
            system.faults.FailAt(1, platform::error::Declined);
    };
    Main().Commands().Run("mnupopDeletefolder");
    EXPECT_EQ(Selected(), "Letters\\Formal");
    EXPECT_TRUE(system.files.Exists(InLibrary("Letters\\Formal\\Complaint.swt")));
}

TEST_F(FolderTest, LinksAreRemovedAndWhatTheyPointAtIsWhole)
{
    system.files.AddFile("C:\\Outside\\precious.swt", "precious");
    system.files.AddFile("C:\\Outside\\Sub\\b.swt", "precious");
    system.files.AddLink(InLibrary("Letters\\Formal\\Linked"), "C:\\Outside");
    system.files.AddLink(InLibrary("Letters\\Formal\\Loop"), InLibrary("Letters"));
    system.files.AddLink(InLibrary("Letters\\Away"), "C:\\Outside");
    const auto outside = system.files.Snapshot("C:\\Outside");
    library::FolderRemoval removal{Program().files, system.shell, std::string{Templates} + "\\"};

    EXPECT_FALSE(removal.Remove("Letters\\Away\\Sub")) << "behind a link";
    EXPECT_TRUE(removal.Remove("Letters\\Away")) << "the link itself";
    EXPECT_TRUE(removal.Remove("Letters\\Formal"));
    EXPECT_FALSE(system.files.Exists(InLibrary("Letters\\Formal")));
    EXPECT_FALSE(system.files.Exists(InLibrary("Letters\\Away")));
    EXPECT_TRUE(system.files.Exists(InLibrary("Letters\\Memo.swt")));
    EXPECT_EQ(system.files.Snapshot("C:\\Outside"), outside);
    for (const char* odd :
         {"Letters", "", "Letters\\..\\Business", "Letters\\.", "..\\x", "Letters\\\\Formal", "C:\\Outside\\Sub"})
        EXPECT_FALSE(removal.Remove(odd)) << odd;
    EXPECT_EQ(system.files.Snapshot("C:\\Outside"), outside);
}

// Drag and drop.

TEST_F(FolderTest, OnlyARowOfTheListCanBeDroppedAndOnlyOnTheFavourites)
{
    Start();
    Select("Letters");
    for (const char* node : {"Letters", "Get More Templates"}) {
        toolkit.ExpectMessage("Unable to copy or move template to that folder.\r\nYou are only allowed to drag "
                              "templates into 'My Favorites'.",
                              Icon::Information);
        Tree().UserDrops(node, Main().lvListView);
    }
    for (const char* node : {"Letters", "My Favorites"}) {
        toolkit.ExpectMessage("Cannot drag a template from the Preview Pane.", Icon::Information);
        Tree().UserDrops(node, Main().imgPreview);
    }
    EXPECT_EQ(StoredFavorites(), Texts{});
    Tree().UserDrops("My Favorites", Main().lvListView);
    Tree().UserDrops("My Favorites", Main().sbStatusBar); // not from where anything can be dragged
    EXPECT_EQ(StoredFavorites(), Texts{"Letters\\Memo.swt"});
    EXPECT_EQ(Selected(), "Letters");
    for (const char* shown : {"Letters", "My Favorites"}) {
        Select(shown);
        toolkit.ExpectMessage("Memo has already been added to 'My Favorites'.", Icon::Information);
        Tree().UserDrops("My Favorites", Main().lvListView);
    }
}

} // namespace
} // namespace tests
