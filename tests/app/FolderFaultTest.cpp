// One call of the system after the other fails while the user changes folders and lists.
#include "tests/support/TestMachine.h"

#include "platform/Text.h"
#include "platform/memory/FaultPlan.h"

#include <algorithm>
#include <functional>

namespace tests {
namespace {

using platform::Hive;
using platform::memory::ForEachFault;
using Texts = std::vector<std::string>;

const std::string favoritesKey = std::string{SettingsKey} + "\\Browser\\Favorites";

Texts Stored(TestMachine& machine)
{
    return machine.system.registry.ValueNames(Hive::CurrentUser, favoritesKey).value_or(Texts{});
}

/// A favourite is not lost while its file is there: it is stored under a path at which the next start finds it.
void ExpectNoFavoriteLost(TestMachine& machine, const Texts& files)
{
    const Texts stored = Stored(machine);
    for (const std::string& file : files) {
        const bool isStored = std::ranges::any_of(stored, [&](const std::string& name) {
            return name.ends_with(file) && machine.system.files.Exists(machine.InLibrary(name));
        });
        EXPECT_TRUE(isStored) << file;
    }
}

/// What the window shows is what a fresh look at disk and registry gives. What could not be read cannot be shown until
/// then.
void ExpectViewsToAgree(TestMachine& machine, app::frmMain& main, bool couldBeRead)
{
    const Texts shown = TreeTexts(main.tvTreeView);
    const Texts list = ListTexts(main.lvListView);
    main.UserPresses(ui::Plain(ui::KeyCode::F5));
    if (couldBeRead) {
        EXPECT_EQ(TreeTexts(main.tvTreeView), shown);
        EXPECT_EQ(ListTexts(main.lvListView), list);
    }
    Texts inMemory = main.Favorites().FavoritesList();
    Texts stored = Stored(machine);
    // A favourite whose file could not be looked for is kept until the next start.
    for (Texts* names : {&inMemory, &stored})
        std::erase_if(*names,
                      [&](const std::string& name) { return !machine.system.files.Exists(machine.InLibrary(name)); });
    std::ranges::sort(inMemory);
    std::ranges::sort(stored);
    EXPECT_EQ(inMemory, stored);
}

struct Operation {
    const char* name;
    std::function<void(app::frmMain&)> run;
    /// The favourites' endings that the operation must not lose.
    Texts kept;
    std::size_t leastCalls;
};

void Select(app::frmMain& main, std::string_view node)
{
    main.tvTreeView.UserSelects(node);
}

const Operation operations[] = {
    {"rename",
     [](app::frmMain& main) {
         Select(main, "Letters\\Formal");
         main.Commands().Run("mnupopRenamefolder");
         main.tvTreeView.UserEndsLabelEdit("Casual");
     },
     {"Complaint.swt", "Thanks.swt", "Memo.swt"},
     20},
    {"delete",
     [](app::frmMain& main) {
         Select(main, "Letters\\Formal");
         main.tvTreeView.KeyDown(ui::Plain(ui::KeyCode::Delete));
     },
     {"Memo.swt"},
     20},
    {"add a favourite",
     [](app::frmMain& main) {
         Select(main, "Business\\Contracts");
         main.Commands().Run("mnuAddToFavorites");
     },
     {"Complaint.swt", "Thanks.swt", "Memo.swt"},
     4},
    {"remove a favourite",
     [](app::frmMain& main) {
         Select(main, "My Favorites");
         main.lvListView.UserSelects(0);
         main.Commands().Run("mnuRemoveFromFavorites");
     },
     {"Thanks.swt", "Memo.swt"},
     4},
    {"save recent files",
     [](app::frmMain& main) {
         Select(main, "Letters\\Formal");
         main.lvListView.UserActivates(0);
         main.lvListView.UserActivates(1);
     },
     {"Complaint.swt", "Thanks.swt", "Memo.swt"},
     6},
};

class FolderFaultTest : public ::testing::TestWithParam<platform::Error> {};

TEST_P(FolderFaultTest, AFailingCallLosesNoFavouriteAndTheViewsAgreeWithWhatIsThere)
{
    for (const Operation& operation : operations) {
        const auto calls = ForEachFault([&](std::size_t n) {
            TestMachine machine;
            machine.AddTemplates({"Letters\\Formal\\Thanks.swt"});
            for (const char* favorite :
                 {"Letters\\Formal\\Complaint.swt", "Letters\\Formal\\Thanks.swt", "Letters\\Memo.swt"})
                machine.system.registry.PutString(Hive::CurrentUser, favoritesKey, favorite, "");
            machine.system.files.AddFile("C:\\Outside\\precious.swt");
            machine.system.files.AddLink(machine.InLibrary("Letters\\Formal\\Linked"), "C:\\Outside");
            machine.toolkit.ThrowAwayMessages = true;
            machine.toolkit.AnswerYes = true;
            app::Browser browser{machine.system.AsPlatform(), machine.toolkit, machine.pictures};
            browser.Start("EXE", "", "", "", "");
            app::frmMain& main = *browser.Main();
            machine.toolkit.Messages.clear();
            machine.system.faults.ForgetCalls();
            machine.system.faults.FailAt(n, GetParam());
            operation.run(main);
            const bool fired = machine.system.faults.Fired();
            const std::string failed = fired ? machine.system.faults.Log().at(n - 1) : "none";
            SCOPED_TRACE(std::string{operation.name} + ", call " + std::to_string(n) + ": " + failed);
            machine.system.faults.Clear();
            const auto failures = std::ranges::count_if(machine.toolkit.Messages, [](const ui::MessageBox& message) {
                return message.icon != ui::Icon::Question;
            });
            EXPECT_LE(failures, 1) << "one failure, one message";
            ExpectNoFavoriteLost(machine, operation.kept);
            EXPECT_TRUE(machine.system.files.Exists("C:\\Outside\\precious.swt"));
            EXPECT_LE(main.RecentFiles().List().size(), 2u);
            ExpectViewsToAgree(machine, main,
                               !failed.starts_with("FileSystem.List") && !failed.starts_with("FileSystem.Stat"));
            main.Unload();
            machine.toolkit.RunPosted();
            return fired;
        });
        // When this falls, something goes round the platform's interfaces.
        EXPECT_GE(calls, operation.leastCalls) << operation.name;
    }
}
INSTANTIATE_TEST_SUITE_P(Errors, FolderFaultTest,
                         ::testing::Values(platform::error::AccessDenied, platform::error::NotReady));

TEST(FolderDeathTest, AfterADeathInAnyCallOfARenameTheNextStartHasEveryFavourite)
{
    ForEachFault([&](std::size_t n) {
        SCOPED_TRACE("call " + std::to_string(n));
        TestMachine machine;
        machine.PutSetting("Browser\\Favorites", "Letters\\Formal\\Complaint.swt", "");
        machine.PutSetting("Browser\\Favorites", "Letters\\Memo.swt", "");
        {
            app::Browser browser{machine.system.AsPlatform(), machine.toolkit, machine.pictures};
            browser.Start("EXE", "", "", "", "");
            machine.system.faults.ForgetCalls();
            machine.system.faults.DieAt(n);
            try {
                operations[0].run(*browser.Main());
            } catch (const platform::memory::ProcessDied&) {
            }
        }
        const bool fired = machine.system.faults.Fired();
        machine.system.EndProcess();
        app::Browser next{machine.system.AsPlatform(), machine.toolkit, machine.pictures};
        next.Start("EXE", "", "", "", "");
        EXPECT_EQ(next.Main()->Favorites().FavoritesList().size(), 2u);
        EXPECT_EQ(Stored(machine).size(), 2u) << "what was stored in advance is dropped again";
        next.Main()->Unload();
        machine.toolkit.RunPosted();
        return fired;
    });
}

} // namespace
} // namespace tests
