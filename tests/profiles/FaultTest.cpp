// One call of the system after the other goes wrong in everything that changes profiles: nothing is lost, one message.
#include "tests/profiles/ProfilesFixture.h"
#include "tests/support/FaultRunner.h"

#include "profiles/EnterSenderInformationForm.h"
#include "profiles/frmImages.h"
#include "profiles/frmManageProfiles.h"
#include "profiles/frmNewProfile.h"
#include "profiles/frmRenameProfile.h"

#include <algorithm>

namespace tests {
namespace {

using profiles::frmManageProfiles;
using profiles::ImageKind;

struct Desk : ProfileMachine {
    std::map<std::string, std::string> disk, registry; ///< as they were at first
    bool succeeded{};
    std::optional<profiles::EnterSenderInformationForm> editor;
    std::optional<frmManageProfiles> manage;

    Desk() { toolkit.ThrowAwayMessages = true; }
};

// What the forms carry out.

struct Scenario {
    const char* name;
    std::function<bool(Desk&)> act;
};
void PrintTo(const Scenario& scenario, std::ostream* out)
{
    *out << scenario.name;
}

void Prepare(Desk& desk)
{
    desk.Put("Ann", "FirstName", "Ann");
    desk.Put("Ann", "Unknown", "theirs");
    desk.PutPicture("Ann", ImageKind::Logo, ".jpg", "logo");
    desk.PutPicture("Ann", ImageKind::Portrait, ".gif", "face");
    desk.Put("Bob", "LastName", "Bob");
    desk.PutPicture("Bob", ImageKind::Logo, ".jpg", "bob's");
    desk.PutSetting("Profiles", "DefaultProfile", "Ann");
    desk.PutSetting("Profiles", "CurrentProfileToUse", "Bob");
    desk.system.files.AddFolder("C:\\Temp");
    const std::string top = profiles::FullProfilesKey();
    const std::pair<const char*, std::string> files[] = {
        {"C:\\new.gif", "new"},
        {"C:\\Windows\\regedit.exe", ""},
        {"C:\\Out\\Set\\TSProfile.tspf", "an earlier export"},
        {"C:\\Out\\Set\\Ann\\Logo.jpg", "an earlier logo"},
        {"C:\\In\\TSProfile.tspf",
         "REGEDIT4\r\n\r\n[" + top + "\\Ann]\r\n\"City\"=\"Rome\"\r\n\"LocalLogo\"=\"X:\\\\Ann\\\\Logo.jpg\"\r\n\r\n[" +
             top + "\\New]\r\n\"City\"=\"Bern\"\r\n\r\n"},
        {"C:\\In\\Ann\\Logo.jpg", "imported"}};
    for (const auto& [path, contents] : files)
        desk.system.files.AddFile(path, contents);
    desk.disk = desk.system.files.Snapshot();
    desk.registry = desk.system.registry.Snapshot();
}

const Scenario scenarios[] = {
    {"create", [](Desk& d) { return d.operations.Create("Copy", "Ann"); }},
    {"rename", [](Desk& d) { return d.operations.Rename("Ann", "Zoe"); }},
    {"remove", [](Desk& d) { return d.operations.Delete("Bob"); }},
    {"save",
     [](Desk& d) {
         d.manager.LoadProfile("Ann");
         d.manager.Current[profiles::Field::City] = "Oslo";
         return d.manager.SaveProfileText("Ann");
     }},
    {"images",
     [](Desk& d) {
         d.manager.LoadProfile("Ann");
         return d.images.Apply("Ann", {"C:\\new.gif", std::nullopt, "C:\\new.gif"});
     }},
    {"export", [](Desk& d) { return d.transfer.Export("C:\\Out", "Set") == profiles::ExportOutcome::Done; }},
    {"import", [](Desk& d) { return d.transfer.Import("C:\\In"); }},
};

class ProfileFaultTest : public testing::TestWithParam<Scenario> {
protected:
    bool Is(std::string_view name) const { return GetParam().name == name; }

