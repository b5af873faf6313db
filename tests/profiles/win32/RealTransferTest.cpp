// Export and import against the real registry, the real disk and a registry editor that is really started.
#include "platform/win32/WindowsHeader.h"

#include "app/base/Program.h"
#include "pictures/memory/MemoryPictures.h"
#include "platform/Text.h"
#include "platform/win32/Native.h"
#include "platform/win32/System.h"
#include "profiles/ProfileTransfer.h"
#include "profiles/RegistryTree.h"
#include "tests/support/win32/Files.h"
#include "tests/support/win32/Process.h"
#include "ui/headless/HeadlessToolkit.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <thread>

namespace tests {
namespace {

namespace fs = std::filesystem;
using platform::Hive;
using platform::RegistryValue;
using platform::ValueType;

constexpr char RunKey[] = "Software\\Microsoft\\Windows\\CurrentVersion\\Run";
constexpr char MarkerKey[] = "Software\\TSTransferTest marker";

std::string Utf8(const fs::path& path)
{
    return platform::win32::ToUtf8(path.native());
}

class RealTransferTest : public testing::Test {
protected:
    const fs::path editor{L"C:\\windows\\regedit.exe"};
    const fs::path realEditor{L"C:\\windows\\TSTransferTest\\regedit.exe"};
    const fs::path folder = fs::temp_directory_path() / L"TSTransferTest ü";
    const fs::path log = fs::temp_directory_path() / L"TSTransferTest.log";
    ui::HeadlessToolkit toolkit;
    platform::win32::System system{[this](std::function<void()> task) { toolkit.Post(std::move(task)); }};
    platform::Registry& registry = system.AsPlatform().registry;
    pictures::memory::MemoryPictures decoder;
    app::Program program{system.AsPlatform(), toolkit, decoder};
    profiles::ProfileManager manager{registry, program.registry, program.settings, program.messages, program.strings};
    profiles::ProfileImages images{program.platform, program.files, program.settings, program.messages, manager};

