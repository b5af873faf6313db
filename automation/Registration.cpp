#include "automation/Registration.h"

#include "automation/TypeLibrary.h"
#include "automation/WindowsHeader.h"
#include "platform/CommandLine.h"
#include "platform/Utf.h"
#include "platform/win32/Handle.h"

#include <iterator>
#include <optional>
#include <ranges>
#include <string>
#include <vector>

namespace automation {
namespace {

using platform::win32::KeyHandle;

constexpr wchar_t Classes[] = L"Software\\Classes";
constexpr wchar_t ProgId[] = L"TSBrowser.clsBrowser";
constexpr wchar_t VersionedProgId[] = L"TSBrowser.clsBrowser.1";
constexpr wchar_t ClassName[] = L"Tessaly Desk template browser";
constexpr WORD LibraryMajor = 2;
constexpr WORD LibraryMinor = 2;
#ifdef _WIN64
constexpr SYSKIND LibraryKind = SYS_WIN64;
#else
constexpr SYSKIND LibraryKind = SYS_WIN32;
#endif

/// A key below Software\Classes and its unnamed value.
struct Entry {
    std::wstring key;
    std::wstring value;
};

/// The path with the long names of its folders and file, as far as they are there to be asked: an installer may have
/// started the program by its short names.
std::wstring LongForm(const std::wstring& path)
{
    std::wstring longForm(GetLongPathNameW(path.c_str(), nullptr, 0), L'\0');
    const DWORD length = GetLongPathNameW(path.c_str(), longForm.data(), static_cast<DWORD>(longForm.size()));
    longForm.resize(length < longForm.size() ? length : 0);
    return longForm.empty() ? path : longForm;
}

bool EqualPaths(const std::wstring& a, const std::wstring& b)
{
    return CompareStringOrdinal(LongForm(a).c_str(), -1, LongForm(b).c_str(), -1, TRUE) == CSTR_EQUAL;
}

HKEY RootOf(Scope scope)
{
    return scope == Scope::User ? HKEY_CURRENT_USER : HKEY_LOCAL_MACHINE;
}

LSTATUS Open(KeyHandle& key, Scope scope, const std::wstring& path, REGSAM access)
{
    return RegOpenKeyExW(RootOf(scope), path.c_str(), 0, access, key.Receive());
}

std::wstring Path(const std::wstring& key)
{
    return std::wstring{Classes} + L'\\' + key;
}

std::wstring Braced(const GUID& id)
{
    wchar_t text[39];
    StringFromGUID2(id, text, static_cast<int>(std::size(text)));
    return text;
}

std::wstring ServerKey()
{
    return L"CLSID\\" + Braced(CLSID_clsBrowser) + L"\\LocalServer32";
}

/// Quoted, so that a path with a blank never starts a program of a shorter name.
std::wstring ServerCommand()
{
    using namespace platform;
    return utf::ToUtf16<wchar_t>(command_line::Quoted(utf::ToUtf8<wchar_t>(ProgramPath())));
}

/// Whether the registered command starts this program.
bool IsOwnCommand(const std::wstring& command)
{
    const bool isQuoted = command.size() > 1 && command.front() == L'"' && command.back() == L'"';
    return isQuoted && EqualPaths(command.substr(1, command.size() - 2), ProgramPath());
}

/// Everything beside the type library, parents before children. The server's command comes last: from then on the
/// class can be created.
std::vector<Entry> Entries()
{
    const std::wstring classId = Braced(CLSID_clsBrowser);
    const std::wstring classKey = L"CLSID\\" + classId;
    return {
        {ProgId, ClassName},
        {std::wstring{ProgId} + L"\\CLSID", classId},
        {std::wstring{ProgId} + L"\\CurVer", VersionedProgId},
        {VersionedProgId, ClassName},
        {std::wstring{VersionedProgId} + L"\\CLSID", classId},
        {classKey, ClassName},
        {classKey + L"\\ProgID", VersionedProgId},
        {classKey + L"\\VersionIndependentProgID", ProgId},
        {classKey + L"\\TypeLib", Braced(LIBID_TSBrowser)},
        {classKey + L"\\Version", L"2.2"},
        {classKey + L"\\Programmable", L""},
        {ServerKey(), ServerCommand()},
    };
}

LSTATUS Write(Scope scope, const Entry& entry)
{
    KeyHandle key;
    const LSTATUS status = RegCreateKeyExW(RootOf(scope), Path(entry.key).c_str(), 0, nullptr, 0, KEY_SET_VALUE,
                                           nullptr, key.Receive(), nullptr);
    if (status != ERROR_SUCCESS)
        return status;
    return RegSetValueExW(key.Get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(entry.value.c_str()),
                          static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t)));
}

