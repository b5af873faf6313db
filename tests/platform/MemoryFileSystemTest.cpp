#include "platform/memory/System.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace platform;
using namespace platform::memory;
using testing::ElementsAre;
using testing::Pair;

namespace {

class MemoryFileSystemTest : public testing::Test {
protected:
    System system;
    MemoryFileSystem& files{system.files};

    std::vector<std::string> Names(std::string_view folder)
    {
        std::vector<std::string> names;
        const auto entries = files.List(folder).value();
        for (const FileEntry& entry : entries)
            names.push_back(entry.name);
        return names;
    }
};

Result<> Failed(Error error)
{
    return std::unexpected{error};
}

TEST_F(MemoryFileSystemTest, ListsInTheOrderOfCreationUnlessTold)
{
    for (const char* name : {"C:\\L\\b", "C:\\L\\_", "C:\\L\\A", "C:\\L\\c"})
        files.AddFile(name);
    EXPECT_THAT(Names("C:\\L"), ElementsAre("b", "_", "A", "c"));
    files.SetOrder("C:\\L", {"C", "a"});
    EXPECT_THAT(Names("C:\\L"), ElementsAre("c", "A", "b", "_"));
    files.SetSorted();
    EXPECT_THAT(Names("C:\\L"), ElementsAre("A", "b", "c", "_"));
}

TEST_F(MemoryFileSystemTest, LinksAreFollowedInPathsAndRemovedAsThemselves)
{
    files.AddFile("C:\\outside\\marker", "kept");
    files.AddLink("C:\\L\\link", "C:\\outside");
    files.AddLink("C:\\L\\loop", "C:\\L");
    files.AddLink("C:\\L\\self", "C:\\L\\self");
    files.AddLink("C:\\L\\broken", "C:\\nowhere");
    EXPECT_EQ(files.Stat("C:\\L\\link").value().attributes, 0x410u);
    EXPECT_TRUE(files.Stat("C:\\L\\link").value().IsLink());
    EXPECT_THAT(Names("C:\\L\\link"), ElementsAre("marker"));
    EXPECT_EQ(files.Read("C:\\L\\loop\\loop\\link\\marker", 10).value(), "kept");
    EXPECT_FALSE(files.List("C:\\L\\self"));
    EXPECT_FALSE(files.List("C:\\L\\broken"));

    EXPECT_EQ(files.DeleteFile("C:\\L\\link"), Failed(error::AccessDenied));
    for (const char* link : {"C:\\L\\link", "C:\\L\\loop", "C:\\L\\self", "C:\\L\\broken"})
        EXPECT_TRUE(files.RemoveFolder(link)) << link;
    EXPECT_THAT(files.AllPaths(), ElementsAre("C:\\L", "C:\\outside", "C:\\outside\\marker"));
}

TEST_F(MemoryFileSystemTest, FoldersOfCloudDrivesAreNoLinks)
{
    files.AddFile("C:\\L\\cloud\\a.swt");
    files.SetReparseTag("C:\\L\\cloud", 0x9000001A);
    EXPECT_FALSE(files.Stat("C:\\L\\cloud").value().IsLink());
    EXPECT_THAT(Names("C:\\L\\cloud"), ElementsAre("a.swt"));
}

TEST_F(MemoryFileSystemTest, WhatIsHeldOpenStaysWhereItIs)
{
    files.AddFile("C:\\L\\a\\b\\open.swt", "x");
    files.SetHeldOpen("C:\\L\\a\\b\\open.swt");
    const auto before = files.Snapshot();
    EXPECT_EQ(files.DeleteFile("C:\\L\\a\\b\\open.swt"), Failed(error::SharingViolation));
    EXPECT_EQ(files.Move("C:\\L\\a\\b\\open.swt", "C:\\L\\new"), Failed(error::SharingViolation));
    EXPECT_EQ(files.Move("C:\\L\\a", "C:\\L\\new"), Failed(error::SharingViolation));
    EXPECT_EQ(files.Move("C:\\L\\a", "C:\\L\\A"), Failed(error::SharingViolation));
    EXPECT_EQ(files.Snapshot(), before);
    EXPECT_TRUE(files.Read("C:\\L\\a\\b\\open.swt", 9));
    files.SetHeldOpen("C:\\L\\a\\b\\open.swt", false);
    EXPECT_TRUE(files.Move("C:\\L\\a", "C:\\L\\new"));
}

TEST_F(MemoryFileSystemTest, DrivesAndFoldersCanBeOutOfReach)
{
    files.AddFile("D:\\a.swt");
    files.AddFile("\\\\server\\share\\a.swt");
    files.AddFolder("C:\\closed");
    files.SetDriveReady("D:", false);
    files.SetUnreadable("C:\\closed");
    const struct {
        const char* path;
        Error error;
    } rows[] = {{"D:\\", error::NotReady}, {"E:\\", error::PathNotFound}, {"C:\\closed", error::AccessDenied}};
    for (const auto& row : rows)
        EXPECT_EQ(files.List(row.path).error(), row.error) << row.path;
    EXPECT_EQ(files.Move("\\\\server\\share\\a.swt", "C:\\a.swt"), Failed(error::NotSameDevice));
    files.SetDriveReady("D:", true);
    EXPECT_THAT(Names("d:\\"), ElementsAre("a.swt"));
    files.RemoveDrive("D:\\");
    EXPECT_EQ(files.List("D:\\").error(), error::PathNotFound);
}

TEST_F(MemoryFileSystemTest, CountsTheListingsOfEachFolder)
{
    files.AddFile("C:\\L\\a\\x");
    files.AddLink("C:\\L\\link", "C:\\L\\a");
    (void)files.List("C:\\L");
    (void)files.List("c:\\l\\\\A\\");
    (void)files.List("C:\\L\\link");
    EXPECT_THAT(files.Listings(), ElementsAre(Pair("C:\\L", 1u), Pair("C:\\L\\a", 2u)));
    files.ForgetListings();
    EXPECT_THAT(files.Listings(), ElementsAre());
}

TEST_F(MemoryFileSystemTest, SnapshotsShowEveryChange)
{
    files.AddFile("C:\\L\\a.swt", "one", 5);
    files.AddFolder("C:\\L\\b");
    const auto before = files.Snapshot("C:\\L");
    const std::function<void()> changes[] = {
        [&] { files.AddFile("C:\\L\\a.swt", "two", 5); },
        [&] { files.SetModified("C:\\L\\a.swt", 6); },
        [&] { files.SetAttributes("C:\\L\\b", attribute::Folder | attribute::Hidden); },
        [&] { EXPECT_TRUE(files.Move("C:\\L\\a.swt", "C:\\L\\A.swt")); },
        [&] { files.Remove("C:\\L\\b"); },
    };
    auto last = before;
    for (const auto& change : changes) {
        change();
        EXPECT_NE(files.Snapshot("C:\\L"), last);
        last = files.Snapshot("C:\\L");
    }
}

TEST(MemoryShellTest, AStandInDoesWhatTheStartedProgramDoes)
{
    System system;
    system.files.AddFile("C:\\windows\\tool.exe");
    system.shell.OnRun([&](const MemoryShell::Started& started) {
        system.files.AddFile("C:\\out", started.commandLine);
        return Result<>{};
    });
    EXPECT_TRUE(system.shell.Run("C:\\windows\\tool.exe", "tool /x", WindowStyle::MinimizedFocus));
    EXPECT_EQ(system.files.Contents("C:\\out"), "tool /x");
    EXPECT_THAT(system.shell.Runs(),
                ElementsAre(MemoryShell::Started{"C:\\windows\\tool.exe", "tool /x", WindowStyle::MinimizedFocus}));
    system.shell.SetOpenResult("C:\\a.swt", 26);
    EXPECT_EQ(system.shell.Open("c:\\A.swt"), 26);
    EXPECT_THAT(system.shell.Opened(), ElementsAre("c:\\A.swt"));
}

TEST(MemoryClockTest, ShowsTheWallClockOfItsZone)
{
    MemoryClock clock;
    const FileTime leapDay = MemoryClock::At({2004, 2, 29, 23, 30, 15});
    EXPECT_EQ(clock.ToLocal(leapDay), (LocalTime{2004, 2, 29, 23, 30, 15}));
    clock.SetOffsetMinutes(90);
    EXPECT_EQ(clock.ToLocal(leapDay), (LocalTime{2004, 3, 1, 1, 0, 15}));
    EXPECT_EQ(MemoryClock::At({1601, 1, 1, 0, 0, 1}), 10'000'000);
}

} // namespace
