#include "automation/CommandLine.h"

#include "platform/Text.h"

#include <string_view>

namespace automation {
namespace {

bool IsOption(std::string_view argument)
{
    return argument.starts_with('-') || argument.starts_with('/');
}

std::optional<CommandLine::Task> TaskOf(std::string_view option)
{
    using Task = CommandLine::Task;
    constexpr struct {
        std::string_view name;
        Task task;
    } tasks[] = {
        {"RegServer", Task::Register},
        {"UnregServer", Task::Unregister},
        {"Embedding", Task::Serve},
        {"Automation", Task::Serve},
    };
    for (const auto& row : tasks)
        if (platform::text::EqualIgnoringCase(option, row.name))
            return row.task;
    return std::nullopt;
}

} // namespace

std::optional<CommandLine> ParseCommandLine(const std::vector<std::string>& arguments)
{
    using Task = CommandLine::Task;
    if (arguments.empty() || (arguments.size() == 1 && !IsOption(arguments.front())))
        return CommandLine{};

    std::optional<Task> task;
    bool perUser = false;
    for (const std::string& argument : arguments) {
        if (!IsOption(argument))
            return std::nullopt;
        const std::string_view option = std::string_view{argument}.substr(1);
        if (platform::text::EqualIgnoringCase(option, "PerUser")) {
            perUser = true;
            continue;
        }
        const std::optional<Task> named = TaskOf(option);
        if (!named || (task && task != named))
            return std::nullopt;
        task = named;
    }
    if (!task || (perUser && task == Task::Serve))
        return std::nullopt;
    return CommandLine{*task, perUser ? Scope::User : Scope::Machine};
}

} // namespace automation