std::optional<std::wstring> Read(Scope scope, const std::wstring& name)
{
    KeyHandle key;
    DWORD bytes = 0;
    if (Open(key, scope, Path(name), KEY_QUERY_VALUE) != ERROR_SUCCESS ||
        RegGetValueW(key.Get(), nullptr, nullptr, RRF_RT_REG_SZ, nullptr, nullptr, &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    std::wstring value(bytes / sizeof(wchar_t), L'\0');
    if (RegGetValueW(key.Get(), nullptr, nullptr, RRF_RT_REG_SZ, nullptr, value.data(), &bytes) != ERROR_SUCCESS)
        return std::nullopt;
    value.resize(wcslen(value.c_str()));
    return value;
}

bool IsMissing(LSTATUS status)
{
    return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
}

/// Removes the key when nothing is left in it, and then the same for its parents below Software\Classes.
LSTATUS RemoveEmptyKeys(Scope scope, std::wstring name)
{
    for (;;) {
        DWORD keys = 0;
        DWORD values = 0;
        {
            KeyHandle key;
            LSTATUS status = Open(key, scope, Path(name), KEY_QUERY_VALUE);
            if (status != ERROR_SUCCESS)
                return IsMissing(status) ? ERROR_SUCCESS : status;
            status = RegQueryInfoKeyW(key.Get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr,
                                      nullptr, nullptr, nullptr);
            if (status != ERROR_SUCCESS)
                return status;
        }
        if (keys != 0 || values != 0)
            return ERROR_SUCCESS;

        const std::size_t cut = name.rfind(L'\\');
        KeyHandle parent;
        LSTATUS status = Open(parent, scope, cut == std::wstring::npos ? Classes : Path(name.substr(0, cut)), KEY_READ);
        if (status != ERROR_SUCCESS)
            return status;
        const std::wstring last = cut == std::wstring::npos ? name : name.substr(cut + 1);
        status = RegDeleteKeyW(parent.Get(), last.c_str());
        if (status != ERROR_SUCCESS && !IsMissing(status))
            return status;
        if (cut == std::wstring::npos)
            return ERROR_SUCCESS;
        name.resize(cut);
    }
}

LSTATUS Remove(Scope scope, const Entry& entry)
{
    if (Read(scope, entry.key) == entry.value) {
        KeyHandle key;
        LSTATUS status = Open(key, scope, Path(entry.key), KEY_SET_VALUE);
        if (status == ERROR_SUCCESS)
            status = RegDeleteValueW(key.Get(), nullptr);
        if (status != ERROR_SUCCESS)
            return status;
    }
    return RemoveEmptyKeys(scope, entry.key);
}

/// A function of oleaut32 that its import library here does not have.
template <class Function>
Function* FromOleAut32(const char* name)
{
    return reinterpret_cast<Function*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"oleaut32.dll"), name)));
}

HRESULT RegisterLibrary(Scope scope)
{
    ITypeLib* library = nullptr;
    HRESULT outcome = LoadOwnTypeLibrary(&library);
    if (FAILED(outcome))
        return outcome;
    std::wstring path = ProgramPath();
    if (scope == Scope::Machine) {
        outcome = RegisterTypeLib(library, path.data(), nullptr);
    } else {
        const auto registerForUser = FromOleAut32<decltype(RegisterTypeLib)>("RegisterTypeLibForUser");
        outcome = registerForUser ? registerForUser(library, path.data(), nullptr) : E_NOTIMPL;
    }
    library->Release();
    return outcome;
}

/// Whether the library registered in this scope is the one in this program. The system's own question would be
/// answered by the user's registration before the machine's.
bool IsOwnLibraryRegistered(Scope scope)
{
    const std::wstring version = std::to_wstring(LibraryMajor) + L'.' + std::to_wstring(LibraryMinor);
    const auto registered = Read(scope, L"TypeLib\\" + Braced(LIBID_TSBrowser) + L'\\' + version + L"\\0\\" +
                                            (LibraryKind == SYS_WIN32 ? L"win32" : L"win64"));
    return registered && EqualPaths(*registered, ProgramPath());
}

HRESULT UnregisterLibrary(Scope scope)
{
    if (!IsOwnLibraryRegistered(scope))
        return S_OK;
    if (scope == Scope::Machine)
        return UnRegisterTypeLib(LIBID_TSBrowser, LibraryMajor, LibraryMinor, LOCALE_NEUTRAL, LibraryKind);
    const auto unregisterForUser = FromOleAut32<decltype(UnRegisterTypeLib)>("UnRegisterTypeLibForUser");
    return unregisterForUser
               ? unregisterForUser(LIBID_TSBrowser, LibraryMajor, LibraryMinor, LOCALE_NEUTRAL, LibraryKind)
               : E_NOTIMPL;
}

} // namespace

std::uint32_t RegisterServer(Scope scope)
{
    const HRESULT library = RegisterLibrary(scope);
    if (FAILED(library))
        return static_cast<std::uint32_t>(library);
    for (const Entry& entry : Entries()) {
        const LSTATUS status = Write(scope, entry);
        if (status != ERROR_SUCCESS)
            return static_cast<std::uint32_t>(status);
    }
    return 0;
}

std::uint32_t UnregisterServer(Scope scope)
{
    const std::optional<std::wstring> registered = Read(scope, ServerKey());
    if (registered && !IsOwnCommand(*registered))
        return 0;

    // Every step is tried, and the first failure is reported: the more is gone, the better.
    std::uint32_t failure = 0;
    for (Entry& entry : Entries() | std::views::reverse) {
        if (registered && entry.key == ServerKey())
            entry.value = *registered; // it may name this program in another way
        const LSTATUS status = Remove(scope, entry);
        if (status != ERROR_SUCCESS && failure == 0)
            failure = static_cast<std::uint32_t>(status);
    }
    const HRESULT library = UnregisterLibrary(scope);
    if (FAILED(library) && failure == 0)
        failure = static_cast<std::uint32_t>(library);
    return failure;
}

} // namespace automation
