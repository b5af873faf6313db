#pragma once

#include "platform/Error.h"
#include "platform/Ticket.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace platform {

/// The window styles with which a program can be started (the numbers of the system's SW_ constants).
enum class WindowStyle { Normal = 1, MinimizedFocus = 2 };

/// What a document is opened for.
enum class Verb {
    Open,
    New ///< a new document from it: types whose documents would be overwritten by "open" have this
};

/// Folders that the system knows by role.
enum class KnownFolder {
    Personal,      ///< the user's documents
    ProgramFolder, ///< where this program lies
    Windows,       ///< where the system keeps its own programs
    Temporary      ///< for the user's short-lived files
};

/// By what a process is found again, by every process of the user: its number, which is given anew once it has ended,
/// and the time at which it began.
struct ProcessMark {
    std::uint32_t id{};
    std::int64_t started{}; ///< 100-nanosecond steps since 1601-01-01 UTC
};

/// Starting things: documents by their type's program, programs by command line.
class Shell {
public:
    virtual ~Shell() = default;

    /// The least result of Open that means that it worked.
    static constexpr int Worked = 33;

    /// Performs the verb on a file or address with no parameters, no folder, a normal window. The result is the shell's
    /// own: from `Worked` on it worked; 2 and 3 file or path not found; 31 no program for this type and verb, and
    /// nothing else. What an OpenGate lets pass alone is given to it.
    virtual int Open(std::string_view target, Verb verb) = 0;
    /// Whether the system counts files of this ending (".exe") among those that can do harm.
    virtual bool IsDangerous(std::string_view ending) = 0;
    /// The text with %VARIABLES% of the environment filled in; unknown ones stay.
    virtual std::string Expanded(std::string_view text) = 0;

    /// Starts `application` (a full path; never searched for) with the command line as given and does not wait.
    virtual Result<> Run(std::string_view application, std::string_view commandLine, WindowStyle style) = 0;
    /// The same with the rights of an administrator, for which the system asks the user; for a program that Run could
    /// not start without them (error::ElevationRequired).
    virtual Result<> RunElevated(std::string_view application, std::string_view commandLine, WindowStyle style) = 0;
    /// Run, and waits until the program has ended: its exit code. A program that runs for longer than
    /// `milliseconds` is ended (error::Timeout). Handles no messages meanwhile: for jobs.
    virtual Result<std::uint32_t> RunAndWait(std::string_view application, std::string_view commandLine,
                                             WindowStyle style, std::uint32_t milliseconds) = 0;
    /// Run, and `ended` gets the exit code on the window's thread, between two messages, unless the
    /// ticket is gone by then. The program runs on without it.
    virtual Result<Ticket> RunAndWatch(std::string_view application, std::string_view commandLine, WindowStyle style,
                                       std::function<void(std::uint32_t exitCode)> ended) = 0;

    /// Moves a folder with all that is in it to the recycle bin, as one. error::NotSupported where its volume has none,
    /// and nothing was done; error::Declined when the user, whom the system asks where the bin has no room, wants to
    /// keep it. After every error the folder is where it was. The caller sees to it that there are no links in it.
    virtual Result<> Recycle(std::string_view folder) = 0;

    struct WatchedProgram {
        Ticket watch;
        ProcessMark process;
    };
    /// Opens a program (a full path; never searched for) without arguments, as a double click would: where it needs an
    /// administrator's rights, or comes from the web, the system asks the user (error::Declined). `ended` is called as
    /// by RunAndWatch.
    virtual Result<WatchedProgram> OpenAndWatch(std::string_view program,
                                                std::function<void(std::uint32_t exitCode)> ended) = 0;
    /// Watches a process that somebody else may have started; error::FileNotFound when it does not run any more.
    virtual Result<Ticket> Watch(const ProcessMark& process, std::function<void(std::uint32_t exitCode)> ended) = 0;

    /// A folder's path without a trailing separator.
    virtual Result<std::string> FolderPath(KnownFolder folder) = 0;
};

} // namespace platform
