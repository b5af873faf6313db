// One call of the system after the other fails, the process dies in it, or the world changes around it.
#include "tests/support/TestMachine.h"

#include "platform/memory/FaultPlan.h"

#include <algorithm>
#include <functional>

namespace tests {
namespace {

using platform::Hive;
using platform::memory::ForEachFault;

/// What must hold whatever went wrong.
void CheckInvariants(const TestMachine& machine, const std::map<std::string, std::string>& diskBefore,
                     const std::map<std::string, std::string>& registryBefore)
{
    const std::string own = "HKCU\\" + std::string{SettingsKey};
    for (const auto& [path, contents] : machine.system.files.Snapshot()) {
        const auto before = diskBefore.find(path);
        EXPECT_TRUE(before != diskBefore.end() && before->second == contents) << path << " is new or changed";
    }
    for (const auto& [path, contents] : diskBefore)
        EXPECT_TRUE(machine.system.files.Exists(path) || path == "C:\\Templates\\Empty") << path << " is gone";
    const auto registryAfter = machine.system.registry.Snapshot();
    for (const auto& [key, value] : registryBefore) {
        const auto after = registryAfter.find(key);
        EXPECT_TRUE(key.starts_with(own) || (after != registryAfter.end() && after->second == value)) << key;
    }
    for (const std::string& target : machine.system.shell.Opened())
        EXPECT_TRUE(target.starts_with("C:\\Templates\\")) << target;
    for (const auto& [folder, count] : machine.system.files.Listings())
        EXPECT_LE(count, 6u) << folder << " is listed again and again";
}

/// Starts, browses, refreshes, opens a template, closes.
void UseTheBrowser(TestMachine& machine)
{
    machine.toolkit.ThrowAwayMessages = true;
    machine.toolkit.OnModal("frmTemplatesPath", [](ui::Form& form) { form.UserCloses(); });
    app::Browser browser{machine.system.AsPlatform(), machine.toolkit, machine.pictures};
    browser.Start("EXE", "", "", "", "");
    if (browser.Main() != nullptr && browser.Main()->IsOpen()) {
        app::frmMain& main = *browser.Main();
        main.tvTreeView.UserSelects("Letters");
        main.lvListView.UserActivates(0);
        main.UserPresses(ui::Plain(ui::KeyCode::F5));
        main.Commands().Run("mnuViewThumbnails");
        main.tvTreeView.UserSelects("My Favorites");
        main.Close();
    }
    machine.toolkit.RunPosted();
    EXPECT_FALSE(browser.IsRunning());
}

void Prepare(TestMachine& machine)
{
    machine.system.files.AddFolder(machine.InLibrary("Empty"));
    machine.AddTemplates({"Letters\\Previews\\Memo.jpg"});
    machine.system.files.AddFolder("C:\\Outside\\Empty");
    machine.system.files.AddLink(machine.InLibrary("Linked"), "C:\\Outside");
    machine.PutSetting("Browser\\Favorites", "Letters\\Memo.swt", "");
    machine.system.registry.PutString(Hive::CurrentUser, "Software\\Other", "theirs", "kept");
}

void ExpectSilentNextStart(TestMachine& machine, bool favoriteWasGone = false)
{
    machine.system.EndProcess();
    machine.toolkit.Messages.clear();
    app::Browser browser{machine.system.AsPlatform(), machine.toolkit, machine.pictures};
    browser.Start("EXE", "", "", "", "");
    EXPECT_TRUE(machine.toolkit.Messages.empty());
    ASSERT_NE(browser.Main(), nullptr);
    EXPECT_EQ(TreeTexts(browser.Main()->tvTreeView),
              (std::vector<std::string>{"My Favorites", "Business", "  Contracts", "Letters", "  Formal", "",
                                        "Get More Templates"}));
    EXPECT_EQ(machine.system.registry.StringAt(Hive::CurrentUser, std::string{SettingsKey} + "\\Browser\\Favorites",
                                               "Letters\\Memo.swt"),
              favoriteWasGone ? "(none)" : "");
    browser.Main()->Unload();
    machine.toolkit.RunPosted();
    EXPECT_TRUE(machine.system.files.Exists("C:\\Outside\\Empty")) << "pruned through a link";
}

class FaultTest : public ::testing::TestWithParam<platform::Error> {};

TEST_P(FaultTest, OneFailingCallLosesNothingAndSpoilsNothing)
{
    const auto calls = ForEachFault([&](std::size_t n) {
        SCOPED_TRACE("call " + std::to_string(n));
        TestMachine machine;
        Prepare(machine);
        const auto disk = machine.system.files.Snapshot();
        const auto registry = machine.system.registry.Snapshot();
        machine.system.faults.FailAt(n, GetParam());
        UseTheBrowser(machine);
        EXPECT_LE(machine.toolkit.Messages.size(), 1u)
            << "one failure, one message; the call: " << machine.system.faults.Log().at(n - 1);
        const bool fired = machine.system.faults.Fired();
        // A favourite whose file the system says is gone is dropped by the start, which is the first to ask.
        const auto& log = machine.system.faults.Log();
        const auto asked = std::ranges::find_if(log, [](const std::string& call) {
            return call.starts_with("FileSystem.Stat C:\\Templates\\Letters\\Memo.swt");
        });
        const bool favoriteWasGone = GetParam() == platform::error::FileNotFound && fired &&
                                     asked - log.begin() == static_cast<std::ptrdiff_t>(n) - 1;
        CheckInvariants(machine, disk, registry);
        ExpectSilentNextStart(machine, favoriteWasGone);
        return fired;
    });
    // When this falls, something goes round the platform's interfaces.
    EXPECT_GE(calls, 90u);
}
INSTANTIATE_TEST_SUITE_P(Errors, FaultTest,
                         ::testing::Values(platform::error::AccessDenied, platform::error::FileNotFound,
                                           platform::error::NotReady));

TEST(FaultSequenceTest, NothingWorksFromSomeCallOn)
{
    ForEachFault([&](std::size_t n) {
        SCOPED_TRACE("call " + std::to_string(n));
        TestMachine machine;
        Prepare(machine);
        const auto disk = machine.system.files.Snapshot();
        const auto registry = machine.system.registry.Snapshot();
        machine.system.faults.FailFrom(n, platform::error::AccessDenied);
        UseTheBrowser(machine);
        const bool fired = machine.system.faults.Fired();
        CheckInvariants(machine, disk, registry);
        ExpectSilentNextStart(machine);
        return fired;
    });
}

TEST(FaultSequenceTest, AfterADeathInAnyCallTheNextStartIsRight)
{
    ForEachFault([&](std::size_t n) {
        SCOPED_TRACE("call " + std::to_string(n));
        TestMachine machine;
        Prepare(machine);
        machine.system.faults.DieAt(n);
        try {
            UseTheBrowser(machine);
        } catch (const platform::memory::ProcessDied&) {
        }
        const bool fired = machine.system.faults.Fired();
        ExpectSilentNextStart(machine);
        return fired;
    });
}

TEST(FaultSequenceTest, FilesAndFoldersMayComeAndGoInTheMiddleOfARescan)
{
    const std::function<void(TestMachine&)> changes[] = {
        [](TestMachine& m) { m.system.files.Remove(m.InLibrary("Letters")); },
        [](TestMachine& m) {
            m.AddTemplates({"Letters\\Late\\New.swt", "AAA\\New.swt"});
        },
        [](TestMachine& m) {
            m.system.files.Remove(m.InLibrary("Business\\Contracts"));
            m.system.files.AddLink(m.InLibrary("Business\\Contracts"), "C:\\Outside");
        },
        [](TestMachine& m) { m.system.files.SetUnreadable(m.InLibrary("Business")); },
        [](TestMachine& m) { m.system.files.AddFile(m.InLibrary("Empty\\Late.swt")); },
    };
    for (const auto& change : changes)
        ForEachFault([&](std::size_t n) {
            SCOPED_TRACE("before call " + std::to_string(n));
            TestMachine machine;
            Prepare(machine);
            machine.system.faults.ChangeBefore(n, [&] { change(machine); });
            UseTheBrowser(machine);
            const bool fired = machine.system.faults.Fired();
            EXPECT_TRUE(machine.system.files.Exists("C:\\Outside\\Empty")) << "pruned through a link";
            EXPECT_TRUE(machine.system.files.Exists(machine.InLibrary("Business\\Invoice.swt")));
            return fired;
        });
}

TEST(FirstStartTest, AnEmptyRegistryGetsOneClearMessage)
{
    TestMachine machine{TestMachine::Bare{}};
    machine.toolkit.ExpectMessage("The application is currently unable to run.\r\nPlease reinstall the application.",
                                  ui::Icon::Critical);
    app::Browser browser{machine.system.AsPlatform(), machine.toolkit, machine.pictures};
    browser.Start("EXE", "", "", "", "");
    machine.toolkit.RunPosted();
    EXPECT_FALSE(browser.IsRunning());
}

} // namespace
} // namespace tests
