#include "tests/profiles/ProfilesFixture.h"

#include "platform/Text.h"

namespace tests {
namespace {

using platform::Hive;
using platform::RegistryValue;
using platform::ValueType;
using profiles::ExportOutcome;
using profiles::ImageKind;
using profiles::ReadRegistryText;
using profiles::WriteRegistryText;

const std::string top = profiles::FullProfilesKey();

class TransferTest : public ProfileTestBase {
protected:
    void SetUp() override
    {
        system.files.AddFolder("C:\\Out");
        system.files.AddFile("C:\\Windows\\regedit.exe");
    }
    void AddProfiles()
    {
        Put("Ann", "FirstName", "Ann \"the\" C:\\x\\ Größe");
        Put("Ann", "DisclaimerLine1", "two\r\nlines\tand a tab");
        Put("日本", "LastName", "名前 😀");
        Put("Bob", "", "unnamed");
        Put("Bob", "quo\"te\\", "v");
        const std::pair<ValueType, std::string> odd[] = {
            {ValueType::Binary, std::string{"\0\xFF\1", 3}},
            {ValueType::Dword, std::string{"\1\2\3\4", 4}},
            {ValueType::Dword, "short"},
            {ValueType::ExpandString, "%TEMP%\\é"},
            {ValueType::MultiString, std::string{"a\0\0\0b\0\0\0\0\0", 10}},
            {ValueType::None, ""},
            {static_cast<ValueType>(11), "12345678"}};
        for (std::size_t i = 0; i < std::size(odd); ++i)
            system.registry.Put(Hive::CurrentUser, profiles::ProfileKey("Bob"), "odd" + std::to_string(i),
                                {odd[i].first, odd[i].second});
        PutPicture("Ann", ImageKind::Logo, ".jpg", "logo");
    }
    /// Takes the profiles away and exports or puts back what an export holds.
    void EmptyRegistry() { system.registry.RemoveKey(Hive::CurrentUser, profiles::ProfilesKey); }
    profiles::ExportOutcome Export()
    {
        toolkit.ExpectMessage(Text(410) + "C:\\Out\\Set.", ui::Icon::Information);
        return transfer.Export("C:\\Out\\", "Set");
    }
    bool ImportText(const std::string& text)
    {
        system.files.AddFile("C:\\In\\tsprofile.TSPF", text);
        return transfer.Import("C:\\In");
    }
};

TEST_F(TransferTest, EverythingComesBackWithoutAnEditorThatWorks)
{
    AddProfiles();
    const auto registry = system.registry.Snapshot();
    const auto disk = system.files.Snapshot(Images);
    ASSERT_EQ(Export(), ExportOutcome::Done);
    EXPECT_EQ(system.files.AllPaths("C:\\Out"),
              (std::vector<std::string>{"C:\\Out\\Set", "C:\\Out\\Set\\Ann", "C:\\Out\\Set\\Ann\\Logo.jpg",
                                        "C:\\Out\\Set\\TSProfile.tspf"}));
    ASSERT_EQ(system.shell.Runs().size(), 1u);
    EXPECT_EQ(system.shell.Runs()[0].application, "C:\\Windows\\regedit.exe");
    EXPECT_EQ(system.shell.Runs()[0].commandLine,
              "\"C:\\Windows\\regedit.exe\" /e /a \"C:\\Out\\Set\\~1.new\" \"" + top + "\"");

    EmptyRegistry();
    system.files.Remove(Picture("Ann", "Logo.jpg"));
    toolkit.ExpectMessage(Text(416), ui::Icon::Information);
    ASSERT_TRUE(transfer.Import("C:\\Out\\Set"));
    auto after = system.registry.Snapshot();
    std::erase_if(after, [](const auto& line) { return line.first.ends_with("ExportProfilePath"); });
    EXPECT_EQ(after, registry);
    EXPECT_EQ(system.files.Snapshot(Images), disk);
    EXPECT_EQ(system.shell.Runs().size(), 1u) << "not every editor reads such names alike";
    system.registry.RemoveKey(Hive::CurrentUser, profiles::ProfileKey("日本"));
    Put("[x]", "LastName", "x");
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(Export(), ExportOutcome::Done);
        toolkit.ExpectMessage(Text(416), ui::Icon::Information);
        ASSERT_TRUE(transfer.Import("C:\\Out\\Set"));
        system.registry.RemoveKey(Hive::CurrentUser, profiles::ProfileKey("[x]"));
    }
    ASSERT_EQ(system.shell.Runs().size(), 4u) << "the last import alone goes through the editor";
    EXPECT_EQ(system.shell.Runs().at(3).commandLine,
              "\"C:\\Windows\\regedit.exe\" /i /s \"C:\\Out\\Set\\TSProfile.tspf\"");
}

TEST_F(TransferTest, AnEditorsResultIsTakenOnlyWhenItIsWhole)
{
    Put("Ann", "FirstName", "Ann");
    const std::string whole =
        "REGEDIT4\r\n\r\n[" + top + "]\r\n\r\n[" + top + "\\Ann]\r\n\"FirstName\"=\"Ann\"\r\n; theirs\r\n";
    const struct {
        std::string produced;
        bool taken;
    } rows[] = {
        {whole, true},
        {"", false},
        {whole.substr(0, 80), false},
        {"REGEDIT4\r\n", false},
        {platform::text::Replaced(whole, "=\"Ann\"", "=\"A?n\""), false},
    };
    for (const auto& row : rows) {
        system.shell.OnRun([&](const auto&) {
            system.files.AddFile("C:\\Out\\Set\\~1.new", row.produced);
            return platform::Result<>{};
        });
        ASSERT_EQ(Export(), ExportOutcome::Done);
        EXPECT_EQ(Contents("C:\\Out\\Set\\TSProfile.tspf").contains("; theirs"), row.taken);
        EXPECT_EQ(ReadRegistryText(Contents("C:\\Out\\Set\\TSProfile.tspf"), system.locale).at(1).values.size(), 1u);
        EXPECT_FALSE(system.files.Exists("C:\\Out\\Set\\~1.new"));
    }
}

TEST_F(TransferTest, ExportRefusesPlacesAndNamesThatDoNotWork)
{
    system.files.AddFile("C:\\file");
    const std::string unreadable = Text(407) + "\r\n" + Text(408);
    const std::string badName = Text(397) + "\r\n\\ / : * ? \" < > |";
    const struct {
        const char *location, *name;
        std::string message;
        ui::Icon icon = ui::Icon::Information;
        ExportOutcome outcome = ExportOutcome::BadLocation;
    } rows[] = {
        {"  ", "Set", Text(406)},
        {"C:\\Gone", "Set", Text(409)},
        {"C:\\file", "Set", unreadable},
        {"relative", "Set", unreadable},
        {"C:\\a|b", "Set", unreadable},
        {"C:\\Out", "a/b", badName, ui::Icon::Critical, ExportOutcome::BadName},
        {"C:\\Out", "..", badName, ui::Icon::Critical, ExportOutcome::BadName},
        {"C:\\Out", "a\"b", badName, ui::Icon::Critical, ExportOutcome::BadName},
        {"C:\\Out", "nul", badName, ui::Icon::Critical, ExportOutcome::BadName},
    };
    const auto disk = system.files.Snapshot();
    for (const auto& row : rows) {
        toolkit.ExpectMessage(row.message, row.icon);
        EXPECT_EQ(transfer.Export(row.location, row.name), row.outcome) << row.location << " " << row.name;
    }
    EXPECT_EQ(system.files.Snapshot(), disk);
    EXPECT_TRUE(system.shell.Runs().empty());
}

TEST_F(TransferTest, ImportTellsWhyAFolderOrFileIsNone)
{
    toolkit.ExpectMessage(Text(411) + Text(412), ui::Icon::Information);
    EXPECT_FALSE(transfer.Import("C:\\Gone"));
    toolkit.ExpectMessage(Text(415) + " " + Text(412), ui::Icon::Information);
    EXPECT_FALSE(transfer.Import("C:\\Out"));
    const std::string key = "\r\n[" + top + "\\Ann]\r\n\"FirstName\"=\"Ann\"\r\n";
    std::string utf16;
    for (const char c : "REGEDIT4" + key)
        utf16.append(1, c).append(1, '\0');
    const struct {
        std::string text;
        int message;
    } rows[] = {
        {"", 413},
        {"regedit4" + key, 413},
        {utf16, 413},
        {std::string(17u << 20, 'x'), 413},
        {"REGEDIT4\r\n[HKEY_CURRENT_USER\\Software\\Other]\r\n\"a\"=\"b\"\r\n", 414},
        {"REGEDIT4\r\n[HKEY_CURRENT_USER\\Software\\Other\\" + top + "]\r\n\"a\"=\"b\"\r\n", 414},
        {"REGEDIT4\r\n\"" + top + "\"=\"value line without a key\"\r\n", 414},
    };
    const auto registry = system.registry.Snapshot();
    for (const auto& row : rows) {
        toolkit.ExpectMessage(Text(static_cast<std::uint16_t>(row.message)), ui::Icon::Critical);
        EXPECT_FALSE(ImportText(row.text)) << row.message;
    }
    EXPECT_EQ(system.registry.Snapshot(), registry);
}

TEST_F(TransferTest, OnlyWhatIsExactlyUnderstoodBelowTheProfilesKeyGetsIn)
{
    Put("Bob", "City", "kept");
    Put("Bob", "Title", "old");
    const std::string file =
        "; no first line\n\"stray\"=\"before any key\"\nREGEDIT4\n"
        "[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run]\n\"evil\"=\"calc.exe\"\n"
        "[" +
        top +
        "\\Bob]\n\"Title\"=\"new\"\n\"City\"=-\n\"open\"=\"no end\n\"tail\"=\"x\" y\n\"esc\"=\"a\\nb\"\n"
        "\"bad\"=hex:1,2,zz\n\"wide\"=hex:123\n\"dw\"=dword:123456789\n noname=\"x\"\n\"good\"=hex:01,\\\n  02\n"
        "[-" +
        top +
        "\\Bob]\n\"after\"=\"deletion\"\n"
        "[" +
        top +
        "Evil\\Run]\n\"evil\"=\"beside\"\n"
        "[" +
        top +
        "\\\\x]\n\"evil\"=\"empty name\"\n"
        "[HKEY_LOCAL_MACHINE\\Software]\n\"evil\"=\"x\"\n"
        "[" +
        top + "\\..\\Run]\n\"FirstName\"=\"a name, not a way up\"\n";
    toolkit.ExpectMessage(Text(416), ui::Icon::Information);
    ASSERT_TRUE(ImportText(file));
    EXPECT_TRUE(system.shell.Runs().empty()) << "no editor gets a file like this";
    EXPECT_EQ(At("Bob", "Title"), "new");
    EXPECT_EQ(At("Bob", "City"), "kept");
    EXPECT_EQ(At("..\\Run", "FirstName"), "a name, not a way up");
    EXPECT_EQ(system.registry.ValueNames(Hive::CurrentUser, profiles::ProfileKey("Bob")).value(),
              (std::vector<std::string>{"City", "Title", "good"}));
    for (const auto& [line, data] : system.registry.Snapshot())
        EXPECT_FALSE(line.contains("evil")) << line;
}

TEST_F(TransferTest, PicturesPointToTheirNewPlaceAndOtherFoldersStayOut)
{
    system.files.AddFile("C:\\In\\Ann\\Logo.jpg", "logo");
    system.files.AddFile("C:\\In\\Stranger\\private.doc", "no picture of a profile");
    const std::string key = "REGEDIT4\r\n[" + top + "\\Ann]\r\n";
    toolkit.ExpectMessage(Text(416), ui::Icon::Information);
    ASSERT_TRUE(ImportText(key + "\"LocalLogo\"=\"E:\\\\Old\\\\Pics\\\\Ann\\\\Logo.jpg\"\r\n"
                                 "\"LocalPortrait\"=\"E:\\\\Old\\\\Pics\\\\Ann\\\\Portrait.jpg\"\r\n"
                                 "\"LocalSignature\"=\"E:\\\\Old\\\\..\\\\Signature.jpg\"\r\n"));
    EXPECT_EQ(At("Ann", "LocalLogo"), Picture("Ann", "Logo.jpg"));
    EXPECT_EQ(Contents(Picture("Ann", "Logo.jpg")), "logo");
    EXPECT_EQ(At("Ann", "LocalPortrait"), "E:\\Old\\Pics\\Ann\\Portrait.jpg") << "did not come along";
    EXPECT_EQ(At("Ann", "LocalSignature"), "E:\\Old\\..\\Signature.jpg");
    EXPECT_FALSE(system.files.Exists("C:\\Images\\Stranger"));
}

} // namespace
} // namespace tests
