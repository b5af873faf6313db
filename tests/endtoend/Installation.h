#pragma once

#include "tests/support/win32/Files.h"
#include "tests/support/win32/Process.h"
#include "tests/support/win32/Registry.h"

#include <filesystem>
#include <string>

namespace endtoend {

namespace fs = std::filesystem;
using namespace support;

inline constexpr wchar_t ExeName[] = L"TSBrowser.exe";
inline constexpr wchar_t SettingsKey[] = L"Software\\VB and VBA Program Settings\\Tessaly GWX 1.0";

/// The real program in a folder of its own with a small library, and a user who has just installed it.
class Installation {
public:
    Installation();
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    const fs::path folder; ///< holds everything of the test; its name has a blank
    const fs::path program;
    const fs::path library;

    static std::wstring Setting(const std::wstring& section, const std::wstring& name)
    {
        return TextAt(HKEY_CURRENT_USER, Key(section), name);
    }
    static void Set(const std::wstring& section, const std::wstring& name, const std::wstring& text)
    {
        SetText(HKEY_CURRENT_USER, Key(section), name, text);
    }
    static void Remove(const std::wstring& section, const std::wstring& name)
    {
        RegDeleteKeyValueW(HKEY_CURRENT_USER, Key(section).c_str(), name.c_str());
    }

    /// Makes a symbolic link. False where links cannot be made.
    static bool Link(const fs::path& link, const fs::path& target);
    /// Puts a program at `file` that records its command line.
    static fs::path PutRecorder(const fs::path& file);
    /// The command line that a recorder got, after waiting for it; it is forgotten then.
    static std::wstring Recorded(const fs::path& recorder);

private:
    static std::wstring Key(const std::wstring& section) { return std::wstring{SettingsKey} + L"\\" + section; }

    BorrowedKey settings{HKEY_CURRENT_USER, SettingsKey};
};

} // namespace endtoend
