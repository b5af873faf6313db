#pragma once

#include "automation/WindowsHeader.h"
#include "tests/automation/Harness.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace endtoend {

inline constexpr wchar_t ExeName[] = L"TSBrowser.exe";
inline constexpr wchar_t SettingsKey[] = L"Software\\VB and VBA Program Settings\\Tessaly GWX 1.0";

/// A value of the registry for the length of a test: what was there before comes back. Without a text the value is
/// removed meanwhile.
class RegistryValue {
public:
    RegistryValue(HKEY root, std::wstring key, std::wstring name, const std::optional<std::wstring>& text);
    ~RegistryValue();
    RegistryValue(const RegistryValue&) = delete;
    RegistryValue& operator=(const RegistryValue&) = delete;

private:
    HKEY root;
    std::wstring key;
    std::wstring name;
    bool keyWasThere;
    std::optional<std::vector<BYTE>> before;
    DWORD type{REG_SZ};
};

/// Machine-wide registration of `program` for files that end in `ending` (with the dot), or of none.
class FileType {
public:
    FileType(const std::wstring& ending, const std::optional<std::filesystem::path>& program);

private:
    RegistryValue type;
    RegistryValue command;
};

/// The real program in a folder of its own with a small library, and a user who has just installed it.
class Installation {
public:
    Installation();
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    const std::filesystem::path folder; ///< holds everything of the test; its name has a blank
    const std::filesystem::path program;
    const std::filesystem::path library;

    static std::wstring Setting(const std::wstring& section, const std::wstring& name);
    static void Set(const std::wstring& section, const std::wstring& name, const std::wstring& text);
    static void Remove(const std::wstring& section, const std::wstring& name);

    /// Creates the file with its folders.
    static void Write(const std::filesystem::path& file, const std::string& contents = "template");
    /// Makes a symbolic link. False where links cannot be made.
    static bool Link(const std::filesystem::path& link, const std::filesystem::path& target);
    /// Puts a program at `file` that records its command line.
    static std::filesystem::path PutRecorder(const std::filesystem::path& file);
    /// The command line that a recorder got, after waiting for it; it is forgotten then.
    static std::wstring Recorded(const std::filesystem::path& recorder);
    static bool HasRecord(const std::filesystem::path& recorder);
};

/// Starts a tool of the system that Wine stands on, with paths in its own notation. False where there is none. It
/// cannot be waited for: wait for what it does.
bool RunUnixTool(const std::wstring& tool, const std::vector<std::wstring>& arguments);
/// The path in that notation; "" on Windows.
std::wstring UnixPath(const std::filesystem::path& path);

} // namespace endtoend
