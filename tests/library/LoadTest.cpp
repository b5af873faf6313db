// The three passes that read the library from the disk into the tree.
#include "tests/support/TestMachine.h"

namespace tests {
namespace {

class LoadTest : public BrowserTest {
protected:
    LoadTest()
    {
        system.files.Remove(Templates);
        system.files.AddFolder(Templates);
    }

    /// The tree's categories as read back, without the special nodes.
    Texts Categories()
    {
        Texts texts = TreeTexts(Main().tvTreeView);
        std::erase(texts, "My Favorites");
        std::erase(texts, "Get More Templates");
        std::erase(texts, "");
        return texts;
    }
    const ui::TreeView::Node& Node(std::string_view key)
    {
        const auto* node = Main().tvTreeView.Find(key);
        if (node == nullptr)
            throw std::runtime_error{"no node " + std::string{key}};
        return *node;
    }
    /// Gives what is called "Hidden..." or "System..." that attribute.
    void Hide()
    {
        using namespace platform;
        for (const std::string& path : system.files.AllPaths(Templates))
            for (const auto& [start, bit] : {std::pair{"\\Hidden", attribute::Hidden}, {"\\System", attribute::System}})
                if (path.rfind(start) == path.rfind('\\'))
                    system.files.SetAttributes(path, system.files.Stat(path)->attributes | bit);
    }
    void Reload() { Main().RefreshLibrary(); }
    bool OnDisk(std::string_view relative) { return system.files.Exists(InLibrary(relative)); }
};

TEST_F(LoadTest, ShowsTheFoldersThatTheRulesLetThrough)
{
    const struct {
        const char* rule;
        Texts files; ///< names that begin with "Hidden" or "System" get that attribute
        Texts categories;
    } cases[] = {
        {"with templates somewhere below, and the way to them",
         {"A\\B\\C\\D\\deep.swt", "Pictures\\Previews\\x.jpg", "Notes\\readme.txt", "Cards\\x.swtx", "Top.swt"},
         {"A", "  B", "    C", "      D"}},
        {"four levels and no more", {"1st\\2nd\\3rd\\4th\\5th\\deep.swt", "1st\\a.swt"}, {"1st"}},
        {"each ending in any letter case",
         {"W\\a.SWT", "X\\a.ccw", "P\\a.Prt", "D\\a.pdf", "M\\a.mst", "Hid\\Hidden.swt", "Sys\\System.swt"},
         {"W", "X", "P", "D", "M"}},
        {"the scan of sub-folders stops at the previews or a picture",
         {"Early\\a.swt", "Early\\Before\\a.swt", "Early\\Previews\\a.jpg", "Early\\Zoo\\a.swt", "Picture\\a.swt",
          "Picture\\Before\\a.swt", "Picture\\cover.jpg", "Picture\\Zoo\\a.swt", "Upper\\a.swt",
          "Upper\\PREVIEWS\\a.swt", "Upper\\cover.JPG", "Upper\\Zoo\\a.swt"},
         {"Early", "  Before", "Picture", "  Before", "Upper", "  PREVIEWS", "  Zoo"}},
        {"the third level skips the previews without stopping there",
         {"A\\B\\Previews\\x.jpg", "A\\B\\Zoo\\a.swt"},
         {"A", "  B", "    Zoo"}},
        {"never a hidden or system folder, and no stop at such a picture",
         {"Hidden 1\\a.swt", "System 1\\a.swt", "A\\Hidden.jpg", "A\\Hidden 2\\a.swt", "A\\B\\System 3\\a.swt",
          "A\\B\\C\\Hidden 4\\a.swt", "A\\B\\C\\a.swt"},
         {"A", "  B", "    C"}},
        {"the leading category even without templates, in any letter case",
         {"Cards\\A.swt", "TESSALY Professional 3.0\\Sub\\A.swt"},
         {"Tessaly Professional 3.0", "  Sub", "Cards"}},
        {"never an excluded name, nor one of a special node twice",
         {"Find Recent Documents\\a.swt", "Create New\\a.swt", "Create New\\Sub\\a.swt", "My Favorites\\a.swt",
          "My Favorites\\Sub\\a.swt", "Get More Templates\\a.swt", "Cards\\Create New\\a.swt", "Cards\\b.swt",
          "Cards\\Find Recent Documents\\a.swt"},
         {"Cards"}},
    };
    for (const auto& which : cases) {
        SCOPED_TRACE(which.rule);
        system.files.Remove(Templates);
        AddTemplates(which.files);
        Hide();
        Restart();
        EXPECT_EQ(Categories(), which.categories);
        EXPECT_EQ(Main().tvTreeView.Roots().front()->image, library::treeimage::Favorites);
        EXPECT_EQ(Main().tvTreeView.Roots().back()->image, library::treeimage::GetMore);
        EXPECT_EQ(Main().tvTreeView.Roots().at(1)->bold, which.categories.front() == "Tessaly Professional 3.0");
    }
}

TEST_F(LoadTest, NumericCategoriesGetAKeyThatIsNoNumber)
{
    AddTemplates({"Years\\a.swt", "2004\\a.swt", "2004\\May\\a.swt", "-1.5\\a.swt", "2004a\\a.swt",
                  "Years\\2005\\a.swt", "2004_TS\\b.swt"});
    Start();
    EXPECT_EQ(Node("2004_TS|").text, "2004_TS") << "a folder of that name shows beside it";
    EXPECT_EQ(Node("2004_TS").text, "2004");
    EXPECT_EQ(Node("-1.5_TS").text, "-1.5");
    EXPECT_EQ(Node("2004\\May").parent, &Node("2004_TS"));
    EXPECT_EQ(Node("2004a").text, "2004a");
    EXPECT_EQ(Node("Years\\2005").text, "2005");

    Main().tvTreeView.UserSelects("2004_TS");
    EXPECT_EQ(ListTexts(Main().lvListView), Texts{"a"});
    EXPECT_EQ(Setting("Browser", "LastFolderBrowsed"), "2004");
    Reload();
    EXPECT_EQ(Main().tvTreeView.Selected(), &Node("2004_TS"));
}

TEST_F(LoadTest, FoldersBelowTheTopThatHoldPdfFilesAreEBooks)
{
    AddTemplates({"Guides\\a.pdf", "Guides\\Cooking\\a.pdf", "Guides\\Cooking\\Soups\\b.swt", "Guides\\Travel\\a.swt",
                  "Guides\\Cooking eBook\\c.swt", "Guides\\Travel\\draft.pdf"});
    system.files.SetAttributes(InLibrary("Guides\\Travel\\draft.pdf"), platform::attribute::Hidden);
    Start();
    EXPECT_EQ(Categories(), (Texts{"Guides", "  Cooking eBook", "    Soups", "  Cooking eBook", "  Travel"}));
    const auto& node = Node("Guides\\Cooking| eBook");
    EXPECT_EQ(node.image, 18);
    EXPECT_EQ(node.selectedImage, 18);

    Main().tvTreeView.UserSelects(node.key);
    EXPECT_EQ(ListTexts(Main().lvListView), Texts{"a"}) << "its path on the disk stays the folder's";
    EXPECT_EQ(Setting("Browser", "LastFolderBrowsed"), "Guides\\Cooking");
    Reload();
    ASSERT_NE(Main().tvTreeView.Selected(), nullptr);
    EXPECT_EQ(Main().tvTreeView.Selected()->text, "Cooking eBook");
}

TEST_F(LoadTest, ACategoryShowsItsOwnIconAndASubFolderNever)
{
    AddTemplates({"Cards\\a.swt", "Cards\\Folder2.ICO", "Cards\\folder.ico", "Letters\\a.swt", "Letters\\myfolder.ico",
                  "Letters\\Sub\\a.swt", "Letters\\Sub\\folder.ico"});
    system.files.AddFile(InLibrary("Cards\\Folder2.ICO"), "icon");
    Start();
    EXPECT_EQ(Main().tvTreeView.Images.Find(19)->bytes, "icon") << "no window reads it again";
    EXPECT_EQ(Main().tvTreeView.Images.Find(19)->file, InLibrary("Cards\\Folder2.ICO"));
    EXPECT_EQ(Node("Letters\\Sub").image, 2);
    for (const auto& [key, image] : {std::pair{"Cards", 19}, {"Letters", 17}}) {
        Main().tvTreeView.UserExpands(key);
        EXPECT_EQ(Node(key).image, image) << key;
        EXPECT_EQ(Main().tvTreeView.Selected(), &Node(key));
        Main().tvTreeView.UserCollapses(key);
        EXPECT_EQ(Node(key).selectedImage, image) << key;
    }
    Reload();
    EXPECT_EQ(Main().tvTreeView.Images.Last(), 19) << "a reload does not pile pictures up";
}

TEST_F(LoadTest, TheCatalogueSaysWhatTheTreeShows)
{
    AddTemplates({"Zoo\\b\\x.swt", "Zoo\\C\\x.swt", "Zoo\\a\\y\\Q\\x.swt", "Zoo\\a\\y\\p10\\x.swt",
                  "Zoo\\a\\y\\p9\\x.swt", "Zoo\\a\\y\\o\\x.pdf", "Zoo\\x.swt", "Zoo\\Hidden.swt",
                  "My Create New\\Sub\\x.swt", "My Sub\\there.swt"});
    Hide();
    Start();
    const library::Catalog& catalog = Main().Library().Contents();
    Texts texts;
    catalog.ForEach([&](const library::Catalog::Folder& folder) {
        texts.push_back(folder.text);
        EXPECT_EQ(Main().Library().Tree().Of(Node(folder.key)), &folder);
        return true;
    });
    EXPECT_EQ(texts, (Texts{"My Favorites", "Zoo", "a", "y", "o eBook", "p9", "p10", "Q", "b", "C", "My Create New",
                            "Sub", "My Sub", "Get More Templates"}));
    const auto files = catalog.FilesIn("ZOO").value();
    ASSERT_EQ(files.size(), 1u) << "without the hidden one";
    EXPECT_EQ(files.front().name, "x.swt");
    const auto* sub = catalog.FindByPath("My Create New\\Sub");
    EXPECT_EQ(catalog.PlaceOf(sub->path), "My Create New\\Sub") << "it is there";
    system.files.Remove(InLibrary("My Create New\\Sub"));
    EXPECT_EQ(catalog.PlaceOf(sub->path), "My Sub");
    EXPECT_EQ(catalog.FilesIn(catalog.PlaceOf(sub->path)).value().front().name, "there.swt");
}

// Empty folders are removed from the disk, and nothing else is.

TEST_F(LoadTest, RemovesOnlyFoldersThatAreEntirelyEmpty)
{
    AddTemplates({"Cards\\a.swt", "Text\\readme.txt", "Nested\\Full\\a.swt", "Secret\\Hidden.ini"});
    const std::pair<const char*, bool> expected[] = {
        {"Empty", false},           {"Nested\\Empty", false},   {"Nested\\Find Recent Documents", false},
        {"OnlySub\\Empty", false},  {"EmptyCloud", false},      {"Cards\\Previews", true},
        {"Hidden.git\\refs", true}, {"Cards\\System.old", true}};
    for (const auto& [folder, isThere] : expected)
        system.files.AddFolder(InLibrary(folder));
    Hide();
    system.files.SetReparseTag(InLibrary("EmptyCloud"), 0x9000001A);
    Start();
    for (const auto& [folder, isThere] : expected)
        EXPECT_EQ(OnDisk(folder), isThere) << folder;
    for (const char* kept : {"OnlySub", "Text", "Secret", "Nested\\Full"})
        EXPECT_TRUE(OnDisk(kept)) << kept;
    EXPECT_EQ(Categories(), (Texts{"Cards", "Nested", "  Full"}));
    Reload();
    EXPECT_FALSE(OnDisk("OnlySub")) << "it became empty by the last load";
    EXPECT_TRUE(system.files.Exists(Templates));
}

TEST_F(LoadTest, WhatIsNoTreeOfOursKeepsEveryEmptyFolder)
{
    const struct {
        const char* what;
        Texts files, emptyFolders;
        std::function<void()> prepare;
        Texts categories;
    } cases[] = {
        {"no template at all", {"Fonts\\readme.txt"}, {"Drivers", "Logs\\Old", "Fonts\\Old"}, [] {}, {}},
        {"e-books alone, as any folder may hold them", {"Papers\\a.pdf"}, {"Empty"}, [] {}, {"Papers"}},
        {"a folder with the user's documents in it",
         {"A\\x.swt"},
         {"Empty"},
         [&] { system.shell.SetFolderPath(platform::KnownFolder::Personal, InLibrary("A")); },
         {"A"}},
        {"a folder of the system",
         {"A\\x.swt"},
         {"Empty"},
         [&] {
             system.shell.SetFolderPath(platform::KnownFolder::Personal, "D:\\Me");
             system.shell.SetFolderPath(platform::KnownFolder::Windows, "C:\\");
         },
         {"A"}},
        {"a folder that cannot be read ends the pass",
         {"A\\x.swt", "B\\x.swt", "C\\x.swt"},
         {},
         [&] { system.files.SetUnreadable(InLibrary("B")); },
         {"A"}},
        {"a name that the system shortens to its neighbour's",
         {"Letters\\a.swt", "Letters\\Sub\\a.swt", "Full\\Empty\\x.txt"},
         {},
         [&] {
             for (const auto& [parent, name] :
                  {std::pair{"", "Letters "}, {"Letters", "Sub."}, {"Letters", "..."}, {"Full", "Empty ."}})
                 system.files.AddShortenedFolder(InLibrary(parent), name);
         },
         {"Letters", "  Sub"}},
    };
    for (const auto& which : cases) {
        SCOPED_TRACE(which.what);
        system.files.Remove(Templates);
        AddTemplates(which.files);
        for (const std::string& folder : which.emptyFolders)
            system.files.AddFolder(InLibrary(folder));
        End();
        which.prepare();
        const auto before = system.files.Snapshot();
        Start();
        EXPECT_EQ(system.files.Snapshot(), before);
        EXPECT_EQ(Categories(), which.categories);
        system.shell.SetFolderPath(platform::KnownFolder::Windows, "C:\\Windows");
    }
}

// Bounds and failures end a pass with what was found so far.

TEST_F(LoadTest, AHundredAndSecondFolderOfTheThirdLevelEndsTheScan)
{
    for (const int count : {101, 102}) {
        SCOPED_TRACE(count);
        system.files.Remove(Templates);
        AddTemplates({"A\\B\\x.swt", "A\\C\\Later\\x.swt"});
        for (int i = 0; i < count; ++i)
            AddTemplates({"A\\B\\S" + std::to_string(1000 + i) + "\\x.swt"});
        Restart();
        EXPECT_EQ(Main().tvTreeView.Find("A\\B\\S1000") != nullptr, count == 101);
        EXPECT_EQ(Main().tvTreeView.Find("A\\C\\Later") != nullptr, count == 101);
        EXPECT_NE(Main().tvTreeView.Find("A\\B"), nullptr);
    }
}

TEST_F(LoadTest, TheTableHoldsFiveHundredFolders)
{
    for (int i = 1; i <= 501; ++i)
        AddTemplates({"C" + std::to_string(i) + "\\x.swt"});
    Start();
    EXPECT_EQ(Main().Library().Table().Cell(0, 0), "500");
    EXPECT_NE(Main().tvTreeView.Find("C500"), nullptr);
    EXPECT_EQ(Main().tvTreeView.Find("C501"), nullptr);
}

TEST_F(LoadTest, WhatVanishesAfterItWasListedIsTakenAsNeverThere)
{
    AddTemplates({"A\\x.swt", "B\\Sub\\x.swt", "C\\x.swt"});
    toolkit.OnYield = [&](int) {
        if (browser.Main() != nullptr && browser.Main()->Library().Loading() && OnDisk("B"))
            system.files.Remove(InLibrary("B"));
    };
    Start();
    EXPECT_EQ(Categories(), (Texts{"A", "C"}));
}

// What is selected after a load.

TEST_F(LoadTest, ComesBackToTheFolderLastBrowsed)
{
    AddTemplates({"A\\x.swt", "A\\B\\y.swt", "C\\z.swt"});
    const std::pair<const char*, const char*> cases[] = {
        {"A\\B", "A\\B"}, {"a\\b", "A\\B"},      {"My Favorites", "My Favorites"}, {"", "A"},
        {"Gone", "A"},    {"Tessaly Desk", "A"}, {"Get More Templates", "A"}};
    for (const auto& [stored, selected] : cases) {
        End();
        PutSetting("Browser", "LastFolderBrowsed", stored);
        Start();
        ASSERT_NE(Main().tvTreeView.Selected(), nullptr) << stored;
        EXPECT_EQ(Main().tvTreeView.Selected()->key, selected) << stored;
    }
}

TEST_F(LoadTest, TheComboAndTheTableHoldTheFoldersInWalkOrder)
{
    AddTemplates({"2004\\x.swt", "B\\x.swt", "B\\Sub\\x.swt", "A\\x.swt"});
    PutSetting("Browser", "LastFolderBrowsed", "B\\Sub");
    Start();
    const auto& combo = Main().Library().TemplateFoldersCombo();
    EXPECT_EQ(combo.items, (Texts{"B", "A", "B\\Sub"})) << "without the numeric ones";
    EXPECT_EQ(combo.text, "B\\Sub");
    EXPECT_EQ(combo.selected, 2);
    const auto& table = Main().Library().Table();
    EXPECT_EQ(table.FindFolderRow("B\\Sub", "Sub"), 4u);
    EXPECT_EQ(table.Cell(4, library::FolderTable::ParentRow), "2");
    EXPECT_EQ(table.TemplateTypeCount, 4);
}

TEST_F(LoadTest, ALoadInTheMiddleOfALoadIsRefusedAndLosesNoNode)
{
    AddTemplates({"A\\x.swt", "B\\x.swt", "C\\x.swt"});
    Start();
    const Texts before = TreeTexts(Main().tvTreeView);
    int acted = 0;
    toolkit.OnYield = [&](int) {
        if (!Main().Library().Loading() || ++acted > 30)
            return;
        Main().UserPresses(ui::Plain(ui::KeyCode::F5));
        Main().tvTreeView.UserSelects("B");
        Main().lvListView.UserActivates(0);
    };
    Reload();
    EXPECT_GT(acted, 5);
    EXPECT_EQ(TreeTexts(Main().tvTreeView), before);
    EXPECT_TRUE(Main().tvTreeView.Enabled());
}

} // namespace
} // namespace tests
