// Everything that the program does, on drives that take their time or never answer.
#include "app/shell/frmWaiting.h"
#include "tests/faults/Desk.h"

#include <algorithm>

namespace tests {
namespace {

using namespace std::chrono_literals;
using platform::memory::Delays;

struct SlowChange {
    const char *scenario, *call; ///< what is done, and the call in it that takes its time
    bool hasRecycleBin{};
    friend void PrintTo(const SlowChange& change, std::ostream* out) { *out << change.scenario << ' ' << change.call; }
};
constexpr SlowChange changes[] = {
    {"NewSpreadsheet", "FileSystem.CopyFile"}, {"RenameFolder", "FileSystem.Move"},
    {"DeleteFolder", "FileSystem.DeleteFile"}, {"DeleteFolder", "Shell.Recycle", true},
    {"PackDelete", "FileSystem.RemoveFolder"}, {"ProfilePictures", "FileSystem.Write"},
    {"ProfileExport", "Shell.RunAndWait"},
};

class SlowChangeTest : public testing::TestWithParam<SlowChange> {
protected:
    const Scenario& scenario = *std::ranges::find(Scenarios(), std::string_view{GetParam().scenario}, &Scenario::name);

    void Prepare(Desk& desk) const
    {
        desk.Prepare(scenario);
        if (GetParam().hasRecycleBin) {
            desk.system.shell.SetRecycleBin();
            desk.system.files.Remove(desk.InLibrary("Letters\\Formal\\Linked")); // which must not go there
        }
    }
    void Act(Desk& desk, Delays::Time time) const
    {
        auto& delays = desk.system.delays;
        desk.system.faults.OnCall = [&delays, time](std::string_view name, std::string_view subject) {
            delays.Set("", name == GetParam().call ? time : 0ms);
            delays.Call(name, subject);
        };
        delays.Forget();
        scenario.act(desk);
        EXPECT_LE(delays.LongestStretch(), 50ms) << delays.LongestCall();
        desk.system.faults.OnCall = nullptr;
        delays.Set("", 0ms);
    }
};

TEST_P(SlowChangeTest, IsWaitedForAndNothingElseCanBegin)
{
    Desk fast, slow;
    for (Desk* desk : {&fast, &slow})
        Prepare(*desk);
    int explained = 0;
    slow.toolkit.OnHeldYield = [&] {
        explained += slow.toolkit.Find("frmWaiting") != nullptr;
        for (ui::Form* form : slow.toolkit.Forms())
            if (form != &slow.Main())
                form->UserCloses();
    };
    Act(fast, 0ms);
    Act(slow, 3s);
    EXPECT_GT(explained, 0);
    EXPECT_EQ(slow.toolkit.Find("frmWaiting"), nullptr);
    EXPECT_FALSE(slow.toolkit.Busy);
    const Photograph expected{fast}, now{slow};
    EXPECT_EQ(now.disk, expected.disk);
    EXPECT_EQ(now.registry, expected.registry);
    EXPECT_EQ(now.told, expected.told);
}

TEST_P(SlowChangeTest, LosesNothingWhenTheWindowClosesInTheMiddle)
{
    Desk fast;
    Prepare(fast);
    const Photograph before{fast};
    const std::string pack = fast.Setting("Content\\Garden", "TemplateFolders");
    Act(fast, 0ms);
    const Photograph after{fast};
    Scope scope = scenario.scope;
    scope.touched.emplace_back("C:\\$Recycle.Bin");
    Invariants invariants{scope, before, after};
    for (const Delays::Time time : {Delays::Never, Delays::Time{1min}}) { // what ends after all has its effect
        Desk desk;
        desk.trouble = Trouble::TheProcessDies;
        Prepare(desk);
        Delays::Time closed{};
        desk.toolkit.OnHeldYield = [&] {
            auto* form = dynamic_cast<app::frmWaiting*>(desk.toolkit.Find("frmWaiting"));
            if (form == nullptr || closed > 0s)
                return;
            closed = desk.system.delays.Now();
            form->cmdClose.UserClicks();
            EXPECT_FALSE(desk.Main().IsVisible());
        };
        Act(desk, time);
        EXPECT_GT(closed, 0s);
        EXPECT_LE(desk.system.delays.Now() - closed, 5s);
        EXPECT_EQ(desk.browser->Main(), nullptr);
        const Photograph now{desk};
        EXPECT_FALSE(time == Delays::Never && now.disk == after.disk && now.registry == after.registry);
        const FaultRun run{desk.trouble, GetParam().call, {}};
        invariants.CheckWhatIsLeft(desk, now, run);
        EXPECT_EQ(desk.Setting("Content\\Garden", "TemplateFolders"), pack) << "it can be removed again";
        for (const Texts* favorites : {&before.favorites, &after.favorites})
            for (const std::string& file : *favorites)
                EXPECT_TRUE(!desk.system.files.Exists(desk.InLibrary(file)) ||
                            desk.HasSetting("Browser\\Favorites", file))
                    << file;
        desk.browser.reset();
        invariants.CheckNextStart(desk, run, {});
    }
}

INSTANTIATE_TEST_SUITE_P(Changes, SlowChangeTest, testing::ValuesIn(changes));

/// Everything that the program does, while one place that it may ask about never answers.
class DeadDriveTest : public testing::TestWithParam<std::tuple<Scenario, const char*>> {};

TEST_P(DeadDriveTest, StopsNothing)
{
    const auto& [scenario, dead] = GetParam();
    Desk desk;
    desk.trouble = Trouble::NothingWorksFromThereOn;
    desk.AddTemplates({"Letters\\folder.ico"});
    desk.Prepare(scenario);
    auto& delays = desk.system.delays;
    delays.Set(dead, Delays::Never);
    delays.Forget();
    if (scenario.name == std::string_view{"NewSpreadsheet"}) // a copy is a change: it is waited for until the user goes
        desk.toolkit.OnHeldYield = [&] {
            if (auto* form = dynamic_cast<app::frmWaiting*>(desk.toolkit.Find("frmWaiting")))
                form->cmdClose.UserClicks();
        };
    const auto before = delays.Now();
    scenario.act(desk);
    EXPECT_LE(delays.Now() - before, 31s) << "five for whatever the user wants to see";
    if (desk.IsOpen())
        desk.Main().Close();
    desk.toolkit.RunPosted();
    EXPECT_FALSE(desk.browser->IsRunning());
    EXPECT_LE(delays.LongestStretch(), 50ms) << delays.LongestCall();
}

INSTANTIATE_TEST_SUITE_P(
    Scenarios, DeadDriveTest,
    testing::Combine(testing::ValuesIn(Scenarios()),
                     testing::Values(R"(C:\Templates)", R"(C:\Templates\Letters)", R"(C:\Templates\Letters\folder.ico)",
                                     R"(C:\Templates\Letters\Previews)", R"(C:\Templates\Letters\Memo.swt)",
                                     R"(C:\Images)", R"(C:\Beside)")));

} // namespace
} // namespace tests
