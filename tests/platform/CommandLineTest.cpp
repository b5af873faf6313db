#include "platform/CommandLine.h"

#include <gtest/gtest.h>

using namespace platform;

TEST(CommandLineTest, WhatIsJoinedIsReadBackWhateverItHolds)
{
    // Every argument of up to five of the characters that mean something in a line.
    std::vector<std::string> arguments{"C:\\Program Files\\a.exe", ""};
    for (std::size_t first = 1, length = 1; length <= 5; ++length) {
        const std::size_t end = arguments.size();
        for (; first < end; ++first)
            for (const char c : {'a', ' ', '"', '\\'})
                arguments.push_back(arguments[first] + c);
    }
    EXPECT_EQ(arguments.size(), 1366u);
    EXPECT_EQ(command_line::Split(command_line::Join(arguments)), arguments);
    for (const std::string& argument : arguments)
        ASSERT_EQ(command_line::Split("x " + command_line::Quoted(argument)),
                  (std::vector<std::string>{"x", argument}));
}

TEST(CommandLineTest, TakesALineApartAsProgramsDo)
{
    const struct {
        const char* line;
        std::vector<std::string> expected;
        const char* rest; ///< without the program
    } rows[] = {
        // clang-format off
        {"", {}, ""}, {"a.exe", {"a.exe"}, ""}, {"  a", {"", "a"}, "a"}, {"a \"open", {"a", "open"}, "\"open"},
        {"\"C:\\Program Files\\\"a.exe /x\t/y  ", {"C:\\Program Files\\a.exe", "/x", "/y"}, "/x\t/y  "},
        {"a \"b c\"d \"\" e\"\"f", {"a", "b cd", "", "ef"}, "\"b c\"d \"\" e\"\"f"},
        {"a \\\\\\\"b\\\\ \"c\\\\\" \"d\"\"e\"",
         {"a", "\\\"b\\\\", "c\\", "d\"e"}, "\\\\\\\"b\\\\ \"c\\\\\" \"d\"\"e\""},
        // clang-format on
    };
    for (const auto& row : rows) {
        EXPECT_EQ(command_line::Split(row.line), row.expected) << row.line;
        EXPECT_EQ(command_line::WithoutProgram(row.line), row.rest) << row.line;
    }
    EXPECT_EQ(command_line::Join({"C:\\a.exe", "/s", "b c"}), "\"C:\\a.exe\" /s \"b c\"") << "no quotes without need";
}
