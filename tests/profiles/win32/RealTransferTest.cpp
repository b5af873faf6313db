// Export and import against the real registry, the real disk and a registry editor that is really started.
#include "platform/win32/WindowsHeader.h"

#include "app/base/StringTable.h"
#include "pictures/memory/MemoryPictures.h"
#include "platform/Text.h"
#include "platform/win32/Native.h"
#include "platform/win32/System.h"
#include "profiles/ProfileTransfer.h"
#include "tests/support/ScriptedToolkit.h"
#include "tests/support/win32/Files.h"
#include "tests/support/win32/Process.h"
#include "tests/support/win32/Registry.h"

#include <psapi.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>

namespace tests {
namespace {

namespace fs = std::filesystem;
using namespace support;
using platform::Hive;
using platform::ValueType;
using profiles::ExportOutcome;

constexpr wchar_t ParentKey[] = L"Software\\Zelmor Software\\Zelmor User Profiles";
constexpr wchar_t RunKey[] = L"Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr wchar_t MarkerKey[] = L"Software\\TSTransferTest marker";

class RealTransferTest : public testing::Test {
protected:
    const fs::path editor{L"C:\\windows\\regedit.exe"};
    const fs::path realEditor{L"C:\\windows\\TSTransferTest\\regedit.exe"};
    const fs::path folder = fs::temp_directory_path() / L"TSTransferTest ü";
    const fs::path log = fs::temp_directory_path() / L"TSTransferTest.log";
    platform::win32::System system;
    ScriptedToolkit toolkit;
    pictures::memory::MemoryPictures pictures;
    app::Program program{system.AsPlatform(), toolkit, pictures};
    profiles::ProfileManager manager{program.platform.registry, program.registry, program.settings, program.messages,
                                     program.strings};
    profiles::ProfileImages images{program, manager};

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
        if (IsUnderWine())
            CleanUp();
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
        std::string lines = ReadFile(log);
        std::erase(lines, '\r');
        return lines;
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
                    WriteFile(file, std::string(static_cast<std::size_t>(50 + i), static_cast<char>(i)) + name);
                Set(name, profiles::ValueName(kind), (i + number) % 2 == 0 ? Utf8(file) : "");
            }
        }
        Set("O'Brien ü 1", "quo\"te\\", "a value of others");
        Set("O'Brien ü 1", "number", std::string{"\x0a\0\0\x80", 4}, ValueType::Dword);
        Set("O'Brien ü 1", "bytes", std::string{"\0\xff\1", 3}, ValueType::Binary);
        Set("O'Brien ü 1", "expands", "%TEMP%\\ü", ValueType::ExpandString);
        Set("O'Brien ü 1", "several", std::string{"a\0\0\0b\0\0\0\0\0", 10}, ValueType::MultiString);
    }
    static RegistryTree Profiles() { return ReadRegistry(HKEY_CURRENT_USER, ParentKey); }
    std::string Text(std::uint16_t id) const { return std::string{app::StringTable::Own(id)}; }
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
    RegistryTree values;
    std::map<fs::path, std::string> pictures;
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string{row.mode} + (row.isOdd ? " odd" : ""));
        if (&row == rows || row.profiles != (&row - 1)->profiles ||
            row.isOdd != (&row - 1)->isOdd) { // each row leaves all as it was
            CleanUp();
            UseImages("Images");
            AddProfiles(row.profiles, row.isOdd);
            values = Profiles();
            pictures = FilesBelow(folder / "Images");
            ASSERT_GT(values.size(), 23u * static_cast<std::size_t>(row.profiles));
        }
        PutEditorBack();
        UseEditor(row.mode);
        fs::remove(log);
        fs::remove_all(folder / "Out");
        fs::create_directories(folder / "Out");

        // The editor that never ends is ended sooner than in the product.
        const auto time = row.mode == std::string{"never"} ? 700u : profiles::ProfileTransfer::EditorTime;
        profiles::ProfileTransfer transfer{program, images, time};
        toolkit.ExpectMessage(Text(410) + Utf8(folder / "Out" / "Set") + ".", ui::Icon::Information);
        ASSERT_EQ(transfer.Export(Utf8(folder / "Out"), "Set"), ExportOutcome::Done);
        auto files = FilesBelow(folder / "Out" / "Set");
        EXPECT_EQ(files.erase(L"TSProfile.tspf"), 1u);
        EXPECT_TRUE(files == pictures) << "nothing but the pictures and the file";

        RegDeleteTreeW(HKEY_CURRENT_USER, ParentKey);
        fs::remove_all(folder / "Images");
        toolkit.ExpectMessage(Text(416), ui::Icon::Information);
        ASSERT_TRUE(transfer.Import(Utf8(folder / "Out" / "Set")));
        ASSERT_TRUE(Profiles() == values);
        ASSERT_TRUE(FilesBelow(folder / "Images") == pictures);
        EXPECT_TRUE(EditorsLog().starts_with(row.log)) << EditorsLog();
        EXPECT_EQ(EditorsLog().contains("import"), row.log.contains("import"));
    }
}

