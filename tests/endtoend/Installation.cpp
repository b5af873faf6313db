#include "tests/endtoend/Installation.h"

#include <fstream>

namespace endtoend {
namespace {

namespace fs = std::filesystem;

constexpr wchar_t SettingsBefore[] = L"Software\\TSBrowserEndToEnd settings before";

bool IsKey(HKEY root, const std::wstring& key)
{
    HKEY opened = nullptr;
    const bool found = RegOpenKeyExW(root, key.c_str(), 0, KEY_READ, &opened) == ERROR_SUCCESS;
    if (found)
        RegCloseKey(opened);
    return found;
}

LSTATUS SetText(HKEY root, const std::wstring& key, const std::wstring& name, const std::wstring& text)
{
    return RegSetKeyValueW(root, key.c_str(), name.c_str(), REG_SZ, text.c_str(),
                           static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

std::wstring Section(const std::wstring& section)
{
    return std::wstring{SettingsKey} + L"\\" + section;
}

fs::path OwnTemporaryFolder()
{
    return fs::temp_directory_path() / L"TSBrowser End To End";
}

/// The library may hold links, which lead out of it and which Wine cannot remove.
void Clear(const fs::path& folder)
{
    std::error_code ignored;
    if (!fs::exists(folder, ignored))
        return;
    if (const std::wstring path = UnixPath(folder); !path.empty() && RunUnixTool(L"rm", {L"-rf", path}))
        harness::WaitFor([&] { return !fs::exists(folder, ignored); });
    else
        fs::remove_all(folder, ignored);
}

fs::path RecordOf(fs::path recorder)
{
    return recorder += L".line";
}

} // namespace

RegistryValue::RegistryValue(HKEY valueRoot, std::wstring valueKey, std::wstring valueName,
                             const std::optional<std::wstring>& text)
    : root{valueRoot}, key{std::move(valueKey)}, name{std::move(valueName)}, keyWasThere{IsKey(root, key)}
{
    DWORD bytes = 0;
    if (RegGetValueW(root, key.c_str(), name.c_str(), RRF_RT_ANY | RRF_NOEXPAND, &type, nullptr, &bytes) ==
        ERROR_SUCCESS) {
        before.emplace(bytes);
        RegGetValueW(root, key.c_str(), name.c_str(), RRF_RT_ANY | RRF_NOEXPAND, &type, before->data(), &bytes);
    }
    if (text)
        SetText(root, key, name, *text);
    else
        RegDeleteKeyValueW(root, key.c_str(), name.c_str());
}

RegistryValue::~RegistryValue()
{
    if (before)
        RegSetKeyValueW(root, key.c_str(), name.c_str(), type, before->data(), static_cast<DWORD>(before->size()));
    else
        RegDeleteKeyValueW(root, key.c_str(), name.c_str());
    if (!keyWasThere)
        RegDeleteTreeW(root, key.c_str());
}

FileType::FileType(const std::wstring& ending, const std::optional<fs::path>& program)
    : type{HKEY_LOCAL_MACHINE, L"Software\\Classes\\" + ending, L"",
           program ? std::optional{L"TSBrowserEndToEnd" + ending} : std::nullopt},
      command{HKEY_LOCAL_MACHINE, L"Software\\Classes\\TSBrowserEndToEnd" + ending + L"\\shell\\open\\command", L"",
              program ? std::optional{L'"' + program->wstring() + L"\" \"%1\""} : std::nullopt}
{
}

Installation::Installation()
    : folder{OwnTemporaryFolder()}, program{folder / L"Program" / ExeName}, library{folder / L"Library"}
{
    Clear(folder);
    fs::create_directories(program.parent_path());
    fs::copy_file(fs::path{harness::OwnFolder()} / L"..\\.." / ExeName, program);
    Write(library / L"Business" / L"Letter.swt");

    harness::CopyKey(SettingsKey, SettingsBefore);
    RegDeleteTreeW(HKEY_CURRENT_USER, SettingsKey);
    Set(L"Options", L"MSOVersion", L"XP");
    Set(L"Profiles", L"FirstRun", L"0");
    Set(L"Options", L"Installed Path", program.parent_path().wstring());
    Set(L"Browser", L"Access HDD_Templates", L"True");
    Set(L"Browser", L"HDD Templates Path", library.wstring());
}

Installation::~Installation()
{
    RegDeleteTreeW(HKEY_CURRENT_USER, SettingsKey);
    harness::CopyKey(SettingsBefore, SettingsKey);
    RegDeleteTreeW(HKEY_CURRENT_USER, SettingsBefore);
    Clear(folder);
}

std::wstring Installation::Setting(const std::wstring& section, const std::wstring& name)
{
    wchar_t text[512]{};
    DWORD bytes = sizeof text;
    RegGetValueW(HKEY_CURRENT_USER, Section(section).c_str(), name.c_str(), RRF_RT_REG_SZ, nullptr, text, &bytes);
    return text;
}

void Installation::Set(const std::wstring& section, const std::wstring& name, const std::wstring& text)
{
    SetText(HKEY_CURRENT_USER, Section(section), name, text);
}

void Installation::Remove(const std::wstring& section, const std::wstring& name)
{
    RegDeleteKeyValueW(HKEY_CURRENT_USER, Section(section).c_str(), name.c_str());
}

void Installation::Write(const fs::path& file, const std::string& contents)
{
    fs::create_directories(file.parent_path());
    std::ofstream{file, std::ios::binary} << contents;
}

bool Installation::Link(const fs::path& link, const fs::path& target)
{
    const std::wstring folder = UnixPath(link.parent_path());
    return !folder.empty() &&
           RunUnixTool(L"ln", {L"-s", UnixPath(target), folder + L'/' + link.filename().wstring()}) &&
           harness::WaitFor([&] { return fs::exists(link); });
}

fs::path Installation::PutRecorder(const fs::path& file)
{
    fs::create_directories(file.parent_path());
    fs::copy_file(fs::path{harness::OwnFolder()} / L"endtoend_recorder.exe", file,
                  fs::copy_options::overwrite_existing);
    return file;
}

std::wstring Installation::Recorded(const fs::path& recorder)
{
    if (!harness::WaitFor([&] { return HasRecord(recorder); }))
        return L"(nothing was started)";
    std::ifstream file{RecordOf(recorder), std::ios::binary};
    std::wstring line(static_cast<std::size_t>(fs::file_size(RecordOf(recorder))) / sizeof(wchar_t), L'\0');
    file.read(reinterpret_cast<char*>(line.data()), static_cast<std::streamsize>(line.size() * sizeof(wchar_t)));
    file.close();
    fs::remove(RecordOf(recorder));
    return line;
}

bool Installation::HasRecord(const fs::path& recorder)
{
    return fs::exists(RecordOf(recorder));
}

std::wstring UnixPath(const fs::path& path)
{
    using Translate = char*(CDECL*)(const wchar_t*);
    const auto translate = reinterpret_cast<Translate>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
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
    if (!CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup, &process))
        return false;
    return true;
}

} // namespace endtoend
