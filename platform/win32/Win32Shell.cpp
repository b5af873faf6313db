#include "platform/win32/Win32Shell.h"

#include "platform/CommandLine.h"
#include "platform/Path.h"
#include "platform/win32/Handle.h"
#include "platform/win32/Native.h"
#include "platform/win32/ProcessWatch.h"

#include <algorithm>
#include <functional>
#include <future>

namespace platform::win32 {

namespace {

// Milliseconds.
constexpr DWORD terminationTime = 2000;

Result<std::string> DocumentsFolder()
{
    wchar_t path[MAX_PATH];
    const HRESULT result = SHGetFolderPathW(nullptr, CSIDL_PERSONAL, nullptr, SHGFP_TYPE_CURRENT, path);
    if (FAILED(result))
        return std::unexpected{Error{static_cast<std::uint32_t>(HRESULT_CODE(result))}};
    if (result != S_OK) // the role has no folder on this machine
        return std::unexpected{error::PathNotFound};
    return path::Normalized(ToUtf8(path));
}

Result<std::string> ProgramFolder()
{
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length == 0)
            return LastError();
        if (length < path.size())
            return path::Parent(ToUtf8({path.data(), length}));
        path.resize(path.size() * 2);
    }
}

Result<std::string> WindowsFolder()
{
    wchar_t path[MAX_PATH];
    // Not the folder that a terminal server makes up for each user.
    const UINT length = GetSystemWindowsDirectoryW(path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH)
        return length == 0 ? LastError() : std::unexpected{error::MoreData};
    return path::Normalized(ToUtf8({path, length}));
}

Result<std::string> TemporaryFolder()
{
    wchar_t path[MAX_PATH + 1];
    const DWORD length = GetTempPathW(MAX_PATH + 1, path);
    if (length == 0 || length > MAX_PATH)
        return length == 0 ? LastError() : std::unexpected{error::MoreData};
    return path::Normalized(ToUtf8({path, length}));
}

Result<ObjectHandle> StartProgram(std::string_view application, std::string_view commandLine, WindowStyle style)
{
    const auto path = ToNativePath(application);
    if (!path)
        return std::unexpected{path.error()};
    if (commandLine.contains('\0'))
        return std::unexpected{error::InvalidParameter};
    std::wstring line = ToUtf16(commandLine); // the system writes into it
    STARTUPINFOW start{};
    start.cb = sizeof start;
    start.dwFlags = STARTF_USESHOWWINDOW;
    start.wShowWindow = static_cast<WORD>(style);
    PROCESS_INFORMATION process{};
    // The default error mode: programs that we start tell of missing disks in their own way.
    if (!CreateProcessW(path->c_str(), line.data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE, nullptr,
                        nullptr, &start, &process))
        return LastError();
    const ObjectHandle threadHandle{process.hThread};
    return ObjectHandle{process.hProcess};
}

/// 0 when the system does not tell.
std::int64_t StartTime(const ObjectHandle& process)
{
    FILETIME created{}, ended, kernel, user;
    GetProcessTimes(process.Get(), &created, &ended, &kernel, &user);
    return static_cast<std::int64_t>(std::uint64_t{created.dwHighDateTime} << 32 | created.dwLowDateTime);
}

