#pragma once

#include "platform/Shell.h"
#include "platform/memory/FaultPlan.h"
#include "platform/memory/MemoryFileSystem.h"

#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

namespace platform::memory {

/// Opens nothing; records what it was asked for. A target that is there, or a web address, opens (42); a missing one
/// gives 2, a file whose ending was made unknown 31. A program starts when its file is there.
class MemoryShell final : public Shell {
public:
    struct Started {
        std::string application;
        std::string commandLine;
        WindowStyle style{};
        bool elevated{};
        friend bool operator==(const Started&, const Started&) = default;
    };

    MemoryShell(FaultPlan& plan, MemoryFileSystem& fileSystem) : faults{plan}, files{fileSystem} {}

    int Open(std::string_view target, Verb verb) override;
    bool IsDangerous(std::string_view ending) override;
    std::string Expanded(std::string_view text) override;
    Result<> Run(std::string_view application, std::string_view commandLine, WindowStyle style) override;
    Result<> RunElevated(std::string_view application, std::string_view commandLine, WindowStyle style) override;
    Result<std::uint32_t> RunAndWait(std::string_view application, std::string_view commandLine, WindowStyle style,
                                     std::uint32_t milliseconds) override;
    Result<Ticket> RunAndWatch(std::string_view application, std::string_view commandLine, WindowStyle style,
                               std::function<void(std::uint32_t exitCode)> ended) override;
    Result<> Recycle(std::string_view folder) override;
    Result<WatchedProgram> OpenAndWatch(std::string_view program,
                                        std::function<void(std::uint32_t exitCode)> ended) override;
    Result<Ticket> Watch(const ProcessMark& process, std::function<void(std::uint32_t exitCode)> ended) override;
    Result<std::string> FolderPath(KnownFolder folder) override;

    /// Every target and program asked for, refused ones too, in order.
    const std::vector<std::string>& Opened() const { return opened; }
    const std::vector<Started>& Runs() const { return runs; }
    /// Those of Opened that were asked for a new document.
    const std::vector<std::string>& OpenedForNew() const { return openedForNew; }
    /// The folders that went to the recycle bin; there is one only when a test says so.
    const std::vector<std::string>& Recycled() const { return recycled; }
    void SetRecycleBin(bool isThere = true) { hasRecycleBin = isThere; }
    void Forget();

    /// No program opens files with this ending (".pdf") any more.
    void RemoveAssociation(std::string_view ending);
    /// Files with this ending have the verb for a new document.
    void AddNewVerb(std::string_view ending);
    void SetVariable(std::string_view name, std::string_view value);
    /// What Open answers to this target, or to every target.
    void SetOpenResult(std::string_view target, int result);
    void SetOpenResult(int result) { answerToAll = result; }
    /// Stands in for the programs that are started: it does what they do and decides whether they start. Without one
    /// they start and do nothing.
    void OnRun(std::function<Result<>(const Started&)> program) { standIn = std::move(program); }
    /// Programs that run and are watched.
    std::size_t Watched() const;
    /// The first of those that were started to be watched, by a process that may be gone by now, ends.
    void EndWatched(std::uint32_t code);
    void SetFolderPath(KnownFolder folder, Result<std::string> path);

private:
    using Ended = std::function<void(std::uint32_t)>;
    struct Running {
        ProcessMark mark;
        std::vector<std::weak_ptr<Ended>> watches;

        bool IsWatched() const;
        Ticket Add(Ended ended);
    };

    Result<WatchedProgram> Begin(std::string_view application, std::string_view commandLine, WindowStyle style,
                                 Ended ended);
    Result<> Start(std::string_view application, std::string_view commandLine, WindowStyle style,
                   bool elevated = false);

    FaultPlan& faults;
    MemoryFileSystem& files;
    bool hasRecycleBin{};
    std::vector<std::string> recycled;
    std::vector<std::string> opened;
    std::vector<Started> runs;
    std::vector<std::string> openedForNew;
    std::set<std::string> unknownEndings;
    std::set<std::string> newEndings;
    std::set<std::string> dangerousEndings{".bat", ".cmd", ".com", ".exe", ".hta", ".js",
                                           ".lnk", ".mst", ".prg", ".scr", ".vbs"};
    std::map<std::string, std::string> variables; // by folded name
    std::map<std::string, int> answers;           // by folded target
    std::optional<int> answerToAll;
    std::function<Result<>(const Started&)> standIn;
    std::deque<Running> running;
    std::uint32_t lastProcess{1000};
    std::map<KnownFolder, Result<std::string>> folders{
        {KnownFolder::Personal, "C:\\Users\\User\\Documents"},
        {KnownFolder::ProgramFolder, "C:\\Program Files\\Template Browser"},
        {KnownFolder::Windows, "C:\\Windows"},
        {KnownFolder::Temporary, "C:\\Temp"},
    };
};

} // namespace platform::memory
