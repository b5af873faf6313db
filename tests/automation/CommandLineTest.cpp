#include "automation/CommandLine.h"

#include <gmock/gmock.h>

namespace automation {
namespace {

using Task = CommandLine::Task;
using Arguments = std::vector<std::string>;

TEST(CommandLineTest, NamesTheTaskInAnySpelling)
{
    const struct {
        Arguments arguments;
        Task task;
        Scope scope{Scope::Machine};
    } rows[] = {
        // clang-format off
        {{}, Task::StandAlone}, {{R"(C:\some file.swt)"}, Task::StandAlone}, {{""}, Task::StandAlone},
        {{"/RegServer"}, Task::Register}, {{"-REGSERVER"}, Task::Register}, {{"-unregserver"}, Task::Unregister},
        {{"/regserver", "-peruser"}, Task::Register, Scope::User},
        {{"/PerUser", "/UnregServer"}, Task::Unregister, Scope::User},
        {{"/EMBEDDING"}, Task::Serve}, {{"/Automation", "-Embedding"}, Task::Serve},
        // clang-format on
    };
    for (const auto& row : rows) {
        const auto parsed = ParseCommandLine(row.arguments);
        ASSERT_TRUE(parsed) << testing::PrintToString(row.arguments);
        EXPECT_EQ(parsed->task, row.task) << testing::PrintToString(row.arguments);
        EXPECT_EQ(parsed->scope, row.scope) << testing::PrintToString(row.arguments);
    }
    const Arguments refused[] = {
        // clang-format off
        {"/Install"}, {"-"}, {"--RegServer"}, {"/RegServer2"}, {"/PerUser"}, {"/RegServer", "/UnregServer"},
        {"/RegServer", "now"}, {"a", "b"}, {"/Embedding", "/PerUser"}, {"/Embedding", "/RegServer"},
        // clang-format on
    };
    for (const Arguments& arguments : refused)
        EXPECT_FALSE(ParseCommandLine(arguments)) << testing::PrintToString(arguments);
}

} // namespace
} // namespace automation
