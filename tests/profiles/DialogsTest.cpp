// The small dialogs that manage the set of profiles.
#include "tests/profiles/ProfilesFixture.h"

#include "profiles/EnterSenderInformationForm.h"
#include "profiles/ProfileDialogs.h"
#include "profiles/frmImages.h"
#include "profiles/frmManageProfiles.h"
#include "profiles/frmNewProfile.h"
#include "profiles/frmProfileInformation.h"
#include "profiles/frmRenameProfile.h"

#include <cctype>
#include <set>

namespace tests {
namespace {

using profiles::frmManageProfiles;
using profiles::frmNewProfile;
using profiles::frmRenameProfile;

class ProfileDialogsTest : public ProfileTestBase {
protected:
    ProfileDialogsTest()
    {
        for (const char* name : {"Ann", "Bob", "Größe"})
            Put(name, "FirstName", name);
        PutSetting("Profiles", "DefaultProfile", "bob");
        PutSetting("Profiles", "CurrentProfileToUse", "Ann");
    }
    std::string DeleteQuestion(const std::string& name) const { return Text(215) + "\r\n\r\n" + name; }
};

TEST_F(ProfileDialogsTest, EveryDialogIsMadeForTheKeyboardAndFitsASmallScreen)
{
    frmManageProfiles manage{program, manager, operations};
    frmNewProfile add{program, manager, operations};
    frmRenameProfile rename{program, manager, operations, "Ann"};
    profiles::frmProfileInformation prompt{program};
    profiles::EnterSenderInformationForm editor{program, manager, images, operations, {}};
    profiles::frmImages pictures{program, manager, images, "Ann", {}};
    const std::pair<ui::Form*, const char*> forms[] = {{&manage, "Manage Profiles"}, {&add, "Add Profile"},
                                                       {&rename, "Rename Profile"},  {&prompt, "Enter Initial Profile"},
                                                       {&editor, "Edit Profile"},    {&pictures, "Profile Images"}};
    for (const auto& [form, title] : forms) {
        SCOPED_TRACE(title);
        form->Realize();
        EXPECT_EQ(form->Caption(), title);
        EXPECT_LE(form->ClientSize().width, 1024 * 15);
        EXPECT_LE(form->ClientSize().height, 740 * 15);
        std::set<int> mnemonics;
        std::multiset<ui::Role> roles;
        const ui::Control* before = nullptr;
        for (const ui::Control* control : form->Controls()) {
            const std::string& caption = control->Caption();
            const std::string_view type = control->TypeName();
            if (const auto mark = caption.find('&'); mark != std::string::npos && control->Visible()) {
                EXPECT_TRUE(mnemonics.insert(std::tolower(static_cast<unsigned char>(caption.at(mark + 1)))).second)
                    << caption;
            } else {
                EXPECT_FALSE(type == "CheckBox" || type == "CommandButton") << caption;
            }
            if (type == "TextBox" && before->TypeName() == "Label") {
                EXPECT_TRUE(before->Caption().contains('&')) << before->Caption();
            }
            if (const auto* button = dynamic_cast<const ui::Button*>(control))
                roles.insert(button->GetRole());
            before = control;
        }
        EXPECT_EQ(roles.count(ui::Role::Default), 1u);
        EXPECT_EQ(roles.count(ui::Role::Cancel), 1u);
    }
}

TEST_F(ProfileDialogsTest, ManagingFollowsTheSelection)
{
    frmManageProfiles form{program, manager, operations};
    form.Realize();
    EXPECT_EQ(form.lstProfiles.Items(), (Texts{"Ann", "Bob (default)", "Größe"}));
    EXPECT_EQ(form.lstProfiles.Text(), "Ann");

    toolkit.OnModal<frmNewProfile>("frmNewProfile", [](auto& add) {
        add.Description.UserTypes(" Cid ");
        add.OKButton.UserClicks();
    });
    form.btnAdd.UserClicks();
    EXPECT_EQ(form.lstProfiles.Text(), "Cid");
    EXPECT_TRUE(form.lstProfiles.HasFocus());
    toolkit.OnModal<frmNewProfile>("frmNewProfile", [](auto& add) { add.CancelButton.UserClicks(); });
    form.btnAdd.UserClicks();
    EXPECT_EQ(form.lstProfiles.Text(), "Cid") << "the list is read anew";

    form.lstProfiles.UserSelects(1);
    EXPECT_FALSE(form.btnSetDefault.Enabled());
    toolkit.OnModal<frmRenameProfile>("frmRenameProfile", [](auto& rename) {
        EXPECT_EQ(rename.txtName.SelText(), "Bob");
        rename.txtName.UserTypes("Zoë");
        rename.OKButton.UserClicks();
    });
    form.btnRename.UserClicks();
    EXPECT_EQ(form.lstProfiles.Text(), "Zoë (default)");
    EXPECT_TRUE(form.lstProfiles.HasFocus()) << "the next key is for the list";

    form.lstProfiles.UserSelects(0);
    bool told = false;
    form.DefaultChanged = [&] { told = true; };
    form.btnSetDefault.SetFocus();
    form.btnSetDefault.UserClicks();
    EXPECT_EQ(form.lstProfiles.Items().front(), "Ann (default)");
    EXPECT_EQ(form.lstProfiles.Selected(), 0);
    EXPECT_TRUE(told && form.lstProfiles.HasFocus()) << "the button that had the focus is disabled now";
    EXPECT_EQ(Setting("Profiles", "DefaultProfile"), "Ann");

    system.registry.SetClosed(Hive::CurrentUser, std::string{SettingsKey} + "\\Profiles");
    form.lstProfiles.UserSelects(1);
    toolkit.ExpectMessage(Text(173), Icon::Critical);
    form.btnSetDefault.UserClicks();
    EXPECT_EQ(form.lstProfiles.Items().front(), "Ann (default)");
    toolkit.ExpectMessage(Text(173), Icon::Critical);
    form.btnClose.UserClicks();
    EXPECT_FALSE(form.IsOpen()) << "nobody is locked in";
}

TEST_F(ProfileDialogsTest, DeletingAsksAndKeepsTheLastProfile)
{
    PutPicture("Bob", profiles::ImageKind::Logo, ".jpg", "logo");
    frmManageProfiles form{program, manager, operations};
    form.Realize();
    form.lstProfiles.UserSelects(1);
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        EXPECT_EQ(form.lstProfiles.Text(), "Bob (default)");
        toolkit.ExpectMessage(DeleteQuestion("Bob"), Icon::Question, answer);
        form.btnDelete.UserClicks();
    }
    EXPECT_EQ(form.lstProfiles.Items(), (Texts{"Ann (default)", "Größe"}));
    EXPECT_EQ(form.lstProfiles.Text(), "Größe") << "the next one";
    EXPECT_EQ(system.files.AllPaths(Images), Texts{});
    toolkit.ExpectMessage(DeleteQuestion("Größe"), Icon::Question, Answer::Yes);
    form.lstProfiles.SetFocus();
    form.UserPresses(ui::Plain(ui::KeyCode::Delete));
    EXPECT_EQ(form.lstProfiles.Text(), "Ann (default)") << "the one before, for want of a next one";
    toolkit.ExpectMessage(Text(214), Icon::Information);
    form.btnDelete.UserClicks();
    EXPECT_TRUE(manager.ProfileExists("Ann"));
}

TEST_F(ProfileDialogsTest, AProfileThatIsCalledLikeAMarkedOneIsNotTakenForIt)
{
    Put("Bob (default)", "FirstName", "another"); // no name that we would give
    PutPicture("Bob", profiles::ImageKind::Logo, ".jpg", "logo");
    frmManageProfiles form{program, manager, operations};
    form.Realize();
    ASSERT_EQ(form.lstProfiles.Items(), (Texts{"Ann", "Bob (default)", "Bob (default)", "Größe"}));
    form.lstProfiles.UserSelects(2);
    toolkit.ExpectMessage(DeleteQuestion("Bob (default)"), Icon::Question, Answer::Yes);
    form.btnDelete.UserClicks();
    EXPECT_EQ(form.lstProfiles.Items(), (Texts{"Ann", "Bob (default)", "Größe"}));
    EXPECT_EQ(At("Bob", "FirstName") + Contents(Picture("Bob", "Logo.jpg")), "Boblogo");
}

TEST_F(ProfileDialogsTest, ManagingStartsWithTheWantedProfileAndHandsItOnToBeEdited)
{
    for (const bool byKey : {true, false}) {
        frmManageProfiles form{program, manager, operations, "Größe"};
        form.Realize();
        EXPECT_EQ(form.lstProfiles.Text(), "Größe") << "not the one in use";
        if (byKey) {
            form.lstProfiles.SetFocus();
            EXPECT_EQ(form.DefaultButton(), &form.btnEdit);
            form.btnEdit.UserClicks();
        } else {
            form.lstProfiles.UserActivates(1);
        }
        EXPECT_FALSE(form.IsOpen());
        EXPECT_EQ(form.ToEdit(), byKey ? "Größe" : "Bob");
    }
    profiles::ProfileDialogs dialogs{program, {}};
    toolkit.OnModal<frmManageProfiles>("frmManageProfiles", [](auto& form) { form.lstProfiles.UserActivates(2); });
    toolkit.OnModal<profiles::EnterSenderInformationForm>("EnterSenderInformationForm", [](auto& form) {
        EXPECT_EQ(form.SenderFirstNameText.Text(), "Größe");
        form.CancelButton.UserClicks();
    });
    dialogs.ManageProfiles();
}

TEST_F(ProfileDialogsTest, ARefusedNameLeavesTheDialogOpenWithTheFocusInTheNameBox)
{
    frmNewProfile add{program, manager, operations};
    frmRenameProfile rename{program, manager, operations, "Ann"};
    add.Realize();
    rename.Realize();
    EXPECT_EQ(add.lstCopyFrom.Items(), (Texts{"blank profile", "Ann", "Bob (default)", "Größe"}));
    EXPECT_EQ(add.lstCopyFrom.Selected(), 0);
    const struct {
        const char* typed;
        std::string message;
        const char* left;
    } rows[] = {{"a/b", Text(134) + "\r\n\r\n" + Text(587) + "\r\n\\ / : * ? \" < > |", "a/b"},
                {"-Ann", Text(135), "-Ann"},
                {" gRÖßE ", Text(136), ""}};
    const auto before = system.registry.Snapshot();
    const auto isRefused = [&](ui::Form& form, ui::TextBox& box, ui::Button& ok, const auto& row) {
        SCOPED_TRACE(row.typed);
        box.SetText(row.typed);
        ok.SetFocus();
        toolkit.ExpectMessage(row.message, Icon::Information);
        ok.UserClicks();
        EXPECT_TRUE(form.IsOpen() && box.HasFocus());
        EXPECT_EQ(box.Text(), row.left);
        EXPECT_EQ(box.SelText(), row.left);
    };
    for (const auto& row : rows) {
        isRefused(add, add.Description, add.OKButton, row);
        isRefused(rename, rename.txtName, rename.OKButton, row);
    }
    EXPECT_EQ(system.registry.Snapshot(), before);
}

} // namespace
} // namespace tests
