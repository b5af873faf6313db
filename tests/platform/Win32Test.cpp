#include "PlatformUnderTest.h"

#include "platform/CommandLine.h"
#include "platform/Path.h"
#include "platform/win32/Native.h"
#include "platform/win32/System.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

// What only the real system can show; the shared contract is in the other files.

using namespace platform;

namespace {

class Win32Test : public testing::Test {
protected:
    std::unique_ptr<PlatformUnderTest> under{PlatformUnderTest::Make()};
    Platform system{under->Get()};

    std::string At(std::string_view name) const { return path::Join(under->Folder(), name); }
};

TEST_F(Win32Test, OpensAFileWhosePathIsLongerThanTheShellTakes)
{
    const std::string deep = under->MakeDeepFolder();
    const std::string file = path::Join(deep, "file.tsunknown");
    under->WriteFile(At(file), "deep");
    EXPECT_EQ(system.shell.Open(At(file), Verb::Open), 31) << "found, and no program is there for its type";
    EXPECT_EQ(system.shell.Open(At(path::Join(deep, "gone.txt")), Verb::Open), 2);
}

TEST_F(Win32Test, OpensAFileThatLiesTooDeepAlsoByShortNames)
{
    const std::string deep = under->MakeDeepFolder(40);
    const std::string file = path::Join(deep, "ein Ü.tsdeep"), other = path::Join(deep, "file.tsunknown");
    const std::string told = At("told.txt");
    for (const std::string& name : {file, other})
        under->WriteFile(At(name), "deep");
    const HKEY types = HKEY_CLASSES_ROOT;
    const std::wstring command =
        win32::ToUtf16(std::string{CommandInterpreter} + " /c echo %1>" + command_line::Quoted(told));
    RegSetValueW(types, L".tsdeep", REG_SZ, L"TSDeepFile", 0);
    RegSetValueW(types, L"TSDeepFile\\shell\\open\\command", REG_SZ, command.c_str(), 0);

    EXPECT_GT(system.shell.Open(At(file), Verb::Open), 32);
    for (int i = 0; i < 500 && system.files.Read(told, 4096).value_or("").empty(); ++i)
        system.clock.Sleep(20);
    EXPECT_THAT(system.files.Read(told, 4096).value_or(""),
                testing::StartsWith(command_line::Quoted(At(deep)).substr(0, 300)));
    EXPECT_EQ(system.shell.Open(At(file), Verb::New), 31) << "the type has no such verb";
    EXPECT_EQ(system.shell.Open(At(other), Verb::Open), 31);
    EXPECT_EQ(system.shell.Open(At(path::Join(deep, "gone.tsdeep")), Verb::Open), 2);
    RegDeleteTreeW(types, L".tsdeep");
    RegDeleteTreeW(types, L"TSDeepFile");
}

TEST_F(Win32Test, TheSystemTakesACommandLineApartAsItWasMade)
{
    const std::vector<std::string> arguments{"C:\\a b\\x.exe", "",         "a b", "\"", "\\\"", "a\\",
                                             "a b\\\\",        "\t\"\" c", "ü"};
    int count{};
    LPWSTR* const read = CommandLineToArgvW(win32::ToUtf16(command_line::Join(arguments)).c_str(), &count);
    ASSERT_NE(read, nullptr);
    std::vector<std::string> found;
    for (int i = 0; i < count; ++i)
        found.push_back(win32::ToUtf8(read[i]));
    LocalFree(read);
    EXPECT_EQ(found, arguments);
}

TEST_F(Win32Test, WaitsForAProgramAndEndsOneThatDoesNotEnd)
{
    EXPECT_EQ(system.shell.RunAndWait(CommandInterpreter, "cmd.exe /c exit 7", WindowStyle::MinimizedFocus, 60'000),
              Result<std::uint32_t>{7});
    // A program with a window stays, whatever the standard input of the tests is.
    const std::string staying = path::Join(path::Parent(CommandInterpreter), "notepad.exe");
    EXPECT_EQ(system.shell.RunAndWait(staying, "notepad.exe", WindowStyle::MinimizedFocus, 300),
              Result<std::uint32_t>{std::unexpected{error::Timeout}});
}

TEST_F(Win32Test, TimesFollowTheUsersLocale)
{
    constexpr LCTYPE kinds[] = {LOCALE_S1159, LOCALE_S2359, LOCALE_STIME};
    std::vector<std::wstring> before;
    for (const LCTYPE kind : kinds) {
        wchar_t text[32]{};
        GetLocaleInfoW(LOCALE_USER_DEFAULT, kind, text, 32);
        before.emplace_back(text);
        SetLocaleInfoW(LOCALE_USER_DEFAULT, kind, kind == LOCALE_STIME ? L"." : L"");
    }
    EXPECT_EQ(system.locale.MediumTime({2004, 3, 7, 17, 7, 9}), "17.07");
    for (std::size_t i = 0; i < std::size(kinds); ++i)
        SetLocaleInfoW(LOCALE_USER_DEFAULT, kinds[i], before[i].c_str());
}

TEST_F(Win32Test, ReadsStringsThatWereStoredBadly)
{
    const std::wstring key = L"Software\\TSBrowserTests";
    ASSERT_TRUE(system.registry.CreateKey(Hive::CurrentUser, win32::ToUtf8(key)));
    win32::KeyHandle opened;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, key.c_str(), 0, KEY_SET_VALUE, opened.Receive()), ERROR_SUCCESS);
    const struct {
        std::wstring stored;
        DWORD bytes;
        const char* expected;
    } rows[] = {
        {L"", 0, ""},
        {L"abc", 6, "abc"},                                              // no terminator
        {L"abc", 5, "ab"},                                               // half a character at the end
        {std::wstring{L"abc\0\0\0", 6}, 12, "abc"},                      // a fixed buffer stored whole
        {std::wstring(256, L'x'), 512, nullptr},                         // as long as the first buffer
        {std::wstring{static_cast<wchar_t>(0xD800)}, 2, "\xED\xA0\x80"}, // half a pair
    };
    for (const auto& row : rows) {
        RegSetValueExW(opened.Get(), L"v", 0, REG_SZ, reinterpret_cast<const BYTE*>(row.stored.data()), row.bytes);
        const auto value = system.registry.Query(Hive::CurrentUser, win32::ToUtf8(key), "v");
        ASSERT_TRUE(value);
        EXPECT_EQ(value->data, row.expected ? std::string{row.expected} : win32::ToUtf8(row.stored));
    }
    EXPECT_TRUE(system.registry.DeleteKey(Hive::CurrentUser, win32::ToUtf8(key)));
}

