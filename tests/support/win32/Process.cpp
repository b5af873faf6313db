#include "tests/support/win32/Process.h"

#include "tests/support/win32/Files.h"

#include <tlhelp32.h>

#include <cwchar>
#include <stdexcept>

namespace support {
namespace {

template <class Visit>
void ForEachProcess(const std::wstring& exeName, Visit visit)
{
    const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(snapshot, &entry); more; more = Process32NextW(snapshot, &entry))
        if (_wcsicmp(entry.szExeFile, exeName.c_str()) == 0)
            visit(entry.th32ProcessID);
    CloseHandle(snapshot);
}

template <class Function>
Function* FromModule(const wchar_t* module, const char* name)
{
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(module), name)));
}

} // namespace

bool WaitFor(const std::function<bool()>& condition, std::chrono::milliseconds limit)
{
    const auto end = std::chrono::steady_clock::now() + limit;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        MSG message;
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE))
            DispatchMessageW(&message);
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
    }
    return true;
}

std::filesystem::path OwnFolder()
{
    wchar_t path[MAX_PATH]{};
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    return std::filesystem::path{path}.parent_path();
}

bool IsUnderWine()
{
    return FromModule<void()>(L"ntdll.dll", "wine_get_version") != nullptr;
}

Child::Child(const std::filesystem::path& program, const std::wstring& arguments) : outputFile{TemporaryFile(L".txt")}
{
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    const HANDLE output = CreateFileW(outputFile.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = output;
    std::wstring commandLine = L"\"" + program.wstring() + L"\" " + arguments;
    const BOOL started = CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                        nullptr, nullptr, &startup, &process);
    CloseHandle(output);
    if (!started)
        throw std::runtime_error{"cannot start the program under test: " + std::to_string(GetLastError())};
}

Child::~Child()
{
    if (!HasEnded()) {
        TerminateProcess(process.hProcess, 1);
        WaitForSingleObject(process.hProcess, 5000);
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    DeleteFileW(outputFile.c_str());
}

DWORD Child::ExitCode()
{
    DWORD code = 0xDEAD;
    if (WaitFor([this] { return HasEnded(); }))
        GetExitCodeProcess(process.hProcess, &code);
    return code;
}

std::string Child::Output() const
{
    std::string text = ReadFile(outputFile);
    std::erase(text, '\r');
    return text;
}

std::filesystem::path ScriptHost(const wchar_t* folder)
{
    wchar_t windows[MAX_PATH];
    GetWindowsDirectoryW(windows, MAX_PATH);
    return std::filesystem::path{windows} / folder / L"cscript.exe";
}

Script::Script(const std::string& text, const wchar_t* folder) : file{TemporaryFile(L".vbs")}
{
    WriteFile(file, text);
    child.emplace(ScriptHost(folder), L"//nologo \"" + file.wstring() + L"\"");
}

Script::~Script()
{
    child.reset();
    DeleteFileW(file.c_str());
}

int CountProcesses(const std::wstring& exeName)
{
    int count = 0;
    ForEachProcess(exeName, [&](DWORD) { ++count; });
    return count;
}

void EndProcesses(const std::wstring& exeName)
{
    ForEachProcess(exeName, [](DWORD id) {
        const HANDLE process = OpenProcess(PROCESS_TERMINATE | SYNCHRONIZE, FALSE, id);
        if (!process)
            return;
        const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
        THREADENTRY32 entry{};
        entry.dwSize = sizeof entry;
        for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry))
            if (entry.th32OwnerProcessID == id)
                PostThreadMessageW(entry.th32ThreadID, WM_QUIT, 0, 0);
        CloseHandle(snapshot);
        if (WaitForSingleObject(process, 5000) != WAIT_OBJECT_0)
            TerminateProcess(process, 1);
        CloseHandle(process);
    });
}

std::wstring UnixPath(const std::filesystem::path& path)
{
    const auto translate = FromModule<char * CDECL(const wchar_t*)>(L"kernel32.dll", "wine_get_unix_file_name");
    char* const found = translate ? translate(path.c_str()) : nullptr;
    if (!found)
        return {};
    std::wstring result(MAX_PATH * 4, L'\0');
    const int length = MultiByteToWideChar(CP_UTF8, 0, found, -1, result.data(), static_cast<int>(result.size()));
    result.resize(length > 0 ? static_cast<std::size_t>(length) - 1 : 0);
    HeapFree(GetProcessHeap(), 0, found);
    return result;
}

bool RunUnixTool(const std::wstring& tool, const std::vector<std::wstring>& arguments)
{
    const std::wstring program = L"\\\\?\\unix\\bin\\" + tool;
    std::wstring line = tool;
    for (const std::wstring& argument : arguments)
        line += L" \"" + argument + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    return CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                          &process) != FALSE;
}

} // namespace support