    /// Each value that was there is there, and each picture where its value says. Undoing may fail, too: then a picture
    /// may be the new one while its export or its sibling is the old one.
    void ExpectWhole(const Desk& desk, const std::string& name)
    {
        EXPECT_EQ(desk.At(name, "FirstName") + desk.At(name, "Unknown"), "Anntheirs") << name;
        const std::string logo = desk.Contents(desk.At(name, "LocalLogo"));
        EXPECT_TRUE(logo == "logo" || (logo == "new" && Is("images")) || (logo == "imported" && Is("import"))) << logo;
        EXPECT_EQ(desk.Contents(desk.At(name, "LocalPortrait")), "face") << name;
    }
    void CheckOneFailure(const Desk& desk, bool renamed)
    {
        EXPECT_EQ(desk.Setting("Profiles", "DefaultProfile"), renamed ? "Zoe" : "Ann");
        if (!Is("remove") || desk.manager.ProfileExists("Bob")) {
            EXPECT_EQ(desk.At("Bob", "LastName") + desk.Contents(desk.At("Bob", "LocalLogo")), "Bobbob's");
        }
        EXPECT_EQ(desk.Contents("C:\\new.gif") + desk.Contents("C:\\In\\Ann\\Logo.jpg"), "newimported");
        const std::string file = desk.Contents("C:\\Out\\Set\\TSProfile.tspf");
        const std::string logo = desk.Contents("C:\\Out\\Set\\Ann\\Logo.jpg");
        EXPECT_TRUE(file == "an earlier export" ? logo == "an earlier logo"
                                                : Is("export") && logo == "logo" && file.contains("\"theirs\""));
        if (!desk.succeeded) {
            EXPECT_EQ(desk.toolkit.Messages.size(), 1u) << "a failure that nobody hears of";
            if (!Is("save")) {
                EXPECT_EQ(desk.system.files.Snapshot(), desk.disk) << "half a change";
                EXPECT_EQ(desk.system.registry.Snapshot(), desk.registry) << "half a change";
            }
        }
        for (const std::string& path : desk.system.files.AllPaths())
            EXPECT_FALSE(path.contains('~')) << path << " is left";
    }
};

TEST_P(ProfileFaultTest, LosesNothingAndIsToldOnce)
{
    for (const Trouble& trouble : {Trouble{}, Trouble{Trouble::OneCallFails, platform::error::DiskFull},
                                   Trouble{Trouble::NothingWorksFromThereOn}, Trouble{Trouble::TheProcessDies}}) {
        SCOPED_TRACE(trouble.kind);
        const auto act = [](Desk& desk) { desk.succeeded = GetParam().act(desk); };
        ForEachCall<Desk>(5, trouble, Prepare, act, [&](Desk& desk, const std::string&) {
            desk.system.EndProcess();
            const bool renamed = !desk.manager.ProfileExists("Ann");
            EXPECT_TRUE(!renamed || Is("rename"));
            ExpectWhole(desk, renamed ? "Zoe" : "Ann");
            EXPECT_LE(desk.toolkit.Messages.size(), 1u);
            if (trouble.kind == Trouble::OneCallFails)
                CheckOneFailure(desk, renamed);
        });
    }
}
INSTANTIATE_TEST_SUITE_P(Operations, ProfileFaultTest, testing::ValuesIn(scenarios),
                         [](const auto& row) { return std::string{row.param.name}; });

// The forms.

void PrepareForms(Desk& desk)
{
    desk.toolkit.AnswerYes = true;
    for (const char* name : {"Ann", "Bob"}) {
        desk.Put(name, "FirstName", name);
        desk.Put(name, "City", "Rome");
        desk.PutPicture(name, ImageKind::Logo, ".jpg", name);
    }
    desk.PutSetting("Profiles", "DefaultProfile", "Bob");
    desk.PutSetting("Profiles", "CurrentProfileToUse", "Ann");
    desk.system.files.AddFile("C:\\new.gif", "new");
}

/// The messages that tell of a failure.
Texts Told(const Desk& desk)
{
    Texts told;
    for (const ui::MessageBox& message : desk.toolkit.Messages)
        if (message.icon != Icon::Question)
            told.push_back(message.text);
    EXPECT_LE(told.size(), 1u);
    return told;
}

TEST(ProfileFormFaultTest, TheEditorLosesNoEdit)
{
    const auto prepare = [](Desk& desk) {
        PrepareForms(desk);
        auto& form =
            desk.editor.emplace(desk.program, desk.manager, desk.images, desk.operations, [](std::string_view) {});
        form.Realize();
        form.SenderCityText.SetText("Oslo");
        desk.toolkit.OnModal("frmManageProfiles", [](ui::Form& shown) { shown.UserCloses(); });
        desk.toolkit.OnModal<profiles::frmNewProfile>("frmNewProfile", [](auto& add) {
            add.Description.UserTypes("Cid");
            add.OKButton.UserClicks();
            add.UserCloses();
        });
    };
    const std::function<void(Desk&)> acts[] = {[](Desk& desk) { desk.editor->ProfileCombo.UserSelects(1); },
                                               [](Desk& desk) { desk.editor->OKButton.UserClicks(); },
                                               [](Desk& desk) { desk.editor->btnAddProfile.UserClicks(); },
                                               [](Desk& desk) { desk.editor->btnManageProfiles.UserClicks(); }};
    for (const auto& act : acts)
        ForEachCall<Desk>(22, {}, prepare, act, [](Desk& desk, const std::string&) {
            auto& form = *desk.editor;
            (void)Told(desk);
            EXPECT_TRUE(form.IsOpen() ||
                        std::ranges::none_of(desk.toolkit.Messages,
                                             [](const auto& message) { return message.icon == Icon::Critical; }))
                << "closed although something could not be stored";
            const bool shown = form.ProfileCombo.Text() == "Ann" && form.SenderCityText.Text() == "Oslo";
            EXPECT_TRUE(desk.At("Ann", "City") == "Oslo" || (shown && form.IsOpen()));
            EXPECT_EQ(desk.At("Bob", "City"), "Rome") << "one profile's fields went to another";
            EXPECT_EQ(desk.At("Ann", "FirstName"), "Ann");
            // What is shown afterwards can be saved without harm.
            if (form.IsOpen())
                form.ProfileCombo.UserSelects(form.ProfileCombo.Selected() == 0 ? 1 : 0);
            EXPECT_EQ(desk.At("Ann", "FirstName") + desk.At("Bob", "FirstName"), "AnnBob");
            EXPECT_EQ(desk.At("Ann", "City") + desk.At("Bob", "City"), "OsloRome");
        });
}

TEST(ProfileFormFaultTest, TheListShowsWhatThereIs)
{
    const auto confirm = [](ui::Form& form, ui::TextBox& box, ui::Button& ok, ui::Button& cancel) {
        ok.UserClicks();
        if (form.IsOpen()) {
            EXPECT_TRUE(box.HasFocus());
            cancel.UserClicks();
        }
    };
    const auto prepare = [&](Desk& desk) {
        PrepareForms(desk);
        desk.manage.emplace(desk.program, desk.manager, desk.operations).Realize();
        desk.toolkit.OnModal<profiles::frmNewProfile>("frmNewProfile", [&](auto& add) {
            add.Description.UserTypes("Cid");
            add.lstCopyFrom.UserSelects(1);
            confirm(add, add.Description, add.OKButton, add.CancelButton);
        });
        desk.toolkit.OnModal<profiles::frmRenameProfile>("frmRenameProfile", [&](auto& rename) {
            rename.txtName.SetText("Zoe");
            confirm(rename, rename.txtName, rename.OKButton, rename.CancelButton);
        });
    };
    for (ui::Button frmManageProfiles::*button : {&frmManageProfiles::btnAdd, &frmManageProfiles::btnRename,
                                                  &frmManageProfiles::btnDelete, &frmManageProfiles::btnSetDefault}) {
        const auto act = [&](Desk& desk) { ((*desk.manage).*button).UserClicks(); };
        ForEachCall<Desk>(1, {}, prepare, act, [](Desk& desk, const std::string&) {
            desk.manager.ListProfiles();
            if (Told(desk) != std::vector{desk.Text(174)}) {
                EXPECT_EQ(desk.manage->lstProfiles.Items().size(), desk.manager.Names().size());
            }
            for (const std::string& name : desk.manager.Names()) {
                if (name == "Cid")
                    continue; // what could not be read of the source is not in the copy
                EXPECT_EQ(desk.At(name, "City"), "Rome") << name;
                EXPECT_NE(desk.Contents(desk.At(name, "LocalLogo")), "(none)") << name;
            }
            EXPECT_TRUE(desk.manager.ProfileExists("Bob"));
        });
    }
}

TEST(ProfileFormFaultTest, ThePicturesStayAndNeedNotBeChosenAgain)
{
    const auto act = [](Desk& desk) {
        desk.toolkit.FileChoices.push_back("C:\\new.gif");
        profiles::frmImages form{desk.program, desk.manager, desk.images, "Ann", {}};
        desk.toolkit.OnModal("frmImages", [&](ui::Form&) {
            form.Logo.btnSet.UserClicks();
            desk.system.jobs.FinishAll();
            const bool chosen = form.Logo.change.has_value();
            const std::size_t told = desk.toolkit.Messages.size();
            form.OKButton.UserClicks();
            if (form.IsOpen()) {
                EXPECT_EQ(desk.toolkit.Messages.size(), told + 1);
                EXPECT_EQ(form.Logo.change.has_value(), chosen);
                form.CancelButton.UserClicks();
            }
        });
        form.ShowModal();
    };
    ForEachCall<Desk>(30, {}, PrepareForms, act, [](Desk& desk, const std::string&) {
        (void)Told(desk);
        const std::string stored = desk.At("Ann", "LocalLogo");
        EXPECT_EQ(desk.Contents(stored), stored.ends_with(".gif") ? "new" : "Ann") << stored;
    });
}

} // namespace
} // namespace tests