/// The shell finds no file whose path has more than 260 characters, and refuses the prefix that lifts the bound; by its
/// short names it finds it.
std::wstring WithinShellBound(std::string_view target)
{
    std::wstring file = ToUtf16(target);
    if (file.size() < MAX_PATH)
        return file;
    const auto native = ToNativePath(target);
    if (!native)
        return file; // an address
    std::wstring shortened(32'768, L'\0');
    shortened.resize(GetShortPathNameW(native->c_str(), shortened.data(), static_cast<DWORD>(shortened.size())));
    shortened = WithoutLongPrefix(shortened);
    return shortened.empty() || shortened.size() >= MAX_PATH ? file : shortened;
}

/// What the system has recorded for a verb of a type of files: its program, or its command line. "" for nothing.
std::wstring Recorded(ASSOCSTR what, const std::wstring& ending, const wchar_t* verb)
{
    std::wstring text(32'768, L'\0');
    auto size = static_cast<DWORD>(text.size());
    if (AssocQueryStringW(ASSOCF_NONE, what, ending.c_str(), verb, text.data(), &size) != S_OK)
        return {};
    text.resize(wcslen(text.c_str()));
    return text;
}

/// Starts the program of a file's type by its recorded command line, with the file's long path in it: for a file that
/// lies too deep for the shell also by short names, which a volume may not have at all. The shell's number of the
/// outcome.
int OpenByCommandLine(std::string_view file, const wchar_t* verb)
{
    const auto native = ToNativePath(file);
    if (!native || GetFileAttributesW(native->c_str()) == INVALID_FILE_ATTRIBUTES)
        return SE_ERR_FNF;
    const std::wstring ending = PathFindExtensionW(native->c_str());
    const std::string program = ToUtf8(Recorded(ASSOCSTR_EXECUTABLE, ending, verb));
    std::string line = ToUtf8(Recorded(ASSOCSTR_COMMAND, ending, verb));
    if (program.empty() || line.empty())
        return SE_ERR_NOASSOC;
    std::size_t place = line.find("%1");
    if (place == std::string::npos)
        place = line.find("%L");
    if (place == std::string::npos) // it hears of its file in another way
        return SE_ERR_FNF;
    const bool inQuotes = place > 0 && line[place - 1] == '"';
    line.replace(place, 2, inQuotes ? std::string{file} : command_line::Quoted(file));
    return StartProgram(program, line, WindowStyle::Normal) ? Shell::Worked : SE_ERR_ACCESSDENIED;
}

int OpenHere(std::string_view target, Verb verb)
{
    if (target.contains('\0')) // would be cut there and open something else
        return SE_ERR_FNF;
    const std::wstring file = WithinShellBound(target);
    const wchar_t* const name = verb == Verb::New ? L"new" : L"open";
    if (file.size() >= MAX_PATH && path::IsAbsolute(target))
        return OpenByCommandLine(target, name);
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    // The program says itself what went wrong. The call returns when the launch is through: the thread, and the process
    // with it, may end the moment after.
    request.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    request.lpVerb = name;
    request.lpFile = file.c_str();
    request.nShow = SW_SHOWNORMAL;
    const bool worked = ShellExecuteExW(&request) != FALSE;
    const DWORD failure = worked ? ERROR_SUCCESS : GetLastError();
    const int result = static_cast<int>(reinterpret_cast<INT_PTR>(request.hInstApp));
    if (worked)
        return std::max(result, Shell::Worked);
    if (failure == ERROR_NO_ASSOCIATION)
        return SE_ERR_NOASSOC;
    // 31 is the number of a general failure too, and larger ones would read as success.
    const bool isNoAssociation = result == SE_ERR_NOASSOC && failure != ERROR_GEN_FAILURE;
    return isNoAssociation || (result < Shell::Worked && result != SE_ERR_NOASSOC) ? result : SE_ERR_ACCESSDENIED;
}

/// What the shell runs for others is made for threads with an apartment of their own. Jobs have none: for them it is
/// done on a thread that has.
int InApartment(const std::function<int()>& work)
{
    const HRESULT entered = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE);
    if (entered == RPC_E_CHANGED_MODE)
        return std::async(std::launch::async, [&] { return InApartment(work); }).get();
    struct Leave {
        bool owns;
        ~Leave()
        {
            if (owns)
                CoUninitialize();
        }
    } const leave{SUCCEEDED(entered)};
    return work();
}

} // namespace

int Win32Shell::Open(std::string_view target, Verb verb)
{
    return InApartment([&] { return OpenHere(target, verb); });
}

bool Win32Shell::IsDangerous(std::string_view ending)
{
    return AssocIsDangerous(ToUtf16(ending).c_str()) != FALSE;
}

std::string Win32Shell::Expanded(std::string_view text)
{
    const std::wstring raw = ToUtf16(text);
    std::wstring expanded(ExpandEnvironmentStringsW(raw.c_str(), nullptr, 0), L'\0');
    const DWORD length = ExpandEnvironmentStringsW(raw.c_str(), expanded.data(), static_cast<DWORD>(expanded.size()));
    if (length == 0 || length > expanded.size())
        return std::string{text};
    expanded.resize(length - 1); // without the terminator
    return ToUtf8(expanded);
}

Result<> Win32Shell::Run(std::string_view application, std::string_view commandLine, WindowStyle style)
{
    const auto process = StartProgram(application, commandLine, style);
    return process ? Result<>{} : std::unexpected{process.error()};
}

Result<> Win32Shell::RunElevated(std::string_view application, std::string_view commandLine, WindowStyle style)
{
    const auto program = ToNativePath(application);
    if (!program)
        return std::unexpected{program.error()};
    const std::wstring parameters = ToUtf16(command_line::WithoutProgram(commandLine));
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC;
    request.hwnd = GetActiveWindow(); // so that the question does not come behind it
    request.lpVerb = L"runas";
    request.lpFile = program->c_str();
    request.lpParameters = parameters.c_str();
    request.nShow = static_cast<int>(style);
    return Outcome(ShellExecuteExW(&request));
}

