#include "tests/profiles/ProfilesFixture.h"

#include "platform/Path.h"
#include "platform/Text.h"

namespace tests {
namespace {

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
        system.files.AddFolder("C:\\Temp");
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
    /// Takes the profiles away.
    void EmptyRegistry() { system.registry.RemoveKey(Hive::CurrentUser, profiles::ProfilesKey); }
    profiles::ExportOutcome Export()
    {
        toolkit.ExpectMessage(Text(410) + "C:\\Out\\Set.", Icon::Information);
        return transfer.Export("C:\\Out\\", "Set");
    }
    /// The registry, but for what every export changes.
    std::map<std::string, std::string> WithoutExportPath() const
    {
        auto lines = system.registry.Snapshot();
        std::erase_if(lines, [](const auto& line) { return line.first.ends_with("ExportProfilePath"); });
        return lines;
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
    EXPECT_EQ(system.files.AllPaths("C:\\Out"), (Texts{"C:\\Out\\Set", "C:\\Out\\Set\\Ann",
                                                       "C:\\Out\\Set\\Ann\\Logo.jpg", "C:\\Out\\Set\\TSProfile.tspf"}));
    ASSERT_EQ(system.shell.Runs().size(), 1u);
    EXPECT_EQ(system.shell.Runs()[0].application, "C:\\Windows\\regedit.exe");
    EXPECT_EQ(system.shell.Runs()[0].commandLine,
              "\"C:\\Windows\\regedit.exe\" /e /a \"C:\\Out\\Set\\~TSProfile1.new\" \"" + top + "\"");

    EmptyRegistry();
    system.files.Remove(Picture("Ann", "Logo.jpg"));
    toolkit.ExpectMessage(Text(416), Icon::Information);
    ASSERT_TRUE(transfer.Import("C:\\Out\\Set"));
    EXPECT_EQ(WithoutExportPath(), registry);
    EXPECT_EQ(system.files.Snapshot(Images), disk);
    EXPECT_EQ(system.shell.Runs().size(), 1u) << "not every editor reads such names alike";
    system.registry.RemoveKey(Hive::CurrentUser, profiles::ProfileKey("日本"));
    Put("[x]", "LastName", "x");
    std::string given;
    system.shell.OnRun([&](const auto& run) {
        if (run.commandLine.contains("/i")) {
            given = Contents("C:\\Temp\\~TSProfile1.new");
            Put("Ann", "FirstName", "merged wrong");
        }
        return platform::Result<>{};
    });
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(Export(), ExportOutcome::Done);
        toolkit.ExpectMessage(Text(416), Icon::Information);
        ASSERT_TRUE(transfer.Import("C:\\Out\\Set"));
        system.registry.RemoveKey(Hive::CurrentUser, profiles::ProfileKey("[x]"));
    }
    ASSERT_EQ(system.shell.Runs().size(), 4u) << "the last import alone goes through the editor";
    EXPECT_EQ(system.shell.Runs().at(3).commandLine,
              "\"C:\\Windows\\regedit.exe\" /i /s \"C:\\Temp\\~TSProfile1.new\"");
    EXPECT_EQ(given, Contents("C:\\Out\\Set\\TSProfile.tspf")) << "a copy that nobody else changes";
    EXPECT_FALSE(system.files.Exists("C:\\Temp\\~TSProfile1.new"));
    EXPECT_EQ(At("Ann", "FirstName"), "Ann \"the\" C:\\x\\ Größe");
}

TEST_F(TransferTest, AnEditorsResultIsTakenOnlyWhenItIsWhole)
{
    Put("Ann", "FirstName", "Ann");
    const std::string whole =
        "REGEDIT4\r\n\r\n[" + top + "]\r\n\r\n[" + top + "\\Ann]\r\n\"FirstName\"=\"Ann\"\r\n; theirs\r\n";
    const std::pair<std::string, bool> rows[] = {
        {whole, true},
        {"", false},
        {whole.substr(0, 80), false},
        {"REGEDIT4\r\n", false},
        {platform::text::Replaced(whole, "=\"Ann\"", "=\"A?n\""), false},
    };
    for (const auto& [produced, isTaken] : rows) {
        system.shell.OnRun([&](const auto&) {
            system.files.AddFile("C:\\Out\\Set\\~TSProfile1.new", produced);
            return platform::Result<>{};
        });
        ASSERT_EQ(Export(), ExportOutcome::Done);
        EXPECT_EQ(Contents("C:\\Out\\Set\\TSProfile.tspf").contains("; theirs"), isTaken);
        EXPECT_EQ(ReadRegistryText(Contents("C:\\Out\\Set\\TSProfile.tspf"), system.locale).keys.at(1).values.size(),
                  1u);
        EXPECT_FALSE(system.files.Exists("C:\\Out\\Set\\~TSProfile1.new"));
    }
}

TEST_F(TransferTest, ExportRefusesPlacesAndNamesThatDoNotWork)
{
    system.files.AddFile("C:\\file");
    const std::string unreadable = Text(407) + "\r\n" + Text(408);
    const std::string badName = Text(397) + "\r\n\\ / : * ? \" < > |";
    using enum ExportOutcome;
    const struct {
        const char *location, *name;
        std::string message;
        ui::Icon icon = Icon::Information;
        ExportOutcome outcome = ExportOutcome::BadLocation;
    } rows[] = {
        // clang-format off
        {"  ", "Set", Text(406)}, {"C:\\Gone", "Set", Text(409)}, {"C:\\file", "Set", unreadable},
        {"relative", "Set", unreadable}, {"C:\\a|b", "Set", unreadable},
        {"C:\\Out", "a/b", badName, Icon::Critical, BadName},
        {"C:\\Out", "..", Text(602), Icon::Critical, BadName},
        {"C:\\Out", "trail.", Text(602), Icon::Critical, BadName},
        {"C:\\Out", " ", Text(347), Icon::Information, BadName},
        {"C:\\Out", "nul", platform::text::Replaced(Text(603), "%1", "nul"), Icon::Critical, BadName},
        // clang-format on
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
    toolkit.ExpectMessage(Text(411) + Text(412), Icon::Information);
    EXPECT_FALSE(transfer.Import("C:\\Gone"));
    toolkit.ExpectMessage(Text(415) + " " + Text(412), Icon::Information);
    EXPECT_FALSE(transfer.Import("C:\\Out"));
    const std::string key = "\r\n[" + top + "\\Ann]\r\n\"FirstName\"=\"Ann\"\r\n";
    const std::pair<std::string, std::uint16_t> rows[] = {
        {"", 413},
        {"regedit4" + key, 413},
        {std::string{"R\0E\0G\0E\0D\0I\0T\0004\0", 16} + key, 413},
        {std::string(17u << 20, 'x'), 413},
        {"REGEDIT4\r\n[HKEY_CURRENT_USER\\Software\\Other]\r\n\"a\"=\"b\"\r\n", 414},
        {"REGEDIT4\r\n[HKEY_CURRENT_USER\\Software\\Other\\" + top + "]\r\n\"a\"=\"b\"\r\n", 414},
        {"REGEDIT4\r\n\"" + top + "\"=\"value line without a key\"\r\n", 414},
    };
    const auto registry = system.registry.Snapshot();
    for (const auto& [text, message] : rows) {
        toolkit.ExpectMessage(Text(message), Icon::Critical);
        EXPECT_FALSE(ImportText(text)) << message;
    }
    EXPECT_EQ(system.registry.Snapshot(), registry);
}

TEST_F(TransferTest, ValuesAreReadAsAnEditorReadsThem)
{
    const RegistryValue text{ValueType::String, "x"}, bytes{ValueType::Binary, "\1\2"},
        number{ValueType::Dword, std::string{"\x0a\0\0\0", 4}};
    const struct {
        const char* lines;
        std::optional<RegistryValue> value; ///< of the name "n"
    } rows[] = {
        // clang-format off
        {"\"n\"=\"x\"", text}, {" \t\"n\" = \"x\" ; why", text},
        {"\"n\"=\"a\\\\\\\"b;c\"", RegistryValue{ValueType::String, "a\\\"b;c"}}, {"\"n\"=DWORD: A", number},
        {"\"n\"=hex:01,02,", bytes}, {"\"n\"=hex: 01 , 02", bytes}, {"\"n\"=hex:01,\\ ; why\n\n  ; why\n\t02", bytes},
        {"\"n\"=hex(1): 78", text}, {"\"n\"=hex(2):e9,00", RegistryValue{ValueType::ExpandString, "é"}},
        {"\"n\"=hex(7):61,00,62,00,00", RegistryValue{ValueType::MultiString, std::string{"a\0\0\0b\0\0\0\0\0", 10}}},
        {"\"n\"=hex(B):01,02", RegistryValue{static_cast<ValueType>(11), "\1\2"}}, {"\"n\"=\"no end", {}},
        {"\"n\"=\"x\" y", {}}, {"\"n\"=\"a\\nb\"", {}}, {"\"n\"=hex:01,\\", {}}, {"\"n\"=hex:1,2,zz", {}},
        {"\"n\"=hex:01 02", {}}, {"\"n\"=hex:123", {}}, {"\"n\"=dword:123456789", {}}, {"\"n\"=-", {}}, {"n=\"x\"", {}},
        {"\"a\tb\"=\"x\"", {}},
        // clang-format on
    };
    for (const char* lineEnd : {"\n", "\r\n", "\r"})
        for (const auto& row : rows) {
            const std::string file = std::string{"; any first line\nREGEDIT4\n[["} + "\n [" + top + "] ; why\n" +
                                     row.lines + "\n\"last\"=\"x\"\n";
            const auto read = ReadRegistryText(platform::text::Replaced(file, "\n", lineEnd), system.locale);
            std::vector<std::pair<std::string, RegistryValue>> wanted{{"last", text}};
            if (row.value)
                wanted.insert(wanted.begin(), {"n", *row.value});
            ASSERT_EQ(read.keys.size(), 1u) << row.lines;
            EXPECT_EQ(read.keys[0].values, wanted) << row.lines;
            EXPECT_EQ(read.leftOut.IsEmpty(), row.value.has_value()) << "dropped in silence: " << row.lines;
        }
}

TEST_F(TransferTest, KeysAreTakenAtTheProfilesKeyAndOneLevelBelow)
{
    const struct {
        std::string line;
        std::optional<std::string> name;
        bool isTold = false;
    } rows[] = {
        // clang-format off
        {"[" + top + "]", ""}, {"[" + top + "\\Ann]", "Ann"},
        {" [" + platform::text::Folded(top) + "\\..] ; why", ".."}, {"[" + top + "\\a]b]", "a]b"},
        {"[" + top + "\\Ann] x", {}, true}, {"[" + top + "\\Ann", {}, true}, {"[" + top + "\\Ann\\Deep]", {}, true},
        {"[" + top + "\\\\x]", {}, true}, {"[" + top + "\\a\tb]", {}, true},
        {"[" + top + "\\" + std::string(256, 'x') + "]", {}, true}, {"[-" + top + "\\Ann]", {}, true},
        {"[" + top + "Evil\\Run]", {}}, {"[HKEY_CURRENT_USER\\Software\\Other]", {}},
        {"[HKEY_LOCAL_MACHINE\\" + top + "]", {}},
        // clang-format on
    };
    for (const auto& row : rows) {
        const auto read = ReadRegistryText("REGEDIT4\n" + row.line + "\n@=\"x\"\n", system.locale);
        EXPECT_EQ(read.keys.empty() ? std::nullopt : std::optional{read.keys[0].name}, row.name) << row.line;
        EXPECT_EQ(!read.leftOut.IsEmpty(), row.isTold) << row.line;
    }
    std::string many = "REGEDIT4\n";
    for (std::size_t i = 0; i <= profiles::LargestNumberOfKeys; ++i)
        many += "[" + top + "\\" + std::to_string(i) + "]\n";
    const auto read = ReadRegistryText(many, system.locale);
    EXPECT_EQ(read.keys.size(), profiles::LargestNumberOfKeys);
    EXPECT_TRUE(read.leftOut.Text().contains(std::to_string(profiles::LargestNumberOfKeys)));
}

TEST_F(TransferTest, TheFirstLinesTellHowAFileIsStored)
{
    const std::string key = "[" + top + "]\n\"n\"=";
    const struct {
        std::string file, value;
        bool isDoubleByte = false;
    } rows[] = {
        {"REGEDIT4\n\n" + key + "\"\xE9\"", "é"},
        {"REGEDIT4\n; UTF-8\n" + key + "\"é\"", "é"},
        {"\n \nREGEDIT4\r\n\r\n ; UTF-8 \r\n" + key + "\"é\"", "é"},
        {"\xEF\xBB\xBFREGEDIT4\n" + key + "\"é\"", "é"},
        {"REGEDIT4\n; UTF-8\n" + key + "\"a\xE9z\"", "a\uFFFDz"},
        {"REGEDIT4\n; UTF-8\n" + key + "hex(2):c3,a9,00", "é"},
        {"Windows Registry Editor Version 5.00\n; no REGEDIT4\n" + key + "hex(2):e9,00,00,00", "é"},
        {"REGEDIT4\nWindows Registry Editor Version 5.00\n" + key + "hex(2):e9,00", "é"},
        {"REGEDIT4\n" + key + "\"\x81\x5C\x81\x5B\"", "\u4E1C\u4E1B", true},
        {"REGEDIT4\n" + key + "hex(1):81,5c,00", "\u4E1C", true},
    };
    for (const auto& row : rows) {
        platform::memory::MemoryLocale locale;
        if (row.isDoubleByte)
            locale.SetDoubleByte();
        const auto read = ReadRegistryText(row.file, locale);
        ASSERT_EQ(read.keys.size(), 1u) << row.file;
        ASSERT_EQ(read.keys[0].values.size(), 1u) << row.file;
        EXPECT_EQ(read.keys[0].values[0].second.data, row.value) << row.file;
    }
}

TEST_F(TransferTest, CharactersOfTwoBytesComeBack)
{
    system.locale.SetDoubleByte();
    Put("\u4E1C", "City", "\u4E1C \u4E1B\\\"\u4E20"); // their second bytes are backslash, bracket, backquote
    Put("\u4E1C", "n\u4E1C", "x");
    const auto registry = system.registry.Snapshot();
    ASSERT_EQ(Export(), ExportOutcome::Done);
    EXPECT_FALSE(Contents("C:\\Out\\Set\\TSProfile.tspf").contains("UTF-8"));
    EmptyRegistry();
    system.shell.Forget();
    toolkit.ExpectMessage(Text(416), Icon::Information);
    ASSERT_TRUE(transfer.Import("C:\\Out\\Set"));
    EXPECT_EQ(WithoutExportPath(), registry);
    EXPECT_TRUE(system.shell.Runs().empty()) << "an editor that knows bytes alone would read another name";
}

TEST_F(TransferTest, AnImportTakesProfilesAloneAndNamesTheRest)
{
    Put("Bob", "City", "kept");
    Put("Bob", "Title", "old");
    const std::string below = "[" + top + "\\";
    const std::string file =
        "REGEDIT4\n\"evil\"=\"before any key\"\n"
        "[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run]\n\"evil\"=\"x\"\n" +
        below + "Bob]\n\"Title\"=\"new\"\n\"City\"=-\n" + below + "Bob\\Deep]\n\"evil\"=\"x\"\n" + below +
        "Bob (default)]\n\"evil\"=\"x\"\n" + below + " Bob]\n\"evil\"=\"x\"\n" + below +
        "BLANK profile]\n\"evil\"=\"x\"\n" + below + "a/b]\n\"evil\"=\"x\"\n" + below + "Ärzte]\n\"City\"=\"Bern\"\n";
    toolkit.ExpectMessage(Text(416) + "\r\n\r\n" + Text(560) +
                              "\r\n\"City\"=-\r\nBob\\Deep\r\nBob (default)\r\n Bob\r\nBLANK profile\r\na/b",
                          Icon::Information);
    ASSERT_TRUE(ImportText("\xEF\xBB\xBF" + file));
    EXPECT_TRUE(system.shell.Runs().empty()) << "no editor gets a file like this";
    EXPECT_EQ(At("Bob", "Title"), "new");
    EXPECT_EQ(At("Bob", "City"), "kept");
    EXPECT_EQ(At("Ärzte", "City"), "Bern");
    for (const auto& [line, data] : system.registry.Snapshot())
        EXPECT_FALSE(line.contains("evil")) << line;
}

TEST_F(TransferTest, AnEditorNeverGetsAFileThatItMayReadInAnotherWay)
{
    const std::string head = "REGEDIT4\r\n\r\n";
    const std::string ours = "[" + top + "\\Eve]\r\n";
    const std::string evil = "[HKEY_CURRENT_USER\\Software\\Run]\r\n\"evil\"=\"calc.exe\"\r\n";
    const std::string lines = platform::text::Replaced(evil, "\r\n", "\r");
    const std::string files[] = {
        head + ours + "\"a\r" + lines + "\"=\"b\"\r\n",
        head + ours + "\"City\"=\"a\r" + lines + "\"\r\n",
        head + "[-HKEY_CURRENT_USER\\Software\\Marker]\r\n\r\n" + ours,
        "REGEDIT4" + std::string(5000, '\0') + "\r\n" + evil + ours,
    };
    toolkit.ThrowAwayMessages = true;
    for (const std::string& file : files) {
        EXPECT_TRUE(ImportText(file)) << file;
        EXPECT_TRUE(system.shell.Runs().empty()) << file;
        EXPECT_FALSE(system.registry.StringAt(Hive::CurrentUser, "Software\\Run", "evil").contains("calc")) << file;
    }
}

TEST_F(TransferTest, AnExportTakesWhatProfilesOwnAndNamesWhatCannotGo)
{
    Put("Ann", "City", "Rome");
    Put("Ann", "line\nfeed", "x");
    Put("Ann\\Deep", "a", "x");
    Put("c\rr", "a", "x");
    system.registry.Put(Hive::CurrentUser, profiles::ProfileKey("Ann"), "odd", {ValueType::MultiString, "abc"});
    PutPicture("Ann", ImageKind::Logo, ".jpg", "logo");
    PutPicture("Ann", ImageKind::Portrait, ".bmp", "face");
    system.files.SetSize(Picture("Ann", "Portrait.bmp"), std::uint64_t{1} << 40);
    system.files.AddFile(Picture("Ann", "~TSProfile7.new"), "of a process that died");
    system.files.AddFolder("C:\\Images\\Stranger");
    system.files.SetUnreadable("C:\\Images\\Stranger");
    system.files.AddFile("C:\\Outside\\Logo.jpg", "theirs");
    Put("Link", "City", "Oslo");
    system.files.AddLink("C:\\Images\\Link", "C:\\Outside");
    toolkit.ExpectMessage(Text(410) + "C:\\Out\\Set.\r\n\r\n" + Text(560) +
                              "\r\nAnn\\line feed\r\nAnn\\odd\r\nAnn\\Deep\r\nc r\r\nAnn\\Portrait.bmp",
                          Icon::Information);
    ASSERT_EQ(transfer.Export("C:\\Out", "Set"), ExportOutcome::Done);
    EXPECT_EQ(system.files.AllPaths("C:\\Out"), (Texts{"C:\\Out\\Set", "C:\\Out\\Set\\Ann",
                                                       "C:\\Out\\Set\\Ann\\Logo.jpg", "C:\\Out\\Set\\TSProfile.tspf"}));
    const auto read = ReadRegistryText(Contents("C:\\Out\\Set\\TSProfile.tspf"), system.locale);
    EXPECT_TRUE(read.leftOut.IsEmpty());
    EXPECT_EQ(read.keys.size(), 3u);
}

TEST_F(TransferTest, ASecondExportReplacesTheFirstOne)
{
    const std::string own = "C:\\Out\\Set\\Ann\\My logo.psd"; // was there before any export
    system.files.AddFile(own, "the user's");
    system.files.AddFile("C:\\Out\\Set\\Ann\\Logo.psd", "so was this");
    PutPicture("Ann", ImageKind::Logo, ".jpg", "old");
    PutPicture("Bob", ImageKind::Logo, ".jpg", "bob's");
    ASSERT_EQ(Export(), ExportOutcome::Done);
    EXPECT_TRUE(system.files.Exists("C:\\Out\\Set\\Ann\\Logo.psd"));
    system.files.SetAttributes("C:\\Out\\Set\\TSProfile.tspf", platform::attribute::ReadOnly);
    system.files.SetAttributes("C:\\Out\\Set\\Ann\\Logo.jpg", platform::attribute::ReadOnly);
    system.files.AddFile("C:\\Out\\Set\\Ann\\notes.txt", "the user's");
    system.files.AddFile("C:\\Out\\Set\\Ann\\~TSProfile9.old", "of a process that died");
    system.files.AddFile("C:\\Out\\Set\\Other\\Logo.jpg", "the user's");
    ASSERT_TRUE(operations.Delete("Bob"));
    system.files.Remove(Picture("Ann", "Logo.jpg"));
    PutPicture("Ann", ImageKind::Logo, ".gif", "new");
    ASSERT_EQ(Export(), ExportOutcome::Done);
    EXPECT_EQ(system.files.AllPaths("C:\\Out\\Set"),
              (Texts{"C:\\Out\\Set\\Ann", "C:\\Out\\Set\\Ann\\Logo.gif", own, "C:\\Out\\Set\\Ann\\notes.txt",
                     "C:\\Out\\Set\\Other", "C:\\Out\\Set\\Other\\Logo.jpg", "C:\\Out\\Set\\TSProfile.tspf"}));
}

TEST_F(TransferTest, AnExportWithoutTheDriveOfThePicturesLeavesTheEarlierOneWhole)
{
    AddProfiles();
    ASSERT_EQ(Export(), ExportOutcome::Done);
    const auto before = system.files.Snapshot("C:\\Out");
    PutSetting("Options", "Profile Images Path", "H:\\Pictures");
    toolkit.ExpectMessage(Text(222), Icon::Critical);
    EXPECT_EQ(transfer.Export("C:\\Out\\", "Set"), ExportOutcome::Failed);
    EXPECT_EQ(system.files.Snapshot("C:\\Out"), before);
}

TEST_F(TransferTest, AnExportMayLieAmongThePictures)
{
    PutPicture("Ann", ImageKind::Logo, ".jpg", "logo");
    PutPicture("Gone", ImageKind::Logo, ".jpg", "kept");
    for (const auto& [location, name] : {std::pair{"C:\\", "Images"},
                                         {"C:\\", "Images"}, // the second one finds the file of the first
                                         {"C:\\Images", "Ann"},
                                         {"C:\\Images", "Ann"}}) {
        toolkit.ExpectMessage(Text(410) + platform::path::Join(location, name) + ".", Icon::Information);
        ASSERT_EQ(transfer.Export(location, name), ExportOutcome::Done);
        system.registry.RemoveKey(Hive::CurrentUser, profiles::ProfileKey("Gone"));
    }
    EXPECT_EQ(system.files.AllPaths(Images),
              (Texts{"C:\\Images\\Ann", "C:\\Images\\Ann\\Ann", "C:\\Images\\Ann\\Ann\\Logo.jpg",
                     "C:\\Images\\Ann\\Logo.jpg", "C:\\Images\\Ann\\TSProfile.tspf", "C:\\Images\\Gone",
                     "C:\\Images\\Gone\\Logo.jpg", "C:\\Images\\TSProfile.tspf"}));
}

TEST_F(TransferTest, PicturesPointToTheirNewPlaceAndOtherFoldersStayOut)
{
    system.files.AddFile("C:\\In\\Ann\\Logo.jpg", "logo");
    system.files.AddFile("C:\\In\\Stranger\\private.doc", "no picture of a profile");
    const std::string key = "REGEDIT4\r\n[" + top + "\\Ann]\r\n";
    Put("Bob", "LocalLogo", "\\\\own\\share\\Logo.jpg");
    toolkit.ExpectMessage(Text(416) + "\r\n\r\n" + Text(560) + "\r\n\\\\evil\\x\\Logo.jpg\r\n//evil/x",
                          Icon::Information);
    ASSERT_TRUE(ImportText(key +
                           "\"LocalLogo\"=\"E:\\\\Old\\\\Pics\\\\Ann\\\\Logo.jpg\"\r\n"
                           "\"LocalPortrait\"=\"E:\\\\Old\\\\Pics\\\\Ann\\\\Portrait.jpg\"\r\n"
                           "\"LocalSignature\"=\"E:\\\\Old\\\\..\\\\Signature.jpg\"\r\n[" +
                           top + "\\Bob]\r\n\"LocalLogo\"=\"\\\\\\\\own\\\\share\\\\Logo.jpg\"\r\n[" + top +
                           "\\Eve]\r\n\"LocalLogo\"=\"\\\\\\\\evil\\\\x\\\\Logo.jpg\"\r\n"
                           "\"LocalPortrait\"=hex(2):2f,2f,65,76,69,6c,2f,78,00\r\n"));
    EXPECT_EQ(At("Bob", "LocalLogo"), "\\\\own\\share\\Logo.jpg") << "the user's own";
    EXPECT_EQ(At("Eve", "LocalLogo"), "(none)") << "whoever looks at the profile would contact that machine";
    EXPECT_EQ(At("Eve", "LocalPortrait"), "(none)");
    EXPECT_TRUE(system.shell.Runs().empty());
    EXPECT_EQ(At("Ann", "LocalLogo"), Picture("Ann", "Logo.jpg"));
    EXPECT_EQ(Contents(Picture("Ann", "Logo.jpg")), "logo");
    EXPECT_EQ(At("Ann", "LocalPortrait"), "E:\\Old\\Pics\\Ann\\Portrait.jpg") << "did not come along";
    EXPECT_EQ(At("Ann", "LocalSignature"), "E:\\Old\\..\\Signature.jpg");
    EXPECT_FALSE(system.files.Exists("C:\\Images\\Stranger"));
}

} // namespace
} // namespace tests
