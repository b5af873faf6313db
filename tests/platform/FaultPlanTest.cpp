#include "platform/memory/System.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace platform;
using namespace platform::memory;
using testing::ElementsAre;

namespace {

/// Three calls of three interfaces; what each answered as one letter ("." for success).
std::string ThreeCalls(Platform system)
{
    std::string answers;
    const auto note = [&](bool succeeded) { answers += succeeded ? '.' : 'x'; };
    note(system.files.CreateFolder("C:\\a").has_value());
    note(system.registry.CreateKey(Hive::CurrentUser, "a").has_value());
    note(system.shell.Open("http://a") > 32);
    return answers;
}

TEST(FaultPlanTest, CountsTheCallsOfAllInterfacesTogether)
{
    const struct {
        std::size_t n;
        bool once;
        const char* answers;
    } rows[] = {{1, true, "x.."},  {2, true, ".x."},  {3, true, "..x"}, {4, true, "..."},
                {1, false, "xxx"}, {2, false, ".xx"}, {4, false, "..."}};
    for (const auto& row : rows) {
        System system;
        system.files.AddFile("C:\\helpers\\do not count");
        (void)system.clock.Now();
        (void)system.locale.Compare("a", "b");
        (void)system.files.List("C:\\"); // before the plan, so not counted by it
        if (row.once)
            system.faults.FailAt(row.n, error::DiskFull);
        else
            system.faults.FailFrom(row.n, error::DiskFull);
        EXPECT_EQ(ThreeCalls(system.AsPlatform()), row.answers) << row.n;
        EXPECT_EQ(system.faults.Fired(), row.n <= 3) << row.n;
        EXPECT_EQ(system.faults.Calls(), 4u);
    }
}

TEST(FaultPlanTest, AFailedCallHasNoEffectAndTheChosenError)
{
    System system;
    system.faults.FailAt(1, error::DiskFull);
    EXPECT_EQ(system.files.CreateFolder("C:\\a"), Result<>{std::unexpected{error::DiskFull}});
    EXPECT_FALSE(system.files.Exists("C:\\a"));
    EXPECT_THAT(system.faults.Log(), ElementsAre("FileSystem.CreateFolder C:\\a"));
}

TEST(FaultPlanTest, TheWorldCanChangeBetweenTwoCalls)
{
    System system;
    system.files.AddFolder("C:\\a");
    system.files.AddFile("C:\\outside\\marker");
    system.faults.ChangeBefore(2, [&] {
        EXPECT_TRUE(system.files.RemoveFolder("C:\\a")); // does not count
        system.files.AddLink("C:\\a", "C:\\outside");
    });
    EXPECT_FALSE(system.files.Stat("C:\\a").value().IsLink());
    EXPECT_TRUE(system.files.Stat("C:\\a").value().IsLink());
    EXPECT_EQ(system.faults.Calls(), 2u);
}

TEST(FaultPlanTest, ADeadProcessChangesNothingUntilANewOneStarts)
{
    System system;
    const Platform platform = system.AsPlatform();
    ASSERT_TRUE(platform.process.ClaimSingleInstance());
    system.faults.DieAt(2);
    EXPECT_TRUE(platform.files.CreateFolder("C:\\before"));
    EXPECT_THROW((void)platform.files.CreateFolder("C:\\during"), ProcessDied);
    EXPECT_FALSE(platform.files.CreateFolder("C:\\after"));

    system.EndProcess();
    EXPECT_THAT(system.files.AllPaths(), ElementsAre("C:\\before"));
    EXPECT_TRUE(platform.process.ClaimSingleInstance());
    EXPECT_TRUE(platform.files.CreateFolder("C:\\again"));
}

TEST(FaultPlanTest, AScenarioRunsOnceForEachOfItsCalls)
{
    const auto calls = ForEachFault([](std::size_t n) {
        System system;
        system.faults.FailAt(n, error::AccessDenied);
        (void)ThreeCalls(system.AsPlatform());
        return system.faults.Fired();
    });
    EXPECT_EQ(calls, 3u);
    EXPECT_THROW(ForEachFault([](std::size_t) { return true; }), std::logic_error);
}

} // namespace
