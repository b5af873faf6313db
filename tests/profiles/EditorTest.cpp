// The editor of one profile's fields.
#include "tests/profiles/ProfilesFixture.h"

#include "profiles/EnterSenderInformationForm.h"
#include "profiles/frmManageProfiles.h"
#include "profiles/frmNewProfile.h"
#include "profiles/frmRenameProfile.h"

#include <functional>
#include <optional>

namespace tests {
namespace {

using profiles::EnterSenderInformationForm;
using profiles::Field;
using profiles::frmManageProfiles;
using profiles::frmNewProfile;

class EditorTest : public ProfileTestBase {
protected:
    EditorTest()
    {
        Put("Ann", "FirstName", "Ann");
        Put("Bob", "FirstName", "Bob");
        PutSetting("Profiles", "DefaultProfile", "Bob");
        PutSetting("Profiles", "CurrentProfileToUse", "Ann");
    }
    EnterSenderInformationForm& Open()
    {
        editor.emplace(program, manager, images, operations, [this](std::string_view topic) { helpAsked = topic; });
        editor->Realize();
        return *editor;
    }
    /// What the user does in the dialog that manages the profiles, before closing it.
    void Manage(const std::function<void(frmManageProfiles&)>& act)
    {
        toolkit.OnModal<frmManageProfiles>("frmManageProfiles", [act](auto& manage) {
            act(manage);
            manage.btnClose.UserClicks();
        });
        editor->btnManageProfiles.UserClicks();
    }
    /// The next new profile gets this name and copies that row; "" cancels its dialog.
    void NameNew(const std::string& name, int copied = 0)
    {
        toolkit.OnModal<frmNewProfile>("frmNewProfile", [name, copied](auto& add) {
            add.Description.UserTypes(name);
            add.lstCopyFrom.UserSelects(copied);
            (name.empty() ? add.CancelButton : add.OKButton).UserClicks();
        });
    }
    std::string EmptyDefaultQuestion(const std::string& name) const
    {
        return Text(233) + "'" + name + "'" + Text(234) + "\r\n" + Text(235) + "\r\n" + Text(236);
    }

