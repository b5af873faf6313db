#pragma once

#include "automation/WindowsHeader.h"

#include <chrono>
#include <functional>
#include <map>
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

/// Processes whose program file has this name.
int CountProcesses(const std::wstring& exeName);

/// The keys and values of our class, interface, type library and names below `Software\Classes`, in the views of both
/// bitnesses, and how many keys stand beside them.
std::map<std::wstring, std::wstring> RegistrationTree(HKEY root);

} // namespace harness
