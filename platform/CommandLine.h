#pragma once

#include <string>
#include <string_view>
#include <vector>

/// Command lines, by the rules after which programs take theirs apart. Every line that is made here is made by these:
/// no argument can become two, or a switch of its own.
namespace platform::command_line {

/// The argument in quotes: a program reads back exactly this, whatever it holds.
std::string Quoted(std::string_view argument);

/// A whole line: the program's path in quotes (a path holds none itself), then each argument, in quotes where it needs
/// them.
std::string Join(const std::vector<std::string>& programAndArguments);

/// Takes a line apart as the program will, the program first. Nothing for an empty line.
std::vector<std::string> Split(std::string_view line);

/// What follows the program.
std::string_view WithoutProgram(std::string_view line);

} // namespace platform::command_line
