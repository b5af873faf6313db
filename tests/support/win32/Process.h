#pragma once

#include "platform/win32/WindowsHeader.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// Starting programs, waiting for what they do, and looking at what they leave behind.
namespace support {

/// How long a condition may take to come true on a busy machine.
inline constexpr std::chrono::seconds Patience{30};

/// Whether `condition` came true in time; messages are handled while waiting.
bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit = Patience);

/// The folder of the test program.
std::filesystem::path OwnFolder();

bool IsUnderWine();

/// A started program; it is ended with the object when it still runs.
class Child {
public:
    Child(const std::filesystem::path& program, const std::wstring& arguments);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    DWORD Id() const { return process.dwProcessId; }
    bool HasEnded() const { return WaitForSingleObject(process.hProcess, 0) == WAIT_OBJECT_0; }
    /// The exit code, after waiting for the end; 0xDEAD when it did not come in time.
    DWORD ExitCode();
    /// What it wrote to its standard output so far.
    std::string Output() const;

private:
    PROCESS_INFORMATION process{};
    std::filesystem::path outputFile;
};

/// The script host in a folder of the Windows folder; `system32` is the one of this program's bitness.
std::filesystem::path ScriptHost(const wchar_t* folder = L"system32");

/// A script on its way. A script that fails does so silently and ends before it prints its last line.
class Script {
public:
    explicit Script(const std::string& text, const wchar_t* folder = L"system32");
    ~Script();
    Script(const Script&) = delete;
    Script& operator=(const Script&) = delete;

    /// What it printed so far, with "\n" line ends.
    std::string Output() const { return child->Output(); }
    /// What it printed when it has ended.
    std::string OutputAtEnd()
    {
        child->ExitCode();
        return child->Output();
    }

private:
    std::filesystem::path file;
    std::optional<Child> child;
};

/// Processes whose program file has this name.
int CountProcesses(const std::wstring& exeName);
/// Ends what a failed test left: by the message that ends a message loop, so that the class is taken off the system's
/// list and the next test gets a process of its own; by force when that does not help.
void EndProcesses(const std::wstring& exeName);

/// Starts a tool of the system that Wine stands on, with paths in its own notation. False where there is none. It
/// cannot be waited for: wait for what it does.
bool RunUnixTool(const std::wstring& tool, const std::vector<std::wstring>& arguments);
/// The path in that notation; "" on Windows.
std::wstring UnixPath(const std::filesystem::path& path);

} // namespace support
