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
constexpr int lastErrorResult = 32; // of the shell: results above it mean that it worked

} // namespace

int MemoryShell::Open(std::string_view target)
{
    if (const auto fault = faults.Enter("Shell.Open", target))
        return fault->code <= lastErrorResult ? static_cast<int>(fault->code) : accessDenied;
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
    const bool unknown = std::ranges::any_of(unknownEndings, [&](const auto& end) { return folded.ends_with(end); });
    return unknown ? noAssociation : worked;
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
    return exitCode;
}

Result<Ticket> MemoryShell::RunAndWatch(std::string_view application, std::string_view commandLine, WindowStyle style,
                                        std::function<void(std::uint32_t exitCode)> ended)
{
    if (const auto fault = faults.Enter("Shell.RunAndWatch", commandLine))
        return std::unexpected{*fault};
    if (const auto started = Start(application, commandLine, style); !started)
        return std::unexpected{started.error()};
    auto watch = std::make_shared<Watch>(std::move(ended));
    watches.push_back(watch);
    return Ticket{std::move(watch)};
}

std::size_t MemoryShell::Watched() const
{
    return static_cast<std::size_t>(std::ranges::count_if(watches, [](const auto& watch) { return !watch.expired(); }));
}

void MemoryShell::EndWatched(std::uint32_t code)
{
    std::erase_if(watches, [](const auto& watch) { return watch.expired(); });
    const auto watch = watches.at(0).lock();
    watches.erase(watches.begin());
    (*watch)(code);
}

Result<> MemoryShell::Start(std::string_view application, std::string_view commandLine, WindowStyle style)
{
    runs.push_back({std::string{application}, std::string{commandLine}, style});
    if (!path::IsAbsolute(application))
        return std::unexpected{error::InvalidName};
    if (!files.Exists(application))
        return std::unexpected{error::FileNotFound};
    return standIn ? standIn(runs.back()) : Result<>{};
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
    runs.clear();
}

void MemoryShell::RemoveAssociation(std::string_view ending)
{
    unknownEndings.insert(text::Folded(ending));
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