TEST_F(Win32Test, NativePathsAreResolvedAndPrefixedWhenLong)
{
    const std::wstring name(100, L'n');
    const std::wstring deep = L"C:\\" + name + L"\\" + name + L"\\" + name;
    const struct {
        std::string path;
        std::wstring expected;
    } rows[] = {
        // clang-format off
        {"C:\\a\\\\b\\", L"C:\\a\\b"}, {"C:/a/../b", L"C:\\b"}, {"C:\\", L"C:\\"},
        {win32::ToUtf8(deep), L"\\\\?\\" + deep},
        {"\\\\server\\share\\" + win32::ToUtf8(deep.substr(3)), L"\\\\?\\UNC\\server\\share\\" + deep.substr(3)},
        // clang-format on
    };
    for (const auto& row : rows)
        EXPECT_EQ(win32::ToNativePath(row.path), row.expected) << row.path;
    EXPECT_EQ(win32::WithoutLongPrefix(L"\\\\?\\UNC\\server\\share"), L"\\\\server\\share");
    EXPECT_EQ(win32::WithoutLongPrefix(L"\\\\?\\" + deep), deep);
    for (const char* refused :
         {"a", "C:a", "C:\\a*", "C:\\a:b", "\\\\.\\COM1", "\\\\?\\C:\\a", "C:\\CON", "C:\\a\\nul"})
        EXPECT_EQ(win32::ToNativePath(refused), Result<std::wstring>{std::unexpected{error::InvalidName}}) << refused;
}

TEST_F(Win32Test, FilesHeldOpenByOthersAreNeitherDeletedNorMoved)
{
    under->WriteFile(At("open"), "x");
    const win32::FileHandle held{CreateFileW(win32::ToNativePath(At("open"))->c_str(), GENERIC_READ, FILE_SHARE_READ,
                                             nullptr, OPEN_EXISTING, 0, nullptr)};
    ASSERT_TRUE(held);
    EXPECT_EQ(system.files.DeleteFile(At("open")).error(), error::SharingViolation);
    EXPECT_EQ(system.files.Move(At("open"), At("moved")).error(), error::SharingViolation);
    under->WriteFile(At("new"), "y");
    EXPECT_EQ(system.files.Replace(At("new"), At("open")).error(), error::AccessDenied);
    EXPECT_EQ(system.files.Read(At("open"), 9).value(), "x");
}

} // namespace
