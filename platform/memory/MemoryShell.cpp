#include "platform/memory/MemoryShell.h"

#include "platform/Path.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace platform::memory {

namespace {

constexpr int worked = 42;
constexpr int fileNotFound = 2;
constexpr int accessDenied = 5;
constexpr int noAssociation = 31;

} // namespace

int MemoryShell::Open(std::string_view target, Verb verb)
{
    if (const auto fault = faults.Enter("Shell.Open", target))
        return fault->code < Worked && fault->code != noAssociation ? static_cast<int>(fault->code) : accessDenied;
    const auto endsIn = [&](const std::string& end) { return text::EndsWithIgnoringCase(target, end); };
    if (verb == Verb::New) {
        if (std::ranges::none_of(newEndings, endsIn))
            return noAssociation;
        openedForNew.emplace_back(target);
    }
    opened.emplace_back(target);

    const std::string folded = text::Folded(target);
    if (const auto answer = answers.find(folded); answer != answers.end())
        return answer->second;
    if (answerToAll)
        return *answerToAll;
    if (folded.starts_with("http"))
        return worked;
    if (!files.Exists(target))
        return fileNotFound;
    return std::ranges::any_of(unknownEndings, endsIn) ? noAssociation : worked;
}

bool MemoryShell::IsDangerous(std::string_view ending)
{
    return dangerousEndings.contains(text::Folded(ending));
}

std::string MemoryShell::Expanded(std::string_view text)
{
    std::string expanded;
    for (;;) {
        const std::size_t start = text.find('%');
        const std::size_t end = start == std::string_view::npos ? start : text.find('%', start + 1);
        if (end == std::string_view::npos)
            return expanded.append(text);
        const auto variable = variables.find(text::Folded(text.substr(start + 1, end - start - 1)));
        expanded.append(text.substr(0, start));
        if (variable != variables.end())
            expanded += variable->second;
        else
            expanded.append(text.substr(start, end - start + 1));
        text.remove_prefix(end + 1);
    }
}

Result<> MemoryShell::RunElevated(std::string_view application, std::string_view commandLine, WindowStyle style)
{
    if (const auto fault = faults.Enter("Shell.RunElevated", commandLine))
        return std::unexpected{*fault};
    return Start(application, commandLine, style, true);
}

Result<> MemoryShell::Run(std::string_view application, std::string_view commandLine, WindowStyle style)
{
    if (const auto fault = faults.Enter("Shell.Run", commandLine))
        return std::unexpected{*fault};
    return Start(application, commandLine, style);
}

Result<std::uint32_t> MemoryShell::RunAndWait(std::string_view application, std::string_view commandLine,
                                              WindowStyle style, std::uint32_t)
{
    if (const auto fault = faults.Enter("Shell.RunAndWait", commandLine))
        return std::unexpected{*fault};
    if (const auto started = Start(application, commandLine, style); !started)
        return std::unexpected{started.error()};
    return 0;
}

Result<Ticket> MemoryShell::RunAndWatch(std::string_view application, std::string_view commandLine, WindowStyle style,
                                        std::function<void(std::uint32_t exitCode)> ended)
{
    if (const auto fault = faults.Enter("Shell.RunAndWatch", commandLine))
        return std::unexpected{*fault};
    auto begun = Begin(application, commandLine, style, std::move(ended));
    if (!begun)
        return std::unexpected{begun.error()};
    return std::move(begun->watch);
}

Result<Shell::WatchedProgram> MemoryShell::OpenAndWatch(std::string_view program,
                                                        std::function<void(std::uint32_t exitCode)> ended)
{
    if (const auto fault = faults.Enter("Shell.OpenAndWatch", program))
        return std::unexpected{*fault};
    return Begin(program, {}, WindowStyle::Normal, std::move(ended));
}

Result<Shell::WatchedProgram> MemoryShell::Begin(std::string_view application, std::string_view commandLine,
                                                 WindowStyle style, Ended ended)
{
    if (const auto started = Start(application, commandLine, style); !started)
        return std::unexpected{started.error()};
    const ProcessMark mark{++lastProcess, lastProcess};
    running.push_back({mark, {}});
    return WatchedProgram{running.back().Add(std::move(ended)), mark};
}

Result<Ticket> MemoryShell::Watch(const ProcessMark& process, std::function<void(std::uint32_t exitCode)> ended)
{
    if (const auto fault = faults.Enter("Shell.Watch", std::to_string(process.id)))
        return std::unexpected{*fault};
    const auto found = std::ranges::find_if(
        running, [&](const Running& one) { return one.mark.id == process.id && one.mark.started == process.started; });
    if (found == running.end())
        return std::unexpected{error::FileNotFound};
    return found->Add(std::move(ended));
}

bool MemoryShell::Running::IsWatched() const
{
    return std::ranges::any_of(watches, [](const auto& watch) { return !watch.expired(); });
}

Ticket MemoryShell::Running::Add(Ended ended)
{
    auto watch = std::make_shared<Ended>(std::move(ended));
    watches.push_back(watch);
    return Ticket{std::move(watch)};
}

std::size_t MemoryShell::Watched() const
{
    return static_cast<std::size_t>(std::ranges::count_if(running, &Running::IsWatched));
}

void MemoryShell::EndWatched(std::uint32_t code)
{
    const Running ended = std::move(running.at(0));
    running.pop_front();
    for (const auto& weak : ended.watches)
        if (const auto watch = weak.lock())
            (*watch)(code);
}

Result<> MemoryShell::Start(std::string_view application, std::string_view commandLine, WindowStyle style,
                            bool elevated)
{
    runs.push_back({std::string{application}, std::string{commandLine}, style, elevated});
    if (!path::IsAbsolute(application))
        return std::unexpected{error::InvalidName};
    if (!files.Exists(application))
        return std::unexpected{error::FileNotFound};
    return standIn ? standIn(runs.back()) : Result<>{};
}

Result<> MemoryShell::Recycle(std::string_view folder)
{
    if (const auto fault = faults.Enter("Shell.Recycle", folder))
        return std::unexpected{*fault};
    if (!hasRecycleBin)
        return std::unexpected{error::NotSupported};
    // A move to another place is what the system does, and what another program's open file keeps it from.
    const std::string place = "C:\\$Recycle.Bin\\" + std::to_string(recycled.size());
    files.AddFolder("C:\\$Recycle.Bin");
    if (const auto moved = files.Move(folder, place); !moved)
        return moved;
    recycled.emplace_back(folder);
    return {};
}

Result<std::string> MemoryShell::FolderPath(KnownFolder folder)
{
    constexpr const char* names[] = {"Personal", "ProgramFolder", "Windows", "Temporary"};
    if (const auto fault = faults.Enter("Shell.FolderPath", names[static_cast<std::size_t>(folder)]))
        return std::unexpected{*fault};
    return folders.at(folder);
}

void MemoryShell::Forget()
{
    opened.clear();
    openedForNew.clear();
    runs.clear();
}

void MemoryShell::RemoveAssociation(std::string_view ending)
{
    unknownEndings.insert(text::Folded(ending));
}

void MemoryShell::AddNewVerb(std::string_view ending)
{
    newEndings.insert(text::Folded(ending));
}

void MemoryShell::SetVariable(std::string_view name, std::string_view value)
{
    variables.insert_or_assign(text::Folded(name), value);
}

void MemoryShell::SetOpenResult(std::string_view target, int result)
{
    answers.insert_or_assign(text::Folded(target), result);
}

void MemoryShell::SetFolderPath(KnownFolder folder, Result<std::string> path)
{
    folders.insert_or_assign(folder, std::move(path));
}

} // namespace platform::memory
