// Export and import against the real registry, the real disk and a registry editor that is really started.
#include "platform/win32/WindowsHeader.h"

#include "app/base/StringTable.h"
#include "platform/Text.h"
#include "platform/win32/Native.h"
#include "platform/win32/System.h"
#include "profiles/ProfileTransfer.h"
#include "ui/headless/HeadlessToolkit.h"

#include <psapi.h>

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace tests {
namespace {

namespace fs = std::filesystem;
using platform::Hive;
using platform::ValueType;
using profiles::ExportOutcome;

constexpr wchar_t ParentKey[] = L"Software\\Zelmor Software\\Zelmor User Profiles";
constexpr wchar_t RunKey[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr wchar_t MarkerKey[] = L"Software\\TSTransferTest marker";

using Values = std::map<std::wstring, std::pair<DWORD, std::string>>;

/// Everything at and below a key, keys as well; not below `without`.
void Collect(HKEY root, const std::wstring& path, const std::wstring& without, Values& found)
{
    HKEY key{};
    if (path == without || RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS)
        return;
    found[path + L"\\"];
    wchar_t name[16384];
    std::string data(1 << 20, '\0');
    for (DWORD i = 0;; ++i) {
        DWORD length = 16384, size = static_cast<DWORD>(data.size()), type = 0;
        if (RegEnumValueW(key, i, name, &length, nullptr, &type, reinterpret_cast<BYTE*>(data.data()), &size) !=
            ERROR_SUCCESS)
            break;
        found[path + L"\\" + name] = {type, data.substr(0, size)};
    }
    for (DWORD i = 0; RegEnumKeyW(key, i, name, 256) == ERROR_SUCCESS; ++i)
        Collect(root, path.empty() ? name : path + L"\\" + name, without, found);
    RegCloseKey(key);
}

std::map<fs::path, std::string> Files(const fs::path& folder)
{
    std::map<fs::path, std::string> found;
    for (const auto& entry : fs::recursive_directory_iterator{folder}) {
        std::ostringstream bytes;
        if (entry.is_regular_file())
            bytes << std::ifstream{entry.path(), std::ios::binary}.rdbuf();
        found[entry.path().lexically_relative(folder)] = bytes.str();
    }
    return found;
}

void PutFile(const fs::path& file, const std::string& bytes, const std::string& more = "", std::size_t times = 0)
{
    fs::create_directories(file.parent_path());
    std::ofstream out{file, std::ios::binary};
    for (out << bytes; times > 0; --times)
        out << more;
}

bool IsUnderWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

class RealTransferTest : public testing::Test {
protected:
    static fs::path OwnFolder()
    {
        wchar_t path[MAX_PATH]{};
        GetModuleFileNameW(nullptr, path, MAX_PATH);
        return fs::path{path}.parent_path();
    }

    const fs::path editor{L"C:\\windows\\regedit.exe"};
    const fs::path realEditor{L"C:\\windows\\TSTransferTest\\regedit.exe"};
    const fs::path folder = fs::temp_directory_path() / L"TSTransferTest ü";
    const fs::path log = fs::temp_directory_path() / L"TSTransferTest.log";
    platform::win32::System system;
    ui::HeadlessToolkit toolkit;
    app::Program program{system.AsPlatform(), toolkit};
    profiles::ProfileManager manager{program};
    profiles::ProfileImages images{program.platform, program.settings, program.messages, program.strings, manager};

    void SetUp() override
    {
        if (!IsUnderWine())
            GTEST_SKIP() << "replaces the system's registry editor and the user's profiles";
        CleanUp(); // after a run that did not end
        program.state.SettingsAppName = "TSTransferTest";
        UseImages("Images");
        fs::create_directories(folder / "Out");
    }
    void TearDown() override
    {
        if (!IsUnderWine())
            return;
        CleanUp();
        EXPECT_EQ(toolkit.Unexpected, std::vector<std::string>{});
    }
    void CleanUp()
    {
        PutEditorBack();
        RegDeleteTreeW(HKEY_CURRENT_USER, ParentKey);
        RegDeleteTreeW(HKEY_CURRENT_USER, MarkerKey);
        RegDeleteTreeW(HKEY_CURRENT_USER, L"Software\\VB and VBA Program Settings\\TSTransferTest");
        std::error_code ignored;
        fs::remove_all(folder, ignored);
        fs::remove(log, ignored);
    }
    static void Copy(const fs::path& from, const fs::path& to)
    {
        EXPECT_TRUE(CopyFileW(from.c_str(), to.c_str(), FALSE)) << to << ": " << GetLastError();
    }
    void PutEditorBack()
    {
        std::error_code ignored;
        if (fs::exists(realEditor)) {
            Copy(realEditor, editor);
            fs::remove_all(realEditor.parent_path(), ignored);
        }
    }
    /// "" leaves the system's own editor.
    void UseEditor(const std::string& mode)
    {
        SetEnvironmentVariableA("TS_EDITOR_MODE", mode.c_str());
        SetEnvironmentVariableW(L"TS_EDITOR_LOG", log.c_str());
        SetEnvironmentVariableW(L"TS_EDITOR_REAL", realEditor.c_str());
        if (mode.empty())
            return;
        fs::create_directories(realEditor.parent_path());
        // Its name decides which program of its own Wine runs for it.
        Copy(editor, realEditor);
        Copy(OwnFolder() / "profiles_editor_stand_in.exe", editor);
    }
    void UseImages(const char* name)
    {
        ASSERT_TRUE(program.settings.Save("Options", "Profile Images Path", Utf8(folder / name)).has_value());
    }
    static std::string Utf8(const fs::path& path) { return platform::win32::ToUtf8(path.native()); }
    std::string EditorsLog() const
    {
        std::ostringstream lines;
        lines << std::ifstream{log}.rdbuf();
        return lines.str();
    }

    void Set(const std::string& profile, std::string_view name, const std::string& data,
             ValueType type = ValueType::String)
    {
        const std::string key = profiles::ProfileKey(profile);
        const auto set = [&] { return system.AsPlatform().registry.Set(Hive::CurrentUser, key, name, {type, data}); };
        if (set().has_value())
            return;
        ASSERT_TRUE(system.AsPlatform().registry.CreateKey(Hive::CurrentUser, key).has_value());
        ASSERT_TRUE(set().has_value()) << name;
    }
    /// Profiles with pictures; a text in no more than one code page unless `isOdd`.
    void AddProfiles(int count, bool isOdd)
    {
        const std::string plain[] = {"\"quoted\" \\ and \\\\",        "Größe ñ §", "", "plain",
                                     "[HKEY_CURRENT_USER\\Software]", "\\"};
        const std::string odd[] = {"two\r\nlines\tand a tab", "名前 😀 Ω", "\n[HKEY_CURRENT_USER]\n@=\"x\""};
        for (int i = 0; i < count; ++i) {
            const bool isOddOne = isOdd && i % 3 == 0;
            const std::string name = (isOddOne ? "日本 [x] " : "O'Brien ü ") + std::to_string(i);
            for (std::size_t f = 0; f < profiles::FieldCount; ++f)
                Set(name, profiles::ValueName(static_cast<profiles::Field>(f)),
                    isOddOne && f % 2 == 0 ? odd[(f / 2) % std::size(odd)] : plain[f % std::size(plain)]);
            for (const auto kind : profiles::AllImages) {
                const auto number = static_cast<int>(kind);
                const fs::path file = folder / "Images" / platform::win32::ToUtf16(name) /
                                      (std::string{profiles::KindWord(kind)} + (number == 1 ? ".gif" : ".jpg"));
                if ((i + number) % 2 == 0)
                    PutFile(file, std::string(static_cast<std::size_t>(50 + i), static_cast<char>(i)) + name);
                Set(name, profiles::ValueName(kind), (i + number) % 2 == 0 ? Utf8(file) : "");
            }
        }
        Set("O'Brien ü 1", "quo\"te\\", "a value of others");
        Set("O'Brien ü 1", "number", std::string{"\x0a\0\0\x80", 4}, ValueType::Dword);
        Set("O'Brien ü 1", "bytes", std::string{"\0\xff\1", 3}, ValueType::Binary);
        Set("O'Brien ü 1", "expands", "%TEMP%\\ü", ValueType::ExpandString);
        Set("O'Brien ü 1", "several", std::string{"a\0\0\0b\0\0\0\0\0", 10}, ValueType::MultiString);
    }
    static Values Profiles()
    {
        Values found;
        Collect(HKEY_CURRENT_USER, ParentKey, L"", found);
        return found;
    }
    std::string Text(std::uint16_t id) const { return std::string{app::StringTable::Own(id)}; }
    static double Seconds(std::chrono::steady_clock::time_point since)
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - since).count();
    }
};

TEST_F(RealTransferTest, EverythingComesBackWhateverTheEditorDoes)
{
    const struct {
        const char* mode;
        int profiles;
        bool isOdd;
        std::string log; ///< how it begins: what the editor was asked for, and how many values it moved
    } rows[] = {
        // An editor sees no names beyond its code page, and gets no import that it would read wrong.
        {"", 200, true, ""},
        {"original", 200, true, "export 3064\n"},
        {"original", 200, false, "export 4605\nimport 4605\n"},
        {"half", 20, false, "export 465\nimport 2"},
        {"garbage", 20, false, "export 465\nimport 465\n"},
        {"nothing", 20, false, "export 0\nimport 0\n"},
        {"never", 20, false, "export 0\nimport 0\n"},
    };
    Values values;
    std::map<fs::path, std::string> pictures;
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string{row.mode} + (row.isOdd ? " odd" : ""));
        if (&row == rows || row.profiles != (&row - 1)->profiles ||
            row.isOdd != (&row - 1)->isOdd) { // each row leaves all as it was
            CleanUp();
            UseImages("Images");
            AddProfiles(row.profiles, row.isOdd);
            values = Profiles();
            pictures = Files(folder / "Images");
            ASSERT_GT(values.size(), 23u * static_cast<std::size_t>(row.profiles));
        }
        PutEditorBack();
        UseEditor(row.mode);
        fs::remove(log);
        fs::remove_all(folder / "Out");
        fs::create_directories(folder / "Out");

        // The editor that never ends is ended sooner than in the product.
        const auto time = row.mode == std::string{"never"} ? 700u : profiles::ProfileTransfer::EditorTime;
        profiles::ProfileTransfer transfer{
            program.platform, program.registry, program.settings, program.messages, program.strings, images, time};
        toolkit.ExpectMessage(Text(410) + Utf8(folder / "Out" / "Set") + ".", ui::Icon::Information);
        auto start = std::chrono::steady_clock::now();
        ASSERT_EQ(transfer.Export(Utf8(folder / "Out"), "Set"), ExportOutcome::Done);
        const double exported = Seconds(start);
        auto files = Files(folder / "Out" / "Set");
        EXPECT_EQ(files.erase(L"TSProfile.tspf"), 1u);
        EXPECT_TRUE(files == pictures) << "nothing but the pictures and the file";

        RegDeleteTreeW(HKEY_CURRENT_USER, ParentKey);
        fs::remove_all(folder / "Images");
        toolkit.ExpectMessage(Text(416), ui::Icon::Information);
        start = std::chrono::steady_clock::now();
        ASSERT_TRUE(transfer.Import(Utf8(folder / "Out" / "Set")));
        std::printf("%d profiles, editor \"%s\": export %.1f s, import %.1f s\n", row.profiles, row.mode, exported,
                    Seconds(start));
        ASSERT_TRUE(Profiles() == values);
        ASSERT_TRUE(Files(folder / "Images") == pictures);
        EXPECT_TRUE(EditorsLog().starts_with(row.log)) << EditorsLog();
        EXPECT_EQ(EditorsLog().contains("import"), row.log.contains("import"));
    }
}

