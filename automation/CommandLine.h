#pragma once

#include <optional>
#include <string>
#include <vector>

namespace automation {

/// For whom the class is registered.
enum class Scope { Machine, User };

/// What the program was started for.
struct CommandLine {
    enum class Task { StandAlone, Serve, Register, Unregister };

    Task task{Task::StandAlone};
    Scope scope{Scope::Machine};
};

/// Reads the arguments that follow the program's name: nothing, /RegServer or /UnregServer (with or without
/// /PerUser), or /Embedding or /Automation (the system's way of asking for a server). "-" is as good as "/" and the
/// letter case is free. A lone argument that is no option is passed over: the shell adds one when a file is dropped on
/// the program's icon. Nothing when the line makes no sense.
std::optional<CommandLine> ParseCommandLine(const std::vector<std::string>& arguments);

} // namespace automation
