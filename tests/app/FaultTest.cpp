// One call of the system after the other goes wrong while the browser is used.
#include "tests/support/FaultRunner.h"

#include <algorithm>

namespace tests {
namespace {

struct Desk : TestMachine {
    std::optional<app::Browser> browser;
    std::map<std::string, std::string> disk, registry; ///< as they were at first

    app::frmMain& Main() { return *browser->Main(); }
    /// Begins a process when the last one is gone.
    void Start()
    {
        browser.emplace(system.AsPlatform(), toolkit, pictures);
        browser->Start("EXE", "", "", "", "");
    }
    void Prepare(const Texts& favorites)
    {
        toolkit.ThrowAwayMessages = true;
        for (const std::string& favorite : favorites)
            PutSetting("Browser\\Favorites", favorite, "");
        system.registry.PutString(Hive::CurrentUser, "Software\\Other", "theirs", "kept");
        disk = system.files.Snapshot();
        registry = system.registry.Snapshot();
    }
};

// From the start to the end.

/// What must hold whatever went wrong.
void CheckInvariants(const Desk& desk)
{
    for (const auto& [path, contents] : desk.system.files.Snapshot()) {
        const auto before = desk.disk.find(path);
        EXPECT_TRUE(before != desk.disk.end() && before->second == contents) << path << " is new or changed";
    }
    for (const auto& [path, contents] : desk.disk)
        EXPECT_TRUE(desk.system.files.Exists(path) || path == "C:\\Templates\\Empty") << path << " is gone";
    const auto registryAfter = desk.system.registry.Snapshot();
    for (const auto& [key, value] : desk.registry) {
        const auto after = registryAfter.find(key);
        EXPECT_TRUE(key.starts_with("HKCU\\" + std::string{SettingsKey}) ||
                    (after != registryAfter.end() && after->second == value))
            << key;
    }
    for (const std::string& target : desk.system.shell.Opened())
        EXPECT_TRUE(target.starts_with("C:\\Templates\\")) << target;
    for (const auto& [folder, count] : desk.system.files.Listings())
        EXPECT_LE(count, 6u) << folder << " is listed again and again";
}

void UseTheBrowser(Desk& desk)
{
    desk.toolkit.OnModal("frmTemplatesPath", [](ui::Form& form) { form.UserCloses(); });
    desk.Start();
    if (desk.browser->Main() != nullptr && desk.Main().IsOpen()) {
        app::frmMain& main = desk.Main();
        main.tvTreeView.UserSelects("Letters");
        main.lvListView.UserActivates(0);
        main.UserPresses(ui::Plain(ui::KeyCode::F5));
        main.Commands().Run("mnuViewThumbnails");
        main.tvTreeView.UserSelects("My Favorites");
        main.Close();
    }
    desk.toolkit.RunPosted();
    EXPECT_FALSE(desk.browser->IsRunning());
}

void ExpectSilentNextStart(Desk& desk, bool favoriteIsGone)
{
    desk.browser.reset();
    desk.system.EndProcess();
    desk.toolkit.Messages.clear();
    desk.Start();
    EXPECT_TRUE(desk.toolkit.Messages.empty());
    ASSERT_NE(desk.browser->Main(), nullptr);
    EXPECT_EQ(TreeTexts(desk.Main().tvTreeView),
              (Texts{"My Favorites", "Business", "  Contracts", "Letters", "  Formal", "", "Get More Templates"}));
    EXPECT_EQ(desk.StoredFavorites(), favoriteIsGone ? Texts{} : Texts{"Letters\\Memo.swt"});
}

const Trouble troubles[] = {
    {},
    {Trouble::OneCallFails, platform::error::FileNotFound},
    {Trouble::OneCallFails, platform::error::NotReady},
    {Trouble::NothingWorksFromThereOn},
    {Trouble::TheProcessDies},
    {Trouble::TheWorldChanges, {}, [](TestMachine& m) { m.system.files.Remove(m.InLibrary("Letters")); }},
    {Trouble::TheWorldChanges,
     {},
     [](TestMachine& m) {
         m.AddTemplates({"Letters\\Late\\New.swt", "AAA\\New.swt"});
     }},
    {Trouble::TheWorldChanges,
     {},
     [](TestMachine& m) {
         m.system.files.Remove(m.InLibrary("Business\\Contracts"));
         m.system.files.AddLink(m.InLibrary("Business\\Contracts"), "C:\\Outside");
     }},
    {Trouble::TheWorldChanges, {}, [](TestMachine& m) { m.system.files.SetUnreadable(m.InLibrary("Business")); }},
    {Trouble::TheWorldChanges, {}, [](TestMachine& m) { m.system.files.AddFile(m.InLibrary("Empty\\Late.swt")); }},
};
class FaultTest : public ::testing::TestWithParam<Trouble> {};

TEST_P(FaultTest, LosesNothingAndSpoilsNothingAndTheNextStartIsRight)
{
    const Trouble& trouble = GetParam();
    const auto prepare = [](Desk& desk) {
        desk.system.files.AddFolder(desk.InLibrary("Empty"));
        desk.AddTemplates({"Letters\\Previews\\Memo.jpg"});
        desk.system.files.AddFolder("C:\\Outside\\Empty");
        desk.system.files.AddLink(desk.InLibrary("Linked"), "C:\\Outside");
        desk.Prepare({"Letters\\Memo.swt"});
    };
    ForEachCall<Desk>(90, trouble, prepare, UseTheBrowser, [&](Desk& desk, const std::string& call) {
        EXPECT_TRUE(trouble.kind != Trouble::OneCallFails || desk.toolkit.Messages.size() <= 1)
            << "one failure, one message";
        if (trouble.kind != Trouble::TheWorldChanges) {
            CheckInvariants(desk);
            // A favourite whose file the system says is gone is dropped by the start, which is the first to ask.
            ExpectSilentNextStart(desk, trouble.error == platform::error::FileNotFound &&
                                            desk.StoredFavorites().empty() &&
                                            call.starts_with("FileSystem.Stat C:\\Templates\\Letters\\Memo.swt"));
        }
        EXPECT_TRUE(desk.system.files.Exists("C:\\Outside\\Empty")) << "pruned through a link";
        EXPECT_TRUE(desk.system.files.Exists(desk.InLibrary("Business\\Invoice.swt")));
    });
}
INSTANTIATE_TEST_SUITE_P(Troubles, FaultTest, ::testing::ValuesIn(troubles));

// Folders and lists.

struct Operation {
    const char* name;
    std::function<void(app::frmMain&)> run;
    /// The favourites' endings that the operation must not lose.
    Texts kept;
    std::size_t leastCalls;
};
const Texts all{"Complaint.swt", "Thanks.swt", "Memo.swt"};
const Operation operations[] = {
    {"rename",
     [](app::frmMain& main) {
         main.tvTreeView.UserSelects("Letters\\Formal");
         main.Commands().Run("mnupopRenamefolder");
         main.tvTreeView.UserEndsLabelEdit("Casual");
     },
     all, 20},
    {"delete",
     [](app::frmMain& main) {
         main.tvTreeView.UserSelects("Letters\\Formal");
         main.tvTreeView.KeyDown(ui::Plain(ui::KeyCode::Delete));
     },
     {"Memo.swt"},
     20},
    {"add a favourite",
     [](app::frmMain& main) {
         main.tvTreeView.UserSelects("Business\\Contracts");
         main.Commands().Run("mnuAddToFavorites");
     },
     all, 4},
    {"remove a favourite",
     [](app::frmMain& main) {
         main.tvTreeView.UserSelects("My Favorites");
         main.lvListView.UserSelects(0);
         main.Commands().Run("mnuRemoveFromFavorites");
     },
     {"Thanks.swt", "Memo.swt"},
     4},
    {"save recent files",
     [](app::frmMain& main) {
         main.tvTreeView.UserSelects("Letters\\Formal");
         main.lvListView.UserActivates(0);
         main.lvListView.UserActivates(1);
     },
     all, 6},
};

/// What the window shows is what a fresh look at disk and registry gives. What could not be read cannot be shown until
/// then.
void ExpectViewsToAgree(Desk& desk, bool couldBeRead)
{
    const Texts shown = TreeTexts(desk.Main().tvTreeView), list = ListTexts(desk.Main().lvListView);
    desk.Main().UserPresses(ui::Plain(ui::KeyCode::F5));
    if (couldBeRead) {
        EXPECT_EQ(TreeTexts(desk.Main().tvTreeView), shown);
        EXPECT_EQ(ListTexts(desk.Main().lvListView), list);
    }
    Texts inMemory = desk.Main().Favorites().FavoritesList(), stored = desk.StoredFavorites();
    // A favourite whose file could not be looked for is kept until the next start.
    for (Texts* names : {&inMemory, &stored})
        std::erase_if(*names, [&](const auto& name) { return !desk.system.files.Exists(desk.InLibrary(name)); });
    std::ranges::sort(inMemory);
    std::ranges::sort(stored);
    EXPECT_EQ(inMemory, stored);
}

class FolderFaultTest : public ::testing::TestWithParam<Trouble> {};

TEST_P(FolderFaultTest, LosesNoFavouriteAndTheViewsAgreeWithWhatIsThere)
{
    const bool dies = GetParam().kind == Trouble::TheProcessDies;
    const auto prepare = [](Desk& desk) {
        desk.AddTemplates({"Letters\\Formal\\Thanks.swt"});
        desk.system.files.AddFile("C:\\Outside\\precious.swt");
        desk.system.files.AddLink(desk.InLibrary("Letters\\Formal\\Linked"), "C:\\Outside");
        desk.Prepare({"Letters\\Formal\\Complaint.swt", "Letters\\Formal\\Thanks.swt", "Letters\\Memo.swt"});
        desk.toolkit.AnswerYes = true;
        desk.Start();
        desk.toolkit.Messages.clear();
    };
    for (const Operation& operation : operations) {
        SCOPED_TRACE(operation.name);
        const auto run = [&](Desk& desk) { operation.run(desk.Main()); };
        ForEachCall<Desk>(operation.leastCalls, GetParam(), prepare, run, [&](Desk& desk, const std::string& call) {
            EXPECT_LE(std::ranges::count_if(desk.toolkit.Messages,
                                            [](const auto& shown) { return shown.icon != Icon::Question; }),
                      1)
                << "one failure, one message";
            if (dies) {
                desk.browser.reset();
                desk.system.EndProcess();
                desk.Start();
                for (const std::string& name : desk.StoredFavorites())
                    EXPECT_TRUE(desk.system.files.Exists(desk.InLibrary(name))) << name << " was stored in advance";
            }
            const Texts stored = desk.StoredFavorites();
            for (const std::string& file : operation.kept) // under a path at which the next start finds it
                EXPECT_TRUE(std::ranges::any_of(stored, [&](const std::string& name) {
                    return name.ends_with(file) && desk.system.files.Exists(desk.InLibrary(name));
                })) << file;
            EXPECT_TRUE(desk.system.files.Exists("C:\\Outside\\precious.swt"));
            EXPECT_LE(desk.Main().RecentFiles().List().size(), 2u);
            ExpectViewsToAgree(desk, dies || !(call.starts_with("FileSystem.List") || //
                                               call.starts_with("FileSystem.Stat")));
        });
    }
}
INSTANTIATE_TEST_SUITE_P(Troubles, FolderFaultTest,
                         ::testing::Values(Trouble{}, Trouble{Trouble::OneCallFails, platform::error::NotReady},
                                           Trouble{Trouble::TheProcessDies}));

} // namespace
} // namespace tests
