#pragma once

#include "app/base/Program.h"
#include "profiles/PhoneFormatter.h"
#include "profiles/ProfileImages.h"
#include "profiles/ProfileList.h"
#include "profiles/ProfileManager.h"
#include "profiles/ProfileOperations.h"
#include "ui/Button.h"
#include "ui/CheckBox.h"
#include "ui/ComboBox.h"
#include "ui/Form.h"
#include "ui/Label.h"
#include "ui/TextBox.h"

#include <array>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace profiles {

/// The "Edit Profile" dialog: the fields of the profile that is selected in its combo box. Switching to another profile
/// saves the one before.
class EnterSenderInformationForm final : public ui::Form {
public:
    /// `openHelp` opens the document of a help topic. `wanted` is the profile that is shown at first; "" for the one in
    /// use.
    EnterSenderInformationForm(app::Program& program, ProfileManager& profiles, ProfileImages& images,
                               ProfileOperations& operations, std::function<void(std::string_view topic)> openHelp,
                               std::string_view wanted = {});

    ui::Label lblProfile{*this, ui::Tag{418}};
    ui::ComboBox ProfileCombo{*this};
    ui::Button btnManageProfiles{*this, ui::Tag{419}};
    ui::Button btnAddProfile{*this, ui::Tag{420}};
    ui::CheckBox chkAutoApply{*this, ui::Tag{421}};
    ui::CheckBox chkAutoComplete{*this, ui::Tag{422}};
    ui::Label lblFirstName{*this, ui::Tag{423}};
    ui::TextBox SenderFirstNameText{*this};
    ui::Label lblLastName{*this, ui::Tag{424}};
    ui::TextBox SenderLastNameText{*this};
    ui::Label lblTitle{*this, ui::Tag{425}};
    ui::TextBox SenderTitleText{*this};
    ui::Label lblCompany{*this, ui::Tag{426}};
    ui::TextBox SenderCompanyText{*this};
    ui::Label lblEmail{*this, ui::Tag{439}};
    ui::TextBox SenderEmailAddressText{*this};
    ui::Label lblWebsite{*this, ui::Tag{440}};
    ui::TextBox SenderWebsiteText{*this};
    ui::Label lblPhoneOffice{*this, ui::Tag{427}};
    ui::TextBox SenderPhoneOfficeText{*this};
    ui::Label lblPhoneHome{*this, ui::Tag{428}};
    ui::TextBox SenderPhoneHomeText{*this};
    ui::Label lblPhoneCell{*this, ui::Tag{429}};
    ui::TextBox SenderPhoneCellText{*this};
    ui::Label lblPhoneFax{*this, ui::Tag{430}};
    ui::TextBox SenderPhoneFaxText{*this};
    ui::Label lblPhoneTollFree{*this, ui::Tag{431}};
    ui::TextBox SenderPhoneTollFreeText{*this};
    ui::Label lblPager{*this, ui::Tag{432}};
    ui::TextBox SenderPagerText{*this};
    ui::Label lblAddress1{*this, ui::Tag{433}};
    ui::TextBox SenderAddress1Text{*this};
    ui::Label lblAddress2{*this, ui::Tag{434}};
    ui::TextBox SenderAddress2Text{*this};
    ui::Label lblCity{*this, ui::Tag{435}};
    ui::TextBox SenderCityText{*this};
    ui::Label lblCountry{*this, ui::Tag{436}};
    ui::TextBox SenderCountryText{*this};
    ui::Label lblState{*this, ui::Tag{437}};
    ui::TextBox SenderStateText{*this};
    ui::Label lblZip{*this, ui::Tag{438}};
    ui::TextBox SenderZipText{*this};
    ui::TextBox SenderDisclaimerLine1Text{*this};
    ui::TextBox SenderDisclaimerLine2Text{*this};
    ui::Button cmdImages{*this, ui::Tag{441}};
    ui::Button OKButton{*this, ui::Tag{265}, ui::Role::Default};
    ui::Button CancelButton{*this, ui::Tag{231}, ui::Role::Cancel};
    ui::Button cmdHelp{*this, ui::Tag{442}};

    /// The text box of a profile's field.
    ui::TextBox& BoxOf(Field field) { return *boxes[static_cast<std::size_t>(field)]; }

private:
    app::Program& program;
    ProfileManager& profiles;
    ProfileImages& images;
    ProfileOperations& operations;
    ProfileList list{ProfileCombo, profiles};
    std::function<void(std::string_view topic)> openHelp;
    PhoneFormatter phones;
    /// In the order of Field.
    std::array<ui::TextBox*, FieldCount> boxes;
    std::array<bool, FieldCount> unread{};      ///< of the fields' profile: stored values that could not be read
    std::array<std::string, FieldCount> stored; ///< what the fields hold when nothing has been typed since
    ui::TextBox* unchecked{};                   ///< a phone field that was left for Cancel, which need not be right
    std::string selected;                       ///< the profile whose fields are shown; "" when there are no profiles
    bool done{};                                ///< OK has stored everything
    bool byCode{};                              ///< a text is changed by the program: the rules for input do not apply

    std::span<ui::TextBox* const> Phones() const;
    void LayOut();
    void WireFields();
    void WireButtons();
    void WirePhone(ui::TextBox& box);
    void Check(ui::TextBox& box, bool isAccepted, std::uint16_t message);
    void Put(ui::TextBox& box, std::string text);

    /// Shows the profiles anew; `wanted` is selected, or what comes nearest.
    void FillProfiles(std::string_view wanted);
    void LoadFields();
    /// Stores the fields; false, told, when that failed. Without a profile there is nowhere to store them.
    bool SaveProfileToRegistry(const std::string& name);
    bool HasText() const;
    /// Whether something was typed that is not stored.
    bool HasEdits() const;
    /// Stores the edits of the shown profile. False when some would be lost.
    bool MayLeave();
    /// Asks what is to become of what was typed. False when the dialog is to stay.
    bool MayClose();
    /// Stores what was typed where nobody can be asked any more, in a new profile when there is none.
    void KeepEdits();
    /// What a profile that is made of the typed fields may be called.
    std::string OfferedName() const;
    /// Tells when a setting could not be saved.
    bool Saved(const platform::Result<>& result);

    void ProfileCombo_Click();
    /// The focus leaves a phone field. False when its text is refused.
    bool LeavePhone(ui::TextBox& box);
    /// Lets the user add a profile and shows it; false when none was made.
    bool AddProfile();
    void btnManageProfiles_Click();
    /// The profile that the user wants to edit now; "" for none.
    std::string ManageProfiles();
    /// Brings the dialog in step with what was managed, with the profile `wanted` or what comes nearest.
    void ShowManaged(const std::string& wanted, bool keepsFields);
    void OKButton_Click();
    /// Everything that OK stores. False when something could not be, or the user wants to go on.
    bool Store();
    bool SaveAutoComplete();
};

} // namespace profiles