Result<std::uint32_t> Win32Shell::RunAndWait(std::string_view application, std::string_view commandLine,
                                             WindowStyle style, std::uint32_t milliseconds)
{
    const auto process = StartProgram(application, commandLine, style);
    if (!process)
        return std::unexpected{process.error()};
    const HANDLE handle = process->Get();
    if (const DWORD outcome = WaitForSingleObject(handle, milliseconds); outcome != WAIT_OBJECT_0) {
        const auto failed = outcome == WAIT_TIMEOUT ? error::Timeout : LastError().error();
        // It ends in its own time, and holds its files until then.
        if (TerminateProcess(handle, 1))
            WaitForSingleObject(handle, terminationTime);
        return std::unexpected{failed};
    }
    DWORD code{};
    if (!GetExitCodeProcess(handle, &code))
        return LastError();
    return code;
}

Result<Ticket> Win32Shell::RunAndWatch(std::string_view application, std::string_view commandLine, WindowStyle style,
                                       std::function<void(std::uint32_t exitCode)> ended)
{
    auto process = StartProgram(application, commandLine, style);
    if (!process)
        return std::unexpected{process.error()};
    return WatchProcess(std::move(*process), post, std::move(ended));
}

Result<> Win32Shell::Recycle(std::string_view folder)
{
    std::wstring place = ToUtf16(path::Normalized(folder));
    const std::wstring root = ToUtf16(path::Root(folder));
    SHQUERYRBINFO bin{};
    bin.cbSize = sizeof bin;
    // What the shell cannot recycle it deletes, in its own way: so it is only asked where there is surely a bin.
    if (!path::IsAbsolute(folder) || folder.contains('\0') || place.size() >= MAX_PATH ||
        GetDriveTypeW(root.c_str()) != DRIVE_FIXED || SHQueryRecycleBinW(root.c_str(), &bin) != S_OK)
        return std::unexpected{error::NotSupported};
    place.push_back(L'\0'); // a list of one
    SHFILEOPSTRUCTW request{};
    request.wFunc = FO_DELETE;
    request.pFrom = place.c_str();
    // A folder that the bin has no room for is asked about by the system.
    request.fFlags = FOF_ALLOWUNDO | FOF_NOCONFIRMATION | FOF_NOERRORUI | FOF_SILENT | FOF_WANTNUKEWARNING |
                     FOF_NO_CONNECTED_ELEMENTS; // a page beside its folder of pictures stays
    const int failure = InApartment([&] { return SHFileOperationW(&request); });
    if (failure == ERROR_CANCELLED)
        return std::unexpected{error::Declined};
    if (failure != 0 || request.fAnyOperationsAborted) // the system gives up without a word, too, at what is in use
        return std::unexpected{error::AccessDenied};
    return {};
}

Result<Shell::WatchedProgram> Win32Shell::OpenAndWatch(std::string_view program,
                                                       std::function<void(std::uint32_t exitCode)> ended)
{
    if (const auto path = ToNativePath(program); !path)
        return std::unexpected{path.error()};
    const std::wstring file = WithinShellBound(program);
    SHELLEXECUTEINFOW request{};
    request.cbSize = sizeof request;
    request.fMask = SEE_MASK_FLAG_NO_UI | SEE_MASK_NOASYNC | SEE_MASK_NOCLOSEPROCESS;
    request.hwnd = GetActiveWindow(); // whatever the system asks of what comes from the web comes before it
    request.lpVerb = L"open";
    request.lpFile = file.c_str();
    request.nShow = SW_SHOWNORMAL;
    if (!ShellExecuteExW(&request))
        return LastError();
    ObjectHandle process{request.hProcess};
    if (!process) // handed to a process that runs already: programs never are
        return std::unexpected{error::GeneralFailure};
    const ProcessMark mark{GetProcessId(process.Get()), StartTime(process)};
    auto watch = WatchProcess(std::move(process), post, std::move(ended));
    if (!watch)
        return std::unexpected{watch.error()};
    return WatchedProgram{std::move(*watch), mark};
}

Result<Ticket> Win32Shell::Watch(const ProcessMark& process, std::function<void(std::uint32_t exitCode)> ended)
{
    ObjectHandle found{OpenProcess(SYNCHRONIZE | PROCESS_QUERY_LIMITED_INFORMATION, FALSE, process.id)};
    // A process that has ended is still found for as long as anybody holds it.
    if (!found || StartTime(found) != process.started || WaitForSingleObject(found.Get(), 0) == WAIT_OBJECT_0)
        return std::unexpected{error::FileNotFound};
    return WatchProcess(std::move(found), post, std::move(ended));
}

Result<std::string> Win32Shell::FolderPath(KnownFolder folder)
{
    switch (folder) {
    case KnownFolder::Personal:
        return DocumentsFolder();
    case KnownFolder::Windows:
        return WindowsFolder();
    case KnownFolder::Temporary:
        return TemporaryFolder();
    case KnownFolder::ProgramFolder:
        break;
    }
    return ProgramFolder();
}

} // namespace platform::win32