    std::optional<EnterSenderInformationForm> editor;
    std::string helpAsked;
};

TEST_F(EditorTest, EveryFieldEditsItsOwnValue)
{
    auto& form = Open();
    const std::pair<ui::TextBox*, const char*> rows[] = {
        // clang-format off
        {&form.SenderFirstNameText, "FirstName"}, {&form.SenderLastNameText, "LastName"},
        {&form.SenderTitleText, "Title"}, {&form.SenderCompanyText, "CompanyName"},
        {&form.SenderPhoneOfficeText, "PhoneOffice"}, {&form.SenderPhoneHomeText, "PhoneHome"},
        {&form.SenderPhoneCellText, "PhoneCell"}, {&form.SenderPhoneFaxText, "PhoneFax"},
        {&form.SenderPhoneTollFreeText, "PhoneTollFree"}, {&form.SenderPagerText, "Pager No"},
        {&form.SenderAddress1Text, "AddressLine1"}, {&form.SenderAddress2Text, "AddressLine2"},
        {&form.SenderCityText, "City"}, {&form.SenderCountryText, "Country"}, {&form.SenderStateText, "State"},
        {&form.SenderZipText, "ZipCode"}, {&form.SenderEmailAddressText, "EmailAddress"},
        {&form.SenderWebsiteText, "Website"}, {&form.SenderDisclaimerLine1Text, "DisclaimerLine1"},
        {&form.SenderDisclaimerLine2Text, "DisclaimerLine2"},
        // clang-format on
    };
    ASSERT_EQ(std::size(rows), profiles::FieldCount);
    Texts typed;
    for (const auto& [box, value] : rows) {
        typed.push_back("text" + std::string(typed.size(), 'x')); // letters, which every field takes
        box->SetText(" " + typed.back() + " ");
    }
    form.ProfileCombo.UserSelects(1);
    EXPECT_EQ(form.SenderFirstNameText.Text(), "Bob");
    EXPECT_EQ(form.SenderLastNameText.Text(), "");
    for (std::size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(At("Ann", rows[i].second), typed[i]) << rows[i].second;
    form.ProfileCombo.UserSelects(0);
    for (std::size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(rows[i].first->Text(), typed[i]) << rows[i].second;
}

TEST_F(EditorTest, OpensOnTheProfileInUseElseOnTheDefault)
{
    for (const auto& [stored, shown] : {std::pair{"Ann", "Ann"}, {"", "Bob (default)"}, {"Gone", "Bob (default)"}}) {
        PutSetting("Profiles", "CurrentProfileToUse", stored);
        EXPECT_EQ(Open().ProfileCombo.Text(), shown) << stored;
    }
    PutSetting("Profiles", "DefaultProfile", "Gone, too");
    EXPECT_EQ(Open().ProfileCombo.Text(), "Ann");
    EXPECT_EQ(editor->SenderFirstNameText.Text(), "Ann");
}

TEST_F(EditorTest, OkStoresEverything)
{
    Open().chkAutoApply.UserClicks();
    editor->SenderCityText.UserTypes("Oslo");
    editor->OKButton.UserClicks();
    EXPECT_FALSE(editor->IsOpen());
    EXPECT_EQ(At("Ann", "City"), "Oslo");
    for (const char* key : {"PromptForProfile", "FirstRun", "ShowAutoComplete"})
        EXPECT_EQ(Setting("Profiles", key), "0") << key;
    auto& form = Open();
    EXPECT_TRUE(form.chkAutoApply.Checked());
    form.chkAutoComplete.UserClicks();
    EXPECT_EQ(Setting("Profiles", "ShowAutoComplete"), "1") << "at once";
    EXPECT_TRUE(form.UserPresses(ui::Plain(ui::KeyCode::F1)));
    EXPECT_EQ(helpAsked, "Profile HTML");
    form.ProfileCombo.UserSelects(1);
    form.OKButton.UserClicks();
    EXPECT_EQ(Setting("Profiles", "CurrentProfileToUse"), "Bob") << "without the mark of the default";
    EXPECT_TRUE(Open().chkAutoComplete.Checked());
}

TEST_F(EditorTest, WhatWasTypedOutlivesTheEndOfTheSession)
{
    Open().SessionEnds();
    editor->SenderCityText.UserTypes("Oslo");
    editor->SessionEnds();
    EXPECT_EQ(At("Ann", "City"), "Oslo");
    // Without a profile the fields make one.
    for (const auto& [typed, name] : {std::pair{"Eve", "Eve"}, {"?", "Profile"}}) {
        for (manager.ListProfiles(); const std::string& profile : std::vector{manager.Names()})
            manager.DeleteProfile(profile);
        Open().SenderFirstNameText.UserTypes(typed);
        editor->SessionEnds();
        EXPECT_EQ(At(name, "FirstName"), typed);
    }
}

TEST_F(EditorTest, LeavingWithoutOkAsksOnceAboutWhatWasTypedAndOnlyThen)
{
    Open().UserCloses();
    EXPECT_FALSE(editor->IsOpen()) << "nothing was typed";
    for (const Answer answer : {Answer::Cancel, Answer::No, Answer::Yes}) {
        auto& form = Open();
        form.chkAutoApply.UserClicks();
        form.SenderCityText.UserTypes("Oslo");
        toolkit.ExpectMessage(Text(581), Icon::Question, answer);
        if (answer == Answer::No)
            form.UserCloses();
        else
            form.CancelButton.UserClicks();
        EXPECT_EQ(form.IsOpen(), answer == Answer::Cancel);
        EXPECT_EQ(At("Ann", "City"), answer == Answer::Yes ? "Oslo" : "(none)");
        EXPECT_EQ(Setting("Profiles", "PromptForProfile"), answer == Answer::Yes ? "0" : "(none)");
    }
    auto& form = Open();
    form.SenderCityText.UserTypes("X");
    form.ProfileCombo.UserSelects(1); // stored by that
    form.SenderPagerText.UserTypes("555*1234");
    toolkit.ExpectMessage(Text(581), Icon::Question, Answer::Yes);
    toolkit.ExpectMessage(Text(106), Icon::Information);
    form.UserCloses();
    EXPECT_TRUE(form.IsOpen() && form.SenderPagerText.HasFocus()) << "what is stored has to be right";
    form.UserCloses();
    EXPECT_FALSE(form.IsOpen()) << "the refused number was cleared";
}

TEST_F(EditorTest, OkAsksAboutADefaultProfileWithoutData)
{
    Put("Bob", "FirstName", "");
    Put("Bob", "Pager No", "555");
    for (const Answer answer : {Answer::No, Answer::Yes}) {
        toolkit.ExpectMessage(EmptyDefaultQuestion("Bob"), Icon::Question, answer);
        if (answer == Answer::Yes)
            toolkit.OnModal<frmManageProfiles>("frmManageProfiles", [&](auto& form) {
                form.btnSetDefault.UserClicks();
                form.btnClose.UserClicks();
            });
        Open().OKButton.UserClicks();
        EXPECT_FALSE(editor->IsOpen());
        EXPECT_FALSE(HasSetting("Profiles", "FirstRun"));
        EXPECT_EQ(Setting("Profiles", "DefaultProfile"), answer == Answer::Yes ? "Ann" : "Bob");
    }
    Open().OKButton.UserClicks();
    EXPECT_EQ(Setting("Profiles", "FirstRun"), "0");
}

TEST_F(EditorTest, NobodyIsAskedAboutAProfileWithoutAName)
{
    PutSetting("Profiles", "DefaultProfile", "");
    Open().OKButton.UserClicks();
    EXPECT_EQ(Setting("Profiles", "DefaultProfile"), "Ann") << "the one that is shown";
    PutSetting("Profiles", "DefaultProfile", "");
    system.registry.RemoveKey(Hive::CurrentUser, profiles::ProfilesKey);
    Open().OKButton.UserClicks();
    EXPECT_FALSE(editor->IsOpen());
}

TEST_F(EditorTest, ManagingKeepsTheEditsAndMovesTheMarkInTheOpenCombo)
{
    auto& form = Open();
    form.SenderCityText.UserTypes("Oslo");
    form.chkAutoApply.UserClicks();
    Manage([&](auto& manage) {
        EXPECT_TRUE(manage.chkAutoApply.Checked());
        manage.btnSetDefault.UserClicks();
        EXPECT_EQ(form.ProfileCombo.Items(), (Texts{"Ann (default)", "Bob"}));
        EXPECT_EQ(form.ProfileCombo.Selected(), 0);
        manage.lstProfiles.UserSelects(1);
        toolkit.OnModal<profiles::frmRenameProfile>("frmRenameProfile", [](auto& rename) {
            rename.txtName.UserTypes("Bo");
            rename.OKButton.UserClicks();
        });
        manage.btnRename.UserClicks();
    });
    EXPECT_EQ(At("Ann", "City"), "Oslo");
    EXPECT_EQ(form.ProfileCombo.Items(), (Texts{"Ann (default)", "Bo"}));
    EXPECT_EQ(form.ProfileCombo.Text() + " " + form.SenderCityText.Text(), "Ann (default) Oslo");
    EXPECT_TRUE(form.chkAutoApply.Checked());

    // The profile that is shown goes away.
    Manage([&](auto& manage) {
        manage.chkAutoApply.UserClicks();
        manage.lstProfiles.UserSelects(0);
        toolkit.ExpectMessage(Text(215) + "\r\n\r\nAnn", Icon::Question, Answer::Yes);
        manage.btnDelete.UserClicks();
    });
    EXPECT_FALSE(form.chkAutoApply.Checked()) << "stored when the dialog was closed";
    EXPECT_EQ(form.ProfileCombo.Text() + " " + form.SenderFirstNameText.Text(), "Bo (default) Bob");
    form.ProfileCombo.UserSelects(-1);
    EXPECT_FALSE(manager.ProfileExists("Ann")) << "nothing may bring the deleted profile back";
}

TEST_F(EditorTest, ManagingShowsTheProfileThatIsEditedAndEditsTheChosenOne)
{
    auto& form = Open();
    form.ProfileCombo.UserSelects(1);
    toolkit.OnModal<frmManageProfiles>("frmManageProfiles", [](auto& manage) {
        EXPECT_EQ(manage.lstProfiles.Text(), "Bob (default)");
        manage.lstProfiles.UserActivates(0);
    });
    form.btnManageProfiles.UserClicks();
    EXPECT_EQ(form.ProfileCombo.Text() + " " + form.SenderFirstNameText.Text(), "Ann Ann");
    EXPECT_TRUE(form.SenderFirstNameText.HasFocus());

    Put("Bob", "FirstName", "");
    toolkit.ExpectMessage(EmptyDefaultQuestion("Bob"), Icon::Question, Answer::Yes);
    toolkit.OnModal<frmManageProfiles>("frmManageProfiles", [](auto& manage) { manage.lstProfiles.UserActivates(1); });
    form.OKButton.UserClicks();
    EXPECT_TRUE(form.IsOpen()) << "the empty profile can be filled now";
    EXPECT_EQ(form.ProfileCombo.Text(), "Bob (default)");
}

TEST_F(EditorTest, AddingSavesTheEditsAndShowsTheNewProfile)
{
    auto& form = Open();
    form.SenderCityText.UserTypes("Oslo");
    form.chkAutoApply.UserClicks();
    for (const char* name : {"", "Cid"}) {
        NameNew(name, 1);
        form.btnAddProfile.UserClicks();
        EXPECT_EQ(form.ProfileCombo.Text(), *name ? name : "Ann");
        EXPECT_EQ(form.SenderCityText.Text(), "Oslo");
        EXPECT_EQ(At("Ann", "City"), *name ? "Oslo" : "(none)") << "a cancelled dialog stores nothing";
        EXPECT_TRUE(form.chkAutoApply.Checked());
    }
    EXPECT_EQ(Setting("Profiles", "CurrentProfileToUse"), "Cid");
    EXPECT_EQ(At("Cid", "City"), "Oslo") << "the copy has the edits of a moment ago";
}

TEST_F(EditorTest, WithoutAnyProfileWhatIsTypedGoesIntoANewEmptyOneHoweverItIsMade)
{
    for (const bool managing : {false, true}) {
        for (const char* name : {"Ann", "Bob", "Home"})
            (void)system.registry.DeleteKey(Hive::CurrentUser, profiles::ProfileKey(name));
        PutSetting("Profiles", "DefaultProfile", "");
        auto& form = Open();
        EXPECT_TRUE(!form.cmdImages.Enabled() && form.SenderFirstNameText.HasFocus());
        form.SenderFirstNameText.UserTypes("Zoë");
        form.SenderLastNameText.UserTypes(std::string(300, 'A'));
        toolkit.OnModal<frmNewProfile>("frmNewProfile", [](auto& adding) {
            EXPECT_TRUE(adding.lblKept.Visible());
            EXPECT_EQ(adding.Description.SelText(), "Zoë " + std::string(251, 'A')) << "as long as a name can be";
            adding.CancelButton.UserClicks();
        });
        form.OKButton.UserClicks();
        EXPECT_TRUE(form.IsOpen());
        EXPECT_EQ(form.SenderFirstNameText.Text(), "Zoë");
        NameNew("Home");
        if (managing)
            Manage([](auto& manage) { manage.btnAdd.UserClicks(); });
        form.OKButton.UserClicks();
        EXPECT_FALSE(form.IsOpen());
        EXPECT_EQ(At("Home", "FirstName"), "Zoë");
        EXPECT_EQ(Setting("Profiles", "DefaultProfile") + Setting("Profiles", "CurrentProfileToUse"), "HomeHome");
    }
}

TEST_F(EditorTest, ProfilesThatCannotBeReadAtFirstLoseNothing)
{
    system.registry.SetClosed(Hive::CurrentUser, profiles::ProfilesKey);
    toolkit.ExpectMessage(Text(174), Icon::None);
    Open().OKButton.UserClicks();
    EXPECT_EQ(Setting("Profiles", "CurrentProfileToUse"), "Ann");
    toolkit.ExpectMessage(Text(174), Icon::None);
    auto& form = Open();
    system.registry.SetClosed(Hive::CurrentUser, profiles::ProfilesKey, {});
    form.SenderCityText.UserTypes("Oslo");
    NameNew("Cid", 1);
    form.btnAddProfile.UserClicks();
    EXPECT_EQ(form.SenderFirstNameText.Text() + form.SenderCityText.Text(), "Ann") << "the copy is not written over";
}

TEST_F(EditorTest, AProfileThatNobodyMayWriteIsLeftUnlessSomethingWasTyped)
{
    auto& form = Open();
    system.faults.OnCall = [this](std::string_view call, std::string_view) {
        if (call == "Registry.Set")
            system.faults.FailAt(1, platform::error::AccessDenied);
    };
    toolkit.ExpectMessage(Text(173), Icon::Critical);
    form.ProfileCombo.UserSelects(1);
    EXPECT_EQ(form.SenderFirstNameText.Text(), "Bob");
    form.SenderCityText.UserTypes("Oslo");
    toolkit.ExpectMessage(Text(173), Icon::Critical);
    form.ProfileCombo.UserSelects(0);
    EXPECT_EQ(form.SenderFirstNameText.Text(), "Bob");
}

TEST_F(EditorTest, OneFormatFlagServesAllThePhoneFieldsHoweverTheyAreEdited)
{
    auto& form = Open();
    auto& office = form.SenderPhoneOfficeText;
    auto& cell = form.SenderPhoneCellText;
    const auto leave = [&](ui::TextBox& box) {
        box.UserFocuses();
        form.SenderCityText.UserFocuses();
        return box.Text();
    };
    office.UserTypes("5551234");
    EXPECT_EQ(leave(office), "555-1234");
    form.SenderPhoneHomeText.UserTypes("5551234"); // the first key in an empty field
    EXPECT_EQ(leave(form.SenderPhoneHomeText), "555-1234");
    cell.UserPastes("18005551234");
    EXPECT_EQ(leave(cell), "1-800-555-1234");
    cell.UserSelects(0, 5);
    cell.UserPastes("9");
    cell.SetText("8005551234");
    EXPECT_EQ(leave(cell), "8005551234") << "over a part of it is no new number";
    cell.SelectAll();
    cell.UserReleasesMouse();
    EXPECT_EQ(leave(cell), "(800) 555-1234");
    office.SelectAll();
    office.UserTypes("\b"); // emptied: the turn of whichever field is left next
    form.SenderPagerText.SetText("5551234");
    EXPECT_EQ(leave(form.SenderPagerText), "555-1234");
    // Filling the fields by code is no emptying.
    form.ProfileCombo.UserSelects(1);
    office.SetText("5551234");
    EXPECT_EQ(leave(office), "5551234");
}

TEST_F(EditorTest, ARefusedNumberIsClearedAndHoldsTheFocusAgainstAllButCancel)
{
    auto& form = Open();
    const auto isRefused = [&](ui::TextBox& box, const std::function<void()>& leave) {
        box.UserTypes("555*1234");
        toolkit.ExpectMessage(Text(106), Icon::Information);
        leave();
        EXPECT_TRUE(form.IsOpen() && box.HasFocus() && box.Text().empty());
    };
    for (const Field field : {Field::PhoneOffice, Field::PhoneHome, Field::PhoneFax, Field::PhoneCell,
                              Field::PhoneTollFree, Field::Pager}) {
        isRefused(form.BoxOf(field), [&] { form.OKButton.UserClicks(); }); // as Enter does, the focus stays
        isRefused(form.BoxOf(field), [&] { form.SenderCityText.UserFocuses(); });
    }
    isRefused(form.SenderPagerText, [&] {
        form.CancelButton.UserFocuses();
        EXPECT_TRUE(form.CancelButton.HasFocus());
        form.cmdHelp.UserFocuses();
    });
    form.SenderPagerText.UserTypes("555*1234");
    form.CancelButton.UserFocuses();
    toolkit.ExpectMessage(Text(581), Icon::Question, Answer::No);
    form.CancelButton.UserClicks();
    EXPECT_FALSE(form.IsOpen());
    Open().SenderPagerText.UserTypes("5551234");
    editor->OKButton.UserClicks();
    EXPECT_EQ(At("Ann", "Pager No"), "555-1234") << "formatted although the focus was never moved";
}

TEST_F(EditorTest, StateAndZipRefuseWhatIsTypedOrPastedNotWhatIsStored)
{
    Put("Ann", "State", "N.Y.");
    Put("Ann", "ZipCode", "#1");
    auto& form = Open();
    EXPECT_EQ(form.SenderStateText.Text() + form.SenderZipText.Text(), "N.Y.#1");
    form.ProfileCombo.UserSelects(1);
    EXPECT_EQ(At("Ann", "State") + At("Ann", "ZipCode"), "N.Y.#1");
    form.SenderZipText.UserPastes("12345-6789");
    EXPECT_EQ(form.SenderZipText.Text(), "12345-6789");
    toolkit.ExpectMessage(Text(131), Icon::Information);
    form.SenderZipText.UserPastes("1_2");
    EXPECT_EQ(form.SenderZipText.Text(), "");
    toolkit.ExpectMessage(Text(107), Icon::Information);
    form.SenderStateText.UserTypes("N.Y");
    EXPECT_EQ(form.SenderStateText.Text(), "Y") << "cleared at the full stop, typed on";
    EXPECT_TRUE(form.SenderStateText.HasFocus());
}

TEST_F(EditorTest, WhatCannotBeReadIsNotOverwrittenAlsoAfterAnotherProfileWasLoaded)
{
    const platform::RegistryValue odd{platform::ValueType::Binary, "theirs"};
    system.registry.Put(Hive::CurrentUser, profiles::ProfileKey("Ann"), "City", odd);
    auto& form = Open();
    Manage([&](auto&) { manager.LoadProfile("Bob"); });
    manager.LoadProfile("Bob"); // as the pictures' dialog may
    form.ProfileCombo.UserSelects(1);
    EXPECT_EQ(system.registry.Query(Hive::CurrentUser, profiles::ProfileKey("Ann"), "City"), odd);
    EXPECT_EQ(At("Bob", "City"), "(none)");
}

} // namespace
} // namespace tests
