#include "automation/CommandLine.h"

#include <gmock/gmock.h>

namespace automation {
namespace {

using Task = CommandLine::Task;

TEST(CommandLineTest, NamesTheTaskInAnySpelling)
{
    const struct {
        std::vector<std::string> arguments;
        Task task;
        Scope scope;
    } rows[] = {
        {{}, Task::StandAlone, Scope::Machine},
        {{R"(C:\some file.swt)"}, Task::StandAlone, Scope::Machine},
        {{""}, Task::StandAlone, Scope::Machine},
        {{"/RegServer"}, Task::Register, Scope::Machine},
        {{"-REGSERVER"}, Task::Register, Scope::Machine},
        {{"/regserver", "-peruser"}, Task::Register, Scope::User},
        {{"/PerUser", "/UnregServer"}, Task::Unregister, Scope::User},
        {{"-unregserver"}, Task::Unregister, Scope::Machine},
        {{"-Embedding"}, Task::Serve, Scope::Machine},
        {{"/EMBEDDING"}, Task::Serve, Scope::Machine},
        {{"/Automation", "-Embedding"}, Task::Serve, Scope::Machine},
    };
    for (const auto& row : rows) {
        const auto parsed = ParseCommandLine(row.arguments);
        ASSERT_TRUE(parsed) << testing::PrintToString(row.arguments);
        EXPECT_EQ(parsed->task, row.task) << testing::PrintToString(row.arguments);
        EXPECT_EQ(parsed->scope, row.scope) << testing::PrintToString(row.arguments);
    }
}

TEST(CommandLineTest, RefusesWhatMakesNoSense)
{
    const std::vector<std::string> rows[] = {
        {"/Install"},
        {"-"},
        {"--RegServer"},
        {"/RegServer2"},
        {"/PerUser"},
        {"/RegServer", "/UnregServer"},
        {"/RegServer", "now"},
        {"a", "b"},
        {"/Embedding", "/PerUser"},
        {"/Embedding", "/RegServer"},
    };
    for (const auto& arguments : rows)
        EXPECT_FALSE(ParseCommandLine(arguments)) << testing::PrintToString(arguments);
}

} // namespace
} // namespace automation
