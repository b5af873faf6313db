#pragma once

#include "automation/WindowsHeader.h"

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>

/// Starting programs and looking at what they leave behind.
namespace harness {

/// How long a condition may take to come true on a busy machine.
inline constexpr std::chrono::seconds Patience{30};

/// Whether `condition` came true in time; messages are handled while waiting.
bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit = Patience);

/// The folder of the test program, with a trailing separator.
std::wstring OwnFolder();

/// A started program; it is ended with the object when it still runs.
class Child {
public:
    Child(const std::wstring& program, const std::wstring& arguments);
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    DWORD Id() const { return process.dwProcessId; }
    bool HasEnded() const;
    void Kill();
    /// The exit code, after waiting for the end; 0xDEAD when it did not come in time.
    DWORD ExitCode();
    /// What it wrote to its standard output so far.
    std::string Output() const;

private:
    PROCESS_INFORMATION process{};
    std::wstring outputFile;
};

/// The script host in a folder of the Windows folder; `system32` is the one of this program's bitness.
std::wstring ScriptHost(const wchar_t* folder = L"system32");

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
    std::wstring file;
    std::optional<Child> child;
};

inline std::string ScriptOutput(const std::string& text, const wchar_t* folder = L"system32")
{
    return Script{text, folder}.OutputAtEnd();
}

/// Processes whose program file has this name.
int CountProcesses(const std::wstring& exeName);
/// Ends what a failed test left: by the message that ends a message loop, so that the class is taken off the system's
/// list and the next test gets a process of its own; by force when that does not help.
void EndProcesses(const std::wstring& exeName);

/// A key with all below it: "path" for each key, "path\\=name" with "type:data" for each value. `view` chooses the view
/// of one bitness.
std::map<std::wstring, std::wstring> RegistryTree(HKEY root, const std::wstring& key, REGSAM view = 0);

/// The keys and values of our class, interface, type library and names below `Software\Classes`, in the views of both
/// bitnesses, and how many keys stand beside them.
std::map<std::wstring, std::wstring> RegistrationTree(HKEY root);

/// Copies one of the user's keys with all below it; nothing when it is not there.
void CopyKey(const wchar_t* from, const wchar_t* to);

} // namespace harness
