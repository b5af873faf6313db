#include "profiles/frmOptionsImportExport.h"
#include "tests/profiles/ProfilesFixture.h"

namespace tests {
namespace {

using profiles::frmOptionsImportExport;

class ImportExportFormTest : public ProfileTestBase {
protected:
    void SetUp() override
    {
        system.files.AddFolder("C:\\Out");
        Put("Ann", "FirstName", "Ann");
    }
    frmOptionsImportExport form{program, manager, transfer, [this] { ++helps; }};
    int helps{};
};

TEST_F(ImportExportFormTest, StartsWithTheLastLocationElseTheUsersDocuments)
{
    const char* documents = "C:\\Users\\User\\Documents";
    const std::pair<const char*, const char*> rows[] = {{"", documents},
                                                        {"D:\\Last", "D:\\Last"},
                                                        {"C:\\program files\\Template Browser", documents},
                                                        {"C:\\Windows\\", documents},
                                                        {"C:\\Windows of Ann", "C:\\Windows of Ann"}};
    for (const auto& [stored, shown] : rows) {
        PutSetting("Options", "ExportProfilePath", stored);
        frmOptionsImportExport opened{program, manager, transfer, {}};
        EXPECT_EQ(opened.txtExportPath.Text(), shown);
        EXPECT_EQ(opened.txtProfileName.Text(), "Tessaly Pro Profiles");
    }
}

TEST_F(ImportExportFormTest, RefusesAtTheFieldThatIsWrongThenExportsAndStays)
{
    form.Show();
    for (ui::TextBox* wrong : {&form.txtExportPath, &form.txtProfileName}) {
        EXPECT_EQ(form.DefaultButton(wrong), &form.btnExport);
        form.txtExportPath.SetText(wrong == &form.txtExportPath ? "C:\\Gone" : "C:\\Out");
        form.txtProfileName.SetText(" ");
        form.btnExport.SetFocus();
        toolkit.ExpectMessage(Text(wrong == &form.txtExportPath ? 409 : 347), Icon::Information);
        form.btnExport.UserClicks();
        EXPECT_TRUE(wrong->HasFocus());
        EXPECT_EQ(wrong->SelText(), wrong->Text());
        EXPECT_FALSE(toolkit.Busy);
    }
    EXPECT_EQ(form.DefaultButton(nullptr), &form.OKButton);

    toolkit.FolderChoices = {std::nullopt, "C:\\Out"};
    form.txtExportPath.SetText("");
    form.btnBrowse.UserClicks();
    form.btnBrowse.UserClicks();
    EXPECT_EQ(form.txtExportPath.Text(), "C:\\Out");
    form.txtExportPath.SetText(" C:\\Out ");
    form.txtProfileName.SetText(" Set ");
    bool busy = false;
    system.files.AddFile("C:\\Windows\\regedit.exe");
    system.shell.OnRun([&](const auto&) {
        busy = toolkit.Busy;
        return platform::Result<>{};
    });
    toolkit.OnMessage = [&](const auto&) {
        form.btnExport.UserClicks();
        form.btnImport.UserClicks();
    };
    toolkit.ExpectMessage(Text(410) + "C:\\Out\\Set.", Icon::Information);
    form.btnExport.UserClicks();
    EXPECT_TRUE(busy);
    EXPECT_FALSE(toolkit.Busy);
    EXPECT_EQ(system.shell.Runs().size(), 1u) << "the clicks under the message started nothing";
    EXPECT_EQ(Setting("Options", "ExportProfilePath"), "C:\\Out");
    EXPECT_TRUE(form.IsOpen());
    form.btnHelp.UserClicks();
    EXPECT_EQ(helps, 1);
    form.OKButton.UserClicks();
    EXPECT_FALSE(form.IsOpen());
}

TEST_F(ImportExportFormTest, WhatIsThereIsReplacedOnlyWhenTheUserSaysSo)
{
    form.Show();
    const std::string old = "REGEDIT4\r\n[" + profiles::FullProfilesKey() + "\\Ann]\r\n\"FirstName\"=\"Old\"\r\n";
    system.files.AddFile("C:\\Out\\Set\\TSProfile.tspf", old);
    form.txtExportPath.SetText("C:\\Out");
    form.txtProfileName.SetText("Set");
    toolkit.ExpectMessage(Text(585) + "\r\n\r\nC:\\Out\\Set", Icon::Question, Answer::No);
    form.btnExport.UserClicks();
    EXPECT_TRUE(form.txtProfileName.HasFocus()) << "another name is the way out";
    EXPECT_EQ(Contents("C:\\Out\\Set\\TSProfile.tspf"), old);

    toolkit.FolderChoices = {std::nullopt};
    form.btnImport.UserClicks();
    // The folder above the export is near enough.
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        toolkit.FolderChoices = {"C:\\Out"};
        toolkit.ExpectMessage(Text(586) + "\r\n\r\nAnn", Icon::Question, answer);
        if (answer == Answer::Yes)
            toolkit.ExpectMessage(Text(416), Icon::Information);
        form.btnImport.UserClicks();
        EXPECT_EQ(At("Ann", "FirstName"), answer == Answer::Yes ? "Old" : "Ann");
    }
    system.files.AddFile("C:\\Out\\Other\\TSProfile.tspf", old);
    toolkit.FolderChoices = {"C:\\Out"};
    toolkit.ExpectMessage(Text(415) + " " + Text(412), Icon::Information);
    form.btnImport.UserClicks();
    toolkit.ExpectMessage(Text(585) + "\r\n\r\nC:\\Out\\Set", Icon::Question, Answer::Yes);
    toolkit.ExpectMessage(Text(410) + "C:\\Out\\Set.", Icon::Information);
    form.btnExport.UserClicks();
}

TEST_F(ImportExportFormTest, AfterAnImportOnANewMachineOneProfileIsTheDefault)
{
    for (const auto& [before, after] : {std::pair{"", "Ann"}, {"Gone", "Ann"}, {"NEW", "NEW"}}) {
        PutSetting("Profiles", "DefaultProfile", before);
        PutSetting("Profiles", "FirstRun", "");
        system.files.AddFile("C:\\In\\TSProfile.tspf",
                             "REGEDIT4\r\n[" + profiles::FullProfilesKey() + "\\New]\r\n\"City\"=\"Bern\"\r\n");
        toolkit.FolderChoices = {"C:\\In"};
        toolkit.ExpectMessage(Text(416), Icon::Information);
        form.btnImport.UserClicks();
        EXPECT_EQ(Setting("Profiles", "DefaultProfile"), after);
        EXPECT_EQ(Setting("Profiles", "FirstRun"), "0") << "there is somebody to write as";
        system.registry.RemoveKey(Hive::CurrentUser, profiles::ProfileKey("New"));
    }
}

} // namespace
} // namespace tests
