#include "automation/Server.h"

#include "automation/Boundary.h"
#include "automation/ClassFactory.h"
#include "automation/MessageFilter.h"
#include "automation/Registration.h"
#include "automation/Session.h"
#include "automation/WindowsHeader.h"
#include "platform/CommandLine.h"
#include "platform/Utf.h"

#include <optional>
#include <string_view>
#include <vector>

namespace automation {
namespace {

constexpr std::string_view StandAloneHostKind = "EXE";

/// Nothing that lies in the current folder, on the path or, where the system can keep to that, beside the program can
/// pass for a library that ours or the system's own code asks for by name alone. A disk that is not ready is an error
/// for the program instead of a box for the user.
void SecureProcess()
{
    HeapSetInformation(nullptr, HeapEnableTerminationOnCorruption, nullptr, 0);
    SetErrorMode(GetErrorMode() | SEM_FAILCRITICALERRORS);
    SetDllDirectoryW(L"");
    // Not in every Windows 7, so that it cannot be imported.
    if (auto* const setDirectories = reinterpret_cast<decltype(&SetDefaultDllDirectories)>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "SetDefaultDllDirectories"))))
        setDirectories(LOAD_LIBRARY_SEARCH_SYSTEM32);
    wchar_t folder[MAX_PATH];
    const UINT length = GetSystemDirectoryW(folder, MAX_PATH);
    if (length > 0 && length < MAX_PATH)
        SetCurrentDirectoryW(folder);
}

std::vector<std::string> ArgumentsOf(const std::wstring& commandLine)
{
    auto arguments = platform::command_line::Split(platform::utf::ToUtf8(std::wstring_view{commandLine}));
    if (!arguments.empty()) // the first is the program
        arguments.erase(arguments.begin());
    return arguments;
}

/// COM on the user-interface thread.
class ComApartment {
public:
    ComApartment() : status{CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)} {}
    ~ComApartment()
    {
        if (SUCCEEDED(status) && !endsWithProcess)
            CoUninitialize();
    }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;

    void EndWithProcess() { endsWithProcess = true; }

    HRESULT status;

private:
    bool endsWithProcess{};
};

/// The class as the system's list of running servers shows it: entered on construction, offered from `Resume` on.
class ClassObject {
public:
    explicit ClassObject(ClassFactory& factory)
        : status{CoRegisterClassObject(CLSID_clsBrowser, &factory, CLSCTX_LOCAL_SERVER,
                                       REGCLS_MULTIPLEUSE | REGCLS_SUSPENDED, &cookie)}
    {
    }
    ~ClassObject()
    {
        if (SUCCEEDED(status))
            CoRevokeClassObject(cookie);
    }
    ClassObject(const ClassObject&) = delete;
    ClassObject& operator=(const ClassObject&) = delete;

    HRESULT Resume() { return SUCCEEDED(status) ? CoResumeClassObjects() : status; }

private:
    DWORD cookie{};
    HRESULT status;
};

/// Installs the filter of incoming calls for its lifetime.
class FilterInPlace {
public:
    explicit FilterInPlace(MessageFilter& filter) { CoRegisterMessageFilter(&filter, nullptr); }
    ~FilterInPlace() { CoRegisterMessageFilter(nullptr, nullptr); }
    FilterInPlace(const FilterInPlace&) = delete;
    FilterInPlace& operator=(const FilterInPlace&) = delete;
};

/// Ends a server to which no host came: the host died while the server started, or a user started it by hand.
class PatienceTimer {
public:
    PatienceTimer(Lifetime& lifetime, std::chrono::milliseconds patience)
    {
        waiting = &lifetime;
        timer = SetTimer(nullptr, 0, static_cast<UINT>(patience.count()), Elapsed);
    }
    ~PatienceTimer()
    {
        KillTimer(nullptr, timer);
        waiting = nullptr;
    }
    PatienceTimer(const PatienceTimer&) = delete;
    PatienceTimer& operator=(const PatienceTimer&) = delete;

private:
    static void CALLBACK Elapsed(HWND, UINT, UINT_PTR id, DWORD) noexcept
    {
        KillTimer(nullptr, id);
        if (waiting)
            waiting->EndIfNeverHeld();
    }

    static inline Lifetime* waiting{}; // a thread timer carries no data
    UINT_PTR timer{};
};

int Serve(Application& application, const ServerOptions& options)
{
    Session session{application};
    ClassFactory factory{session};
    MessageFilter filter{application};
    const FilterInPlace filtering{filter};
    ClassObject classObject{factory};
    const HRESULT offered = classObject.Resume();
    if (FAILED(offered))
        return static_cast<int>(offered);
    const PatienceTimer timer{session.lifetime, options.patience};
    application.Run();
    return 0;
}

int RunAlone(Application& application)
{
    Session session{application};
    session.Start(std::string{StandAloneHostKind}, {}, {}, {}, {});
    if (!session.lifetime.Ending())
        application.Run();
    return 0;
}

int RunTask(const std::wstring& commandLine, const MakeApplication& make, const ServerOptions& options)
{
    const std::optional<CommandLine> parsed = ParseCommandLine(ArgumentsOf(commandLine));
    if (!parsed)
        return ERROR_INVALID_PARAMETER;
    ComApartment apartment;
    if (FAILED(apartment.status))
        return static_cast<int>(apartment.status);

    using Task = CommandLine::Task;
    if (parsed->task == Task::Register)
        return static_cast<int>(RegisterServer(parsed->scope));
    if (parsed->task == Task::Unregister)
        return static_cast<int>(UnregisterServer(parsed->scope));

    const INITCOMMONCONTROLSEX controls{sizeof(INITCOMMONCONTROLSEX), ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    const std::unique_ptr<Application> application = make();
    if (parsed->task != Task::Serve)
        return RunAlone(*application);
    // The host that lets go of the last object goes on to end itself, with calls of its own to this process. Wine, when
    // it takes an apartment down, can wait for ever for such a call that has been answered already.
    apartment.EndWithProcess();
    return Serve(*application, options);
}

} // namespace

int RunProcess(const std::wstring& commandLine, const MakeApplication& make, const ServerOptions& options) noexcept
{
    int exitCode = 0;
    const HRESULT outcome = Guarded([&] {
        SecureProcess();
        exitCode = RunTask(commandLine, make, options);
        return S_OK;
    });
    return FAILED(outcome) ? static_cast<int>(outcome) : exitCode;
}

} // namespace automation
