#include "platform/memory/System.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What the contract cannot show of the machine in memory, and what would let other tests pass by silence were it wrong.

using namespace platform;
using namespace platform::memory;
using testing::ElementsAre;

namespace {

TEST(MemoryFileSystemTest, LinksAreFollowedInPathsAndRemovedAsThemselves)
{
    System system;
    MemoryFileSystem& files = system.files;
    files.AddFile("C:\\outside\\marker", "kept");
    files.AddLink("C:\\L\\link", "C:\\outside");
    files.AddLink("C:\\L\\loop", "C:\\L");
    files.AddLink("C:\\L\\self", "C:\\L\\self");
    EXPECT_TRUE(files.Stat("C:\\L\\link").value().IsLink());
    EXPECT_EQ(files.Read("C:\\L\\loop\\loop\\link\\marker", 10).value(), "kept");
    EXPECT_FALSE(files.List("C:\\L\\self"));
    EXPECT_FALSE(files.DeleteFile("C:\\L\\link"));
    for (const char* link : {"C:\\L\\link", "C:\\L\\loop", "C:\\L\\self"})
        EXPECT_TRUE(files.RemoveFolder(link)) << link;
    EXPECT_THAT(files.AllPaths(), ElementsAre("C:\\L", "C:\\outside", "C:\\outside\\marker"));
}

TEST(MemoryFileSystemTest, SnapshotsAndListingsShowEveryChangeAndLook)
{
    System system;
    MemoryFileSystem& files = system.files;
    files.AddFile("C:\\L\\a.swt", "one", 5);
    files.AddFolder("C:\\L\\b");
    const std::function<void()> changes[] = {
        [&] { files.AddFile("C:\\L\\a.swt", "two", 5); },
        [&] { files.SetModified("C:\\L\\a.swt", 6); },
        [&] { files.SetAttributes("C:\\L\\b", attribute::Folder | attribute::Hidden); },
        [&] { EXPECT_TRUE(files.Move("C:\\L\\a.swt", "C:\\L\\A.swt")); },
        [&] { files.Remove("C:\\L\\b"); },
    };
    auto last = files.Snapshot();
    for (const auto& change : changes) {
        change();
        EXPECT_NE(std::exchange(last, files.Snapshot()), files.Snapshot());
    }
    (void)files.List("C:\\L");
    (void)files.List("c:\\l\\\\");
    EXPECT_THAT(files.Listings(), ElementsAre(testing::Pair("C:\\L", 2u)));
}

TEST(FaultPlanTest, CountsTheCallsOfAllInterfacesTogetherAndAFailedOneHasNoEffect)
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
        if (row.once)
            system.faults.FailAt(row.n, error::DiskFull);
        else
            system.faults.FailFrom(row.n, error::DiskFull);
        // Three calls of three interfaces, and what each answered.
        const Platform platform = system.AsPlatform();
        std::string answers;
        for (const bool succeeded : {platform.files.CreateFolder("C:\\a").has_value(),
                                     platform.registry.CreateKey(Hive::CurrentUser, "a").has_value(),
                                     platform.shell.Open("http://a", Verb::Open) > 32})
            answers += succeeded ? '.' : 'x';
        EXPECT_EQ(answers, row.answers) << row.n;
        EXPECT_EQ(system.files.Exists("C:\\a"), row.answers[0] == '.');
        EXPECT_EQ(system.faults.Fired(), row.n <= 3) << row.n;
        EXPECT_EQ(system.faults.Calls(), 3u);
    }
}

TEST(FaultPlanTest, TheWorldChangesBetweenTwoCallsAndADeadProcessChangesNothingMore)
{
    System system;
    const Platform platform = system.AsPlatform();
    ASSERT_TRUE(platform.process.ClaimSingleInstance());
    system.faults.ChangeBefore(2, [&] { system.files.AddFolder("C:\\change"); });
    EXPECT_FALSE(platform.files.Stat("C:\\change"));
    EXPECT_TRUE(platform.files.Stat("C:\\change"));

    system.faults.DieAt(2);
    EXPECT_TRUE(platform.files.CreateFolder("C:\\before"));
    EXPECT_THROW((void)platform.files.CreateFolder("C:\\during"), ProcessDied);
    EXPECT_FALSE(platform.files.CreateFolder("C:\\after"));
    system.EndProcess();
    EXPECT_THAT(system.files.AllPaths(), ElementsAre("C:\\before", "C:\\change"));
    EXPECT_TRUE(platform.process.ClaimSingleInstance());
    EXPECT_TRUE(platform.files.CreateFolder("C:\\again"));
}

} // namespace
