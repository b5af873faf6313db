#include "tests/automation/Harness.h"

#include <tlhelp32.h>

#include <atomic>
#include <cwchar>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace harness {
namespace {

using Tree = std::map<std::wstring, std::wstring>;

void ReadKey(HKEY key, const std::wstring& path, REGSAM view, Tree& tree)
{
    tree[path] = L"";
    wchar_t name[256];
    for (DWORD i = 0;; ++i) {
        DWORD length = 256;
        DWORD type = 0;
        DWORD bytes = 0;
        if (RegEnumValueW(key, i, name, &length, nullptr, &type, nullptr, &bytes) != ERROR_SUCCESS)
            break;
        std::wstring data(bytes / sizeof(wchar_t) + 1, L'\0');
        RegQueryValueExW(key, name, nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &bytes);
        tree[path + L"\\=" + name] = std::to_wstring(type) + L":" + data.c_str();
    }
    for (DWORD i = 0; RegEnumKeyW(key, i, name, 256) == ERROR_SUCCESS; ++i) {
        HKEY child = nullptr;
        if (RegOpenKeyExW(key, name, 0, KEY_READ | view, &child) == ERROR_SUCCESS) {
            ReadKey(child, path + L'\\' + name, view, tree);
            RegCloseKey(child);
        }
    }
}

std::wstring TemporaryFile(const wchar_t* ending)
{
    static std::atomic<int> number{};
    wchar_t folder[MAX_PATH];
    GetTempPathW(MAX_PATH, folder);
    return folder + std::to_wstring(GetCurrentProcessId()) + L"-" + std::to_wstring(++number) + ending;
}

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

std::wstring OwnFolder()
{
    wchar_t path[MAX_PATH];
    const std::wstring own{path, GetModuleFileNameW(nullptr, path, MAX_PATH)};
    return own.substr(0, own.rfind(L'\\') + 1);
}

Child::Child(const std::wstring& program, const std::wstring& arguments) : outputFile{TemporaryFile(L".txt")}
{
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    const HANDLE output = CreateFileW(outputFile.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = startup.hStdError = output;
    std::wstring commandLine = L"\"" + program + L"\" " + arguments;
    const BOOL started = CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE, CREATE_NO_WINDOW,
                                        nullptr, nullptr, &startup, &process);
    CloseHandle(output);
    if (!started)
        throw std::runtime_error{"cannot start the program under test: " + std::to_string(GetLastError())};
}

Child::~Child()
{
    Kill();
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    DeleteFileW(outputFile.c_str());
}

bool Child::HasEnded() const
{
    return WaitForSingleObject(process.hProcess, 0) == WAIT_OBJECT_0;
}

void Child::Kill()
{
    if (!HasEnded()) {
        TerminateProcess(process.hProcess, 1);
        WaitForSingleObject(process.hProcess, 5000);
    }
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
    std::ifstream file{outputFile.c_str()};
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

std::wstring ScriptHost(const wchar_t* folder)
{
    wchar_t windows[MAX_PATH];
    GetWindowsDirectoryW(windows, MAX_PATH);
    return std::wstring{windows} + L"\\" + folder + L"\\cscript.exe";
}

Script::Script(const std::string& text, const wchar_t* folder) : file{TemporaryFile(L".vbs")}
{
    std::ofstream{file.c_str()} << text;
    child.emplace(ScriptHost(folder), L"//nologo \"" + file + L"\"");
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

Tree RegistryTree(HKEY root, const std::wstring& key, REGSAM view)
{
    Tree tree;
    HKEY opened = nullptr;
    if (RegOpenKeyExW(root, key.c_str(), 0, KEY_READ | view, &opened) == ERROR_SUCCESS) {
        ReadKey(opened, key, view, tree);
        RegCloseKey(opened);
    }
    return tree;
}

Tree RegistrationTree(HKEY root)
{
    const auto braced = [](const GUID& id) {
        wchar_t text[39];
        StringFromGUID2(id, text, 39);
        return std::wstring{text};
    };
    const std::wstring own[] = {L"CLSID\\" + braced(CLSID_clsBrowser), L"Interface\\" + braced(IID__clsBrowser),
                                L"TypeLib\\" + braced(LIBID_TSBrowser), L"TSBrowser.clsBrowser",
                                L"TSBrowser.clsBrowser.1"};
    Tree tree;
    for (const REGSAM view : {KEY_WOW64_32KEY, KEY_WOW64_64KEY}) {
        const std::wstring prefix = view == KEY_WOW64_32KEY ? L"32:" : L"64:";
        const auto visit = [&](const std::wstring& place, auto&& look) {
            HKEY key = nullptr;
            const std::wstring path = place.empty() ? L"Software\\Classes" : L"Software\\Classes\\" + place;
            if (RegOpenKeyExW(root, path.c_str(), 0, KEY_READ | view, &key) != ERROR_SUCCESS)
                return;
            look(key, prefix + place);
            RegCloseKey(key);
        };
        for (const std::wstring& place : own)
            visit(place, [&](HKEY key, const std::wstring& path) { ReadKey(key, path, view, tree); });
        for (const std::wstring place : {L"", L"CLSID", L"Interface", L"TypeLib"})
            visit(place, [&](HKEY key, const std::wstring& path) {
                DWORD children = 0;
                RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &children, nullptr, nullptr, nullptr, nullptr, nullptr,
                                 nullptr, nullptr);
                tree[path + L" children"] = std::to_wstring(children);
            });
    }
    return tree;
}

void CopyKey(const wchar_t* from, const wchar_t* to)
{
    HKEY source = nullptr;
    HKEY target = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, from, 0, KEY_READ, &source) != ERROR_SUCCESS)
        return;
    RegCreateKeyExW(HKEY_CURRENT_USER, to, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &target, nullptr);
    RegCopyTreeW(source, nullptr, target);
    RegCloseKey(source);
    RegCloseKey(target);
}

} // namespace harness