    void SetUp() override
    {
        if (!support::IsUnderWine())
            GTEST_SKIP() << "replaces the system's registry editor and the user's profiles";
        program.state.SettingsAppName = "TSTransferTest";
        toolkit.ThrowAwayMessages = true;
        toolkit.Elapse = [](std::chrono::milliseconds atMost) {
            std::this_thread::sleep_for(std::min(atMost, std::chrono::milliseconds{5}));
            return true;
        };
        CleanUp(); // after a run that did not end
    }
    void TearDown() override
    {
        if (support::IsUnderWine())
            CleanUp();
    }
    void CleanUp()
    {
        std::error_code ignored;
        if (fs::exists(realEditor)) {
            Copy(realEditor, editor);
            fs::remove_all(realEditor.parent_path(), ignored);
        }
        (void)profiles::DeleteTree(registry, profiles::ProfilesKey);
        (void)profiles::DeleteTree(registry, MarkerKey);
        (void)profiles::DeleteTree(registry, "Software\\VB and VBA Program Settings\\TSTransferTest");
        fs::remove_all(folder, ignored);
        fs::remove(log, ignored);
        fs::create_directories(folder / "Out");
    }
    static void Copy(const fs::path& from, const fs::path& to)
    {
        EXPECT_TRUE(CopyFileW(from.c_str(), to.c_str(), FALSE)) << to << ": " << GetLastError();
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
        Copy(editor, realEditor); // its name decides which program of its own Wine runs for it
        Copy(support::OwnFolder() / "profiles_editor_stand_in.exe", editor);
    }
    profiles::ProfileTransfer Transfer(std::uint32_t editorTime = profiles::ProfileTransfer::EditorTime)
    {
        return {program.platform, program.files,   program.registry, program.settings,
                program.messages, program.strings, images,           editorTime};
    }
    void Set(const std::string& profile, std::string_view name, const RegistryValue& value)
    {
        const std::string key = profiles::ProfileKey(profile);
        ASSERT_TRUE(registry.CreateKey(Hive::CurrentUser, key).has_value());
        ASSERT_TRUE(registry.Set(Hive::CurrentUser, key, name, value).has_value()) << name;
    }
    void AddProfile(const std::string& name, std::initializer_list<const char*> texts)
    {
        for (std::size_t i = 0; i < profiles::FieldCount; ++i)
            Set(name, profiles::ValueName(static_cast<profiles::Field>(i)),
                {ValueType::String, texts.begin()[i % texts.size()]});
        const fs::path file = folder / "Images" / platform::win32::ToUtf16(name) / "Logo.jpg";
        support::WriteFile(file, name);
        Set(name, "LocalLogo", {ValueType::String, Utf8(file)});
    }
    profiles::RegistryTree Profiles() { return profiles::ReadTree(registry, profiles::ProfilesKey).value(); }
};

TEST_F(RealTransferTest, EverythingComesBackWhateverTheEditorDoes)
{
    const struct {
        const char* mode;
        bool isOdd;
        std::string log; ///< what the editor was asked for
    } rows[] = {
        {"", true, ""},
        {"works", true, "export\n"}, // an editor gets no import that it may read wrong
        {"works", false, "export\nimport\n"},
        {"never", false, "export\nimport\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string{row.mode} + (row.isOdd ? " odd" : ""));
        CleanUp();
        ASSERT_TRUE(program.settings.Save("Options", "Profile Images Path", Utf8(folder / "Images")).has_value());
        AddProfile("O'Brien ü", {"\"quoted\" \\ and \\\\", "Größe ñ §", "", "[HKEY_CURRENT_USER\\Software]"});
        if (row.isOdd)
            AddProfile("日本 [x]", {"two\r\nlines\tand a tab", "名前 😀 Ω", "\n[HKEY_CURRENT_USER]\n@=\"x\""});
        Set("Ann", "number", {ValueType::Dword, std::string{"\x0a\0\0\x80", 4}});
        Set("Ann", "bytes", {ValueType::Binary, std::string{"\0\xff\1", 3}});
        Set("Ann", "expands", {ValueType::ExpandString, "%TEMP%\\ü"});
        Set("Ann", "several", {ValueType::MultiString, std::string{"a\0\0\0b\0\0\0\0\0", 10}});
        const auto stored = Profiles();
        const auto pictures = support::FilesBelow(folder / "Images");
        UseEditor(row.mode);
        // The editor that never ends is ended sooner than in the product.
        auto transfer = Transfer(row.mode == std::string{"never"} ? 700 : profiles::ProfileTransfer::EditorTime);
        ASSERT_EQ(transfer.Export(Utf8(folder / "Out"), "Set"), profiles::ExportOutcome::Done);
        auto files = support::FilesBelow(folder / "Out" / "Set");
        EXPECT_EQ(files.erase(L"TSProfile.tspf"), 1u);
        EXPECT_TRUE(files == pictures) << "nothing but the pictures and the file";

        ASSERT_TRUE(profiles::DeleteTree(registry, profiles::ProfilesKey).has_value());
        fs::remove_all(folder / "Images");
        ASSERT_TRUE(transfer.Import(Utf8(folder / "Out" / "Set")));
        EXPECT_TRUE(Profiles() == stored);
        EXPECT_TRUE(support::FilesBelow(folder / "Images") == pictures);
        EXPECT_EQ(support::ReadFile(log), row.log);
    }
}

TEST_F(RealTransferTest, AHostileFileChangesNothingOutsideTheProfiles)
{
    const std::string head = "REGEDIT4\r\n\r\n";
    const std::string ours = "[" + profiles::FullProfilesKey() + "\\Eve]\r\n";
    const std::string evil = std::string{"[HKEY_CURRENT_USER\\"} + RunKey + "]\r\n\"evil\"=\"calc.exe\"\r\n";
    const std::string lines = platform::text::Replaced(evil, "\r\n", "\r");
    const std::string files[] = {
        head + ours + "\"City\"=\"Bern\"\r\n" + evil,
        head + ours + "\"a\r" + lines + "\"=\"b\"\r\n",
        head + ours + "\"City\"=\"a\r" + lines + "\"\r\n",
        head + "[-HKEY_CURRENT_USER\\" + MarkerKey + "]\r\n\r\n" + ours,
        "REGEDIT4" + std::string(5000, '\0') + "\r\n" + evil + ours,
    };
    ASSERT_TRUE(registry.CreateKey(Hive::CurrentUser, MarkerKey).has_value());
    UseEditor("works");
    const auto outside = [&] {
        return std::tuple{registry.SubKeys(Hive::CurrentUser, "Software").value(),
                          profiles::ReadTree(registry, RunKey).value_or(profiles::RegistryTree{})};
    };
    // What the editor would do with such files: else this test could not fail.
    Set("Eve", "City", {});
    const auto before = outside();
    support::WriteFile(folder / "teeth.reg", files[0]);
    const std::string line = "\"" + Utf8(editor) + "\" /i /s \"" + Utf8(folder / "teeth.reg") + "\"";
    ASSERT_TRUE(
        system.AsPlatform().shell.RunAndWait(Utf8(editor), line, platform::WindowStyle::Normal, 20'000).has_value());
    EXPECT_NE(outside(), before) << "the editor does nothing";
    ASSERT_TRUE(registry.DeleteValue(Hive::CurrentUser, RunKey, "evil").has_value());
    const auto clean = outside(); // the key itself may not have been there

    auto transfer = Transfer();
    for (const auto& file : files) {
        support::WriteFile(folder / "In" / "TSProfile.tspf", file);
        EXPECT_TRUE(transfer.Import(Utf8(folder / "In")));
        EXPECT_TRUE(outside() == clean) << file;
    }
}

} // namespace
} // namespace tests