TEST_F(RealTransferTest, OnAnotherMachineThePicturesLieInItsOwnFolder)
{
    AddProfiles(20, true);
    UseEditor("original");
    profiles::ProfileTransfer transfer{program.platform, program.registry, program.settings,
                                       program.messages, program.strings,  images};
    toolkit.ExpectMessage(Text(410) + Utf8(folder / "Out" / "Set") + ".", ui::Icon::Information);
    ASSERT_EQ(transfer.Export(Utf8(folder / "Out"), "Set"), ExportOutcome::Done);
    auto values = Profiles();
    const auto pictures = Files(folder / "Images");

    RegDeleteTreeW(HKEY_CURRENT_USER, ParentKey);
    fs::rename(folder / "Images", folder / "Gone");
    UseImages("Elsewhere");
    toolkit.ExpectMessage(Text(416), ui::Icon::Information);
    ASSERT_TRUE(transfer.Import(Utf8(folder / "Out" / "Set")));
    EXPECT_TRUE(Files(folder / "Elsewhere") == pictures);
    const auto bytes = [](const fs::path& path) {
        const std::wstring text = path.native() + L"\\";
        return std::string{reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
    };
    for (auto& [name, value] : values)
        if (const auto at = value.second.find(bytes(folder / "Images")); at != std::string::npos)
            value.second.replace(at, bytes(folder / "Images").size(), bytes(folder / "Elsewhere"));
    EXPECT_TRUE(Profiles() == values);
}

TEST_F(RealTransferTest, AHostileFileChangesNothingOutsideTheProfiles)
{
    const std::string ours = "[" + profiles::FullProfilesKey() + "\\Eve]\r\n";
    const std::string evil =
        "[HKEY_CURRENT_USER\\" + platform::win32::ToUtf8(RunKey) + "]\r\n\"evil\"=\"calc.exe\"\r\n";
    const std::string city = "\"City\"=\"Bern\"\r\n";
    const std::string head = "REGEDIT4\r\n\r\n";
    std::string utf16 = "\xff\xfe";
    for (const char c : head + ours + city)
        utf16.append(1, c).append(1, '\0');
    const struct {
        const char* name;
        std::string file;
        std::uint16_t message;
        std::string more{}; ///< behind it, so many times
        std::size_t times{};
    } rows[] = {
        {"another key before", head + evil + "\r\n" + ours + city, 416},
        {"another key after", head + ours + city + "\r\n" + evil, 416},
        {"only another key, ours in a text", head + evil + "\"x\"=\"" + ours + "\"\r\n", 414},
        {"a machine's key", head + "[HKEY_LOCAL_MACHINE\\Software\\TSTransferTest]\r\n@=\"evil\"\r\n" + ours + city,
         416},
        {"a deletion", head + "[-HKEY_CURRENT_USER\\" + platform::win32::ToUtf8(MarkerKey) + "]\r\n\r\n" + ours + city,
         416},
        {"a deletion of ours", head + "[-" + profiles::FullProfilesKey() + "\\Ann]\r\n\r\n" + ours + city, 416},
        {"values without a key", head + "\"evil\"=\"" + profiles::FullProfilesKey() + "\"\r\n", 414},
        {"a blank before the key", head + ours + city + " " + evil, 416},
        {"text behind the key", head + ours + city + "[HKEY_CURRENT_USER\\Software\\TSEvil] ; x\r\n@=\"x\"\r\n", 416},
        {"a key beside ours", head + "[" + profiles::FullProfilesKey() + "Evil]\r\n@=\"x\"\r\n", 414},
        {"a way up", head + "[" + profiles::FullProfilesKey() + "\\..\\..\\Evil]\r\n\"City\"=\"x\"\r\n", 416},
        {"bare CR", "REGEDIT4\r\r" + platform::text::Replaced(evil + ours, "\r\n", "\r"), 414},
        {"bare CR in a text", head + ours + "\"City\"=\"a\r[HKEY_CURRENT_USER]\r@=\"evil\"\r\n", 416},
        {"a key in a text", head + ours + "\"City\"=\"a\n[HKEY_CURRENT_USER\\Software\\TSEvil]\n@=\"x\"\r\n", 416},
        {"a NUL in the key", head + ours.substr(0, ours.size() - 4) + std::string{"\0]\r\n", 4} + city, 414},
        {"NULs after the signature", "REGEDIT4" + std::string(5000, '\0') + "\r\n" + ours, 416},
        {"UTF-16", utf16, 413},
        {"a byte order mark", "\xef\xbb\xbf" + head + ours + city, 416},
        {"another version", "Windows Registry Editor Version 5.00\r\n\r\n" + ours + city, 413},
        {"no file at all", "", 413},
        {"100 MB in one line", head + ours + "\"City\"=\"", 413, std::string(1u << 20, 'x'), 100},
        {"15 MB of keys", head + ours, 416, "[x]\r\n", 3'000'000},
        {"15 MB in one text without an end", head + ours + "\"City\"=\"", 416, std::string(1u << 20, 'x'), 15},
        {"15 MB in one name", head + ours + "\"", 416, std::string(1u << 20, '\\'), 15},
    };
    Set("Ann", "City", "Rome");
    RegSetKeyValueW(HKEY_CURRENT_USER, MarkerKey, L"here", REG_SZ, L"x", 4);
    UseEditor("lax");
    const auto outside = [] {
        Values found;
        Collect(HKEY_CURRENT_USER, L"", std::wstring{ParentKey} + L"\\Profiles", found);
        Collect(HKEY_LOCAL_MACHINE, RunKey, L"", found);
        Collect(HKEY_LOCAL_MACHINE, L"Software\\TSTransferTest", L"", found);
        return found;
    };
    const auto before = outside();
    const auto peak = [] {
        PROCESS_MEMORY_COUNTERS counters{};
        counters.cb = sizeof counters;
        K32GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof counters);
        return counters.PeakWorkingSetSize;
    };

    // What the editor would do with such a file: else this test could not fail.
    PutFile(folder / "teeth.reg", rows[0].file);
    const std::string line = "\"" + Utf8(editor) + "\" /i /s \"" + Utf8(folder / "teeth.reg") + "\"";
    ASSERT_TRUE(
        system.AsPlatform().shell.RunAndWait(Utf8(editor), line, platform::WindowStyle::Normal, 20'000).has_value());
    EXPECT_NE(outside(), before) << "the lax editor does nothing";
    RegDeleteKeyValueW(HKEY_CURRENT_USER, RunKey, L"evil");
    ASSERT_EQ(outside(), before);

    profiles::ProfileTransfer transfer{program.platform, program.registry, program.settings,
                                       program.messages, program.strings,  images};
    toolkit.ThrowAwayMessages = true;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        PutFile(folder / "In" / "TSProfile.tspf", row.file, row.more, row.times);
        toolkit.Messages.clear();
        const auto atMost = peak();
        const auto start = std::chrono::steady_clock::now();
        (void)transfer.Import(Utf8(folder / "In"));
        EXPECT_LT(peak() - atMost, 128u << 20) << "bytes";
        EXPECT_LT(Seconds(start), 10);
        ASSERT_EQ(toolkit.Messages.size(), 1u);
        EXPECT_EQ(toolkit.Messages[0].text, Text(row.message));
        EXPECT_TRUE(outside() == before);
        Values ann;
        Collect(HKEY_CURRENT_USER, std::wstring{ParentKey} + L"\\Profiles\\Ann", L"", ann);
        EXPECT_EQ(ann.size(), 2u);
    }
}

} // namespace
} // namespace tests
