// The manager of solution packs, and installing one, in a whole browser.
#include "tests/packs/PackBuilder.h"
#include "tests/support/TestMachine.h"

#include "packs/frmContentPackManager.h"

#include <functional>
#include <optional>

namespace tests {
namespace {

using packs::frmContentPackManager;

class PacksTest : public BrowserTest {
protected:
    struct Pack {
        std::string name;
        std::string folders{};
        std::string setUp{"0"};
        std::string description{"Templates"};
    };
    void PutPack(const Pack& pack)
    {
        const std::string section = "Content\\" + pack.name;
        PutSetting(section, "Version", "Tessaly 1.0");
        PutSetting(section, "Description", pack.description);
        PutSetting(section, "PackInstalledBySetUp", pack.setUp);
        PutSetting(section, "TemplateFolders", pack.folders);
    }
    Texts Installed()
    {
        return system.registry.SubKeys(Hive::CurrentUser, std::string{SettingsKey} + "\\Content").value_or(Texts{});
    }
    /// What is in the library, by path from there.
    Texts InTheLibrary(const std::string& folder = {}) const
    {
        Texts paths = system.files.AllPaths(InLibrary(folder));
        for (std::string& path : paths)
            path.erase(0, Templates.size() + 1);
        return paths;
    }
    /// Opens the manager, lets `act` use it, and closes it.
    void InManager(const std::function<void(frmContentPackManager&)>& act)
    {
        toolkit.OnModal<frmContentPackManager>("frmContentPackManager", [act](auto& form) {
            act(form);
            form.btnClose.UserClicks();
        });
        Main().Commands().Run("mnuSolutionPackManager");
    }
    /// What the user sees in the list, a line a row.
    static Texts RowsOf(const frmContentPackManager& form)
    {
        Texts rows;
        for (int row = 0; row < form.lvPacks.Rows(); ++row) {
            const auto text = [&](int column) { return form.lvPacks.Model()->Text(row, column); };
            rows.push_back(text(0) + "|" + text(1) + "|" + text(2));
        }
        return rows;
    }
    /// Chooses the file in the menu's command, and lets the browser look at it.
    void Install(std::optional<std::string> file)
    {
        toolkit.FileChoices.push_back(std::move(file));
        EXPECT_TRUE(Main().Commands().Run("mnuInstallNewTemplates"));
        while (system.jobs.Count() > 0)
            system.jobs.Finish();
    }
    void StartInstaller()
    {
        system.files.AddFile("C:\\Garden.exe", PackBuilder::Pack("Tessaly 1.0"));
        Install("C:\\Garden.exe");
    }
    std::string LockText() { return Text(192) + "\r\n" + Text(193); }
};

// The list.

TEST_F(PacksTest, ListsWhatTheRegistryHolds)
{
    Start();
    InManager([](auto& form) { // no pack has ever been installed
        EXPECT_EQ(form.lvPacks.Rows(), 0);
        EXPECT_FALSE(form.btnDelete.Enabled() || form.btnDeleteAll.Enabled());
    });
    PutSetting("Content", "Template Pack Path", "C:\\old.exe");
    InManager([](auto& form) { EXPECT_EQ(form.lvPacks.Rows(), 0); });
    PutPack({"Garden", "", "0", "Price lists"});
    PutSetting("Content\\Bare", "Other", "x");
    system.files.AddFile("C:\\Program Files\\Template Browser\\Support\\Support.ini",
                         "[Tessaly Desk]\r\nIcon_16x16=a.ico\r\n");
    system.files.AddFile("C:\\Program Files\\Template Browser\\Support\\a.ico");
    InManager([&](auto& form) {
        EXPECT_EQ(RowsOf(form), (Texts{"Bare||", "Garden|Tessaly 1.0|Price lists"}));
        EXPECT_TRUE(form.btnDelete.Enabled() && form.btnDeleteAll.Enabled());
        EXPECT_TRUE(form.IconFile().ends_with("a.ico"));
        toolkit.ExpectMessage(Text(174), Icon::None);
        system.faults.FailAt(1, platform::error::AccessDenied);
        form.GetTemplatPacks();
        EXPECT_EQ(form.lvPacks.Rows(), 0);
        form.GetTemplatPacks();
        form.lvPacks.UserSelects(1);
        PutPack({"Another"});
        toolkit.OnYield = [&](int) { // a newer list is asked for while this one is being read
            toolkit.OnYield = {};
            PutPack({"Late"});
            form.GetTemplatPacks();
        };
        form.GetTemplatPacks();
        EXPECT_EQ(form.lvPacks.Rows(), 4);
        EXPECT_EQ(form.lvPacks.Selected(), 2) << "the same pack";
    });
}

// Delete.

TEST_F(PacksTest, DeletesOnePackAndKeepsTheFolderThatIsShown)
{
    AddTemplates(
        {"Garden\\List.swt", "Garden\\Flyers\\Spring.swt", "Garden\\folder_x.ico", "Garden\\Previews\\List.jpg"});
    PutPack({"Bundled", "Letters", "1"});
    PutPack({"Garden", "Garden\r\nGarden\\Flyers"});
    PutPack({"Gone", "Letters"});
    PutSetting("Browser\\Favorites", "Garden\\List.swt", "");
    Start();
    Main().tvTreeView.UserSelects("Letters");
    InManager([&](auto& form) {
        form.lvPacks.UserSelects(1);
        toolkit.ExpectMessage(Text(528) + "Garden" + Text(529), Icon::Question, Answer::No);
        form.btnDelete.UserClicks();
        EXPECT_EQ(form.lvPacks.Rows(), 3);
        toolkit.ExpectMessage(Text(528) + "Garden" + Text(529), Icon::Question, Answer::Yes);
        EXPECT_TRUE(form.lvPacks.KeyDown(ui::Plain(ui::KeyCode::Delete)));
        EXPECT_EQ(RowsOf(form), (Texts{"Bundled|Tessaly 1.0|Templates", "Gone|Tessaly 1.0|Templates"}));
        EXPECT_EQ(form.lvPacks.Selected(), 1);
        EXPECT_EQ(Main().tvTreeView.Find("Garden"), nullptr);
        // Nobody knows any more whose files those of a pack are that went by itself; it leaves the list silently.
        EXPECT_TRUE(system.registry.DeleteKey(Hive::CurrentUser, std::string{SettingsKey} + "\\Content\\Gone"));
        toolkit.ExpectMessage(Text(528) + "Gone" + Text(529), Icon::Question, Answer::Yes);
        form.btnDelete.UserClicks();
        EXPECT_EQ(form.lvPacks.Rows(), 1);
        EXPECT_EQ(form.lvPacks.Selected(), 0);
        toolkit.ExpectMessage(Text(528) + "Bundled" + Text(529), Icon::Question, Answer::Yes);
        form.btnDelete.UserClicks();
    });
    PutPack({"By number", "Letters"});
    system.registry.PutDword(Hive::CurrentUser, std::string{SettingsKey} + "\\Content\\By number",
                             "PackInstalledBySetUp", 1);
    toolkit.ExpectMessage(Text(527), Icon::Question, Answer::Yes);
    InManager([](auto& form) { form.btnDeleteAll.UserClicks(); });
    EXPECT_EQ(Installed(), Texts{});
    EXPECT_FALSE(system.files.Exists(InLibrary("Garden")));
    EXPECT_TRUE(system.files.Exists(InLibrary("Letters\\Memo.swt"))) << "of the product's own setup";
    EXPECT_EQ(Main().tvTreeView.Selected()->key, "Letters");
    EXPECT_EQ(ListTexts(Main().lvListView), Texts{"Memo"});
    EXPECT_EQ(StoredFavorites(), Texts{});
}

TEST_F(PacksTest, RemovesWhatIsThePacksAloneAndNamesTheRest)
{
    const Texts all{"P\\A.swt",           "P\\B.swt",       "P\\notes.txt",  "P\\Previews\\A.jpg",
                    "P\\Previews\\B.jpg", "P\\Mine\\M.swt", "P\\Sub\\S.swt", "Q\\Q.swt"};
    const struct {
        const char *what, *record, *other;
        Texts gone, kept;
    } rows[] = {
        // clang-format off
        {"nothing recorded", "", "", {}, {}},
        {"a folder", "P", "", {"P\\A.swt", "P\\B.swt", "P\\Previews"}, {"P\\notes.txt", "P\\Mine", "P\\Sub"}},
        {"with its files", "P|a.swt|notes.txt", "", {"P\\A.swt", "P\\notes.txt", "P\\Previews\\A.jpg"},
         {"P\\B.swt", "P\\Mine", "P\\Sub", "P\\Previews\\B.jpg"}},
        {"no file of it is a name", "P|..\\Q\\Q.swt|", "", {},
         {"P\\A.swt", "P\\B.swt", "P\\notes.txt", "P\\Mine", "P\\Sub", "P\\Previews\\A.jpg", "P\\Previews\\B.jpg"}},
        {"a folder within", "P\\Sub\\\nQ|Q.swt", "", {"P\\Sub", "Q"}, {}},
        {"shared as a whole", "P\r\nQ", "P\nP\\Sub\nP\\Mine", {"Q"}, {"P\\notes.txt"}},
        {"shared in part", "P|A.swt|B.swt", "P|B.swt|notes.txt\nP\\Sub\nP\\Mine",
         {"P\\A.swt", "P\\Previews\\A.jpg"}, {}},
        {"that is not there", "Gone\\Far\nQ", "", {"Q"}, {}},
        {"outside and nowhere",
         "C:\\Templates\\Q\n\\Q\n..\\Templates\\Q\nQ\\..\n.\n\\\n/Q\nQ/Q\nC:Q\nQ.\nQ \\\nNUL\nP\\Previews\n"
         "\\\\?\\C:\\Templates\\Q\nQ::$DATA\nQ*\n\tQ\n\\\\server\\share\\Q", "", {}, {}},
        // clang-format on
    };
    Start();
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        for (const char* folder : {"P", "Q"})
            if (system.files.Exists(InLibrary(folder)))
                system.files.Remove(InLibrary(folder));
        AddTemplates(all);
        PutPack({"Pack", row.record});
        PutPack({"Other", row.other});
        auto expected = InTheLibrary();
        std::erase_if(expected, [&](const std::string& path) {
            return std::ranges::any_of(
                row.gone, [&](const std::string& gone) { return path == gone || path.starts_with(gone + "\\"); });
        });
        packs::TemplatePackManager manager{
            system.registry, Program().files, Program().settings, Program().messages, Program().strings,
            Program().state, toolkit};
        if (!row.kept.empty()) {
            std::string told = Text(643) + "\r\n";
            for (const std::string& path : row.kept)
                told += "\r\n" + path;
            toolkit.ExpectMessage(told, Icon::Information);
        }
        manager.Delete({"Pack"}, [] {}, [] {});
        EXPECT_EQ(InTheLibrary(), expected);
        EXPECT_EQ(Installed(), Texts{"Other"});
    }
}

TEST_F(PacksTest, GoesThroughNoLink)
{
    system.files.AddFile("C:\\Outside\\Theirs.swt");
    system.files.AddFile("C:\\Outside\\Previews\\Theirs.jpg");
    AddTemplates({"P\\A.swt"});
    system.files.AddLink(InLibrary("P\\Previews"), "C:\\Outside\\Previews");
    system.files.AddLink(InLibrary("Linked"), "C:\\Outside");
    PutPack({"Pack", "P\nLinked\nLinked\\Previews\nLinked\\Deep"});
    Start();
    const auto outside = system.files.Snapshot("C:\\Outside");
    toolkit.ExpectMessage(Text(528) + "Pack" + Text(529), Icon::Question, Answer::Yes);
    toolkit.ExpectMessage(Text(643) + "\r\n\r\nP\\Previews\r\nLinked\\Deep\r\nLinked", Icon::Information);
    InManager([](auto& form) { form.btnDelete.UserClicks(); });
    EXPECT_EQ(system.files.Snapshot("C:\\Outside"), outside);
    EXPECT_EQ(InTheLibrary("P"), (Texts{"P\\Previews"}));
    EXPECT_EQ(Installed(), Texts{});
}

TEST_F(PacksTest, DeleteAllRemovesSharedFoldersAndNamesTheFilesInUse)
{
    AddTemplates({"Garden\\List.swt", "Garden\\Open.swt", "Garden\\Previews\\Open.jpg", "Garden\\mine.txt"});
    PutPack({"Garden", "Garden"});
    PutPack({"Garden two", "Garden"}); // a shared folder goes with the last of its packs
    system.files.SetHeldOpen(InLibrary("Garden\\Open.swt"));
    system.files.SetAttributes(InLibrary("Garden\\List.swt"), platform::attribute::ReadOnly); // from a CD
    Start();
    toolkit.ExpectMessage(Text(527), Icon::Question, Answer::Yes);
    toolkit.ExpectMessage(Text(740) + "\r\n\r\nGarden\\Open.swt\r\n\r\n" + Text(643) + "\r\n\r\nGarden\\mine.txt",
                          Icon::Critical);
    InManager([](auto& form) {
        form.btnDeleteAll.UserClicks();
        EXPECT_EQ(form.lvPacks.Rows(), 0);
    });
    EXPECT_EQ(Installed(), Texts{});
    EXPECT_EQ(InTheLibrary("Garden"), (Texts{"Garden\\Open.swt", "Garden\\mine.txt"}));
    EXPECT_NE(Main().tvTreeView.Find("Garden"), nullptr);
}

// Install.

TEST_F(PacksTest, StartsOnlyWhatCarriesTheProductsWord)
{
    Start();
    Install(std::nullopt);
    EXPECT_EQ(toolkit.FilesAsked.back().title, Text(510));
    EXPECT_EQ(toolkit.FilesAsked.back().filter, Text(511));
    EXPECT_EQ(toolkit.FilesAsked.back().folder, system.shell.FolderPath(platform::KnownFolder::Personal));
    const std::pair<const char*, std::string> refused[] = {{"C:\\text.exe", "Dear Sirs"},
                                                           {"C:\\other.exe", PackBuilder::Pack("1.0")},
                                                           {"C:\\pack.dll", PackBuilder::Pack("Tessaly")}};
    for (const auto& [file, contents] : refused) {
        system.files.AddFile(file, contents);
        if (!contents.starts_with("MZ"))
            toolkit.ExpectMessage(Text(162), Icon::None);
        toolkit.ExpectMessage(Text(258), Icon::Information);
        Install(file);
        EXPECT_TRUE(system.shell.Runs().empty()) << file;
    }
    system.files.AddFile("C:\\lower.exe", PackBuilder::Pack("by tessaly inc."));
    Install("C:\\lower.exe");
    EXPECT_EQ(system.shell.Runs().at(0).application, "C:\\lower.exe");
    EXPECT_EQ(Setting("Content", "Template Pack Path"), "C:\\lower.exe");
}

TEST_F(PacksTest, AnInstallerThatDoesNotStartHoldsNoLock)
{
    Start();
    for (const auto failure : {platform::error::FileNotFound, platform::error::Declined}) {
        system.shell.OnRun([failure](const auto&) { return std::unexpected{failure}; });
        if (failure != platform::error::Declined)
            toolkit.ExpectMessage(Text(257), Icon::Information);
        StartInstaller();
    }
    system.shell.OnRun({});
    StartInstaller();
    EXPECT_EQ(system.shell.Watched(), 1u);
}

TEST_F(PacksTest, LocksUntilTheInstallerHasEndedAndLoadsTheLibraryAgain)
{
    Start();
    StartInstaller();
    InManager([&](auto& form) {
        EXPECT_EQ(form.lblInstalling.Caption(), Text(192));
        toolkit.ExpectMessage(LockText(), Icon::Information);
        form.btnInstall.UserClicks();
        AddTemplates({"Garden\\List.swt"});
        PutPack({"Garden", "Garden"});
        system.shell.EndWatched(1); // however it ends
        EXPECT_EQ(form.lblInstalling.Caption(), "");
        EXPECT_EQ(form.lvPacks.Rows(), 1);
        EXPECT_NE(Main().tvTreeView.Find("Garden"), nullptr);
    });
    StartInstaller();
    // It ends while the library is being read: what it brought last is not missed.
    toolkit.OnYield = [&](int) {
        if (Main().Library().Loading()) {
            toolkit.OnYield = {};
            AddTemplates({"AAA\\Late.swt"});
            system.shell.EndWatched(0);
        }
    };
    Main().UserPresses(ui::Plain(ui::KeyCode::F5));
    EXPECT_NE(Main().tvTreeView.Find("AAA"), nullptr);
    EXPECT_FALSE(HasSetting("Content", "Pack Installer"));
}

TEST_F(PacksTest, AnotherBrowserSeesTheLockAndItsEnd)
{
    Start();
    StartInstaller();
    Main().Close();
    toolkit.RunPosted();
    EXPECT_EQ(system.shell.Watched(), 0u);

    app::Browser second{system.AsPlatform(), toolkit, pictures};
    second.Start("EXE", "", "", "", "");
    toolkit.ExpectMessage(LockText(), Icon::Information);
    EXPECT_TRUE(second.Main()->Commands().Run("mnuInstallNewTemplates"));
    AddTemplates({"Garden\\List.swt"});
    system.shell.EndWatched(0);
    EXPECT_NE(second.Main()->tvTreeView.Find("Garden"), nullptr);
    for (const char* stale : {"1 1", "", "x", "99999999999 1", "1001", "1001 ", "1001 1001 1"}) {
        PutSetting("Content", "Pack Installer", stale);
        toolkit.FileChoices.push_back(std::nullopt);
        EXPECT_TRUE(second.Main()->Commands().Run("mnuInstallNewTemplates")) << stale;
    }
}

// On the web.

TEST_F(PacksTest, MorePacksAreOnOnePageFromEverywhere)
{
    Start();
    const struct {
        const char *content, *host, *opened;
    } rows[] = {{"", "", ""},
                {"", "http://tessaly.example", "http://tessaly.example/SolutionPacks.asp"},
                {"", "http://tessaly.example/desk/", "http://tessaly.example/desk/SolutionPacks.asp"},
                {"https://packs.example/", "http://tessaly.example", "https://packs.example/"},
                {"C:\\Windows\\notepad.exe", "", ""}};
    for (const auto& row : rows) {
        PutSetting("Content", "ContentURL", row.content);
        PutSetting("Options", "WebHostPath", row.host);
        system.shell.Forget();
        if (*row.opened == '\0')
            toolkit.ExpectMessage(Text(367), Icon::Information);
        Main().tbToolBar.UserClicks("mnuGetNewDesigns");
        EXPECT_EQ(system.shell.Opened(), *row.opened == '\0' ? Texts{} : Texts{row.opened});
    }
    PutSetting("Content", "ContentURL", "http://packs.example/");
    system.shell.Forget();
    Main().tvTreeView.UserSelects("Get More Templates");
    EXPECT_TRUE(system.shell.Opened().empty()) << "the arrow keys pass over it";
    Main().tvTreeView.DblClick(*Main().tvTreeView.Selected());
    EXPECT_TRUE(Main().tvTreeView.KeyDown(ui::Plain(ui::KeyCode::Enter)));
    InManager([](auto& form) { form.btnGetMore.UserClicks(); });
    EXPECT_EQ(system.shell.Opened(), Texts(3, "http://packs.example/"));
    system.shell.SetOpenResult(3);
    toolkit.ExpectMessage(Text(367), Icon::Information);
    InManager([](auto& form) { form.btnGetMore.UserClicks(); });
    toolkit.ExpectMessage(Text(280), Icon::Information);
    InManager([](auto& form) { form.btnHelp.UserClicks(); });
}

} // namespace
} // namespace tests