TEST_F(RealTransferTest, OnAnotherMachineThePicturesLieInItsOwnFolder)
{
    AddProfiles(20, true);
    UseEditor("original");
    profiles::ProfileTransfer transfer{program, images};
    toolkit.ExpectMessage(Text(410) + Utf8(folder / "Out" / "Set") + ".", ui::Icon::Information);
    ASSERT_EQ(transfer.Export(Utf8(folder / "Out"), "Set"), ExportOutcome::Done);
    auto values = Profiles();
    const auto pictures = FilesBelow(folder / "Images");

    RegDeleteTreeW(HKEY_CURRENT_USER, ParentKey);
    fs::rename(folder / "Images", folder / "Gone");
    UseImages("Elsewhere");
    toolkit.ExpectMessage(Text(416), ui::Icon::Information);
    ASSERT_TRUE(transfer.Import(Utf8(folder / "Out" / "Set")));
    EXPECT_TRUE(FilesBelow(folder / "Elsewhere") == pictures);
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
        RegistryTree found = ReadRegistry(HKEY_CURRENT_USER, L"", 0, std::wstring{ParentKey} + L"\\Profiles");
        found.merge(ReadRegistry(HKEY_LOCAL_MACHINE, RunKey));
        found.merge(ReadRegistry(HKEY_LOCAL_MACHINE, L"Software\\TSTransferTest"));
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
    WriteFile(folder / "teeth.reg", rows[0].file);
    const std::string line = "\"" + Utf8(editor) + "\" /i /s \"" + Utf8(folder / "teeth.reg") + "\"";
    ASSERT_TRUE(
        system.AsPlatform().shell.RunAndWait(Utf8(editor), line, platform::WindowStyle::Normal, 20'000).has_value());
    EXPECT_NE(outside(), before) << "the lax editor does nothing";
    RegDeleteKeyValueW(HKEY_CURRENT_USER, RunKey, L"evil");
    ASSERT_EQ(outside(), before);

    profiles::ProfileTransfer transfer{program, images};
    toolkit.ThrowAwayMessages = true;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        WriteFile(folder / "In" / "TSProfile.tspf", row.file);
        std::ofstream more{folder / "In" / "TSProfile.tspf", std::ios::binary | std::ios::app};
        for (std::size_t i = 0; i < row.times; ++i)
            more << row.more;
        more.close();
        toolkit.Messages.clear();
        const auto atMost = peak();
        (void)transfer.Import(Utf8(folder / "In"));
        EXPECT_LT(peak() - atMost, 128u << 20) << "bytes";
        ASSERT_EQ(toolkit.Messages.size(), 1u);
        EXPECT_EQ(toolkit.Messages[0].text, Text(row.message));
        EXPECT_TRUE(outside() == before);
        EXPECT_EQ(ReadRegistry(HKEY_CURRENT_USER, std::wstring{ParentKey} + L"\\Profiles\\Ann").size(), 2u);
    }
}

} // namespace
} // namespace tests
