#include "platform/CommandLine.h"

#include <algorithm>

namespace platform::command_line {

namespace {

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

/// Where the program's name ends: at a blank outside quotes. Backslashes mean nothing here.
std::size_t EndOfProgram(std::string_view line)
{
    bool isQuoted = false;
    std::size_t end = 0;
    for (; end < line.size() && (isQuoted || !IsBlank(line[end])); ++end)
        isQuoted ^= line[end] == '"';
    return end;
}

/// Takes the next argument off the line. Backslashes before a quote halve, and an odd one left over makes the quote a
/// letter; so does a second quote inside quotes.
std::string TakeArgument(std::string_view& line)
{
    std::string argument;
    bool isQuoted = false;
    while (!line.empty() && (isQuoted || !IsBlank(line.front()))) {
        const std::size_t backslashes = std::min(line.find_first_not_of('\\'), line.size());
        line.remove_prefix(backslashes);
        if (!line.starts_with('"')) {
            argument.append(backslashes, '\\');
            if (backslashes == 0) {
                argument += line.front();
                line.remove_prefix(1);
            }
            continue;
        }
        argument.append(backslashes / 2, '\\');
        line.remove_prefix(1);
        if (backslashes % 2 != 0) {
            argument += '"';
        } else if (isQuoted && line.starts_with('"')) {
            argument += '"';
            line.remove_prefix(1);
        } else {
            isQuoted = !isQuoted;
        }
    }
    return argument;
}

} // namespace

std::string Quoted(std::string_view argument)
{
    std::string quoted = "\"";
    std::size_t backslashes = 0; // before the current character
    for (const char c : argument) {
        if (c == '"')
            quoted.append(backslashes + 1, '\\');
        backslashes = c == '\\' ? backslashes + 1 : 0;
        quoted += c;
    }
    return quoted.append(backslashes, '\\') + '"';
}

std::string Join(const std::vector<std::string>& programAndArguments)
{
    std::string line;
    for (const std::string& argument : programAndArguments) {
        if (line.empty()) {
            line = '"' + argument + '"';
            continue;
        }
        const bool isPlain = !argument.empty() && argument.find_first_of(" \t\n\v\"") == std::string::npos;
        line += ' ' + (isPlain ? argument : Quoted(argument));
    }
    return line;
}

std::vector<std::string> Split(std::string_view line)
{
    std::vector<std::string> arguments;
    if (line.empty())
        return arguments;
    std::string& program = arguments.emplace_back(line.substr(0, EndOfProgram(line)));
    std::erase(program, '"');
    for (line = WithoutProgram(line); !line.empty();) {
        arguments.push_back(TakeArgument(line));
        line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    }
    return arguments;
}

std::string_view WithoutProgram(std::string_view line)
{
    line.remove_prefix(EndOfProgram(line));
    line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
    return line;
}

} // namespace platform::command_line
