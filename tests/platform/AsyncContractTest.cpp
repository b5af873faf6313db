#include "PlatformUnderTest.h"

#include "platform/Path.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
#include <thread>

using namespace platform;
using namespace std::chrono_literals;

namespace {

/// What is done elsewhere, and comes back on the window's thread.
class AsyncContract : public testing::Test {
protected:
    std::unique_ptr<PlatformUnderTest> under{PlatformUnderTest::Make()};
    Platform system{under->Get()};
    const std::thread::id window = std::this_thread::get_id();

    Result<Ticket> Watch(const std::string& application, std::function<void(std::uint32_t)> ended)
    {
        return system.shell.RunAndWatch(application, "\"" + application + "\" /c exit 7", WindowStyle::MinimizedFocus,
                                        std::move(ended));
    }
};

TEST_F(AsyncContract, ResultsAndFailuresOfJobsArriveOnTheWindowsThread)
{
    const struct {
        std::function<Result<std::string>()> work;
        Result<std::string> expected;
    } rows[] = {
        {[] { return "done"; }, "done"},
        {[] { return std::unexpected{error::NotReady}; }, std::unexpected{error::NotReady}},
        {[]() -> Result<std::string> { throw std::runtime_error{"no"}; }, std::unexpected{error::GeneralFailure}},
    };
    std::vector<std::optional<Result<std::string>>> results(std::size(rows));
    std::vector<Ticket> tickets;
    for (std::size_t i = 0; i < std::size(rows); ++i)
        tickets.push_back(system.jobs.Start([work = rows[i].work](const Cancelled&) { return work(); },
                                            [this, &result = results[i]](Result<std::string> outcome) {
                                                EXPECT_EQ(std::this_thread::get_id(), window);
                                                result = std::move(outcome);
                                            }));
    EXPECT_FALSE(results[0]) << "nothing arrives before the next message";
    EXPECT_TRUE(under->WaitUntil([&] { return std::ranges::all_of(results, [](auto& r) { return r.has_value(); }); }));
    for (std::size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(*results[i], rows[i].expected) << i;
}

TEST_F(AsyncContract, AnOwnerThatIsGoneHearsNothingAndItsReferencesAreLetGoAtOnce)
{
    const auto kept = std::make_shared<int>();
    bool told = false;
    const auto doNothing = [](const Cancelled&) { return Result<>{}; };
    auto dropped = system.jobs.Start(doNothing, [&told, kept](const Result<>&) { told = true; });
    auto timer = system.timers.Start(10ms, [&told, kept] { told = true; });
    auto watch = Watch(std::string{CommandInterpreter}, [&told, kept](std::uint32_t) { told = true; });
    ASSERT_TRUE(timer && watch);
    dropped.Drop();
    timer->Drop();
    watch->Drop();
    EXPECT_EQ(kept.use_count(), 1);

    // Whatever was under way for it had the time to come.
    bool done = false;
    Ticket own = system.jobs.Start(doNothing, [&](const Result<>&) {
        own.Drop(); // under its own call
        done = true;
    });
    EXPECT_TRUE(under->WaitUntil([&] { return done; }));
    int ended = 0;
    const auto other = Watch(std::string{CommandInterpreter}, [&](std::uint32_t) { ++ended; });
    EXPECT_TRUE(under->WaitUntil([&] { return ended == 1; }));
    EXPECT_FALSE(told);
}

TEST_F(AsyncContract, ATimerTicksUntilItIsLetGo)
{
    int ticks = 0;
    Result<Ticket> timer = system.timers.Start(10ms, [&] {
        EXPECT_EQ(std::this_thread::get_id(), window);
        if (++ticks == 3)
            timer->Drop();
    });
    ASSERT_TRUE(timer);
    EXPECT_TRUE(under->WaitUntil([&] { return ticks == 3; }));
}

TEST_F(AsyncContract, AWatchedProgramTellsItsExitCode)
{
    std::optional<std::uint32_t> code;
    const auto watch = Watch(std::string{CommandInterpreter}, [&](std::uint32_t exitCode) {
        EXPECT_EQ(std::this_thread::get_id(), window);
        code = exitCode;
    });
    ASSERT_TRUE(watch);
    EXPECT_TRUE(under->WaitUntil([&] { return code.has_value(); }));
    EXPECT_EQ(code, ExitCode);
    const auto missing = Watch(path::Join(under->Folder(), "missing.exe"), [](std::uint32_t) { FAIL(); });
    EXPECT_EQ(missing.error(), error::FileNotFound);
}

TEST_F(AsyncContract, AnOpenedProgramIsWatchedAndCannotBeFoundOnceItHasEnded)
{
    bool hasEnded = false;
    const auto opened = system.shell.OpenAndWatch(ShortProgram, [&](std::uint32_t) {
        EXPECT_EQ(std::this_thread::get_id(), window);
        hasEnded = true;
    });
    ASSERT_TRUE(opened);
    EXPECT_NE(opened->process.id, 0u);
    EXPECT_NE(opened->process.started, 0);
    EXPECT_TRUE(under->WaitUntil([&] { return hasEnded; }));
    EXPECT_EQ(CodeOf(system.shell.Watch(opened->process, {})), error::FileNotFound.code);
    for (const auto& [program, code] :
         {std::pair{path::Join(under->Folder(), "missing.exe"), error::FileNotFound}, {"cmd.exe", error::InvalidName}})
        EXPECT_EQ(CodeOf(system.shell.OpenAndWatch(program, {})), code.code) << program;
}

} // namespace
