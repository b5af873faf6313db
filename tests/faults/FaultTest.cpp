// One call of the system after the other goes wrong in everything that the program does.
#include "tests/faults/Desk.h"

#include "platform/memory/FaultPlan.h"

namespace tests {
namespace {

using Param = std::tuple<Scenario, Trouble>;
class FaultTest : public testing::TestWithParam<Param> {};

TEST_P(FaultTest, TheInvariantsHold)
{
    const auto& [scenario, trouble] = GetParam();
    Desk good;
    good.Prepare(scenario);
    const Photograph before{good};
    good.system.faults.ForgetCalls();
    scenario.act(good);
    EXPECT_GE(good.system.faults.Calls(), scenario.leastCalls) << "something goes round the platform";
    const Photograph after{good};
    EXPECT_TRUE(before.disk != after.disk || before.registry != after.registry || !good.system.shell.Opened().empty())
        << "the scenario does nothing";
    Invariants invariants{scenario.scope, before, after};

    constexpr platform::Error errors[] = {platform::error::AccessDenied, platform::error::NotReady,
                                          platform::error::DiskFull};
    // Whoever moves a file tries again when access is denied, as to a file that a scanner holds: then nothing fails.
    const auto errorForGood = [&, calls = good.system.faults.Log()](std::size_t n) {
        const std::string_view call = n <= calls.size() ? calls[n - 1] : std::string_view{};
        const bool isMove = call.starts_with("FileSystem.Move ") || call.starts_with("FileSystem.Replace ");
        return isMove ? errors[1 + n % 2] : errors[n % std::size(errors)];
    };
    const bool meetsEveryChange = trouble == Trouble::TheWorldChanges && scenario.meetsEveryChange;
    std::size_t turn = 0;
    const auto runAt = [&](std::size_t n) {
        SCOPED_TRACE("call " + std::to_string(n));
        Desk desk;
        desk.trouble = trouble;
        desk.Prepare(scenario);
        auto& faults = desk.system.faults;
        faults.ForgetCalls();
        FaultRun run{trouble, {}, {}};
        switch (trouble) {
        case Trouble::OneCallFails:
            faults.FailAt(n, errorForGood(n));
            break;
        case Trouble::NothingWorksFromThereOn:
            faults.FailFrom(n, errors[n % std::size(errors)]);
            break;
        case Trouble::TheWorldChanges:
            faults.ChangeBefore(n, [&] { run.byWorld = desk.ChangeWorld(n + turn); });
            break;
        case Trouble::TheProcessDies:
            faults.DieAt(n);
        }
        bool died = false;
        try {
            scenario.act(desk);
        } catch (const platform::memory::ProcessDied&) {
            died = true;
        }
        const bool fired = faults.Fired();
        if (fired)
            run.call = faults.Log().at(n - 1);
        SCOPED_TRACE(run.call);
        if (died) {
            desk.browser.reset();
            desk.system.EndProcess();
        }
        desk.Heal();
        invariants.CheckWhatIsLeft(desk, Photograph{desk}, run);
        std::optional<Texts> shown;
        if (!died && desk.IsOpen()) {
            shown = invariants.CheckViews(desk, desk.Main(), run);
            desk.Main().Close();
        }
        if (!died)
            desk.toolkit.RunPosted();
        EXPECT_TRUE(died || !desk.browser->IsRunning());
        desk.browser.reset();
        desk.system.EndProcess();
        invariants.CheckNextStart(desk, run, shown);
        return fired && !testing::Test::HasFailure();
    };
    for (; turn < (meetsEveryChange ? Desk::Changes : 1); ++turn)
        platform::memory::ForEachFault(runAt);
}

std::string NameOf(const testing::TestParamInfo<Param>& row)
{
    constexpr const char* troubles[] = {"Once", "FromThereOn", "WorldChanges", "Dies"};
    const auto& [scenario, trouble] = row.param;
    return std::string{scenario.name} + "_" + troubles[static_cast<std::size_t>(trouble)];
}
INSTANTIATE_TEST_SUITE_P(Scenarios, FaultTest,
                         testing::Combine(testing::ValuesIn(Scenarios()),
                                          testing::Values(Trouble::OneCallFails, Trouble::NothingWorksFromThereOn,
                                                          Trouble::TheWorldChanges, Trouble::TheProcessDies)),
                         NameOf);

} // namespace
} // namespace tests
