// What stands in an executable's version resource, and in what only looks like one.
#include "tests/packs/PackBuilder.h"
#include "tests/support/TestMachine.h"

#include "packs/FileVersionInfo.h"

namespace tests {
namespace {

using packs::FileVersionInfo;
using packs::VersionFailure;

class VersionTest : public ::testing::Test, public TestMachine {
protected:
    FileVersionInfo::Reading Read(const std::string& bytes)
    {
        system.files.AddFile("C:\\a.exe", bytes);
        return FileVersionInfo::Read(system.files, "C:\\a.exe");
    }
};

TEST_F(VersionTest, GivesTheTextOfTheFirstLanguageThatHasOne)
{
    const std::string longText(300, 'x');
    const struct {
        const char* what;
        PackBuilder pack;
        FileVersionInfo::Reading expected;
    } rows[] = {
        {"one", {{{.productVersion = "Tessaly 3.0"}}}, "Tessaly 3.0"},
        {"64 bit", {{{.productVersion = "Tessaly 3.0"}}, true, true}, "Tessaly 3.0"},
        {"the first of several", {{{0x0407, 0x04E4, "Eins"}, {0x0409, 0x04B0, "One"}}}, "Eins"},
        {"named without a table", {{{0x0407, 0x04E4, "Eins", false}, {0x000A, 0x0002, "One"}}}, "One"},
        {"an empty text", {{{.productVersion = ""}}}, ""},
        {"longer than the buffer", {{{.productVersion = longText}}}, longText.substr(0, 255)},
        {"no language", {{}}, std::unexpected{VersionFailure::NoValue}},
        {"no translation", {{{.productVersion = "1"}}, false}, std::unexpected{VersionFailure::NoValue}},
    };
    for (const auto& row : rows)
        EXPECT_EQ(Read(row.pack.Bytes()), row.expected) << row.what;
}

TEST_F(VersionTest, TellsWhyThereIsNoVersion)
{
    system.files.AddFile("C:\\none.exe", "Dear Sirs,");
    system.files.AddFile("C:\\cut.exe", PackBuilder::Pack("1").substr(0, 380));
    system.files.AddFile("C:\\mute.exe", PackBuilder{}.Bytes());
    system.files.AddFile("C:\\good.exe", PackBuilder::Pack("tessaly"));
    const std::pair<const char*, int> rows[] = {
        {"C:\\gone.exe", 162}, {"C:\\none.exe", 162}, {"C:\\cut.exe", 163}, {"C:\\mute.exe", 164}};
    app::Program program{system.AsPlatform(), toolkit, pictures};
    FileVersionInfo versions{system.files, program.messages};
    for (const auto& [file, text] : rows) {
        toolkit.ExpectMessage(program.Text(static_cast<std::uint16_t>(text)), Icon::None);
        EXPECT_EQ(versions.GetProductVersion(file), "") << file;
    }
    EXPECT_EQ(versions.GetProductVersion("C:\\good.exe"), "tessaly");
}

} // namespace
} // namespace tests
