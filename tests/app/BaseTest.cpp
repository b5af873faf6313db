// Texts, captions, settings and raw registry values.
#include "tests/support/TestMachine.h"

#include "app/base/Captions.h"
#include "ui/Button.h"

namespace tests {
namespace {

using platform::RegistryValue;
using platform::ValueType;

class BaseTest : public ::testing::Test, public TestMachine {
protected:
    app::Program program{system.AsPlatform(), toolkit, pictures};
    BaseTest() { program.state.SettingsAppName = "Tessaly GWX 1.0"; }
};

TEST_F(BaseTest, TheTableHoldsEveryTextAsItIsStored)
{
    std::size_t rowsUpTo548 = 0; // later ones are this program's own
    for (std::uint16_t id = 0; id <= 548; ++id)
        rowsUpTo548 += app::StringTable::Own(id).empty() ? 0 : 1;
    EXPECT_EQ(rowsUpTo548, 431u);
    const std::pair<std::uint16_t, const char*> rows[] = {
        // clang-format off
        {101, "&File"}, {106, "Enter a valid number."}, {154, "Empty"}, {172, ""}, {548, "Tessaly"}, {549, ""}, {0, ""},
        {257, "Cannot load Solution  Pack Executable."},
        {339, "Tessaly Professinal 3.0  Browser - Unable to read Templates Path"},
        {355, "&Add to Favorites     "},
        {481, "Don't remember documents older than                 months"},
        // clang-format on
    };
    for (const auto& [id, text] : rows)
        EXPECT_EQ(program.strings.LoadString(id), text) << id;
}

TEST_F(BaseTest, TheResourceLibraryOverridesTextByText)
{
    system.resources.Add("C:\\Desk\\TS_RES.dll",
                         {{102, "Neu"}, {103, std::string(600, 'x')}, {104, ""}, {9000, "more"}});
    program.strings.LoadResourceLibrary("C:\\Desk");
    EXPECT_EQ(program.Text(102), "Neu");
    EXPECT_EQ(program.Text(103), std::string(511, 'x'));
    EXPECT_EQ(program.Text(104), "E&xit");
    EXPECT_EQ(program.Text(250), "<-&Previous");
    EXPECT_EQ(program.Text(9000), "more");
    program.strings.LoadResourceLibrary("C:\\Nowhere");
    EXPECT_FALSE(program.strings.UseResourceLibrary());
    EXPECT_EQ(program.Text(102), "&New");
}

TEST_F(BaseTest, CaptionsComeFromTheNumbersThatControlsCarry)
{
    struct Form : ui::Form {
        explicit Form(ui::Toolkit& toolkit) : ui::Form{toolkit, "form", Style::Dialog, ui::Tag{500}} {}
        ui::Label label{*this, ui::Tag{501}};
        ui::Button button{*this, ui::Tag{265}};
        ui::Button plain{*this};
        ui::Button odd{*this};
        ui::TabStrip tabs{*this};
        ui::ToolBar bar{*this};
        ui::ListView list{*this};
    } form{toolkit};
    form.label.ToolTipText = "265";
    form.button.ToolTipText = "141";
    form.plain.SetCaption("As it is");
    form.odd.TagText = "12x";
    form.odd.SetCaption("Odd");
    form.tabs.SetTabs({{"a", "156", "149"}, {"b", "", "", "Own", "own tip"}});
    form.bar.SetButtons({{.key = "x", .toolTipText = "142"}, {.key = "y", .toolTip = "kept"}});
    form.list.SetColumns({{"218", "", 100}, {"0", "Kept", 100}});
    auto& file = form.MenuBar.Add(std::make_unique<ui::Menu>("mnuFile", ui::Tag{101}));
    file.Add(std::make_unique<ui::Menu>("mnuExit", ui::Tag{104}));
    file.Add(std::make_unique<ui::Menu>("mnuOwn", ui::Tag{})).Caption = "Own";

    app::LoadCaptions(form, program.strings);

    EXPECT_EQ(form.Caption(), "Rename Profile");
    EXPECT_EQ(form.label.Caption(), "Enter a new profile name:");
    EXPECT_EQ(form.label.ToolTipText, "265") << "a label has no tool tip of its own";
    EXPECT_EQ(form.button.Caption(), "O&K");
    EXPECT_EQ(form.button.ToolTipText, "New");
    EXPECT_EQ(form.plain.Caption() + form.odd.Caption(), "As it isOdd");
    const auto& tabs = form.tabs.Tabs();
    EXPECT_EQ(tabs[0].caption + tabs[0].toolTip, "WordDisplay/Hide tab containing Word templates");
    EXPECT_EQ(tabs[1].caption + tabs[1].toolTip, "Ownown tip");
    EXPECT_EQ(form.bar.Buttons()[0].toolTip + form.bar.Buttons()[1].toolTip, "Large Iconskept");
    EXPECT_EQ(form.list.Columns()[0].text + form.list.Columns()[1].text, "NameKept");
    EXPECT_EQ(file.Caption + file.Items()[0]->Caption + file.Items()[1]->Caption, "&FileE&xitOwn");
}

TEST_F(BaseTest, SettingsGiveTheDefaultForWhateverIsNoText)
{
    const std::string key = std::string{SettingsKey} + "\\Spoiled";
    const std::pair<const char*, RegistryValue> values[] = {
        {"dword", {ValueType::Dword, std::string(4, '\1')}},
        {"binary", {ValueType::Binary, "12"}},
        {"multi", {ValueType::MultiString, std::string("1\0\0\0", 4)}},
    };
    for (const auto& [name, value] : values) {
        system.registry.Put(Hive::CurrentUser, key, name, value);
        EXPECT_EQ(program.settings.Text("Spoiled", name, "default"), "default") << name;
    }
    PutSetting("Spoiled", "empty", "");
    EXPECT_EQ(program.settings.Text("Spoiled", "empty", "default"), "") << "an empty text is a text";
    EXPECT_EQ(program.settings.Text("Missing", "missing", "default"), "default");

    for (const auto& [text, number, flag] : {std::tuple{"-5", 0, true}, {"abc", 42, true}, {"0", 0, false}}) {
        PutSetting("Spoiled", "number", text);
        EXPECT_EQ(program.settings.Number("Spoiled", "number", 42, 0, 100), number) << text;
        EXPECT_EQ(program.settings.Flag("Spoiled", "number", true), flag) << text;
    }
}

TEST_F(BaseTest, SettingsWriteBelowTheirOwnApplicationName)
{
    ASSERT_TRUE(program.settings.SaveSetting("Tessaly 1.0 GWX", "Browser\\Recent Documents", "a", "b"));
    EXPECT_EQ(system.registry.StringAt(
                  Hive::CurrentUser,
                  "Software\\VB and VBA Program Settings\\Tessaly 1.0 GWX\\Browser\\Recent Documents", "a"),
              "b");
    ASSERT_TRUE(program.settings.SaveFlag("New\\Section", "flag", true));
    EXPECT_EQ(Setting("New\\Section", "flag"), "True");
    for (const bool isThere : {true, false})
        EXPECT_EQ(program.settings.DeleteSetting("Tessaly GWX 1.0", "New\\Section", "flag").has_value(), isThere);
    EXPECT_TRUE(program.settings.DeleteSetting("Tessaly GWX 1.0", "New\\Section"));
}

TEST_F(BaseTest, RawValuesAreReadByTypeUpToTheirBuffer)
{
    using Value = app::RegistryAccess::Value;
    std::string u255;
    for (int i = 0; i < 255; ++i)
        u255 += "é";
    const struct {
        RegistryValue stored;
        std::optional<Value> read;
    } cases[] = {
        {{ValueType::String, ""}, Value{std::string{}}},
        {{ValueType::ExpandString, "%TEMP%"}, Value{std::string{"%TEMP%"}}},
        {{ValueType::String, u255}, Value{u255}},
        {{ValueType::String, u255 + "x"}, std::nullopt},
        {{ValueType::Dword, {"\x78\x56\x34\x12", 4}}, Value{std::uint32_t{0x12345678}}},
        {{ValueType::Dword, "short"}, std::nullopt},
        {{ValueType::Binary, {"\0\xff", 2}}, Value{std::vector<std::uint8_t>{0, 255}}},
        {{ValueType::Binary, std::string(256, 'x')}, std::nullopt},
        {{ValueType::MultiString, "a"}, std::nullopt},
    };
    for (const auto& c : cases) {
        system.registry.Put(Hive::LocalMachine, "Other", "value", c.stored);
        EXPECT_EQ(program.registry.QueryValue(Hive::LocalMachine, "Other", "value"), c.read);
    }
    EXPECT_FALSE(program.registry.QueryValue(Hive::LocalMachine, "Other", "missing"));
    EXPECT_FALSE(program.registry.QueryValue(Hive::LocalMachine, "Missing", ""));
}

TEST_F(BaseTest, FullPathsNameTheirHive)
{
    const std::pair<const char*, Hive> hives[] = {
        {"HKEY_CLASSES_ROOT", Hive::ClassesRoot},     {"HKEY_CURRENT_USER", Hive::CurrentUser},
        {"HKEY_LOCAL_MACHINE", Hive::LocalMachine},   {"HKEY_USERS", Hive::Users},
        {"HKEY_CURRENT_CONFIG", Hive::CurrentConfig}, {"HKEY_DYN_DATA", Hive::DynData}};
    for (const auto& [name, hive] : hives) {
        system.registry.PutString(hive, "A\\B", "v", name);
        EXPECT_EQ(program.registry.QueryTextByPath(std::string{name} + "\\A\\B", "v"), name);
        EXPECT_EQ(program.registry.QueryTextByPath("\\" + std::string{name} + "\\A\\B", "v"), name);
    }
    for (const char* path : {"HKEY_NOWHERE\\A\\B", "", "\\", "A\\B"})
        EXPECT_FALSE(program.registry.QueryValueByPath(path, "v")) << path;
}

TEST_F(BaseTest, FailuresOfRawWritesAreToldOnce)
{
    toolkit.ExpectMessage("Error setting registry Value.", Icon::Critical);
    EXPECT_FALSE(program.registry.SetValue(Hive::CurrentUser, "Missing", "v", std::string{"x"}));
    toolkit.ExpectMessage("Error deleting registry Value.", Icon::Critical);
    EXPECT_FALSE(program.registry.DeleteKey(Hive::CurrentUser, "Missing"));
    toolkit.ExpectMessage("Registry enumeration failed.", Icon::None);
    EXPECT_TRUE(program.registry.EnumSubKeys(Hive::CurrentUser, "Missing").empty());

    ASSERT_TRUE(program.registry.CreateKey("There"));
    EXPECT_TRUE(program.registry.SetValue(Hive::CurrentUser, "There", "n", std::uint32_t{0x12345678}));
    EXPECT_EQ(program.registry.QueryValue(Hive::CurrentUser, "There", "n"),
              app::RegistryAccess::Value{std::uint32_t{0x12345678}});
    system.registry.AddKey(Hive::CurrentUser, "There\\One");
    system.registry.AddKey(Hive::CurrentUser, "There\\Two");
    EXPECT_EQ(program.registry.EnumSubKeys(Hive::CurrentUser, "There"), (Texts{"One", "Two"}));
    EXPECT_EQ(toolkit.Yields(), 2);
}

} // namespace
} // namespace tests
