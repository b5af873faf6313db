#include "profiles/EnterSenderInformationForm.h"

#include "app/base/Captions.h"
#include "app/base/Mnemonics.h"
#include "platform/Scoped.h"
#include "platform/Text.h"
#include "profiles/FieldChecks.h"
#include "profiles/StringId.h"
#include "profiles/frmImages.h"
#include "profiles/frmManageProfiles.h"
#include "profiles/frmNewProfile.h"

#include <algorithm>
#include <utility>

namespace profiles {
namespace {

// All lengths in twips.
constexpr ui::Size TextWidth{2700, 0};
constexpr ui::Size PhoneWidth{2400, 0}; ///< "+49 (0) 1234 56789-012"
constexpr int ColumnGap = 240;
constexpr ui::Size SectionGap{0, 45};

} // namespace

EnterSenderInformationForm::EnterSenderInformationForm(app::Program& program, ProfileManager& profiles,
                                                       ProfileImages& images, ProfileOperations& operations,
                                                       std::function<void(std::string_view topic)> openHelp,
                                                       std::string_view wanted)
    : Form{program.toolkit, "EnterSenderInformationForm", Style::Dialog, ui::Tag{417}}, program{program},
      profiles{profiles}, images{images}, operations{operations}, openHelp{std::move(openHelp)},
      phones{program.platform.locale.DecimalSeparator()}, boxes{&SenderFirstNameText,
                                                                &SenderLastNameText,
                                                                &SenderTitleText,
                                                                &SenderCompanyText,
                                                                &SenderAddress1Text,
                                                                &SenderAddress2Text,
                                                                &SenderCityText,
                                                                &SenderStateText,
                                                                &SenderZipText,
                                                                &SenderCountryText,
                                                                &SenderPhoneOfficeText,
                                                                &SenderPhoneHomeText,
                                                                &SenderPhoneFaxText,
                                                                &SenderPhoneCellText,
                                                                &SenderPhoneTollFreeText,
                                                                &SenderPagerText,
                                                                &SenderEmailAddressText,
                                                                &SenderWebsiteText,
                                                                &SenderDisclaimerLine1Text,
                                                                &SenderDisclaimerLine2Text}
{
    // What the labels leave unsaid: theirs are short, and the disclaimers have none.
    const std::pair<ui::TextBox*, const char*> toolTips[] = {
        {&SenderPhoneOfficeText, "590"},     {&SenderPhoneHomeText, "591"},      {&SenderPhoneCellText, "592"},
        {&SenderPhoneFaxText, "593"},        {&SenderPhoneTollFreeText, "594"},  {&SenderPagerText, "595"},
        {&SenderDisclaimerLine1Text, "583"}, {&SenderDisclaimerLine2Text, "589"}};
    for (const auto& [box, number] : toolTips)
        box->ToolTipText = number;
    LoadCaptions(*this, program.strings);
    app::AssignMnemonics(*this);
    LayOut();
    WireFields();
    WireButtons();
    FillProfiles(wanted.empty() ? profiles.GetCurrentProfile() : std::string{wanted});
    LoadFields();
    chkAutoApply.SetChecked(profiles.AppliesDefault());
    chkAutoComplete.SetChecked(program.settings.Text(ProfileManager::Section, "ShowAutoComplete") == "1");
    // In the combo box, which comes first in the order, every letter typed would choose another profile.
    SenderFirstNameText.SetFocus();
}

void EnterSenderInformationForm::LayOut()
{
    const auto field = [](ui::Label& label, ui::TextBox& box, ui::Size least = TextWidth) {
        return ui::Row(label, ui::Fill(ui::Least(box, least)));
    };
    const auto phone = [&](ui::Label& label, ui::TextBox& box) { return field(label, box, PhoneWidth); };
    ui::Cell fields =
        ui::Row(ui::Grid(field(lblFirstName, SenderFirstNameText), field(lblLastName, SenderLastNameText),
                         field(lblTitle, SenderTitleText), field(lblCompany, SenderCompanyText),
                         field(lblEmail, SenderEmailAddressText), field(lblWebsite, SenderWebsiteText)),
                ui::Grid(phone(lblPhoneOffice, SenderPhoneOfficeText), phone(lblPhoneHome, SenderPhoneHomeText),
                         phone(lblPhoneCell, SenderPhoneCellText), phone(lblPhoneFax, SenderPhoneFaxText),
                         phone(lblPhoneTollFree, SenderPhoneTollFreeText), phone(lblPager, SenderPagerText)),
                ui::Fill(ui::Grid(field(lblAddress1, SenderAddress1Text), field(lblAddress2, SenderAddress2Text),
                                  field(lblCity, SenderCityText), field(lblCountry, SenderCountryText),
                                  field(lblState, SenderStateText), field(lblZip, SenderZipText))));
    fields.gap = ColumnGap;
    ui::Cell options = ui::Row(chkAutoApply, chkAutoComplete);
    options.gap = ColumnGap;
    const ui::Cell gap = ui::Least(ui::Cell{}, SectionGap);
    Layout(Column(ui::Row(lblProfile, ui::Fill(ProfileCombo), btnManageProfiles, btnAddProfile), options, gap, fields,
                  gap, SenderDisclaimerLine1Text, SenderDisclaimerLine2Text, gap,
                  ui::Row(cmdImages, ui::Fill(ui::Buttons(OKButton, CancelButton, cmdHelp)))));
}

void EnterSenderInformationForm::WireFields()
{
    for (ui::TextBox* phone : Phones())
        WirePhone(*phone);
    SenderStateText.Change = [this] {
        Check(SenderStateText, IsStateText(SenderStateText.Text()), str::StateNotAlphabetical);
    };
    SenderZipText.Change = [this] {
        Check(SenderZipText, IsZipText(SenderZipText.Text()), str::ZipWithSpecialCharacters);
    };
    ProfileCombo.Click = [this] { ProfileCombo_Click(); };
}

void EnterSenderInformationForm::WireButtons()
{
    btnManageProfiles.Click = [this] { btnManageProfiles_Click(); };
    btnAddProfile.Click = [this] { AddProfile(); };
    cmdImages.Click = [this] {
        frmImages{program, profiles, images, selected, [this] { openHelp("ProfileImageHelp"); }}.ShowModal();
    };
    chkAutoComplete.Click = [this] { SaveAutoComplete(); };
    OKButton.Click = [this] { OKButton_Click(); };
    CancelButton.Click = [this] { Close(); };
    CancelButton.LostFocus = [this] {
        if (ui::TextBox* box = std::exchange(unchecked, nullptr); box != nullptr && !box->HasFocus())
            LeavePhone(*box);
    };
    cmdHelp.Click = [this] { openHelp("Profile HTML"); };
    KeyDown = [this](const ui::Key& key) {
        const bool isHelp = key == ui::Plain(ui::KeyCode::F1);
        if (isHelp)
            cmdHelp.UserClicks();
        return isHelp;
    };
    Closing = [this] { return MayClose(); };
    SessionEnds = [this] { KeepEdits(); };
}

std::span<ui::TextBox* const> EnterSenderInformationForm::Phones() const
{
    constexpr auto first = static_cast<std::size_t>(Field::PhoneOffice);
    constexpr auto last = static_cast<std::size_t>(Field::Pager);
    return std::span{boxes}.subspan(first, last - first + 1);
}

void EnterSenderInformationForm::WirePhone(ui::TextBox& box)
{
    const auto beforeOvertyping = [this, &box] { phones.BeforeOvertyping(box.SelText(), box.Text()); };
    box.KeyDown = beforeOvertyping;
    box.Pasting = beforeOvertyping;
    box.MouseUp = beforeOvertyping;
    box.Change = [this, &box] {
        if (!byCode)
            phones.TextChanged(box.Text());
    };
    box.LostFocus = [this, &box] {
        if (CancelButton.HasFocus())
            unchecked = &box;
        else
            LeavePhone(box);
    };
}

bool EnterSenderInformationForm::LeavePhone(ui::TextBox& box)
{
    const PhoneFormatter::Outcome outcome = phones.Leave(box.Text());
    if (outcome.refused) {
        program.messages.Inform(str::InvalidNumber);
        Put(box, "");
        box.SetFocus();
    } else if (outcome.text) {
        Put(box, *outcome.text);
    }
    return !outcome.refused;
}

void EnterSenderInformationForm::Check(ui::TextBox& box, bool isAccepted, std::uint16_t message)
{
    if (byCode || isAccepted)
        return;
    program.messages.Inform(message);
    Put(box, "");
}

void EnterSenderInformationForm::Put(ui::TextBox& box, std::string text)
{
    const platform::Scoped now{byCode, true};
    box.SetText(std::move(text));
}

void EnterSenderInformationForm::FillProfiles(std::string_view wanted)
{
    list.FillProfileList();
    if (!list.Select(wanted) && !list.Select(profiles.GetDefaultProfile()))
        ProfileCombo.Select(0);
    selected = list.Selected();
    cmdImages.SetEnabled(!selected.empty());
}

void EnterSenderInformationForm::LoadFields()
{
    profiles.LoadProfile(selected);
    unread = profiles.Current.unread;
    stored = profiles.Current.texts;
    for (std::size_t i = 0; i < FieldCount; ++i)
        Put(*boxes[i], stored[i]);
}

bool EnterSenderInformationForm::SaveProfileToRegistry(const std::string& name)
{
    for (std::size_t i = 0; i < FieldCount; ++i)
        profiles.Current.texts[i] = platform::text::Trimmed(boxes[i]->Text());
    profiles.Current.unread = unread;
    const bool saved = profiles.SaveProfileText(name);
    if (saved && !name.empty())
        stored = profiles.Current.texts;
    return saved;
}

bool EnterSenderInformationForm::HasText() const
{
    return std::ranges::any_of(boxes, [](const ui::TextBox* box) { return !box->Text().empty(); });
}

bool EnterSenderInformationForm::HasEdits() const
{
    return !std::ranges::equal(boxes, stored, [](const ui::TextBox* box, const std::string& text) {
        return platform::text::Trimmed(box->Text()) == platform::text::Trimmed(text);
    });
}

bool EnterSenderInformationForm::MayClose()
{
    if (done || !HasEdits())
        return true;
    switch (program.messages.AskOrCancel(program.Text(str::SaveChanges))) {
    case ui::Answer::Yes:
        return Store();
    case ui::Answer::No:
        return true;
    default:
        return false;
    }
}

void EnterSenderInformationForm::KeepEdits()
{
    if (done || !HasEdits())
        return;
    std::string name = selected;
    if (name.empty()) {
        name = OfferedName();
        if (profiles.ValidateProfileName(name))
            name = "Profile";
        if (profiles.ProfileExists(name) || !operations.Create(name, ""))
            return;
    }
    SaveProfileToRegistry(name);
}

std::string EnterSenderInformationForm::OfferedName() const
{
    return platform::text::Trimmed(SenderFirstNameText.Text() + " " + SenderLastNameText.Text());
}

bool EnterSenderInformationForm::Saved(const platform::Result<>& result)
{
    if (!result)
        program.messages.Stop(str::SetValueFailed);
    return result.has_value();
}

bool EnterSenderInformationForm::MayLeave()
{
    return SaveProfileToRegistry(selected) || !HasEdits(); // one that nobody may write can still be left
}

void EnterSenderInformationForm::ProfileCombo_Click()
{
    if (!MayLeave()) {
        list.Select(selected);
        return;
    }
    selected = list.Selected();
    LoadFields();
}

bool EnterSenderInformationForm::AddProfile()
{
    // What was typed while there was no profile becomes the new one's.
    const bool keepsFields = selected.empty() && HasText();
    frmNewProfile form{program, profiles, operations};
    // The copy has the edits of a moment ago, and a dialog that is cancelled has stored nothing.
    form.Creating = [this] { return MayLeave(); };
    if (keepsFields)
        form.OfferTyped(OfferedName());
    form.ShowModal();
    if (form.Created().empty())
        return false;
    const bool saved = Saved(profiles.SetCurrentProfile(form.Created()));
    FillProfiles(form.Created());
    if (keepsFields && profiles.IsProfileEmpty(selected))
        return saved && SaveProfileToRegistry(selected);
    LoadFields();
    return saved;
}

void EnterSenderInformationForm::btnManageProfiles_Click()
{
    // That dialog has the same check box.
    if (!MayLeave() || !Saved(profiles.SetAppliesDefault(chkAutoApply.Checked())))
        return;
    const bool keepsFields = selected.empty() && HasText();
    const std::string before = selected;
    const std::string toEdit = ManageProfiles();
    ShowManaged(toEdit.empty() ? before : toEdit, keepsFields);
    if (!toEdit.empty())
        SenderFirstNameText.SetFocus();
}

void EnterSenderInformationForm::ShowManaged(const std::string& wanted, bool keepsFields)
{
    chkAutoApply.SetChecked(profiles.AppliesDefault());
    FillProfiles(profiles.ProfileExists(wanted) ? wanted : profiles.GetCurrentProfile());
    if (!keepsFields || !profiles.IsProfileEmpty(selected))
        LoadFields();
}

std::string EnterSenderInformationForm::ManageProfiles()
{
    frmManageProfiles form{program, profiles, operations, selected};
    form.DefaultChanged = [this] { list.ShowDefaultMark(); };
    form.ShowModal();
    return form.ToEdit();
}

void EnterSenderInformationForm::OKButton_Click()
{
    if (!Store())
        return;
    done = true;
    Close();
}

bool EnterSenderInformationForm::Store()
{
    // Enter presses the button without leaving the field.
    for (ui::TextBox* phone : Phones())
        if ((phone->HasFocus() || phone == unchecked) && !LeavePhone(*phone))
            return false;
    if (selected.empty() && HasText() && !AddProfile())
        return false;
    // Without a profile in sight, be it that the profiles could not be read, the choice made before stays.
    if (!selected.empty() && (!Saved(profiles.SetCurrentProfile(selected)) || !SaveProfileToRegistry(selected)))
        return false;
    // A profile that is there becomes the default one when there is none: nobody is asked about a profile without a
    // name.
    if (const auto hasNone = profiles.IsStoredDefault("");
        hasNone && *hasNone && !selected.empty() && !Saved(profiles.SetDefaultProfile(selected)))
        return false;
    const std::string defaultName = profiles.GetDefaultProfile();
    const bool isEmpty = profiles.IsProfileEmpty(defaultName);
    if (!Saved(profiles.SetAppliesDefault(chkAutoApply.Checked())))
        return false;
    if (!isEmpty && !Saved(program.settings.Save(ProfileManager::Section, "FirstRun", "0")))
        return false;
    if (isEmpty && !defaultName.empty() &&
        program.messages.Ask(program.Text(str::EmptyDefaultStart) + "'" + defaultName + "'" +
                             program.Text(str::EmptyDefaultEnd) + "\r\n" + program.Text(str::EmptyDefaultReason) +
                             "\r\n" + program.Text(str::EmptyDefaultQuestion)))
        if (const std::string toEdit = ManageProfiles(); !toEdit.empty()) {
            ShowManaged(toEdit, false);
            SenderFirstNameText.SetFocus();
            return false;
        }
    return SaveAutoComplete();
}

bool EnterSenderInformationForm::SaveAutoComplete()
{
    return Saved(
        program.settings.Save(ProfileManager::Section, "ShowAutoComplete", chkAutoComplete.Checked() ? "1" : "0"));
}

} // namespace profiles
