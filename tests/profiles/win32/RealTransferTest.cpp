// Export and import against the real registry, the real disk and a registry editor that is really started.
#include "platform/win32/WindowsHeader.h"

#include "app/base/Program.h"
#include "pictures/memory/MemoryPictures.h"
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

std::string Utf8(const fs::path& path)
{
    return platform::win32::ToUtf8(path.native());
}

class RealTransferTest : public testing::Test {
protected:
    const fs::path folder = fs::temp_directory_path() / L"TSTransferTest ü";
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
            GTEST_SKIP() << "replaces the user's profiles";
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
        (void)profiles::DeleteTree(registry, profiles::ProfilesKey);
        (void)profiles::DeleteTree(registry, "Software\\VB and VBA Program Settings\\TSTransferTest");
        fs::remove_all(folder, ignored);
        fs::create_directories(folder / "Out");
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

TEST_F(RealTransferTest, EverythingComesBackAndTheSystemsOwnEditorReadsTheFileAlike)
{
    for (const bool isOdd : {true, false}) {
        SCOPED_TRACE(isOdd);
        CleanUp();
        ASSERT_TRUE(program.settings.Save("Options", "Profile Images Path", Utf8(folder / "Images")).has_value());
        AddProfile("O'Brien ü", {"\"quoted\" \\ and \\\\", "Größe ñ §", "", "[HKEY_CURRENT_USER\\Software]"});
        if (isOdd)
            AddProfile("日本 [x]", {"two\r\nlines\tand a tab", "名前 😀 Ω", "\n[HKEY_CURRENT_USER]\n@=\"x\""});
        Set("Ann", "number", {ValueType::Dword, std::string{"\x0a\0\0\x80", 4}});
        Set("Ann", "bytes", {ValueType::Binary, std::string{"\0\xff\1", 3}});
        Set("Ann", "expands", {ValueType::ExpandString, "%TEMP%\\ü"});
        Set("Ann", "several", {ValueType::MultiString, std::string{"a\0\0\0b\0\0\0\0\0", 10}});
        const auto stored = Profiles();
        const auto pictures = support::FilesBelow(folder / "Images");
        constexpr std::uint32_t editorTime = 3'000; // in which it may ask what it does not know
        profiles::ProfileTransfer transfer{program.platform, program.files,   program.registry, program.settings,
                                           program.messages, program.strings, images,           editorTime};
        ASSERT_EQ(transfer.Export(Utf8(folder / "Out"), "Set"), profiles::ExportOutcome::Done);
        auto files = support::FilesBelow(folder / "Out" / "Set");
        EXPECT_EQ(files.erase(L"TSProfile.tspf"), 1u);
        EXPECT_TRUE(files == pictures) << "nothing but the pictures and the file";

        ASSERT_TRUE(profiles::DeleteTree(registry, profiles::ProfilesKey).has_value());
        fs::remove_all(folder / "Images");
        if (!isOdd) { // an editor gets no names that it may read wrong
            const std::string line = "regedit.exe /s \"" + Utf8(folder / "Out" / "Set" / "TSProfile.tspf") + "\"";
            ASSERT_TRUE(system.AsPlatform()
                            .shell.RunAndWait("C:\\windows\\regedit.exe", line, platform::WindowStyle::Normal, 20'000)
                            .has_value());
            EXPECT_TRUE(Profiles() == stored);
            ASSERT_TRUE(profiles::DeleteTree(registry, profiles::ProfilesKey).has_value());
        }
        ASSERT_TRUE(transfer.Import(Utf8(folder / "Out" / "Set")));
        EXPECT_TRUE(Profiles() == stored);
        EXPECT_TRUE(support::FilesBelow(folder / "Images") == pictures);
    }
}

} // namespace
} // namespace tests
